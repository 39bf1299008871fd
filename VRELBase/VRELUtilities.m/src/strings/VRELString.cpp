#include "VRELString.h"

#include <unicode/stringoptions.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <ostream>
#include <utility>

#include "VRELAscii.h"
#include "VRELConvertedSize.h"
#include "VRELFindUnit.h"
#include "VRELStringBlocks.h"
#include "detail/VRELSeededHash.h"

// How strings are built. Every constructor ends in BuildUnits, which writes the code units directly into the buffer of
// a new UnicodeString, or in a UnicodeString that ICU decoded and Terminated completed. Checked then turns a string
// that ran out of memory into the uninitialized state. All empty strings share one UnicodeString that is never
// destroyed.
//
// ASCII has paths of its own in both directions, since nearly all names and messages are ASCII and opening a converter
// of ICU costs more than converting the string.
namespace {

using icu::UnicodeString;

constexpr char kSubstitution = 0x1A;  // the substitution byte of the code page US-ASCII

// Atomic, because several threads may build strings.
std::atomic<int> failureCount{0};

void CountFailure(UErrorCode status) noexcept {
  if (status == U_MEMORY_ALLOCATION_ERROR) ++failureCount;
}

struct ConverterCloser {
  void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

Converter OpenConverter(char const* codepage) noexcept {
  UErrorCode status = U_ZERO_ERROR;
  Converter converter(ucnv_open(codepage, &status));
  CountFailure(status);
  if (U_FAILURE(status)) converter.reset();
  return converter;
}

// Returns a converter for the named code page, or for the default one of the process if that cannot be opened.
Converter OpenBestConverter(char const* codepage) noexcept {
  Converter converter = OpenConverter(codepage);
  return converter != nullptr ? std::move(converter) : OpenConverter(nullptr);
}

bool IsUsAscii(char const* codepage) noexcept {
  return codepage != nullptr && std::strcmp(codepage, VRELString::CODEPAGE_NAME_ASCII) == 0;
}

// Returns whether ASCII has the same bytes in the code page; false if that is not known.
bool KeepsAscii(char const* codepage) noexcept {
  if (codepage != nullptr) return IsUsAscii(codepage);
  char const* const name = ucnv_getDefaultName();
  return name != nullptr && (std::strcmp(name, "UTF-8") == 0 || std::strcmp(name, "US-ASCII") == 0 ||
                             std::strcmp(name, "ISO-8859-1") == 0);
}

// Returns the shared value of all empty strings. Never destroyed, so that static objects may use it until the end.
UnicodeString* SharedEmpty() noexcept {
  alignas(UnicodeString) static unsigned char storage[sizeof(UnicodeString)];
  static UnicodeString* const empty = new (storage) UnicodeString(char16_t(0));
  return empty;
}

// Creates an ICU string in a block of the thread's free list. Null if memory runs out.
template <class... Arguments>
UnicodeString* NewString(Arguments&&... arguments) noexcept {
  void* const block = VRELStringBlocks::Take();
  return block != nullptr ? new (block) UnicodeString(std::forward<Arguments>(arguments)...) : nullptr;
}

void DeleteString(UnicodeString* text) noexcept {
  if (text == nullptr) return;
  text->UnicodeString::~UnicodeString();
  VRELStringBlocks::Return(text);
}

// Counts and deletes a string that ran out of memory; null is one that was not even created.
UnicodeString* Checked(UnicodeString* text) noexcept {
  if (text != nullptr && !text->isBogus()) return text;
  ++failureCount;
  DeleteString(text);
  return nullptr;
}

// Creates a string of `count` units, which `write(char16_t*)` writes, and a terminator. Null if memory runs out.
template <class Write>
UnicodeString* BuildUnits(std::size_t count, Write const& write) noexcept {
  if (count == 0) return SharedEmpty();
  if (count >= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) return nullptr;
  auto* text = NewString();
  if (text == nullptr) return nullptr;
  auto const length = static_cast<std::int32_t>(count);
  char16_t* const buffer = text->getBuffer(length + 1);
  if (buffer == nullptr) {
    DeleteString(text);
    return nullptr;
  }
  write(buffer);
  buffer[length] = 0;
  text->releaseBuffer(length + 1);
  return text;
}

UnicodeString* BuildFrom(std::u16string_view units) noexcept {
  return BuildUnits(units.size(), [&](char16_t* out) { std::copy(units.begin(), units.end(), out); });
}

UnicodeString* BuildJoined(std::u16string_view head, std::u16string_view tail) noexcept {
  return BuildUnits(head.size() + tail.size(), [&](char16_t* out) {
    std::copy(tail.begin(), tail.end(), std::copy(head.begin(), head.end(), out));
  });
}

UnicodeString* BuildFromAscii(char const* text, std::size_t length) noexcept {
  return BuildUnits(length, [&](char16_t* out) { std::copy(text, text + length, out); });
}

// Adds the terminator to a string that ICU decoded.
UnicodeString* Terminated(UnicodeString* text) noexcept {
  if (text != nullptr && !text->isBogus()) text->append(char16_t(0));
  return text;
}

template <class Unit>
std::size_t CountUnits(Unit const* text) noexcept {
  if (text == nullptr) return 0;
  if constexpr (sizeof(Unit) == 1) {
    return std::strlen(text);
  } else if constexpr (sizeof(Unit) == sizeof(wchar_t)) {
    return std::wcslen(reinterpret_cast<wchar_t const*>(text));
  } else {
    std::size_t count = 0;
    while (text[count] != 0) ++count;
    return count;
  }
}

template <class Unit>
int StringLength(Unit const* text) noexcept {
  std::size_t const count = CountUnits(text);
  return count <= static_cast<std::size_t>(std::numeric_limits<int>::max()) ? static_cast<int>(count) : 0;
}

// Builds a string from UTF-32. Sets `bad` if a unit is not a Unicode scalar value; the string is then empty.
//
// All loops but the last one have no branch, so that the compiler turns them into vector instructions. The first
// combines all units by "or": if no bit from 0x8000 on is set, no unit is invalid or needs two code units. Otherwise
// the second loop counts the invalid and the large units. Without large units each unit is narrowed to one code unit.
template <class Unit>
UnicodeString* BuildFromScalars(Unit const* text, std::size_t length, bool& bad) noexcept {
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < length; ++i) bits |= static_cast<std::uint32_t>(text[i]);
  std::uint32_t invalid = 0;
  std::uint32_t large = 0;
  if (bits >= 0x8000) {
    for (std::size_t i = 0; i < length; ++i) {
      auto const scalar = static_cast<std::uint32_t>(text[i]);
      invalid |= static_cast<std::uint32_t>(scalar > 0x10FFFF) | static_cast<std::uint32_t>(scalar - 0xD800 < 0x800);
      large += static_cast<std::uint32_t>(scalar > 0xFFFF);
    }
  }
  bad = invalid != 0;
  if (bad) return BuildFrom({});
  if (large == 0) {
    return BuildUnits(length, [&](char16_t* out) {
      for (std::size_t i = 0; i < length; ++i) out[i] = static_cast<char16_t>(text[i]);
    });
  }
  return BuildUnits(length + large, [&](char16_t* out) {
    for (std::size_t i = 0; i < length; ++i) {
      auto const scalar = static_cast<std::uint32_t>(text[i]);
      if (scalar <= 0xFFFF) {
        *out++ = static_cast<char16_t>(scalar);
      } else {
        *out++ = U16_LEAD(scalar);
        *out++ = U16_TRAIL(scalar);
      }
    }
  });
}

// Builds a string from UTF-8 without a zero byte.
UnicodeString* BuildFromUtf8(std::string_view utf8) noexcept {
  if (utf8.size() >= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) return nullptr;
  icu::StringPiece const bytes(utf8.data(), static_cast<std::int32_t>(utf8.size()));
  return Terminated(NewString(UnicodeString::fromUTF8(bytes)));
}

// Returns the length of a string that is all ASCII, or -1.
std::ptrdiff_t AsciiLength(char const* text) noexcept {
  std::size_t const length = std::strlen(text);
  unsigned char bits = 0;
  for (std::size_t i = 0; i < length; ++i) bits |= static_cast<unsigned char>(text[i]);
  return bits < 0x80 ? static_cast<std::ptrdiff_t>(length) : -1;
}

bool IsAscii(std::u16string_view units) noexcept {
  char16_t bits = 0;
  for (char16_t const unit : units) bits |= unit;
  return bits < 0x80;
}

// Computes the result of UnicodeString::hashCode for the string and its terminator: h = 37 h + unit over at most 32
// units at equal distances. Four units are combined in each step, so that the multiplications do not depend on each
// other; that is several times as fast.
std::uint32_t IcuHash(std::u16string_view text) noexcept {
  std::size_t const length = text.size();
  std::uint32_t hash = 0;
  std::size_t i = 0;
  if (length < 32) {
    for (; i + 4 <= length; i += 4) {
      hash = hash * (37u * 37u * 37u * 37u) + (text[i] * (37u * 37u * 37u) + text[i + 1] * (37u * 37u)) +
             (text[i + 2] * 37u + text[i + 3]);
    }
  }
  std::size_t const step = length < 32 ? 1 : (length - 31) / 32 + 1;
  for (; i < length; i += step) hash = hash * 37u + text[i];
  if (i == length) hash *= 37u;  // the terminator
  return hash != 0 ? hash : 1;   // ICU reserves 0
}

// Returns the size that a conversion of ICU reports, the terminator included; 0 if it exceeds INT_MAX. `convert` takes
// a part of the string, a length and a status.
template <class Convert>
int PreflightSize(std::u16string_view text, Convert const& convert) noexcept {
  return VRELConvertedSize(text, [&](std::u16string_view part) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    convert(part, &length, &status);
    CountFailure(status);
    return length;
  });
}

// Copies an ASCII string and its terminator if both fit.
VRINResult CopyAscii(std::u16string_view text, char* buffer, int size) noexcept {
  if (size <= static_cast<std::ptrdiff_t>(text.size())) return VREL_E_FAIL;
  *std::copy(text.begin(), text.end(), buffer) = 0;
  return VREL_S_OK;
}

// Returns the result of a conversion into a buffer. Any status except success, warnings included, empties the buffer.
template <class Unit>
VRINResult Finish(UErrorCode status, Unit* buffer) noexcept {
  if (status == U_ZERO_ERROR) return VREL_S_OK;
  CountFailure(status);
  *buffer = 0;
  return VREL_E_FAIL;
}

}  // namespace

VRELString::VRELString() {
  Adopt(BuildFrom({}));
}

VRELString::VRELString(VRELString const& other) : badConversion(other.badConversion) {
  if (other.unicodeString == nullptr) return;
  if (other.holdsZero) {
    Adopt(BuildFrom(other.BeforeZero()));
  } else if (other.unicodeString == SharedEmpty()) {
    unicodeString = other.unicodeString;
  } else {
    Adopt(NewString(*other.unicodeString));
  }
}

VRELString::VRELString(VRELString&& other) noexcept
    : badConversion(other.badConversion), holdsZero(other.holdsZero), unicodeString(other.unicodeString) {
  other.unicodeString = nullptr;
  other.holdsZero = false;
}

VRELString::VRELString(int codePoint) {
  if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
    char16_t const unit = static_cast<char16_t>(codePoint);
    Adopt(BuildFrom({&unit, 1}));
  } else {
    bool outOfRange = false;
    Adopt(BuildFromScalars(&codePoint, codePoint == 0 ? 0 : 1, outOfRange));
  }
}

VRELString::VRELString(unsigned short unit) {
  char16_t const text = unit;
  Adopt(BuildFrom({&text, unit == 0 ? std::size_t(0) : std::size_t(1)}));
}

VRELString::VRELString(int const* text) {
  Adopt(BuildFromScalars(text, CountUnits(text), badConversion));
}

VRELString::VRELString(wchar_t const* text) {
  Adopt(BuildFromScalars(text, CountUnits(text), badConversion));
}

VRELString::VRELString(std::wstring_view text) {
  std::size_t const length = std::min(text.size(), text.find(L'\0'));
  Adopt(BuildFromScalars(text.data(), length, badConversion));
}

VRELString::VRELString(char16_t const* text) : VRELString(text != nullptr ? std::u16string_view(text) : u"") {}

VRELString::VRELString(unsigned short const* text) {
  std::size_t const length = CountUnits(text);
  Adopt(BuildUnits(length, [&](char16_t* out) { std::copy(text, text + length, out); }));
}

VRELString::VRELString(char const* text, char const* codepage) {
  bool const isNamed = codepage != nullptr && *codepage != '\0';
  if (text == nullptr) text = "";
  if (KeepsAscii(isNamed ? codepage : nullptr)) {
    std::ptrdiff_t const length = AsciiLength(text);
    if (length >= 0) {
      badConversion = !isNamed;
      Adopt(BuildFromAscii(text, static_cast<std::size_t>(length)));
      return;
    }
  }
  Converter const converter = isNamed ? OpenConverter(codepage) : nullptr;
  badConversion = converter == nullptr;
  // ICU computes buffer sizes of up to twice the number of bytes in 32 bits.
  if (std::strlen(text) > std::size_t(1) << 30) {
    Adopt(nullptr);
    return;
  }
  UErrorCode status = U_ZERO_ERROR;
  Adopt(Terminated(converter != nullptr ? NewString(text, -1, converter.get(), status)
                                        : NewString(text, static_cast<char const*>(nullptr))));
  holdsZero = view().find(u'\0') != std::u16string_view::npos;
}

VRELString::VRELString(std::string const& utf8) : VRELString(std::string_view(utf8)) {}

VRELString::VRELString(std::string_view utf8) {
  Adopt(BuildFromUtf8(utf8.substr(0, utf8.find('\0'))));
}

VRELString::VRELString(std::u16string_view text) {
  Adopt(BuildFrom(text.substr(0, text.find(u'\0'))));
}

VRELString::~VRELString() {
  Destroy();
}

VRELString& VRELString::operator=(VRELString const& other) {
  if (this == &other) return *this;
  bool const isOwn = unicodeString != nullptr && unicodeString != SharedEmpty();
  if (isOwn && other.unicodeString != nullptr && !other.holdsZero) {
    *unicodeString = *other.unicodeString;
    unicodeString = Checked(unicodeString);
    holdsZero = false;
    badConversion = other.badConversion;
    return *this;
  }
  return *this = VRELString(other);
}

VRELString& VRELString::operator=(VRELString&& other) noexcept {
  if (this == &other) return *this;
  Destroy();
  badConversion = other.badConversion;
  holdsZero = other.holdsZero;
  unicodeString = other.unicodeString;
  other.unicodeString = nullptr;
  other.holdsZero = false;
  return *this;
}

VRELString::VRELString(UnicodeString* text) noexcept {
  Adopt(text);
}

// Takes a string with its terminator; null, or a string that ran out of memory, leaves the object uninitialized.
void VRELString::Adopt(UnicodeString* text) noexcept {
  unicodeString = Checked(text);
}

void VRELString::Destroy() noexcept {
  if (unicodeString != SharedEmpty()) DeleteString(unicodeString);
  unicodeString = nullptr;
}

// Returns the string up to its first U+0000, which copies and conversions are limited to.
std::u16string_view VRELString::BeforeZero() const noexcept {
  std::u16string_view const text = view();
  return holdsZero ? text.substr(0, text.find(u'\0')) : text;
}

std::u16string_view VRELString::view() const noexcept {
  if (unicodeString == nullptr) return {};
  return {unicodeString->getBuffer(), static_cast<std::size_t>(unicodeString->length() - 1)};
}

int VRELString::length() const noexcept {
  return unicodeString != nullptr ? unicodeString->length() - 1 : -1;
}

int VRELString::getFailureCount() noexcept {
  return failureCount;
}

unsigned short VRELString::charAt(int index) const noexcept {
  return unicodeString != nullptr ? unicodeString->charAt(index) : 0xFFFF;
}

int VRELString::hashCode() const noexcept {
  return unicodeString != nullptr ? hashCode(view()) : 0;
}

int VRELString::hashCode(std::u16string_view text) noexcept {
  std::uint32_t const hash = IcuHash(text);
  // INT_MIN has no absolute value and is returned unchanged.
  return static_cast<int>(static_cast<std::int32_t>(hash) < 0 ? 0u - hash : hash);
}

int VRELString::compareTo(VRELString const& other) const noexcept {
  if (unicodeString == nullptr) return -1;
  if (other.unicodeString == nullptr) return 1;
  return unicodeString->compareCodePointOrder(*other.unicodeString);
}

int VRELString::compareToIgnoreCase(VRELString const& other) const noexcept {
  if (unicodeString == nullptr) return -1;
  if (other.unicodeString == nullptr) return 1;
  return compareIgnoringCase(view(), other.view());
}

int VRELString::compareIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept {
  // A key that is found in a hash container is usually identical.
  bool const haveOneSize = a.size() == b.size();
  if (haveOneSize && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0)) return 0;
  // Case folding is done character by character, so that the strings can be compared as ASCII up to the first other
  // character.
  std::size_t const common = std::min(a.size(), b.size());
  std::size_t i = 0;
  for (; i < common && (a[i] | b[i]) < 0x80; ++i) {
    char16_t const mine = VRELFoldAscii(a[i]);
    char16_t const theirs = VRELFoldAscii(b[i]);
    if (mine != theirs) return mine < theirs ? -1 : 1;
  }
  a.remove_prefix(i);
  b.remove_prefix(i);
  if (a.empty() || b.empty()) return (a.empty() ? 0 : 1) - (b.empty() ? 0 : 1);
  UErrorCode status = U_ZERO_ERROR;
  std::int32_t const order = u_strCaseCompare(a.data(), static_cast<std::int32_t>(a.size()), b.data(),
                                              static_cast<std::int32_t>(b.size()), U_COMPARE_CODE_POINT_ORDER, &status);
  return (order > 0) - (order < 0);
}

bool VRELString::startsWith(VRELString const& other) const noexcept {
  // A substring ends at a U+0000, so it never equals a string that contains one.
  if (other.length() < 1 || other.holdsZero) return false;
  return view().substr(0, other.view().size()) == other.view();
}

bool VRELString::endsWith(VRELString const& other) const noexcept {
  if (other.length() < 1 || other.holdsZero) return false;
  std::u16string_view const text = view();
  std::u16string_view const tail = other.view();
  return tail.size() <= text.size() && text.substr(text.size() - tail.size()) == tail;
}

int VRELString::getStringLength(char const* text) noexcept {
  return StringLength(text);
}
int VRELString::getStringLength(unsigned short const* text) noexcept {
  return StringLength(text);
}
int VRELString::getStringLength(wchar_t const* text) noexcept {
  return StringLength(text);
}
int VRELString::getStringLength(int const* text) noexcept {
  return StringLength(text);
}

int VRELString::indexOf(unsigned short unit) const noexcept {
  return indexOf(unit, 0);
}

int VRELString::indexOf(unsigned short unit, int start) const noexcept {
  if (unicodeString == nullptr) return -1;
  // ICU does not find half of a surrogate pair.
  if (U16_IS_SURROGATE(unit)) return unicodeString->indexOf(static_cast<char16_t>(unit), start);
  std::size_t const size = static_cast<std::size_t>(unicodeString->length());  // the terminator can be found
  std::size_t const found =
      VRELFindUnit({unicodeString->getBuffer(), size}, unit, static_cast<std::size_t>(std::max(start, 0)));
  return found != std::u16string_view::npos ? static_cast<int>(found) : -1;
}

int VRELString::lastIndexOf(unsigned short unit) const noexcept {
  return lastIndexOf(unit, 0);
}

int VRELString::lastIndexOf(unsigned short unit, int start) const noexcept {
  return unicodeString != nullptr ? unicodeString->lastIndexOf(static_cast<char16_t>(unit), start) : -1;
}

int VRELString::indexOf(VRELString const& text, int start) const noexcept {
  if (unicodeString == nullptr || text.unicodeString == nullptr) return -1;
  int const end = length();
  if (text.length() == 0 && end > start) return end;
  int const from = std::clamp(start, 0, end);
  return unicodeString->indexOf(text.unicodeString->getBuffer(), 0, text.length(), from, end - from);
}

int VRELString::lastIndexOf(VRELString const& text, int start) const noexcept {
  if (unicodeString == nullptr || text.unicodeString == nullptr) return -1;
  int const end = length();
  if (text.length() == 0 && end >= start) return end;
  int const from = std::clamp(start, 0, end);
  return unicodeString->lastIndexOf(text.unicodeString->getBuffer(), 0, text.length(), from, end - from);
}

VRELString VRELString::operator+(VRELString const& other) const {
  // The result ends at the first U+0000 in either string.
  bool const takesOther = unicodeString != nullptr && !holdsZero;
  return VRELString(BuildJoined(BeforeZero(), takesOther ? other.BeforeZero() : std::u16string_view()));
}

VRELString& VRELString::operator+=(VRELString const& other) noexcept {
  bool const isShared = unicodeString == nullptr || unicodeString == SharedEmpty();
  if (isShared || holdsZero || &other == this) return *this = *this + other;
  std::u16string_view const tail = other.BeforeZero();
  badConversion = false;
  if (tail.empty()) return *this;
  // ICU grows the buffer by a quarter at least, and reports no overflow of the length itself.
  std::size_t const joined = view().size() + tail.size();
  if (joined >= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    Destroy();
    ++failureCount;
    return *this;
  }
  unicodeString->truncate(unicodeString->length() - 1);
  unicodeString->append(tail.data(), static_cast<std::int32_t>(tail.size()));
  Adopt(Terminated(unicodeString));
  return *this;
}

VRELString VRELString::substring(int start, int end) const {
  std::u16string_view const text = view();
  int const from = std::max(start, 0);
  int const to = std::min(end, static_cast<int>(text.size()));
  if (to <= from) return VRELString();
  std::u16string_view part = text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
  if (holdsZero) part = part.substr(0, part.find(u'\0'));
  return VRELString(BuildFrom(part));
}

VRELString VRELString::substring(int start) const {
  return substring(start, length());
}

VRELString VRELString::replace(unsigned short oldChar, unsigned short newChar) const {
  if (unicodeString == nullptr) return VRELString();
  UnicodeString text(*unicodeString);
  // ICU does not match half of a surrogate pair, which a plain loop would.
  text.findAndReplace(UnicodeString(static_cast<char16_t>(oldChar)), UnicodeString(static_cast<char16_t>(newChar)));
  if (text.isBogus()) return VRELString(static_cast<UnicodeString*>(nullptr));
  return VRELString(std::u16string_view(text.getBuffer(), static_cast<std::size_t>(text.length())));
}

int VRELString::getConvertToUTF8Size() const noexcept {
  if (unicodeString == nullptr) return 0;
  std::u16string_view const text = BeforeZero();
  if (IsAscii(text)) return static_cast<int>(text.size()) + 1;
  return PreflightSize(text, [](std::u16string_view part, std::int32_t* length, UErrorCode* status) {
    u_strToUTF8(nullptr, 0, length, part.data(), static_cast<std::int32_t>(part.size()), status);
  });
}

int VRELString::getConvertToUTF16Size() const noexcept {
  return unicodeString != nullptr ? unicodeString->length() : 0;
}

int VRELString::getConvertToUTF32Size() const noexcept {
  if (unicodeString == nullptr) return 0;
  std::u16string_view const text = BeforeZero();
  return PreflightSize(text, [](std::u16string_view part, std::int32_t* length, UErrorCode* status) {
    u_strToUTF32(nullptr, 0, length, part.data(), static_cast<std::int32_t>(part.size()), status);
  });
}

int VRELString::getConvertToWideCharacterSize() const noexcept {
  if (unicodeString == nullptr) return 0;
  std::u16string_view const text = BeforeZero();
  return PreflightSize(text, [](std::u16string_view part, std::int32_t* length, UErrorCode* status) {
    u_strToWCS(nullptr, 0, length, part.data(), static_cast<std::int32_t>(part.size()), status);
  });
}

int VRELString::getConvertToMBCSSize(char const* codepage) const noexcept {
  if (unicodeString == nullptr) return 0;
  std::u16string_view const text = BeforeZero();
  if (IsAscii(text) && KeepsAscii(codepage)) return static_cast<int>(text.size()) + 1;
  Converter const converter = OpenBestConverter(codepage);
  if (converter == nullptr) return 0;
  return PreflightSize(text, [&](std::u16string_view part, std::int32_t* length, UErrorCode* status) {
    *length = ucnv_fromUChars(converter.get(), nullptr, 0, part.data(), static_cast<std::int32_t>(part.size()), status);
  });
}

int VRELString::getConvertToRestrictedASCIISize() const noexcept {
  return getConvertToMBCSSize(CODEPAGE_NAME_ASCII);
}

VRINResult VRELString::convertToUTF8(char* buffer, int size) const noexcept {
  if (buffer == nullptr) return VREL_E_INVALID_ARGUMENT;
  *buffer = 0;
  if (unicodeString == nullptr) return VREL_E_FAIL;
  std::u16string_view const text = BeforeZero();
  if (IsAscii(text)) return CopyAscii(text, buffer, size);
  if (VRELMayExceedInt(text) && getConvertToUTF8Size() == 0) return VREL_E_FAIL;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8(buffer, size, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &status);
  return Finish(status, buffer);
}

VRINResult VRELString::convertToUTF16(unsigned short* buffer, int size) const noexcept {
  if (buffer == nullptr) return VREL_E_INVALID_ARGUMENT;
  *buffer = 0;
  if (unicodeString == nullptr || unicodeString->length() > size) return VREL_E_FAIL;
  std::memcpy(buffer, unicodeString->getBuffer(), static_cast<std::size_t>(unicodeString->length()) * sizeof(char16_t));
  return VREL_S_OK;
}

VRINResult VRELString::convertToUTF32(int* buffer, int size) const noexcept {
  if (buffer == nullptr) return VREL_E_INVALID_ARGUMENT;
  *buffer = 0;
  if (unicodeString == nullptr) return VREL_E_FAIL;
  std::u16string_view const text = BeforeZero();
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF32(buffer, size, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &status);
  return Finish(status, buffer);
}

VRINResult VRELString::convertToWideCharacter(wchar_t* buffer, int size) const noexcept {
  if (buffer == nullptr) return VREL_E_INVALID_ARGUMENT;
  *buffer = 0;
  if (unicodeString == nullptr) return VREL_E_FAIL;
  std::u16string_view const text = BeforeZero();
  UErrorCode status = U_ZERO_ERROR;
  u_strToWCS(buffer, size, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &status);
  return Finish(status, buffer);
}

VRINResult VRELString::convertToMBCS(char* buffer, int size, char const* codepage,
                                     bool substToUnderscore) const noexcept {
  if (buffer == nullptr) return VREL_E_INVALID_ARGUMENT;
  *buffer = 0;
  if (unicodeString == nullptr) return VREL_E_FAIL;
  std::u16string_view const text = BeforeZero();
  if (!substToUnderscore && IsAscii(text) && KeepsAscii(codepage)) return CopyAscii(text, buffer, size);
  Converter const converter = OpenBestConverter(codepage);
  if (converter == nullptr) return VREL_E_UNEXPECTED;
  if (VRELMayExceedInt(text) && getConvertToMBCSSize(codepage) == 0) return VREL_E_FAIL;
  UErrorCode status = U_ZERO_ERROR;
  ucnv_fromUChars(converter.get(), buffer, size, text.data(), static_cast<std::int32_t>(text.size()), &status);
  if (status == U_ZERO_ERROR && substToUnderscore) {
    char substitutes[16];
    std::int8_t count = sizeof substitutes;
    ucnv_getSubstChars(converter.get(), substitutes, &count, &status);
    if (U_FAILURE(status)) count = 0;
    status = U_ZERO_ERROR;
    std::replace_if(
        buffer, buffer + size,
        [&](char c) { return std::find(substitutes, substitutes + count, c) != substitutes + count; }, '_');
  }
  return Finish(status, buffer);
}

VRINResult VRELString::convertToRestrictedASCII(char* buffer, int size) const noexcept {
  if (buffer == nullptr) return VREL_E_INVALID_ARGUMENT;
  *buffer = 0;
  // A string that does not fit changes only the first byte.
  if (size < 0 || size < getConvertToRestrictedASCIISize()) return VREL_E_FAIL;
  VRINResult const result = convertToMBCS(buffer, size, CODEPAGE_NAME_ASCII, false);
  if (result.IsFailure()) return result;
  char* const end = buffer + std::strlen(buffer);
  std::replace_if(
      buffer, end,
      [](char c) {
        auto const byte = static_cast<unsigned char>(c);
        bool const isInvariant = byte < 0x80 && ((invChars[byte / 32] >> (byte % 32)) & 1) != 0;
        return c == kSubstitution || !isInvariant;
      },
      '_');
  std::fill(end, buffer + size, '\0');
  return result;
}

std::string VRELString::toUtf8() const {
  std::u16string_view const text = view();
  std::string result;
  UnicodeString(false, text.data(), static_cast<std::int32_t>(text.size())).toUTF8String(result);
  return result;
}

std::wstring VRELString::toWide() const {
  std::wstring result;
  std::u16string_view const text = view();
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char16_t const unit = text[i];
    if (!U16_IS_SURROGATE(unit)) {
      result += static_cast<wchar_t>(unit);
    } else if (U16_IS_LEAD(unit) && i + 1 < text.size() && U16_IS_TRAIL(text[i + 1])) {
      result += static_cast<wchar_t>(U16_GET_SUPPLEMENTARY(unit, text[i + 1]));
      ++i;
    } else {
      result += L'\xFFFD';
    }
  }
  return result;
}

std::ostream& operator<<(std::ostream& stream, VRELString const& text) {
  return stream << text.toUtf8();
}

unsigned char VRELHashTraits<VRELString>::Mark(VRELString const& key) noexcept {
  std::u16string_view const text = key.view();
  std::size_t const size = text.size();
  std::uint64_t mixed = size;
  std::uint64_t seen = 0;
  // Four units at a time. The bit that is set in each is the one in which lower and upper case differ.
  auto const mix = [&](std::uint64_t units) {
    seen |= units;
    mixed = (mixed << 5 | mixed >> 59) ^ (units | 0x0020002000200020);
  };
  auto const mixAt = [&](std::size_t i) {
    std::uint64_t units;
    std::memcpy(&units, text.data() + i, sizeof units);
    mix(units);
  };
  if (size >= 4) {
    for (std::size_t i = 0; i + 4 < size; i += 4) mixAt(i);
    mixAt(size - 4);
  } else {
    std::uint64_t units = 0;
    for (char16_t const unit : text) units = units << 16 | unit;
    mix(units);
  }
  if ((seen & 0xFF80FF80FF80FF80) != 0) return 1;
  return static_cast<unsigned char>((mixed ^ mixed >> 32) * 0x9E3779B97F4A7C15 >> 56 | 2);
}

std::uint64_t VRELHashTraits<VRELString>::SeededHash(VRELString const& key) noexcept {
  return SeededHashOf(key.view());
}

// Folds without an allocation, a piece at a time: the folding of a character does not depend on its neighbours. Four
// ASCII characters are folded and added at once: a sum has bit 7 of each unit from 'A' on, the other one after 'Z'.
std::uint64_t VRELHashTraits<VRELString>::SeededHashOf(std::u16string_view key) noexcept {
  constexpr std::size_t kPiece = 64;
  constexpr std::size_t kLongestFolding = 3;  // units for one unit
  VRELSeededHash hash;
  while (!key.empty()) {
    std::uint64_t units = 0;
    if (key.size() >= 4) std::memcpy(&units, key.data(), sizeof units);
    if (key.size() >= 4 && (units & 0xFF80FF80FF80FF80U) == 0 && hash.CanAddFour()) {
      std::uint64_t const upper = (units + 0x003F003F003F003FU) & ~(units + 0x0025002500250025U) & 0x0080008000800080U;
      hash.AddFour(units | upper >> 2);
      key.remove_prefix(4);
      continue;
    }
    if (key[0] < 0x80) {
      hash.Add(VRELFoldAscii(key[0]));
      key.remove_prefix(1);
      continue;
    }
    std::size_t size = std::min(key.size(), kPiece);
    if (size < key.size() && U16_IS_LEAD(key[size - 1]) && U16_IS_TRAIL(key[size])) --size;
    char16_t folded[kPiece * kLongestFolding];
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t const count = u_strFoldCase(folded, static_cast<std::int32_t>(std::size(folded)), key.data(),
                                             static_cast<std::int32_t>(size), U_FOLD_CASE_DEFAULT, &status);
    for (std::int32_t i = 0; i < count && i < static_cast<std::int32_t>(std::size(folded)); ++i) hash.Add(folded[i]);
    key.remove_prefix(size);
  }
  return hash.Finish();
}

VRINResult VRELStringToChars(VRELString const& text, char*& chars) {
  int const size = text.getConvertToMBCSSize(nullptr);
  chars = new (std::nothrow) char[static_cast<std::size_t>(std::max(size, 1))];
  VRINResult result = VREL_E_FAIL;
  if (chars != nullptr) {
    result = text.convertToMBCS(chars, size, nullptr, false);
  } else {
    ++failureCount;
  }
  if (result.IsFailure()) VRELReleaseChars(chars);
  return result;
}

VRINResult VRELStringToWideChars(VRELString const& text, wchar_t*& chars) {
  int const size = text.getConvertToWideCharacterSize();
  chars = new (std::nothrow) wchar_t[static_cast<std::size_t>(std::max(size, 1))];
  VRINResult result = VREL_E_FAIL;
  if (chars != nullptr) {
    result = text.convertToWideCharacter(chars, size);
  } else {
    ++failureCount;
  }
  if (result.IsFailure()) VRELReleaseWideChars(chars);
  return result;
}

VRINResult VRELReleaseChars(char*& chars) {
  delete[] chars;
  chars = nullptr;
  return VREL_S_OK;
}

VRINResult VRELReleaseWideChars(wchar_t*& chars) {
  delete[] chars;
  chars = nullptr;
  return VREL_S_OK;
}
