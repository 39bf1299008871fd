// Feeds the text of pages any bytes, as AppendEscapingControls gives them and bare. Asserts that nothing in the result
// has a meaning in HTML, that all of it is ASCII, and that it reads back as the text, with U+FFFD for what is no UTF-8.
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

// What a browser makes of escaped text.
std::string Unescape(std::string const& html) {
  static constexpr std::pair<char const*, char> names[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}};
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
      auto const known = std::find_if(std::begin(names), std::end(names), isNamed);
      Require(known != std::end(names), "a character reference has a known name");
      text += known->second;
    }
    at = end;
  }
  return text;
}

void Check(std::string const& text) {
  std::string const html = EscapeHtml(text);
  Require(html.find_first_of("<>\"") == std::string::npos, "nothing has a meaning in HTML");
  Require(std::none_of(html.begin(), html.end(), [](char c) { return (c & 0x80) != 0; }), "escaped text is ASCII");
  std::string const back = Unescape(html);
  bool const isUtf8 = text.find('\0') == std::string::npos && VRELString(text).toUtf8() == text;
  if (isUtf8) Require(back == text, "escaped text reads back");
  Require(EscapeHtml(back) == html, "what reads back is escaped the same");
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
