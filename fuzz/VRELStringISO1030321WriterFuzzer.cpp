// Encodes a generated UTF-16 string, unpaired surrogates included, for ISO 10303-21. Compares the result with a model,
// and checks that decoding returns the same string unless it contains a backslash.
#include "VRELStringISO1030321Writer.h"

#include <cstdint>
#include <cstdio>
#include <string>

#include "Require.h"
#include "VRELStringISO1030321Reader.h"

namespace {

std::string Encode(std::u16string const& units) {
  std::string text;
  bool inEscape = false;
  for (char16_t const unit : units) {
    bool const isAscii = unit < 128;
    if (isAscii == inEscape) text += isAscii ? "\\X0\\" : "\\X2\\";
    inEscape = !isAscii;
    if (isAscii) {
      text += static_cast<char>(unit);
    } else {
      char digits[5];
      std::snprintf(digits, sizeof digits, "%04X", static_cast<unsigned>(unit));
      text += digits;
    }
  }
  return inEscape ? text + "\\X0\\" : text;
}

// An ASCII byte is one unit. Any other byte is followed by the high and the low byte of a unit.
std::u16string UnitsOf(std::uint8_t const* bytes, std::size_t size) {
  std::u16string units;
  for (std::size_t i = 0; i < size; ++i) {
    unsigned unit = bytes[i];
    if (unit >= 128 && i + 2 < size) {
      unit = static_cast<unsigned>(bytes[i + 1] << 8 | bytes[i + 2]);
      i += 2;
    }
    if (unit != 0) units += static_cast<char16_t>(unit);
  }
  return units;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::u16string const units = UnitsOf(bytes, size);
  VRELString const text{std::u16string_view(units)};
  VRELStringISO1030321Writer writer;
  char const* written = nullptr;
  Require(writer.ConvertToASCII(text, written) == VREL_S_OK, "no string fails");
  if (units.empty()) {
    Require(written == nullptr, "an empty string is not written");
    return 0;
  }
  Require(written == Encode(units), "runs outside ASCII become escapes");
  if (units.find(u'\\') != std::u16string::npos) return 0;
  VRELStringISO1030321Reader reader;
  VRELString back;
  reader.ConvertFromASCII(written, back);
  Require(back.toUtf16() == units, "the reader decodes the same string");
  return 0;
}
