#include "StepText.h"

#include <langinfo.h>

#include <cstddef>
#include <string_view>

#include "VRELStringISO1030321Reader.h"

namespace {

bool IsHexDigit(char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

// Whether `text` begins with the pattern, in which ? stands for any printable ASCII character and # for a hexadecimal
// digit.
bool Matches(std::string_view text, std::string_view pattern) {
  if (text.size() < pattern.size()) return false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    bool const fits = pattern[i] == '?'   ? text[i] >= ' ' && text[i] <= '~'
                      : pattern[i] == '#' ? IsHexDigit(text[i])
                                          : text[i] == pattern[i];
    if (!fits) return false;
  }
  return true;
}

// The length of an escape of hexadecimal digits up to \X0\; 0 where the text does not begin with a complete one.
std::size_t DigitsLength(std::string_view text, std::string_view opening, std::size_t digitsEach) {
  if (!Matches(text, opening)) return 0;
  std::size_t end = opening.size();
  while (end < text.size() && IsHexDigit(text[end])) ++end;
  std::size_t const digits = end - opening.size();
  return digits != 0 && digits % digitsEach == 0 && Matches(text.substr(end), "\\X0\\") ? end + 4 : 0;
}

enum Escape { None, Backslash, Decoded, Kept };

// What the backslash at the begin of `text` opens, and how many bytes belong to it.
Escape Classify(std::string_view text, std::size_t& length) {
  length = DigitsLength(text, "\\X2\\", 4);
  if (length != 0) return Decoded;
  length = DigitsLength(text, "\\X4\\", 8);
  if (length != 0) return Decoded;

  struct Form {
    char const* pattern;
    Escape escape;
  };
  // The openings and the end of a broken escape stay whole: its backslashes are no doubled ones.
  static constexpr Form FORMS[] = {{"\\S\\?", Decoded}, {"\\P?\\", Kept}, {"\\X\\##", Decoded}, {"\\X2\\", Kept},
                                   {"\\X4\\", Kept},    {"\\X0\\", Kept}, {"\\\\", Backslash},  {"\\", None}};
  for (Form const& form : FORMS) {
    if (!Matches(text, form.pattern)) continue;
    length = std::string_view(form.pattern).size();
    return form.escape;
  }
  return None;
}

VRELString DecodePlain(std::string const& bytes) {
  VRELString const utf8(bytes);
  // U+FFFD stands for what is no UTF-8, or for itself.
  bool const valid = utf8.view().find(u'\uFFFD') == std::u16string_view::npos || utf8.toUtf8() == bytes;
  // By name: without one, ICU may take UTF-8 whatever the locale says.
  return valid ? utf8 : VRELString(bytes.c_str(), nl_langinfo(CODESET));
}

void AppendCharacter(std::u16string& units, unsigned long code) {
  if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) code = 0xFFFD;
  if (code < 0x10000) {
    units += static_cast<char16_t>(code);
    return;
  }
  units += static_cast<char16_t>(0xD7C0 + (code >> 10U));
  units += static_cast<char16_t>(0xDC00 + (code & 0x3FFU));
}

// \X\ with its two digits, or \X4\: the reader knows neither.
std::u16string DecodeCharacters(std::string const& bytes, std::size_t begin, std::size_t digitsEach) {
  std::u16string units;
  for (std::size_t at = begin; at < bytes.size() && IsHexDigit(bytes[at]); at += digitsEach) {
    AppendCharacter(units, std::stoul(bytes.substr(at, digitsEach), nullptr, 16));
  }
  return units;
}

// One escape at a time: the reader takes no notice of doubled backslashes, and it reads what stands behind an escape as
// ASCII.
std::u16string DecodeEscape(std::string const& bytes) {
  if (Matches(bytes, "\\X\\")) return DecodeCharacters(bytes, 3, 2);
  if (Matches(bytes, "\\X4\\")) return DecodeCharacters(bytes, 4, 8);
  VRELStringISO1030321Reader reader;
  VRELString text;
  reader.ConvertFromASCII(bytes.c_str(), text);
  return std::u16string(text.view());
}

}  // namespace

StepText DecodeStepText(std::string const& raw) {
  std::string_view const all(raw);
  std::u16string units;
  bool escaped = false;
  std::size_t plain = 0;  // where the text that stands for itself begins
  auto const appendPlain = [&](std::size_t end) {
    if (end > plain) units += DecodePlain(raw.substr(plain, end - plain)).view();
  };
  for (std::size_t at = raw.find('\\'); at != std::string::npos; at = raw.find('\\', at)) {
    std::size_t length = 0;
    Escape const escape = Classify(all.substr(at), length);
    escaped = escaped || escape != None;
    if (escape == Backslash || escape == Decoded) {
      appendPlain(at);
      units += escape == Backslash ? std::u16string(u"\\") : DecodeEscape(raw.substr(at, length));
      plain = at + length;
    }
    at += length;
  }
  appendPlain(raw.size());
  return {VRELString(std::u16string_view(units)), escaped};
}
