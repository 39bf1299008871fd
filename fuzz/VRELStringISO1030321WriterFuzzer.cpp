// Feeds the writer of ISO 10303-21 strings a text of UTF-16 units, surrogates without a partner among them. Asserts
// that it writes runs beyond ASCII as escapes and the rest as it is, and that the reader gives the same text back where
// no backslash stands in it.
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

// ASCII stands for itself; any other byte announces a unit, whose high half comes next, and then its low half.
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
  Require(writer.ConvertToASCII(text, written) == VREL_S_OK, "no text fails");
  if (units.empty()) {
    Require(written == nullptr, "an empty text is not written");
    return 0;
  }
  Require(written == Encode(units), "runs beyond ASCII become escapes");
  if (units.find(u'\\') != std::u16string::npos) return 0;
  VRELStringISO1030321Reader reader;
  VRELString back;
  reader.ConvertFromASCII(written, back);
  Require(back.toUtf16() == units, "the reader gives the text back");
  return 0;
}
