#include "EscapedText.h"

#include <cstddef>
#include <cstdio>

namespace {

// The code of the control character or separator at the begin of the text and the number of its bytes; 0 for others.
std::size_t ControlLength(std::string_view text, unsigned int& code) {
  auto const byte = [text](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  code = byte(0);
  if (code < 0x20 || code == 0x7F) return 1;
  if (code == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0) {
    code = byte(1);
    return 2;
  }
  if (code != 0xE2 || byte(1) != 0x80 || (byte(2) != 0xA8 && byte(2) != 0xA9)) return 0;
  code = 0x2000 + (byte(2) - 0x80);
  return 3;
}

}  // namespace

void AppendEscapingControls(std::string& target, std::string_view utf8) {
  while (!utf8.empty()) {
    unsigned int code = 0;
    std::size_t const length = ControlLength(utf8, code);
    if (length == 0) {
      target += utf8.front();
      utf8.remove_prefix(1);
      continue;
    }
    char name[16];
    std::snprintf(name, sizeof name, "<U+%04X>", code);
    target += name;
    utf8.remove_prefix(length);
  }
}
