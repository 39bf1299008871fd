// Escapes are recognized by patterns, the longest first, at each backslash from left to right. The digits become UTF-16
// code units, which are collected over consecutive escapes so that a surrogate pair may be divided between two of them.
#include "StepText.h"

#include <langinfo.h>
#include <unicode/ucnv.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

#include "StepBytes.h"

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

// Returns whether the text begins with the pattern, in which ? is any printable ASCII character and # a hexadecimal
// digit.
bool Matches(std::string_view text, std::string_view pattern) {
  if (text.size() < pattern.size()) return false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    bool const matches = pattern[i] == '?'   ? text[i] >= ' ' && text[i] <= '~'
                         : pattern[i] == '#' ? IsHexDigit(text[i])
                                             : text[i] == pattern[i];
    if (!matches) return false;
  }
  return true;
}

// Returns the length of an escape of hexadecimal digits up to \X0\, or 0 if the text does not begin with a complete
// one.
std::size_t DigitsLength(std::string_view text, std::string_view opening, std::size_t digitsEach) {
  if (!Matches(text, opening)) return 0;
  std::size_t end = opening.size();
  while (end < text.size() && IsHexDigit(text[end])) ++end;
  std::size_t const digits = end - opening.size();
  return digits != 0 && digits % digitsEach == 0 && Matches(text.substr(end), "\\X0\\") ? end + 4 : 0;
}

enum class Escape { None, Backslash, Latin1, Byte, Utf16, Utf32, Kept };

struct Match {
  Escape escape;
  std::size_t length;
};

// Returns the kind of escape that the backslash at the start of the text begins.
Match Classify(std::string_view text) {
  if (std::size_t const length = DigitsLength(text, "\\X2\\", 4)) return {Escape::Utf16, length};
  if (std::size_t const length = DigitsLength(text, "\\X4\\", 8)) return {Escape::Utf32, length};
  struct Form {
    char const* pattern;
    Escape escape;
  };
  // The openings and the end of an incomplete escape are kept as a whole: their backslashes are not doubled ones.
  static constexpr Form kForms[] = {{"\\S\\?", Escape::Latin1},  {"\\P?\\", Escape::Kept}, {"\\X\\##", Escape::Byte},
                                    {"\\X2\\", Escape::Kept},    {"\\X4\\", Escape::Kept}, {"\\X0\\", Escape::Kept},
                                    {"\\\\", Escape::Backslash}, {"\\", Escape::None}};
  for (Form const& form : kForms) {
    if (Matches(text, form.pattern)) return {form.escape, std::string_view(form.pattern).size()};
  }
  return {Escape::None, 1};
}

std::uint32_t Hexadecimal(std::string_view digits) {
  std::uint32_t number = 0;
  for (char const digit : digits) {
    number = number << 4U | static_cast<std::uint32_t>(digit <= '9' ? digit - '0' : (digit & 0xDF) - 'A' + 10);
  }
  return number;
}

void AppendCharacter(std::string& utf8, std::uint32_t code) {
  if (code > 0x10FFFF || U_IS_SURROGATE(code)) code = kReplacement;
  std::uint8_t bytes[4];
  std::size_t length = 0;
  U8_APPEND_UNSAFE(bytes, length, code);
  utf8.append(reinterpret_cast<char const*>(bytes), length);
}

// Joins the code units of consecutive \X2\ escapes.
class Utf16Joiner {
 public:
  explicit Utf16Joiner(std::string& target) : utf8(target) {}

  void Add(std::uint32_t unit) {
    if (U16_IS_TRAIL(unit) && lead != 0) {
      AppendCharacter(utf8, static_cast<std::uint32_t>(U16_GET_SUPPLEMENTARY(lead, unit)));
      lead = 0;
      return;
    }
    Flush();
    if (U16_IS_LEAD(unit)) {
      lead = unit;
    } else {
      AppendCharacter(utf8, unit);
    }
  }
  // Ends the run of escapes.
  void Flush() {
    if (lead != 0) AppendCharacter(utf8, kReplacement);
    lead = 0;
  }

 private:
  std::string& utf8;
  std::uint32_t lead = 0;
};

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

bool IsUtf8(std::string_view text) {
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(text.data());
  std::size_t at = 0;
  while (at < text.size()) {
    UChar32 code = 0;
    U8_NEXT(bytes, at, text.size(), code);
    if (code < 0) return false;
  }
  return true;
}

UConverter* OpenConverter(std::string const& name) {
  UErrorCode error = U_ZERO_ERROR;
  UConverter* const converter = ucnv_open(name.c_str(), &error);
  return U_SUCCESS(error) ? converter : nullptr;
}

std::string NameOf(UConverter const* converter) {
  UErrorCode error = U_ZERO_ERROR;
  char const* const name = ucnv_getName(converter, &error);
  return U_SUCCESS(error) ? name : "";
}

}  // namespace

void StepText::Close::operator()(UConverter* converter) const {
  ucnv_close(converter);
}

StepText::StepText() {
  utf8Encoding.name = "UTF-8";
  latin1.name = "ISO-8859-1";
  localeEncoding.name = nl_langinfo(CODESET);
  localeEncoding.converter.reset(OpenConverter(localeEncoding.name));
  if (localeEncoding.converter == nullptr) return;
  std::string const name = NameOf(localeEncoding.converter.get());
  if (name == "UTF-8" || name == "US-ASCII" || name == "ISO-8859-1") localeEncoding.converter.reset();
}

StepText::~StepText() = default;

bool StepText::SetEncoding(std::string const& name) {
  if (name.empty()) {
    given = Encoding();
    return true;
  }
  std::unique_ptr<UConverter, Close> converter(OpenConverter(name));
  if (converter == nullptr) return false;
  given.name = name;
  given.converter = std::move(converter);
  return true;
}

bool StepText::IsPlain(std::string_view raw) {
  for (char const byte : raw) {
    if (byte == '\\' || static_cast<unsigned char>(byte) >= 0x80) return false;
  }
  return true;
}

// Bytes are decoded before escapes are recognized: in some encodings a byte of a character looks like a backslash.
StepText::Decoded StepText::Decode(std::string_view encoded) {
  std::string storage;
  std::string_view const raw = DecodeBytes(encoded, storage);
  Decoded decoded;
  Utf16Joiner units(decoded.utf8);
  std::size_t plain = 0;  // start of the part without escapes
  auto const appendPlain = [&](std::size_t end) {
    if (end == plain) return;
    units.Flush();
    decoded.utf8 += raw.substr(plain, end - plain);
  };
  std::size_t at = raw.find('\\');
  while (at != std::string_view::npos) {
    auto const [escape, length] = Classify(raw.substr(at));
    std::string_view const text = raw.substr(at, length);
    decoded.escaped = decoded.escaped || escape != Escape::None;
    if (escape != Escape::None && escape != Escape::Kept) {
      appendPlain(at);
      plain = at + length;
    }
    switch (escape) {
      case Escape::Utf16:
        for (std::size_t i = 4; i + 4 < length; i += 4) units.Add(Hexadecimal(text.substr(i, 4)));
        break;
      case Escape::Utf32:
        units.Flush();
        for (std::size_t i = 4; i + 4 < length; i += 8) AppendCharacter(decoded.utf8, Hexadecimal(text.substr(i, 8)));
        break;
      case Escape::Byte:
        units.Flush();
        AppendCharacter(decoded.utf8, Hexadecimal(text.substr(3, 2)));
        break;
      case Escape::Latin1:
        units.Flush();
        AppendCharacter(decoded.utf8, static_cast<unsigned char>(text[3]) + 0x80U);
        break;
      case Escape::Backslash:
        units.Flush();
        decoded.utf8 += '\\';
        break;
      case Escape::None:
      case Escape::Kept:
        break;
    }
    at = raw.find('\\', at + length);
  }
  appendPlain(raw.size());
  units.Flush();
  return decoded;
}

// Returns the bytes as UTF-8; `storage` contains them if they had to be converted.
std::string_view StepText::DecodeBytes(std::string_view bytes, std::string& storage) {
  if (IsAscii(bytes)) return bytes;
  if (given.converter != nullptr) {
    Convert(storage, bytes, given, true);
  } else if (IsUtf8(bytes)) {
    ++utf8Encoding.strings;
    return bytes;
  } else if (localeEncoding.converter == nullptr || !Convert(storage, bytes, localeEncoding, false)) {
    for (char const byte : bytes) AppendCharacter(storage, static_cast<unsigned char>(byte));
    ++latin1.strings;
  }
  return storage;
}

// Returns whether the bytes are valid in the encoding. Without `substitutes` nothing is appended if they are not.
bool StepText::Convert(std::string& utf8, std::string_view bytes, Encoding& encoding, bool substitutes) {
  UConverter* const converter = encoding.converter.get();
  UErrorCode error = U_ZERO_ERROR;
  ucnv_reset(converter);
  ucnv_setToUCallBack(converter, substitutes ? UCNV_TO_U_CALLBACK_SUBSTITUTE : UCNV_TO_U_CALLBACK_STOP, nullptr,
                      nullptr, nullptr, &error);
  std::u16string units(bytes.size() * 2 + 16, u'\0');
  char const* source = bytes.data();
  UChar* target = units.data();
  ucnv_toUnicode(converter, &target, units.data() + units.size(), &source, bytes.data() + bytes.size(), nullptr, true,
                 &error);
  if (U_FAILURE(error)) return false;
  Utf16Joiner joiner(utf8);
  for (UChar const* unit = units.data(); unit != target; ++unit) joiner.Add(*unit);
  joiner.Flush();
  ++encoding.strings;
  return true;
}

std::string StepText::UsedEncodings() const {
  std::string text;
  for (Encoding const* encoding : {&given, &utf8Encoding, &localeEncoding, &latin1}) {
    if (encoding->strings == 0) continue;
    if (!text.empty()) text += ", ";
    text +=
        encoding->name + " (" + std::to_string(encoding->strings) + (encoding->strings == 1 ? " string)" : " strings)");
  }
  return text;
}
