// Feeds the reader of properties a text. Asserts that each line with one "=" sets a pair and no other does, and that
// what is written of an ASCII text reads and writes the same again.
#include "VRELProperties.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Gk_Source.h"
#include "Require.h"
#include "VRELStreamFormatter.h"
#include "VRELStringInputStream.h"
#include "VRELStringOutputStream.h"

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs PairsOf(std::string const& text) {
  Pairs pairs;
  for (std::size_t at = 0; at < text.size();) {
    // In front of the first line, ends of lines are not skipped.
    std::size_t const end = std::min(text.find_first_of("\r\n", at + 1), text.size());
    std::string const line = text.substr(at, end - at).c_str();
    if (std::count(line.begin(), line.end(), '=') == 1) {
      std::size_t const mark = line.find('=');
      pairs.emplace_back(line.substr(0, mark), line.substr(mark + 1));
    }
    at = std::min(text.find_first_not_of("\r\n", end), text.size());
  }
  return pairs;
}

void Read(std::string const& text, VRELProperties& properties) {
  VRELStringInputStream stream(Gk_String(text.data(), static_cast<int>(text.size() + 1)));
  Gk_Source source(&stream);
  source >> properties;
}

std::string Written(VRELProperties& properties) {
  VRELStringOutputStream out;
  {
    VRELStreamFormatter formatter(&out);
    formatter << properties;
  }
  out.writeChar('\0');
  return out.contents();
}

void Compare(VRELProperties const& properties, Pairs const& pairs) {
  Require(properties.GetCount() <= static_cast<int>(pairs.size()), "no other line sets a pair");
  for (std::size_t i = 0; i < pairs.size() && i < 64; ++i) {
    VRELString const key(pairs[i].first.c_str());
    // Keys that differ by case alone may be one key, or two.
    auto const isSame = [&](Pairs::value_type const& pair) {
      return key.equalsIgnoreCase(VRELString(pair.first.c_str()));
    };
    auto const later = std::find_if(pairs.begin() + static_cast<std::ptrdiff_t>(i) + 1, pairs.end(), isSame);
    VRELValue value;
    VRELString text;
    Require(properties.Get(key, value) == VREL_S_OK, "a line with one = sets a pair");
    Require(value.GetValue(text) == VREL_S_OK, "a value is a text");
    if (later == pairs.end())
      Require(text.equals(VRELString(pairs[i].second.c_str())), "the last line of a key counts");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(bytes), size);
  VRELProperties properties;
  Read(text, properties);
  Compare(properties, PairsOf(text));

  // A key may begin with the end of a line in front of the first one, and only ASCII is written as it was read.
  bool const endsLineFirst = !text.empty() && (text[0] == '\r' || text[0] == '\n');
  bool const isAscii = std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
  if (endsLineFirst || !isAscii) return 0;
  std::string const written = Written(properties);
  VRELProperties again;
  Read(written, again);
  Require(Written(again) == written, "what is written reads the same again");
  return 0;
}
