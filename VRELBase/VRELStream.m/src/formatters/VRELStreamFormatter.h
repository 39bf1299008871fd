// The text writer behind all dumps.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"
#include "VRELReferenceCount.h"
#include "VRELTypedHandle.h"
#include "VRINResult.h"

class Gk_ROString;
class Gk_String;
class VRELOutputStream;
class VRELString;
class VRELValue;

// What happens to the zeros at the end of a double. Any other value behaves like the first.
enum VRELRealTrailingZerosRemovalFormat : int {
  VREL_TRAILING_ZEROS_KEPT = 0,     // as printf wrote them
  VREL_TRAILING_ZEROS_REMOVED = 1,  // the decimal point and one digit behind it stay: 1.5, 2.0, 1.2e+03
};

// Turns typed values into text on a stream: numbers by printf formats that can be set, texts as bytes, and format
// objects, which know how to write themselves. A derived formatter brings other objects, and so the same dump writes
// another kind of page.
//
//   VRELStreamFormatter out(&stream);
//   out << out.margin() << "radius" << out.space() << 2.5 << out.endline();  // "radius 2.500000\n"
//
// Writes are not tested. Without a stream nothing is written. The stream is not owned and must outlive the formatter,
// whose destructor flushes it. A formatter stays on one thread.
class VREL_EXPORT VRELStreamFormatter {
 public:
  class VRELStreamFormatterObject;
  class VRELStreamFormatterMargin;
  class VRELStreamFormatterLong;
  class VRELStreamFormatterPtr;
  class VRELStreamFormatterSpace;
  class VRELStreamFormatterEndline;

  class VREL_EXPORT VRELStreamFormatterObjectHandle : public VRELTypedHandle<VRELStreamFormatterObject> {
   public:
    using VRELTypedHandle::VRELTypedHandle;
  };
  class VREL_EXPORT VRELStreamFormatterMarginHandle : public VRELTypedHandle<VRELStreamFormatterMargin> {
   public:
    using VRELTypedHandle::VRELTypedHandle;
  };

  // Null is allowed.
  explicit VRELStreamFormatter(VRELOutputStream* stream);
  VRELStreamFormatter(VRELStreamFormatter const&) = delete;
  VRELStreamFormatter& operator=(VRELStreamFormatter const&) = delete;

  // What operator<< calls. Each number is cut at 127 bytes.
  virtual void dump(char value);
  virtual void dump(int value);
  virtual void dump(unsigned int value);
  virtual void dump(long value);
  virtual void dump(unsigned long value);
  virtual void dump(double value);
  // Null writes nothing.
  virtual void dump(char const* text);
  // The low 32 bits of the address, in hexadecimal: 0x10, but 0 for null. The format cannot be set.
  virtual void dump(void const* address);
  // Null writes nothing. An object is asked to write itself even where there is no stream.
  virtual void dump(VRELStreamFormatterObject const* object);
  // The text in US-ASCII, other characters as 0x1A; at most as many bytes as the text has units.
  virtual void dump(VRELString const& text);
  virtual void dump(VRELValue const& value);

  virtual ~VRELStreamFormatter();

  // Objects that name an address or a number, and that refer to what is so named: here both just write it. An address
  // is written in decimal, by the int format.
  virtual VRELStreamFormatterObjectHandle define(void const* address);
  virtual VRELStreamFormatterObjectHandle refer(void const* address);
  virtual VRELStreamFormatterObjectHandle define(long number);
  virtual VRELStreamFormatterObjectHandle refer(long number);

  // An object that writes the formatted text, at most 511 bytes of it. The text lies in one buffer of the process, and
  // that an object shows the text of the latest call is promised: write it before the next one.
  virtual VRELStreamFormatterObjectHandle format(char const* pattern, ...) VREL_PRINTF_FORMAT(2, 3);

  // The objects for indentation, space and line end, which are put into a dump by operator<< and can be replaced; and
  // one that writes nothing.
  VRELStreamFormatterMarginHandle& margin() noexcept { return marginObject; }
  VRELStreamFormatterObjectHandle& space() noexcept { return spaceObject; }
  VRELStreamFormatterObjectHandle& endline() noexcept { return endlineObject; }
  VRELStreamFormatterObjectHandle& empty() noexcept { return emptyObject; }

  // Swaps the stream, and returns the previous one without flushing it.
  VRELOutputStream* installOutputStream(VRELOutputStream* stream) noexcept;

  // Back to "%d", "%u", "%ld", "%ul", "%lf" and to all trailing zeros; precision and its flag stay. That "%ul", the
  // format of an unsigned long, writes the low 32 bits and a letter l is promised.
  void resetFormat() noexcept;

  // Set a format, and return the old one. It must take one argument of the type, and is not copied: keep it alive.
  // With null, numbers of the type are not written.
  char const* setIntFormat(char const* format) noexcept;
  char const* setUIntFormat(char const* format) noexcept;
  char const* setLongFormat(char const* format) noexcept;
  char const* setULongFormat(char const* format) noexcept;
  // With `usePrecision` the format takes two arguments, the precision and the value: "%.*f".
  char const* setDoubleFormat(char const* format, bool usePrecision, int precision) noexcept;

  // What is done to each double; what the next two do to the number that was written last.
  void SetTrailingZerosRemovalFormat(VRELRealTrailingZerosRemovalFormat const& removalFormat) noexcept;
  void RemoveTrailingZeros();
  void KeepDecimalAndOneZeroForTrailingZeros();

  // Gives `in` without the zeros at its end, but with one digit behind the decimal point of the numeric locale; as it
  // is, if it has no such point. VREL_E_FAIL, and `in` as it is, where the locale has none. Only the first byte of a
  // longer point counts. Both arguments may be one object.
  static VRINResult TruncateTrailingZeroesKeepingDecimalAndOneZero(VRELString const& in, VRELString& out);

 private:
  void writeText(char const* text);
  template <class... Arguments>
  bool print(char const* pattern, Arguments... arguments);
  template <class... Arguments>
  void dumpNumber(char const* pattern, Arguments... arguments);
  template <class Integer>
  void dumpInteger(char const* pattern, char const* defaultPattern, Integer value);
  void dumpConverted(VRELString const& text);

  VRELOutputStream* output;
  char const* doubleFormat;
  char const* intFormat;
  char const* unsignedIntFormat;
  char const* unsignedLongFormat;
  char const* longFormat;
  bool hasPrecision;
  int precision;
  VRELRealTrailingZerosRemovalFormat trailingZerosFormat;
  char numberText[128];
  VRELStreamFormatterMarginHandle marginObject;
  VRELStreamFormatterObjectHandle spaceObject;
  VRELStreamFormatterObjectHandle endlineObject;
  VRELStreamFormatterObjectHandle emptyObject;
};

// A counted object that knows how to write itself; this one writes a text, which is not copied.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterObject : public VRELReferenceCount {
 public:
  explicit VRELStreamFormatterObject(char const* shownText = "") noexcept : text(shownText) {}

  virtual void dump(VRELStreamFormatter& formatter) const;

 private:
  char const* text;
};

// The indentation: four blanks for each step of depth.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterMargin : public VRELStreamFormatterObject {
 public:
  // The formatter is the one in which the margin stands; null is allowed.
  explicit VRELStreamFormatterMargin(VRELStreamFormatter* owner = nullptr) noexcept : formatter(owner) {}

  void dump(VRELStreamFormatter& target) const override;
  // One step in, and one out. There is no lower limit: that a depth below 0 writes nothing, and has to be made up for,
  // is promised.
  virtual void incr();
  virtual void decr();

 protected:
  int depth = 0;
  // Null once the formatter is gone.
  VRELStreamFormatter* formatter;

 private:
  friend class VRELStreamFormatter;
};

class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterLong : public VRELStreamFormatterObject {
 public:
  explicit VRELStreamFormatterLong(long number) noexcept : value(number) {}

  void dump(VRELStreamFormatter& formatter) const override;

 private:
  long value;
};

// Writes the low 32 bits of an address by the int format.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterPtr : public VRELStreamFormatterObject {
 public:
  explicit VRELStreamFormatterPtr(void const* address) noexcept : value(address) {}

  void dump(VRELStreamFormatter& formatter) const override;

 private:
  void const* value;
};

// A blank.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterSpace : public VRELStreamFormatterObject {
 public:
  void dump(VRELStreamFormatter& formatter) const override;
};

// A line feed.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterEndline : public VRELStreamFormatterObject {
 public:
  void dump(VRELStreamFormatter& formatter) const override;
};

// Each calls the dump of its type, through the virtual table.
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, char value) {
  formatter.dump(value);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, int value) {
  formatter.dump(value);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, unsigned int value) {
  formatter.dump(value);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, long value) {
  formatter.dump(value);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, unsigned long value) {
  formatter.dump(value);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, double value) {
  formatter.dump(value);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, char const* text) {
  formatter.dump(text);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter,
                                       VRELStreamFormatter::VRELStreamFormatterObject const* object) {
  formatter.dump(object);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELString const& text) {
  formatter.dump(text);
  return formatter;
}
inline VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELValue const& value) {
  formatter.dump(value);
  return formatter;
}
// An address is written by dump, or by define and refer; it must not pass for a boolean value.
VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, void const* address) = delete;

// The text, up to the first zero byte, by dump(char const*).
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_String const& text);
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_ROString const& text);
