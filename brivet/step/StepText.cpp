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
  if (length != 0) return Kept;

  struct Form {
    char const* pattern;
    Escape escape;
  };
  // The openings and the end of a broken escape stay whole: its backslashes are no doubled ones.
  static constexpr Form FORMS[] = {{"\\S\\?", Decoded}, {"\\P?\\", Kept}, {"\\X\\##", Kept},   {"\\X2\\", Kept},
                                   {"\\X4\\", Kept},    {"\\X0\\", Kept}, {"\\\\", Backslash}, {"\\", None}};
  for (Form const& form : FORMS) {
    if (!Matches(text, form.pattern)) continue;
    length = std::string_view(form.pattern).size();
    return form.escape;
  }
  return None;
}

VRELString DecodePlain(std::string const& bytes) {
  VRELString const utf8(bytes);
  bool const valid = utf8.view().find(u'\uFFFD') == std::u16string_view::npos;
  // By name: without one, ICU may take UTF-8 whatever the locale says.
  return valid ? utf8 : VRELString(bytes.c_str(), nl_langinfo(CODESET));
}

// One escape at a time: the reader takes no notice of doubled backslashes, and it reads what stands behind an escape as
// ASCII.
VRELString DecodeEscape(std::string const& bytes) {
  VRELStringISO1030321Reader reader;
  VRELString text;
  reader.ConvertFromASCII(bytes.c_str(), text);
  return text;
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
      units += escape == Backslash ? std::u16string(u"\\") : DecodeEscape(raw.substr(at, length)).toUtf16();
      plain = at + length;
    }
    at += length;
  }
  appendPlain(raw.size());
  return {VRELString(std::u16string_view(units)), escaped};
}
