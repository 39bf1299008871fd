// Unicode string of the library, immutable except for assignment and appending.
#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "VRELExport.h"
#include "VRELHashTraits.h"
#include "VRELIcuNamespace.h"
#include "VRINResult.h"

// UTF-16 string on top of an ICU UnicodeString. All names, messages, option names and keys of the library are of this
// type. Every operation that derives a string returns a new one. To convert to another encoding, ask for the size, then
// convert into a buffer of that size; for the types of the standard library use toUtf8(), toUtf16() and toWide().
//
//   VRELString const name = VRELString(L"Schraube \u00D6") + L" M8";
//   std::vector<char> bytes(static_cast<std::size_t>(name.getConvertToUTF8Size()));
//   name.convertToUTF8(bytes.data(), static_cast<int>(bytes.size()));
//   if (name == L"Schraube \u00D6 M8") std::cout << name << "\n";
//
// The UnicodeString ends in one U+0000 that is not part of the string. Lengths and indexes count UTF-16 code units.
//
// Errors: never throws, except toUtf8, toUtf16 and toWide, which allocate in the standard library. If memory runs out
// or ICU fails, the new object is uninitialized: getIsInitialized() is false, length() is -1, and each operation
// returns the value documented for that case. A string of INT_MAX or more code units cannot be built.
// Requires: a string passed as an argument is initialized.
// Performance: one heap allocation for a string that is not empty, a second one above 26 code units. Each thread keeps
// the memory of up to 256 deleted strings for its next ones.
// Thread safety: none for assignment. Any number of threads may read one string.
class VREL_EXPORT VRELString {
 public:
  // Name of the code page in which the library reads and writes plain ASCII.
  static constexpr char CODEPAGE_NAME_ASCII[] = "US-ASCII";

  // Set of the invariant characters, which have the same byte in every code page: bit (c mod 32) of word (c / 32) for
  // the bytes 0 to 127. LF and ! # $ @ [ \ ] ^ ` { | } ~ are not in the set.
  static constexpr unsigned int invChars[4] = {0xFFFFFBFF, 0xFFFFFFE5, 0x87FFFFFE, 0x87FFFFFE};

  // Creates an empty string.
  VRELString();
  // Compatibility: a copy ends at the first U+0000 of the source.
  VRELString(VRELString const& other);
  // Leaves the source uninitialized; it can be assigned to or destroyed.
  VRELString(VRELString&& other) noexcept;
  // Creates a string of one code point, empty for 0.
  VRELString(int codePoint);
  // Creates a string of one UTF-16 code unit, empty for 0.
  VRELString(unsigned short unit);
  // Deleted: a flag is not a code point. For "true" and "false" use VRELStringFromBool.
  VRELString(bool) = delete;
  // Create a string from UTF-32, wide characters (UTF-32) or UTF-16 that ends in a zero unit; null creates an empty
  // string. UTF-32 that contains anything but Unicode scalar values creates an empty string with the bad conversion
  // flag.
  VRELString(int const* text);
  VRELString(wchar_t const* text);
  VRELString(unsigned short const* text);
  VRELString(char16_t const* text);
  // Creates a string from bytes in a code page that ICU knows by name. Without a name, or with a name that ICU cannot
  // open, decodes the default code page of the process and sets the bad conversion flag, which then means that no named
  // code page was applied and is not an error. Null creates an empty string.
  VRELString(char const* text, char const* codepage = nullptr);
  // Create a string from UTF-8, wide characters or UTF-16 of the standard library, up to the first zero unit. Invalid
  // UTF-8 becomes U+FFFD; wide characters are treated as by the constructor above.
  explicit VRELString(std::string const& utf8);
  explicit VRELString(std::string_view utf8);
  explicit VRELString(std::wstring_view text);
  explicit VRELString(std::u16string_view text);

  virtual ~VRELString();

  VRELString& operator=(VRELString const& other);
  VRELString& operator=(VRELString&& other) noexcept;

  // Returns whether the conversion that built this string failed or used the default code page.
  bool getBadConversion() const noexcept { return badConversion; }
  // Returns false if the string could not be built, or was moved from.
  bool getIsInitialized() const noexcept { return unicodeString != nullptr; }
  // Returns how often in this process a string could not be built, or a conversion ran out of memory. A program that
  // must not store incomplete results can check this count once instead of each string.
  static int getFailureCount() noexcept;
  // Returns whether the string contains a U+0000, which bytes of some code pages decode to. A copy ends there.
  bool getHoldsZero() const noexcept { return holdsZero; }

  // Returns the number of UTF-16 code units; -1 if uninitialized.
  int length() const noexcept;
  // Returns the code unit at an index; 0 at length(); 0xFFFF at any other index or if uninitialized.
  unsigned short charAt(int index) const noexcept;
  // Returns the absolute value of ICU's hash of the string with its terminator; 0 if uninitialized. Depends on case.
  int hashCode() const noexcept;
  // Returns the same for characters outside a VRELString.
  static int hashCode(std::u16string_view text) noexcept;

  // Compares by code points. Returns a value below, equal to or above 0; -1 if uninitialized.
  int compareTo(VRELString const& other) const noexcept;
  // Does the same after Unicode default case folding.
  int compareToIgnoreCase(VRELString const& other) const noexcept;
  // Does the same for characters outside a VRELString.
  static int compareIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept;
  // Return whether the comparison is 0; an uninitialized string equals nothing, itself included.
  bool equals(VRELString const& other) const noexcept { return compareTo(other) == 0; }
  bool equalsIgnoreCase(VRELString const& other) const noexcept { return compareToIgnoreCase(other) == 0; }
  bool operator>(VRELString const& other) const noexcept { return compareTo(other) > 0; }
  bool operator<(VRELString const& other) const noexcept { return compareTo(other) < 0; }
  bool operator<=(VRELString const& other) const noexcept { return compareTo(other) < 1; }
  // Compare all code units. Unlike equals(), two uninitialized strings are equal, so that == is an equivalence, and
  // std::hash agrees with it.
  friend bool operator==(VRELString const& a, VRELString const& b) noexcept { return a.isSame(b); }
  friend bool operator!=(VRELString const& a, VRELString const& b) noexcept { return !a.isSame(b); }
  // Return false for an empty argument.
  bool startsWith(VRELString const& other) const noexcept;
  bool endsWith(VRELString const& other) const noexcept;

  // Return the number of units before the first zero; 0 for null and for more than INT_MAX units.
  static int getStringLength(char const* text) noexcept;
  static int getStringLength(unsigned short const* text) noexcept;
  static int getStringLength(wchar_t const* text) noexcept;
  static int getStringLength(int const* text) noexcept;

  // Search for a code unit or a string. Return its index, or -1. A start below 0 counts as 0. A search for unit 0 finds
  // the terminator at length(). lastIndexOf finds the last match that begins at `start` or later.
  int indexOf(unsigned short unit) const noexcept;
  int indexOf(unsigned short unit, int start) const noexcept;
  int lastIndexOf(unsigned short unit) const noexcept;
  int lastIndexOf(unsigned short unit, int start) const noexcept;
  // Compatibility: an empty argument is found at length(), not at `start`, if `start` is below length() (indexOf) or at
  // most length() (lastIndexOf).
  int indexOf(VRELString const& text, int start) const noexcept;
  int lastIndexOf(VRELString const& text, int start) const noexcept;

  // Return a new string without the bad conversion flag; an empty one if this string is uninitialized.
  VRELString operator+(VRELString const& other) const;
  friend VRELString operator+(wchar_t const* a, VRELString const& b) { return VRELString(a) + b; }
  friend VRELString operator+(char16_t const* a, VRELString const& b) { return VRELString(a) + b; }
  friend VRELString operator+(char const* a, VRELString const& b) { return VRELString(a) + b; }
  // Returns the code units from `start` up to but not including `end`, both limited to the string.
  VRELString substring(int start, int end) const;
  VRELString substring(int start) const;
  // Replaces each code unit `oldChar` by `newChar`.
  // Compatibility: an `oldChar` of 0 appends `newChar`, because the terminator is replaced too. A `newChar` of 0 ends
  // the string at the first `oldChar`.
  VRELString replace(unsigned short oldChar, unsigned short newChar) const;

  // Appends in place. The result is that of *this = *this + other, in amortized constant time for each code unit.
  VRELString& operator+=(VRELString const& other) noexcept;

  // Return the size of the converted string in units of the target encoding, the terminator included; 0 if the string
  // is uninitialized or the size exceeds INT_MAX.
  int getConvertToUTF8Size() const noexcept;
  int getConvertToUTF16Size() const noexcept;
  int getConvertToUTF32Size() const noexcept;
  int getConvertToWideCharacterSize() const noexcept;
  // Uses the default code page of the process if `codepage` is null or cannot be opened.
  int getConvertToMBCSSize(char const* codepage) const noexcept;
  int getConvertToRestrictedASCIISize() const noexcept;

  // Convert into a buffer of `size` units, the terminator included.
  // Requires: the buffer has at least one unit, which is written for any `size`.
  // Errors: VREL_E_INVALID_ARGUMENT for a null buffer; VREL_E_FAIL if the string does not fit or cannot be converted,
  // and the buffer then contains an empty string.
  VRINResult convertToUTF8(char* buffer, int size) const noexcept;
  VRINResult convertToUTF16(unsigned short* buffer, int size) const noexcept;
  VRINResult convertToUTF32(int* buffer, int size) const noexcept;
  VRINResult convertToWideCharacter(wchar_t* buffer, int size) const noexcept;
  // Converts to a code page, by the rule of getConvertToMBCSSize. With substToUnderscore, each of the `size` bytes that
  // occurs in the substitution sequence of the code page becomes an underscore.
  // Errors: also VREL_E_UNEXPECTED if no code page can be opened.
  VRINResult convertToMBCS(char* buffer, int size, char const* codepage, bool substToUnderscore) const noexcept;
  // Converts to ASCII and replaces every character outside invChars by an underscore. Fills the buffer with zeros.
  VRINResult convertToRestrictedASCII(char* buffer, int size) const noexcept;

  // Return the string for the standard library; empty if uninitialized. The view is valid until the object changes or
  // is destroyed. A surrogate without its pair becomes U+FFFD in UTF-8 and in wide characters.
  std::u16string_view view() const noexcept;
  std::u16string toUtf16() const { return std::u16string(view()); }
  std::string toUtf8() const;
  std::wstring toWide() const;

 private:
  explicit VRELString(icu::UnicodeString* text) noexcept;

  void Adopt(icu::UnicodeString* text) noexcept;
  void Destroy() noexcept;
  bool isSame(VRELString const& other) const noexcept {
    return getIsInitialized() == other.getIsInitialized() && view() == other.view();
  }
  std::u16string_view BeforeZero() const noexcept;

  bool badConversion = false;
  bool holdsZero = false;
  icu::UnicodeString* unicodeString = nullptr;
};

// Hashes strings for the unordered containers of the standard library. Depends on case, as == does.
template <>
struct std::hash<VRELString> {
  std::size_t operator()(VRELString const& text) const noexcept {
    return std::hash<std::u16string_view>()(text.view());
  }
};

// Writes the string as UTF-8.
VREL_EXPORT std::ostream& operator<<(std::ostream& stream, VRELString const& text);

// Allocate a buffer and convert the string into it, in the default code page of the process or in wide characters.
// Ownership: on success the caller releases the buffer by VRELReleaseChars or VRELReleaseWideChars; on failure the
// pointer is null.
VREL_EXPORT VRINResult VRELStringToChars(VRELString const& text, char*& chars);
VREL_EXPORT VRINResult VRELStringToWideChars(VRELString const& text, wchar_t*& chars);
// Delete the buffer and set the pointer to null; null is allowed. Return VREL_S_OK.
VREL_EXPORT VRINResult VRELReleaseChars(char*& chars);
VREL_EXPORT VRINResult VRELReleaseWideChars(wchar_t*& chars);

// Default hash and equality of string keys in VRELHashList and VRELHashMap.
// Compatibility: the hash depends on case and the equality does not, so that two keys that differ only in case are one
// key only if they meet in one probe run. The option store sets functions of its own.
template <>
struct VRELHashTraits<VRELString> {
  static unsigned int Hash(VRELString const& key) noexcept { return static_cast<unsigned int>(key.hashCode()); }
  static bool Equal(VRELString const& a, VRELString const& b) noexcept { return a.compareToIgnoreCase(b) == 0; }
  // Hashes the folded letters of an ASCII string; 1, which matches any key, if it contains other characters.
  VREL_EXPORT static unsigned char Mark(VRELString const& key) noexcept;
  // Returns the seeded hash of the case-folded string.
  VREL_EXPORT static std::uint64_t SeededHash(VRELString const& key) noexcept;
  VREL_EXPORT static std::uint64_t SeededHashOf(std::u16string_view key) noexcept;
};
