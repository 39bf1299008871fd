// Feeds brivet's parser of options files a file. Checks that its entries are those that the option store reads from the
// same bytes, that each entry is in the line that is reported, and that problems are sorted by line.
#include "OptionsFile.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "Require.h"
#include "VRELOptions.h"

namespace {

VRINResult ReadIntoStore(std::string text, VRELOptions& options) {
  std::FILE* const stream = fmemopen(text.data(), text.size(), "r");
  Require(stream != nullptr, "the system opens a file in memory");
  VRINResult const result = options.ReadFromFile(stream);
  std::fclose(stream);
  return result;
}

std::vector<std::string> LinesOf(std::string const& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t const end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at).c_str());
    at = end + 1;
  }
  return lines;
}

void CheckEntries(OptionsFile const& file, std::string const& text) {
  std::vector<std::string> const lines = LinesOf(text);
  std::size_t last = 0;
  for (OptionsFile::Entry const& entry : file.entries) {
    Require(entry.line > last && entry.line <= lines.size(), "entries are sorted by line");
    last = entry.line;
    VRELString const line(lines[entry.line - 1].c_str());
    int const name = line.indexOf(entry.name, 0);
    Require(name >= 0 && line.indexOf(entry.value, name) >= 0, "an entry is in its line");
    Require(entry.value.length() != 0, "a value is not empty");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(bytes), size);
  OptionsFile const file = OptionsFile::Parse(text);
  if (!file.problems.empty()) {
    Require(file.entries.empty(), "a file with a problem has no entries");
    auto const isBefore = [](auto const& a, auto const& b) { return a.line < b.line; };
    Require(std::is_sorted(file.problems.begin(), file.problems.end(), isBefore), "problems are sorted by line");
    Require(file.problems.front().line != 0, "a problem has a line");
    return 0;
  }
  std::string const unmarked = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? text.substr(3) : text;
  CheckEntries(file, unmarked);
  Require((file.keysInSections == 0) == (file.firstLineInSections == 0), "keys in sections have a first line");

  VRELOptions fromFile;
  Require(ReadIntoStore(unmarked, fromFile) == VREL_S_OK, "the store accepts the same files");
  VRELOptions fromEntries;
  for (OptionsFile::Entry const& entry : file.entries) fromEntries.AddOptionParseValue(entry.name, entry.value);
  Require(fromFile.Size() == fromEntries.Size(), "the store has the same entries");
  return 0;
}
