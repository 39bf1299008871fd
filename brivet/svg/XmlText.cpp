#include "XmlText.h"

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>

#include "EscapedText.h"

std::string EscapeXml(std::string_view utf8, std::size_t limit) {
  std::string controlled;
  AppendEscapingControls(controlled, utf8.substr(0, limit));
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(controlled.data());
  std::string escaped;
  for (std::size_t at = 0; at < controlled.size();) {
    std::size_t const begin = at;
    UChar32 code = 0;
    U8_NEXT(bytes, at, controlled.size(), code);
    if (code == '&') {
      escaped += "&amp;";
    } else if (code == '<') {
      escaped += "&lt;";
    } else if (code == '>') {
      escaped += "&gt;";
    } else if (code == '"') {
      escaped += "&quot;";
    } else if (code < 0 || code == 0xFFFE || code == 0xFFFF) {
      if (code < 0) at = begin + 1;
      escaped += "\xEF\xBF\xBD";
    } else {
      escaped.append(controlled, begin, at - begin);
    }
  }
  if (utf8.size() > limit) escaped += "\xE2\x80\xA6";
  return escaped;
}
