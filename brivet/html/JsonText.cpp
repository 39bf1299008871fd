#include "JsonText.h"

#include <charconv>
#include <cmath>

#include "EscapedText.h"
#include "ValidUtf8.h"

std::string_view CutUtf8(std::string_view utf8, std::size_t limit) {
  if (utf8.size() <= limit) return utf8;
  std::size_t end = limit;
  while (end > 0 && limit - end < 3 && (static_cast<unsigned char>(utf8[end]) & 0xC0U) == 0x80U) --end;
  return utf8.substr(0, end);
}

void JsonText::Separate() {
  if (!isFirst) text += ',';
  isFirst = false;
}

JsonText& JsonText::Open(char bracket) {
  Separate();
  text += bracket;
  isFirst = true;
  return *this;
}

JsonText& JsonText::Close(char bracket) {
  text += bracket;
  isFirst = false;
  return *this;
}

JsonText& JsonText::Key(char const* key) {
  Separate();
  text.append("\"").append(key).append("\":");
  isFirst = true;
  return *this;
}

JsonText& JsonText::Number(double number) {
  if (!std::isfinite(number)) return Null();
  Separate();
  char digits[40];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
  return *this;
}

JsonText& JsonText::Integer(long number) {
  Separate();
  text += std::to_string(number);
  return *this;
}

JsonText& JsonText::String(std::string_view utf8) {
  Separate();
  std::string_view const cut = CutUtf8(utf8, kLongestString);
  std::string escaped;
  AppendEscapingControls(escaped, cut);
  shown.clear();
  AppendValidUtf8(shown, escaped);
  text += '"';
  for (char const byte : shown) {
    if (byte == '"' || byte == '\\') text += '\\';
    text += byte;
  }
  if (cut.size() < utf8.size()) text += "\xE2\x80\xA6";
  text += '"';
  return *this;
}

JsonText& JsonText::String(std::optional<std::string> const& utf8) {
  return utf8.has_value() ? String(std::string_view(*utf8)) : Null();
}

JsonText& JsonText::Null() {
  Separate();
  text += "null";
  return *this;
}
