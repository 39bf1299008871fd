#include "EscapedText.h"

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace {

bool IsEscaped(UChar32 code) {
  return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x061C || code == 0x200E || code == 0x200F ||
         (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

}  // namespace

void AppendEscapingControls(std::string& target, std::string_view utf8) {
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(utf8.data());
  std::size_t unescaped = 0;  // what begins here is still to be appended
  std::size_t at = 0;
  while (at < utf8.size()) {
    if (bytes[at] >= ' ' && bytes[at] < 0x7F) {
      ++at;
      continue;
    }
    std::size_t const begin = at;
    UChar32 code = 0;
    U8_NEXT(bytes, at, utf8.size(), code);
    if (code < 0) {
      at = begin + 1;
      code = bytes[begin];
      if (code >= 0xA0) continue;
    }
    if (!IsEscaped(code)) continue;
    target += utf8.substr(unescaped, begin - unescaped);
    char name[16];
    std::snprintf(name, sizeof name, "<U+%04X>", static_cast<unsigned int>(code));
    target += name;
    unescaped = at;
  }
  target += utf8.substr(unescaped);
}
