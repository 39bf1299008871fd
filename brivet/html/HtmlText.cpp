#include "HtmlText.h"

#include <cstddef>

namespace {

constexpr unsigned int REPLACEMENT = 0xFFFD;

struct Character {
  unsigned int code;
  std::size_t length;
};

bool Continues(std::string_view text, std::size_t i) {
  return i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80;
}

// The character at the begin of a text of bytes beyond ASCII.
Character Decode(std::string_view text) {
  unsigned char const lead = static_cast<unsigned char>(text[0]);
  std::size_t const length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4) return {REPLACEMENT, 1};
  unsigned int code = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if (!Continues(text, i)) return {REPLACEMENT, 1};
    code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  // Longer than need be, half a pair, or behind the last character.
  static constexpr unsigned int LEAST[] = {0, 0, 0x80, 0x800, 0x10000};
  bool const valid = code >= LEAST[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
  return valid ? Character{code, length} : Character{REPLACEMENT, 1};
}

char const* NameOf(char byte) {
  switch (byte) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return nullptr;
  }
}

}  // namespace

void AppendHtml(std::string& target, std::string_view utf8) {
  while (!utf8.empty()) {
    char const byte = utf8.front();
    std::size_t length = 1;
    if (static_cast<unsigned char>(byte) >= 0x80) {
      Character const character = Decode(utf8);
      target += "&#" + std::to_string(character.code) + ";";
      length = character.length;
    } else if (char const* const name = NameOf(byte)) {
      target += name;
    } else {
      target += byte;
    }
    utf8.remove_prefix(length);
  }
}

std::string EscapeHtml(std::string_view utf8) {
  std::string escaped;
  AppendHtml(escaped, utf8);
  return escaped;
}
