#include "VRELStringConversions.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <initializer_list>
#include <memory>
#include <string_view>

#include "VRELAscii.h"

namespace {

// Buffer of `size` elements, on the stack if there are at most N.
template <class T, std::size_t N>
class LocalBuffer {
 public:
  explicit LocalBuffer(std::size_t size)
      : heap(size > N ? new T[size] : nullptr), elements(heap ? heap.get() : local) {}

  T* data() { return elements; }

 private:
  T local[N];
  std::unique_ptr<T[]> heap;
  T* elements;
};

// US-ASCII form of a string, in which the byte 0x1A replaces each other character.
class AsciiBytes {
 public:
  explicit AsciiBytes(VRELString const& text) : bytes(text.view().size() + 1) {
    char* out = bytes.data();
    for (char16_t const unit : text.view()) {
      if (unit > 0x7F) {
        // Not unit by unit: a surrogate pair is one character, and some characters are ignored.
        text.convertToMBCS(bytes.data(), text.length() + 1, VRELString::CODEPAGE_NAME_ASCII, false);
        return;
      }
      *out++ = static_cast<char>(unit);
    }
    *out = '\0';
  }

  char const* data() { return bytes.data(); }

 private:
  LocalBuffer<char, 256> bytes;
};

// Stores the number at the beginning of the string. A zero is valid only if the first byte is the digit 0.
template <class T, class Read>
VRINResult ToNumber(VRELString const& text, T& value, Read read) {
  AsciiBytes bytes(text);
  T const number = read(bytes.data());
  if (number == T(0) && *bytes.data() != '0') return VREL_E_FAIL;
  value = number;
  return VREL_S_OK;
}

template <class Integer>
VRELString FromInteger(Integer value) {
  char text[32];
  *std::to_chars(text, text + sizeof(text) - 1, value).ptr = '\0';
  return VRELString(text);
}

// Returns the bytes of a word in one number, the first one lowest. Requires: at most eight characters.
constexpr std::uint64_t Packed(std::string_view word) noexcept {
  std::uint64_t packed = 0;
  for (std::size_t i = 0; i < word.size(); ++i) packed |= std::uint64_t(static_cast<unsigned char>(word[i])) << (8 * i);
  return packed;
}

// Returns the same for a string in lower case; 0 if it is longer or contains U+0000 or a character beyond ASCII.
std::uint64_t PackedLowerCase(std::u16string_view text) noexcept {
  if (text.size() > sizeof(std::uint64_t)) return 0;
  std::uint64_t packed = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == 0 || text[i] >= 0x80) return 0;
    packed |= std::uint64_t(VRELFoldAscii(text[i])) << (8 * i);
  }
  return packed;
}

bool IsAnyOf(VRELString const& text, std::initializer_list<std::u16string_view> words) {
  return std::any_of(words.begin(), words.end(),
                     [&](std::u16string_view word) { return VRELStringIsWord(text, word); });
}

bool IsLead(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}
bool IsTrail(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

// Returns the string up to its first U+0000, where every conversion ends.
std::u16string_view BeforeZero(VRELString const& text) {
  return text.view().substr(0, text.view().find(u'\0'));
}

// Counts of surrogate pairs and unpaired surrogates in a sequence of UTF-16 units.
class CharacterCount {
 public:
  explicit CharacterCount(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (IsLead(text[i]) && i + 1 < text.size() && IsTrail(text[i + 1])) {
        ++pairs;
        ++i;
      } else if (IsLead(text[i]) || IsTrail(text[i])) {
        ++unpaired;
      }
    }
  }

  // Updates the counts for removal of the last unit.
  void DropLast(std::u16string_view text) {
    std::size_t const last = text.size() - 1;
    if (IsTrail(text[last]) && last > 0 && IsLead(text[last - 1])) {
      --pairs;
      ++unpaired;
    } else if (IsLead(text[last]) || IsTrail(text[last])) {
      --unpaired;
    }
  }

  bool IsWellFormed() const { return unpaired == 0; }
  // Returns the number of surrogate pairs, which is the number of units minus the number of characters.
  std::size_t Pairs() const { return pairs; }

 private:
  std::size_t pairs = 0;
  std::size_t unpaired = 0;
};

bool IsWhiteSpace(char16_t unit) {
  return std::iswspace(unit) != 0;
}

// Returns the units that remain after trimming. No character above U+FFFF is white space.
std::u16string_view Trimmed(VRELString const& text) {
  std::u16string_view const units = BeforeZero(text);
  std::size_t start = 0;
  while (start < units.size() && IsWhiteSpace(units[start])) ++start;
  if (start == units.size()) return {};
  CharacterCount const count(units);
  if (!count.IsWellFormed()) return {};
  std::size_t end = units.size();
  while (IsWhiteSpace(units[end - 1])) --end;
  return units.substr(start, end - count.Pairs() - start);
}

template <class Convert>
VRELString ConvertCharacters(VRELString const& text, Convert convert) {
  if (text.length() < 1) return VRELString();
  int const size = text.length() + 1;
  LocalBuffer<wchar_t, 256> buffer(static_cast<std::size_t>(size));
  if (text.convertToWideCharacter(buffer.data(), size).IsFailure()) return VRELString();
  for (wchar_t* at = buffer.data(); *at != 0; ++at) *at = static_cast<wchar_t>(convert(static_cast<wint_t>(*at)));
  return VRELString(buffer.data());
}

// Removes quotation marks in linear time. The documented result is that of a loop which removes one mark, converts the
// rest to wide characters to count its characters n, and starts again:
//
//   1. A mark at index 0 is removed, with all units from index n on.
//   2. If the first or the last mark is at index n - 1, it is removed with all units after it.
//
// The loop is quadratic. This class keeps the number of surrogate pairs up to date while units are removed at either
// end, so that n is always known and each unit is visited a fixed number of times.
class QuoteStripper {
 public:
  explicit QuoteStripper(std::u16string_view text) : left(text), count(text) {}

  std::u16string_view Strip() {
    StripStart();
    StripEnd();
    return left;
  }

 private:
  static constexpr char16_t kQuote = u'"';

  std::size_t Characters() const { return left.size() - count.Pairs(); }

  void CutTo(std::size_t size) {
    for (; left.size() > size; left.remove_suffix(1)) count.DropLast(left);
  }

  // Step 1.
  void StripStart() {
    while (!left.empty() && left.front() == kQuote) {
      CutTo(count.IsWellFormed() ? Characters() + 1 : 1);
      left.remove_prefix(1);
    }
  }

  // Step 2.
  void StripEnd() {
    std::size_t const first = left.find(kQuote);
    while (first < left.size() && count.IsWellFormed()) {
      std::size_t const last = Characters() - 1;
      if (first != last && left.rfind(kQuote) != last) return;
      CutTo(last);
    }
  }

  std::u16string_view left;
  CharacterCount count;
};

}  // namespace

VRELString VRELStringFromDouble(double value) {
  char text[255];
  std::snprintf(text, sizeof(text), "%f", value);
  return VRELString(text);
}

VRELString VRELStringFromULong(unsigned long value) {
  return FromInteger(value);
}

VRELString VRELStringFromInteger(int value) {
  return FromInteger(value);
}

VRELString VRELStringFromBool(bool value) {
  return VRELString(value ? L"true" : L"false");
}

VRELString VRELStringFromUnicodeWChars(wchar_t const* text) {
  return VRELString(text);
}

bool VRELStringEqualsIgnoreCase(std::u16string_view a, std::u16string_view b) noexcept {
  return VRELString::compareIgnoringCase(a, b) == 0;
}

bool VRELStringIsWord(VRELString const& text, std::u16string_view word) {
  return text.getIsInitialized() && VRELStringEqualsIgnoreCase(text.view(), word);
}

VRINResult VRELStringToBool(VRELString const& text, bool& value) {
  switch (PackedLowerCase(text.view())) {
    case Packed("yes"):
    case Packed("true"):
    case Packed("on"):
      value = true;
      return VREL_S_OK;
    case Packed("no"):
    case Packed("false"):
    case Packed("off"):
      value = false;
      return VREL_S_OK;
    case 0:
      break;
    default:
      return VREL_E_FAIL;
  }
  // Characters beyond ASCII can be equal to ASCII ones when case is ignored: U+017F, a long s, to "s".
  if (IsAnyOf(text, {u"yes", u"true", u"on"})) {
    value = true;
  } else if (IsAnyOf(text, {u"no", u"false", u"off"})) {
    value = false;
  } else {
    return VREL_E_FAIL;
  }
  return VREL_S_OK;
}

VRINResult VRELStringToDouble(VRELString const& text, double& value) {
  return ToNumber(text, value, [](char const* bytes) { return std::strtod(bytes, nullptr); });
}

VRINResult VRELStringToInteger(VRELString const& text, int& value) {
  return ToNumber(text, value, [](char const* bytes) { return static_cast<int>(std::strtol(bytes, nullptr, 10)); });
}

VRELString VRELStringGetTrimmedString(VRELString const& text) {
  return VRELString(Trimmed(text));
}

bool VRELStringCheckIfWhiteSpace(VRELString const& text) {
  return Trimmed(text).empty();
}

VRELString VRELStringConvertToLowerCase(VRELString const& text) {
  return ConvertCharacters(text, [](wint_t c) { return std::towlower(c); });
}

VRELString VRELStringConvertToUpperCase(VRELString const& text) {
  return ConvertCharacters(text, [](wint_t c) { return std::towupper(c); });
}

VRELString VRELStringReplaceNonASCIICharsWith(VRELString const& text, wchar_t) {
  // A string that cannot be converted is copied with its bad conversion flag; a converted string has none.
  if (text.getIsInitialized() && !CharacterCount(BeforeZero(text)).IsWellFormed()) return text;
  return VRELString(text.view());
}

VRINResult RemoveDoubleQuotesAtStartAndEndOf(VRELString const& in, VRELString& out) {
  std::u16string_view const text = BeforeZero(in);
  std::u16string_view const left = QuoteStripper(text).Strip();
  // An unchanged string is copied with its bad conversion flag.
  out = left.size() == text.size() ? VRELString(in) : VRELString(left);
  return VREL_S_OK;
}
