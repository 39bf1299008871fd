// Fuzzes the escaping of strings in pages. Asserts that nothing in the result has a meaning in HTML, that all of it is
// ASCII, that it reads back as the string, with U+FFFD for invalid UTF-8, and that control characters are escaped.
#include "HtmlText.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

#include "EscapedText.h"
#include "Require.h"
#include "VRELString.h"

namespace {

void AppendUtf8(std::string& text, unsigned long code) {
  VRELString const character(static_cast<int>(code));
  text += character.toUtf8();
}

// Returns the text that a browser shows for escaped text.
std::string Unescape(std::string const& html) {
  static constexpr std::pair<char const*, char> kNames[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}};
  std::string text;
  for (std::size_t at = 0; at < html.size(); ++at) {
    if (html[at] != '&') {
      text += html[at];
      continue;
    }
    std::size_t const end = html.find(';', at);
    Require(end != std::string::npos, "a character reference ends");
    std::string const name = html.substr(at + 1, end - at - 1);
    if (name.compare(0, 1, "#") == 0) {
      AppendUtf8(text, std::strtoul(name.c_str() + 1, nullptr, 10));
    } else {
      auto const isNamed = [&name](std::pair<char const*, char> const& entry) { return name == entry.first; };
      auto const known = std::find_if(std::begin(kNames), std::end(kNames), isNamed);
      Require(known != std::end(kNames), "a character reference has a known name");
      text += known->second;
    }
    at = end;
  }
  return text;
}

void Check(std::string const& text) {
  std::string const html = EscapeHtml(text);
  Require(html.find_first_of("<>\"") == std::string::npos, "escaped text contains no markup");
  Require(std::none_of(html.begin(), html.end(), [](char c) { return (c & 0x80) != 0; }), "escaped text is ASCII");
  std::string const back = Unescape(html);
  bool const isUtf8 = text.find('\0') == std::string::npos && VRELString(text).toUtf8() == text;
  if (isUtf8) Require(back == text, "escaped text decodes to the input");
  Require(EscapeHtml(back) == html, "decoded text is escaped in the same way");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(bytes), size);
  Check(text);
  std::string shown;
  AppendEscapingControls(shown, text);
  auto const isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
  Require(std::none_of(shown.begin(), shown.end(), isControl), "control characters are shown by their codes");
  Check(shown);
  return 0;
}
