#include "VRELStreamFormatter.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <clocale>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "Gk_ROString.h"
#include "Gk_String.h"
#include "VRELOutputStream.h"
#include "VRELString.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELValue.h"

// Numbers are formatted into `numberText` and written from there, with one write for each value. The default integer
// formats are recognized by their address and formatted with std::to_chars; every other format goes through snprintf,
// bounded by the size of `numberText`. The removal of trailing zeros works on `numberText` in place: the mantissa,
// which ends at the first "e" or "E", loses zeros from its end down to the first digit after the decimal point of the
// locale.
//
// format() keeps its text in one static buffer, which the returned object refers to.
namespace {

constexpr char kIntFormat[] = "%d";
constexpr char kUnsignedIntFormat[] = "%u";
constexpr char kLongFormat[] = "%ld";
constexpr char kUnsignedLongFormat[] = "%ul";

// Returns the low 32 bits of an address, for an int format.
int AddressAsInt(void const* address) noexcept {
  return static_cast<int>(reinterpret_cast<std::uintptr_t>(address));
}

// Returns the length without trailing zeros. The digit after the decimal point is kept; without a point nothing is
// removed.
template <class Char>
std::size_t LengthWithoutZeros(std::basic_string_view<Char> number, char point) noexcept {
  std::size_t const place =
      static_cast<unsigned char>(point) < 0x80 ? number.find(static_cast<Char>(point)) : number.npos;
  std::size_t length = number.size();
  if (place == number.npos) return length;
  while (length > place + 2 && number[length - 1] == Char{'0'}) --length;
  return length;
}

// Returns the decimal point of the numeric locale; null if it has none.
char const* DecimalPoint() noexcept {
  return std::localeconv()->decimal_point;
}

// Converts ASCII units to bytes. Returns false, with undefined bytes, if there is another unit or a zero.
bool NarrowAscii(std::u16string_view text, char* bytes) noexcept {
  unsigned int seen = 0;
  for (char16_t const unit : text) {
    // Subtracting 1 gives a zero high bits too.
    seen |= static_cast<unsigned int>(unit) | (static_cast<unsigned int>(unit) - 1);
    *bytes++ = static_cast<char>(unit);
  }
  return seen < 0x80;
}

// Writes a string that need not end in a zero byte.
template <class Text>
VRELStreamFormatter& WriteNarrow(VRELStreamFormatter& formatter, Text const& source) {
  std::string_view const text = source.text();
  if (text.empty()) return formatter;
  if (static_cast<std::size_t>(source.len()) > text.size()) return formatter << text.data();
  return formatter << std::string(text).c_str();
}

}  // namespace

VRELStreamFormatter::VRELStreamFormatter(VRELOutputStream* stream)
    : output(stream),
      hasPrecision(false),
      precision(10),
      marginObject(new VRELStreamFormatterMargin(this)),
      spaceObject(new VRELStreamFormatterSpace),
      endlineObject(new VRELStreamFormatterEndline),
      emptyObject(new VRELStreamFormatterObject) {
  numberText[0] = '\0';
  resetFormat();
}

VRELStreamFormatter::~VRELStreamFormatter() {
  if (output != nullptr) output->flush();
  output = nullptr;
  // Other handles can keep the margin alive.
  if (marginObject.IsValid() && marginObject->formatter == this) marginObject->formatter = nullptr;
}

void VRELStreamFormatter::writeText(char const* text) {
  output->write(text, static_cast<int>(std::min<std::size_t>(std::strlen(text), INT_MAX)));
}

// Formats into numberText; leaves it empty if the C library refuses the format.
template <class... Arguments>
bool VRELStreamFormatter::print(char const* pattern, Arguments... arguments) {
  if (pattern == nullptr) return false;
  if (std::snprintf(numberText, sizeof numberText, pattern, arguments...) < 0) numberText[0] = '\0';
  return true;
}

template <class... Arguments>
void VRELStreamFormatter::dumpNumber(char const* pattern, Arguments... arguments) {
  if (output != nullptr && print(pattern, arguments...)) writeText(numberText);
}

// std::to_chars writes the same as the default formats, several times faster.
template <class Integer>
void VRELStreamFormatter::dumpInteger(char const* pattern, char const* defaultPattern, Integer value) {
  if (pattern != defaultPattern || output == nullptr) {
    dumpNumber(pattern, value);
    return;
  }
  char* const end = std::to_chars(numberText, numberText + sizeof numberText - 1, value).ptr;
  *end = '\0';
  output->write(numberText, static_cast<int>(end - numberText));
}

void VRELStreamFormatter::dump(char value) {
  if (output != nullptr) output->writeChar(value);
}

void VRELStreamFormatter::dump(int value) {
  dumpInteger(intFormat, kIntFormat, value);
}

void VRELStreamFormatter::dump(unsigned int value) {
  dumpInteger(unsignedIntFormat, kUnsignedIntFormat, value);
}

void VRELStreamFormatter::dump(long value) {
  dumpInteger(longFormat, kLongFormat, value);
}

void VRELStreamFormatter::dump(unsigned long value) {
  bool const takesUnsignedInt =
      unsignedLongFormat != nullptr && std::strcmp(unsignedLongFormat, kUnsignedLongFormat) == 0;
  if (takesUnsignedInt) {
    dumpNumber(unsignedLongFormat, static_cast<unsigned int>(value));
  } else {
    dumpNumber(unsignedLongFormat, value);
  }
}

void VRELStreamFormatter::dump(double value) {
  if (output == nullptr) return;
  bool const isPrinted = hasPrecision ? print(doubleFormat, precision, value) : print(doubleFormat, value);
  if (!isPrinted) return;
  RemoveTrailingZeros();
  writeText(numberText);
}

void VRELStreamFormatter::dump(char const* text) {
  if (output != nullptr && text != nullptr) writeText(text);
}

void VRELStreamFormatter::dump(void const* address) {
  if (output == nullptr) return;
  char text[16];
  std::snprintf(text, sizeof text, "%#x", static_cast<unsigned int>(AddressAsInt(address)));
  writeText(text);
}

void VRELStreamFormatter::dump(VRELStreamFormatterObject const* object) {
  if (object != nullptr) object->dump(*this);
}

void VRELStreamFormatter::dump(VRELString const& text) {
  std::u16string_view const units = text.view();
  if (output == nullptr || units.empty()) return;
  char bytes[256];
  if (units.size() <= sizeof bytes && NarrowAscii(units, bytes)) {
    output->write(bytes, static_cast<int>(units.size()));
  } else {
    dumpConverted(text);
  }
}

// Writes at most as many bytes as the string has units; surrogate pairs and omitted characters give fewer bytes.
void VRELStreamFormatter::dumpConverted(VRELString const& text) {
  VRELStringAsciiCharUtil const converted(text, false);
  char const* const bytes = converted;
  if (bytes == nullptr) return;
  output->write(bytes, static_cast<int>(strnlen(bytes, static_cast<std::size_t>(text.length()))));
}

void VRELStreamFormatter::dump(VRELValue const& value) {
  if (output != nullptr) value.Dump(*this);
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELStreamFormatter::define(void const* address) {
  return new VRELStreamFormatterPtr(address);
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELStreamFormatter::refer(void const* address) {
  return new VRELStreamFormatterPtr(address);
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELStreamFormatter::define(long number) {
  return new VRELStreamFormatterLong(number);
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELStreamFormatter::refer(long number) {
  return new VRELStreamFormatterLong(number);
}

VRELStreamFormatter::VRELStreamFormatterObjectHandle VRELStreamFormatter::format(char const* pattern, ...) {
  static char fString[512];
  int length = 0;
  if (pattern != nullptr) {
    va_list arguments;
    va_start(arguments, pattern);
    length = std::vsnprintf(fString, sizeof fString, pattern, arguments);
    va_end(arguments);
  }
  if (pattern == nullptr || length < 0) fString[0] = '\0';
  return new VRELStreamFormatterObject(fString);
}

VRELOutputStream* VRELStreamFormatter::installOutputStream(VRELOutputStream* stream) noexcept {
  return std::exchange(output, stream);
}

void VRELStreamFormatter::resetFormat() noexcept {
  doubleFormat = "%lf";
  intFormat = kIntFormat;
  unsignedIntFormat = kUnsignedIntFormat;
  unsignedLongFormat = kUnsignedLongFormat;
  longFormat = kLongFormat;
  trailingZerosFormat = VREL_TRAILING_ZEROS_KEPT;
}

char const* VRELStreamFormatter::setIntFormat(char const* format) noexcept {
  return std::exchange(intFormat, format);
}

char const* VRELStreamFormatter::setUIntFormat(char const* format) noexcept {
  return std::exchange(unsignedIntFormat, format);
}

char const* VRELStreamFormatter::setLongFormat(char const* format) noexcept {
  return std::exchange(longFormat, format);
}

char const* VRELStreamFormatter::setULongFormat(char const* format) noexcept {
  return std::exchange(unsignedLongFormat, format);
}

char const* VRELStreamFormatter::setDoubleFormat(char const* format, bool usePrecision, int newPrecision) noexcept {
  hasPrecision = usePrecision;
  precision = newPrecision;
  return std::exchange(doubleFormat, format);
}

void VRELStreamFormatter::SetTrailingZerosRemovalFormat(
    VRELRealTrailingZerosRemovalFormat const& removalFormat) noexcept {
  trailingZerosFormat = removalFormat;
}

void VRELStreamFormatter::RemoveTrailingZeros() {
  if (trailingZerosFormat == VREL_TRAILING_ZEROS_REMOVED) KeepDecimalAndOneZeroForTrailingZeros();
}

// Works in place, since the string never grows.
void VRELStreamFormatter::KeepDecimalAndOneZeroForTrailingZeros() {
  char const* const point = DecimalPoint();
  if (point == nullptr) return;
  std::string_view const number(numberText);
  std::size_t exponent = number.find('e');
  if (exponent == number.npos) exponent = number.find('E');
  exponent = std::min(exponent, number.size());
  std::size_t const kept = LengthWithoutZeros(number.substr(0, exponent), *point);
  std::memmove(numberText + kept, numberText + exponent, number.size() - exponent + 1);
}

VRINResult VRELStreamFormatter::TruncateTrailingZeroesKeepingDecimalAndOneZero(VRELString const& in, VRELString& out) {
  char const* const point = DecimalPoint();
  std::u16string_view const number = in.view();
  std::size_t const kept = point == nullptr ? number.size() : LengthWithoutZeros(number, *point);
  out = kept == number.size() ? in : in.substring(0, static_cast<int>(kept));
  return point == nullptr ? VREL_E_FAIL : VREL_S_OK;
}

void VRELStreamFormatter::VRELStreamFormatterObject::dump(VRELStreamFormatter& formatter) const {
  formatter << text;
}

void VRELStreamFormatter::VRELStreamFormatterMargin::dump(VRELStreamFormatter& target) const {
  for (int i = 0; i < depth; ++i) target << "    ";
}

void VRELStreamFormatter::VRELStreamFormatterMargin::incr() {
  ++depth;
}

void VRELStreamFormatter::VRELStreamFormatterMargin::decr() {
  --depth;
}

void VRELStreamFormatter::VRELStreamFormatterLong::dump(VRELStreamFormatter& formatter) const {
  formatter << value;
}

void VRELStreamFormatter::VRELStreamFormatterPtr::dump(VRELStreamFormatter& formatter) const {
  formatter << AddressAsInt(value);
}

void VRELStreamFormatter::VRELStreamFormatterSpace::dump(VRELStreamFormatter& formatter) const {
  formatter << " ";
}

void VRELStreamFormatter::VRELStreamFormatterEndline::dump(VRELStreamFormatter& formatter) const {
  formatter << "\n";
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_String const& text) {
  return WriteNarrow(formatter, text);
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_ROString const& text) {
  return WriteNarrow(formatter, text);
}
