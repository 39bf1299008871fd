#include "StepEncoder.h"

#include <unicode/ucnv.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <cstdio>
#include <string_view>

namespace {

std::string Hexadecimal(char const* format, UChar32 character) {
  char digits[16];
  std::snprintf(digits, sizeof digits, format, static_cast<unsigned int>(character));
  return digits;
}

// Escapes of one kind are joined: \X2\30D630EC\X0\.
class EscapeWriter {
 public:
  explicit EscapeWriter(std::string& string) : target(string) {}

  void Write(UChar32 character) {
    char const* const opening = character < 0x20 || character == 0x7F ? "" : character < 0x10000 ? "\\X2\\" : "\\X4\\";
    if (*opening == '\0') {
      End();
      target += Hexadecimal("\\X\\%02X", character);
      return;
    }
    if (open != opening) {
      End();
      target += opening;
      open = opening;
    }
    target += Hexadecimal(character < 0x10000 ? "%04X" : "%08X", character);
  }
  void End() {
    if (!open.empty()) target += "\\X0\\";
    open = "";
  }

 private:
  std::string& target;
  std::string_view open;  // the opening of the present run
};

}  // namespace

void StepEncoder::Close::operator()(UConverter* opened) const {
  ucnv_close(opened);
}

StepEncoder::StepEncoder() = default;
StepEncoder::~StepEncoder() = default;

bool StepEncoder::SetEncoding(std::string const& name) {
  UErrorCode error = U_ZERO_ERROR;
  std::unique_ptr<UConverter, Close> opened(ucnv_open(name.c_str(), &error));
  if (name.empty() || U_FAILURE(error)) return false;
  ucnv_setFromUCallBack(opened.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
  ucnv_setFallback(opened.get(), false);
  std::swap(converter, opened);
  for (char byte = ' '; byte < 0x7F; ++byte) {
    std::string bytes;
    if (AppendBytes(bytes, byte) && bytes == std::string(1, byte)) continue;
    std::swap(converter, opened);
    return false;
  }
  return true;
}

std::string StepEncoder::Encode(DocumentVisitor::Text const& text) const {
  std::string encoded = "'";
  EscapeWriter escapes(encoded);
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(text.utf8.data());
  std::size_t at = 0;
  while (at < text.utf8.size()) {
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(bytes, at, text.utf8.size(), character);
    if (character >= 0x20 && character < 0x7F) {
      escapes.End();
      encoded.append(character == '\'' || character == '\\' ? 2 : 1, static_cast<char>(character));
      continue;
    }
    std::string own;
    // C1 control characters could be bytes that a terminal or an editor interprets.
    if (character < 0xA0 || !AppendBytes(own, character)) {
      escapes.Write(character);
    } else {
      escapes.End();
      encoded += own;
    }
  }
  escapes.End();
  return encoded + "'";
}

bool StepEncoder::AppendBytes(std::string& target, int character) const {
  UChar units[2];
  int count = 0;
  U16_APPEND_UNSAFE(units, count, character);
  char bytes[16];
  UErrorCode error = U_ZERO_ERROR;
  ucnv_reset(converter.get());
  int const length = ucnv_fromUChars(converter.get(), bytes, sizeof bytes, units, count, &error);
  // A character that is ignored by default, such as U+00AD, is converted to nothing.
  if (U_FAILURE(error) || length == 0) return false;
  for (int i = 0; i < length; ++i) {
    // A byte that looks like an apostrophe or a backslash would end the string or begin an escape.
    if (character >= 0x80 && static_cast<unsigned char>(bytes[i]) < 0x80) return false;
  }
  target.append(bytes, static_cast<std::size_t>(length));
  return true;
}
