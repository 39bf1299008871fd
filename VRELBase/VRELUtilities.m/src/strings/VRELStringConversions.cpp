#include "VRELStringConversions.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace {

// `size` elements, of which the first N stand on the stack.
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

// The bytes of a text in the codepage US-ASCII, in which a character that it lacks is the byte 0x1A.
class AsciiBytes {
 public:
  explicit AsciiBytes(VRELString const& text) : bytes(text.view().size() + 1) {
    char* out = bytes.data();
    for (char16_t const unit : text.view()) {
      if (unit > 0x7F) {
        // Not unit by unit: a surrogate pair is one character, and some characters have no byte at all.
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

// Stores a number that the text begins with. A zero that is no number is told from one by the text's first byte.
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

// A text up to its first U+0000, where every conversion of it ends.
std::u16string_view BeforeZero(VRELString const& text) {
  return text.view().substr(0, text.view().find(u'\0'));
}

// How a stretch of UTF-16 units falls into characters.
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

  // Takes the last unit of the stretch away.
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
  // Surrogate pairs: by so much the number of units is above the number of characters.
  std::size_t Pairs() const { return pairs; }

 private:
  std::size_t pairs = 0;
  std::size_t unpaired = 0;
};

bool IsWhiteSpace(char16_t unit) {
  return std::iswspace(unit) != 0;
}

// The units of a text that are left when it is trimmed. No character above U+FFFF is white space.
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

// Narrows a text from mark to mark; see RemoveDoubleQuotesAtStartAndEndOf. Each unit is looked at a fixed number of
// times, however many marks go.
class QuoteStripper {
 public:
  explicit QuoteStripper(std::u16string_view text) : left(text), count(text) {}

  std::u16string_view Strip() {
    StripStart();
    StripEnd();
    return left;
  }

 private:
  static constexpr char16_t quote = u'"';

  std::size_t Characters() const { return left.size() - count.Pairs(); }

  void CutTo(std::size_t size) {
    for (; left.size() > size; left.remove_suffix(1)) count.DropLast(left);
  }

  // With the first mark goes all that stands behind as many units as the text has characters.
  void StripStart() {
    while (!left.empty() && left.front() == quote) {
      CutTo(count.IsWellFormed() ? Characters() + 1 : 1);
      left.remove_prefix(1);
    }
  }

  // A mark goes, with what follows it, if it is the first or the last one and stands where the last character would
  // stand if each had one unit.
  void StripEnd() {
    std::size_t const first = left.find(quote);
    while (first < left.size() && count.IsWellFormed()) {
      std::size_t const last = Characters() - 1;
      if (first != last && left.rfind(quote) != last) return;
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
  // A copy of a text that cannot be converted keeps its bad conversion flag; a converted text has none.
  if (text.getIsInitialized() && !CharacterCount(BeforeZero(text)).IsWellFormed()) return text;
  return VRELString(text.view());
}

VRINResult RemoveDoubleQuotesAtStartAndEndOf(VRELString const& in, VRELString& out) {
  std::u16string_view const text = BeforeZero(in);
  std::u16string_view const left = QuoteStripper(text).Strip();
  // A text that loses nothing is a copy, its bad conversion flag included.
  out = left.size() == text.size() ? VRELString(in) : VRELString(left);
  return VREL_S_OK;
}
