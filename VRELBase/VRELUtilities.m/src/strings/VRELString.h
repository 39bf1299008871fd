// The one text type of the library: a UTF-16 text that is not changed in place.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "VRELExport.h"
#include "VRELHashTraits.h"
#include "VRELIcuNamespace.h"
#include "VRINResult.h"

// A text of UTF-16 units, held in an ICU UnicodeString of its own. Only assignment changes an object; every operation
// that derives a text gives a new one. Text goes out in two steps: ask for the size, then convert into a buffer.
//
//   VRELString const name(L"Schraube \u00D6");
//   std::vector<char> bytes(name.getConvertToUTF8Size());
//   name.convertToUTF8(bytes.data(), static_cast<int>(bytes.size()));
//
// The held UnicodeString ends in one U+0000 that is no part of the text; a length counts UTF-16 units without it.
//
// Never throws, but for toUtf8 and toUtf16, whose results belong to the standard library. When memory runs out, or ICU
// fails, while a text is built, the object stays uninitialized: getIsInitialized() is false, length() is -1, and each
// operation gives the value that it names for that case. The text that an argument brings must be initialized.
//
// No locking; a text stays on one thread while it is assigned to.
class VREL_EXPORT VRELString {
 public:
  // The name of the codepage in which the library reads and writes plain ASCII.
  static constexpr char CODEPAGE_NAME_ASCII[] = "US-ASCII";

  // Which bytes of 0 to 127 stand for the same character in every codepage: bit (c mod 32) of word (c / 32). LF and
  // ! # $ @ [ \ ] ^ ` { | } ~ do not.
  static constexpr unsigned int invChars[4] = {0xFFFFFBFF, 0xFFFFFFE5, 0x87FFFFFE, 0x87FFFFFE};

  VRELString();
  // A copy ends at the first U+0000 of the source.
  VRELString(VRELString const& other);
  // Leaves the source uninitialized, fit to be assigned to or destroyed.
  VRELString(VRELString&& other) noexcept;
  // One code point; 0 gives the empty text.
  VRELString(int codePoint);
  // One UTF-16 unit; 0 gives the empty text.
  VRELString(unsigned short unit);
  // UTF-32, wide (32 bits each) and UTF-16 text that ends in a zero unit; null gives the empty text. UTF-32 and wide
  // text that holds anything but Unicode scalar values gives the empty text with the bad conversion flag.
  VRELString(int const* text);
  VRELString(wchar_t const* text);
  VRELString(unsigned short const* text);
  // Bytes in a codepage that ICU knows by name. Without a name, or with one that cannot be opened, the bytes are read
  // in the process's default codepage and the bad conversion flag is set: it says that no named codepage was applied,
  // which is no error. Null text gives the empty text.
  VRELString(char const* text, char const* codepage = nullptr);
  // UTF-8 and UTF-16 of the standard library, for programs that hold their text there. Ends at the first U+0000.
  // What is no valid UTF-8 becomes U+FFFD.
  explicit VRELString(std::string const& utf8);
  explicit VRELString(std::u16string_view text);

  virtual ~VRELString();

  VRELString& operator=(VRELString const& other);
  VRELString& operator=(VRELString&& other) noexcept;

  // Whether the conversion that built this text failed, or fell back on the default codepage.
  bool getBadConversion() const noexcept { return badConversion; }
  bool getIsInitialized() const noexcept { return unicodeString != nullptr; }
  // How often in this process a text could not be built, or ICU told that a conversion found no memory. A program whose
  // results must be whole looks here before it keeps them, and need not ask each text.
  static int getFailureCount() noexcept;
  // Whether a U+0000 stands inside the text, which bytes of some codepages bring: a copy ends there.
  bool getHoldsZero() const noexcept { return holdsZero; }

  // UTF-16 units; -1 if uninitialized.
  int length() const noexcept;
  // The UTF-16 unit at an index; 0 at length(); 0xFFFF elsewhere, or if uninitialized.
  unsigned short charAt(int index) const noexcept;
  // The absolute value of ICU's hash of the text with its terminator; 0 if uninitialized. Depends on case, as
  // compareToIgnoreCase does not.
  int hashCode() const noexcept;
  // The same for a text that stands elsewhere.
  static int hashCode(std::u16string_view text) noexcept;

  // Below 0, 0 or above 0, in the order of code points; -1 if uninitialized.
  int compareTo(VRELString const& other) const noexcept;
  // The same on the case-folded texts (Unicode default case folding).
  int compareToIgnoreCase(VRELString const& other) const noexcept;
  // The same for texts that stand elsewhere.
  static int compareIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept;
  bool equals(VRELString const& other) const noexcept { return compareTo(other) == 0; }
  bool equalsIgnoreCase(VRELString const& other) const noexcept { return compareToIgnoreCase(other) == 0; }
  bool operator>(VRELString const& other) const noexcept { return compareTo(other) > 0; }
  bool operator<(VRELString const& other) const noexcept { return compareTo(other) < 0; }
  bool operator<=(VRELString const& other) const noexcept { return compareTo(other) < 1; }
  // False for an empty argument.
  bool startsWith(VRELString const& other) const noexcept;
  bool endsWith(VRELString const& other) const noexcept;

  // Units before the first zero; 0 for null.
  static int getStringLength(char const* text) noexcept;
  static int getStringLength(unsigned short const* text) noexcept;
  static int getStringLength(wchar_t const* text) noexcept;
  static int getStringLength(int const* text) noexcept;

  // Searches give an index, or -1 where nothing is found. A start below 0 counts as 0. A search for unit 0 finds the
  // terminator at length(). The backward searches look for the last match that begins at or behind start.
  int indexOf(unsigned short unit) const noexcept;
  int indexOf(unsigned short unit, int start) const noexcept;
  int lastIndexOf(unsigned short unit) const noexcept;
  int lastIndexOf(unsigned short unit, int start) const noexcept;
  // An empty argument gives length(), as long as start is below it (indexOf), or at or below it (lastIndexOf). The
  // difference between the two, and that the answer is not start, are promised.
  int indexOf(VRELString const& text, int start) const noexcept;
  int lastIndexOf(VRELString const& text, int start) const noexcept;

  // Derived texts; empty if uninitialized. Their bad conversion flag is false.
  VRELString operator+(VRELString const& other) const;
  // The units from start up to, not including, end; both are clipped to the text.
  VRELString substring(int start, int end) const;
  VRELString substring(int start) const;
  // Each unit oldChar becomes newChar. An oldChar of 0 puts newChar behind the text, because the terminator counts as
  // one; a newChar of 0 ends the text at the first oldChar. Both are promised.
  VRELString replace(unsigned short oldChar, unsigned short newChar) const;

  // Sizes in units of the target form, terminator included; 0 if uninitialized.
  int getConvertToUTF8Size() const noexcept;
  int getConvertToUTF16Size() const noexcept;
  int getConvertToUTF32Size() const noexcept;
  int getConvertToWideCharacterSize() const noexcept;
  // A codepage that cannot be opened, or null, means the process's default codepage.
  int getConvertToMBCSSize(char const* codepage) const noexcept;
  int getConvertToRestrictedASCIISize() const noexcept;

  // Convert into a buffer of `size` units, terminator included. VREL_E_INVALID_ARGUMENT for a null buffer, VREL_E_FAIL
  // when the text does not fit or cannot be converted; the buffer then holds an empty text. The first unit is written
  // whatever `size` says.
  VRINResult convertToUTF8(char* buffer, int size) const noexcept;
  VRINResult convertToUTF16(unsigned short* buffer, int size) const noexcept;
  VRINResult convertToUTF32(int* buffer, int size) const noexcept;
  VRINResult convertToWideCharacter(wchar_t* buffer, int size) const noexcept;
  // VREL_E_UNEXPECTED when no codepage at all can be opened. With substToUnderscore, each of the `size` bytes that is
  // one of the bytes which the codepage puts for a character it lacks becomes an underscore.
  VRINResult convertToMBCS(char* buffer, int size, char const* codepage, bool substToUnderscore) const noexcept;
  // ASCII, where every character that is not the same in all codepages (see invChars) is an underscore. All `size`
  // bytes are written: zeros follow the text.
  VRINResult convertToRestrictedASCII(char* buffer, int size) const noexcept;

  // The text for programs of the standard library. The view is valid until the object is assigned to or destroyed;
  // all are empty if uninitialized.
  std::u16string_view view() const noexcept;
  std::u16string toUtf16() const { return std::u16string(view()); }
  std::string toUtf8() const;

 private:
  explicit VRELString(icu::UnicodeString* text) noexcept;

  void Adopt(icu::UnicodeString* text) noexcept;
  void Destroy() noexcept;
  std::u16string_view BeforeZero() const noexcept;

  bool badConversion = false;
  bool holdsZero = false;
  icu::UnicodeString* unicodeString = nullptr;
};

// Writes the text as UTF-8.
VREL_EXPORT std::ostream& operator<<(std::ostream& stream, VRELString const& text);

// New buffers of the text in the process's default codepage and in wide characters. On success the caller owns the
// buffer and gives it back through VRELReleaseChars or VRELReleaseWideChars; on failure the pointer is null.
VREL_EXPORT VRINResult VRELStringToChars(VRELString const& text, char*& chars);
VREL_EXPORT VRINResult VRELStringToWideChars(VRELString const& text, wchar_t*& chars);
// Delete the buffer and set the pointer to null; null is allowed. Always VREL_S_OK.
VREL_EXPORT VRINResult VRELReleaseChars(char*& chars);
VREL_EXPORT VRINResult VRELReleaseWideChars(wchar_t*& chars);

// How a text is hashed and compared as a key, unless the container is told otherwise. The hash depends on case and the
// equality does not: two keys that differ only in case are one key only if they happen to meet in one probe run. That
// is promised; the option store brings functions of its own.
template <>
struct VRELHashTraits<VRELString> {
  static unsigned int Hash(VRELString const& key) noexcept { return static_cast<unsigned int>(key.hashCode()); }
  static bool Equal(VRELString const& a, VRELString const& b) noexcept { return a.compareToIgnoreCase(b) == 0; }
  // Of the letters of an ASCII text without their case; 1, which stands for any text, if another character is in it.
  VREL_EXPORT static unsigned char Mark(VRELString const& key) noexcept;
  // Returns the seeded hash of the case-folded string.
  VREL_EXPORT static std::uint64_t SeededHash(VRELString const& key) noexcept;
  VREL_EXPORT static std::uint64_t SeededHashOf(std::u16string_view key) noexcept;
};
