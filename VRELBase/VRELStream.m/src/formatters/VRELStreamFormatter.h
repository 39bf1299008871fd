// Formatted text output.
#pragma once

#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRELTypedHandle.h"
#include "VRINResult.h"
#include "detail/VRELPrintfFormat.h"

class Gk_ROString;
class Gk_String;
class VRELOutputStream;
class VRELString;
class VRELValue;

// Treatment of trailing zeros of a double. Other values behave like the first.
enum VRELRealTrailingZerosRemovalFormat : int {
  VREL_TRAILING_ZEROS_KEPT = 0,     // as written by printf
  VREL_TRAILING_ZEROS_REMOVED = 1,  // keeps the decimal point and one digit after it: 1.5, 2.0, 1.2e+03
};

// Writes typed values as text to a stream: numbers in printf formats that can be set, strings as bytes, and format
// objects, which write themselves. Derived formatters replace the format objects, so that the same dump code writes
// another kind of page.
//
//   VRELStreamFormatter out(&stream);
//   out << out.margin() << "radius" << out.space() << 2.5 << out.endline();  // "radius 2.500000\n"
//
// Errors: results of writes are ignored. Without a stream nothing is written.
// Ownership: the stream is not owned and must outlive the formatter, whose destructor flushes it.
// Thread safety: a formatter is used by one thread; format() shares a buffer in the whole process.
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

  // A null stream discards all output.
  explicit VRELStreamFormatter(VRELOutputStream* stream);
  VRELStreamFormatter(VRELStreamFormatter const&) = delete;
  VRELStreamFormatter& operator=(VRELStreamFormatter const&) = delete;

  // Write a value; called by operator<<. Numbers are truncated to 127 bytes.
  virtual void dump(char value);
  virtual void dump(int value);
  virtual void dump(unsigned int value);
  virtual void dump(long value);
  virtual void dump(unsigned long value);
  virtual void dump(double value);
  // Writes nothing for null.
  virtual void dump(char const* text);
  // Writes the low 32 bits of an address in hexadecimal: 0x10, but 0 for null. The format cannot be set.
  virtual void dump(void const* address);
  // Calls the dump of the object, also without a stream. Writes nothing for null.
  virtual void dump(VRELStreamFormatterObject const* object);
  // Writes the string in US-ASCII, other characters as 0x1A; at most as many bytes as the string has units.
  virtual void dump(VRELString const& text);
  virtual void dump(VRELValue const& value);

  virtual ~VRELStreamFormatter();

  // Return objects that write the definition of, or a reference to, an address or a number. Here both write the value;
  // an address in decimal, by the int format.
  virtual VRELStreamFormatterObjectHandle define(void const* address);
  virtual VRELStreamFormatterObjectHandle refer(void const* address);
  virtual VRELStreamFormatterObjectHandle define(long number);
  virtual VRELStreamFormatterObjectHandle refer(long number);

  // Returns an object that writes the formatted string, at most 511 bytes.
  // Compatibility: all objects refer to one buffer of the process, and write the string of the latest call.
  virtual VRELStreamFormatterObjectHandle format(char const* pattern, ...) VREL_PRINTF_FORMAT(2, 3);

  // Return the objects for indentation, space, line end and nothing. They are written by operator<< and can be
  // replaced.
  VRELStreamFormatterMarginHandle& margin() noexcept { return marginObject; }
  VRELStreamFormatterObjectHandle& space() noexcept { return spaceObject; }
  VRELStreamFormatterObjectHandle& endline() noexcept { return endlineObject; }
  VRELStreamFormatterObjectHandle& empty() noexcept { return emptyObject; }

  // Sets the stream and returns the previous one, without flushing it.
  VRELOutputStream* installOutputStream(VRELOutputStream* stream) noexcept;
  // Returns the stream, or null.
  VRELOutputStream* getOutputStream() const noexcept { return output; }

  // Resets the formats to "%d", "%u", "%ld", "%ul" and "%lf", and keeps trailing zeros. The precision and its flag are
  // unchanged.
  // Compatibility: "%ul", for unsigned long, writes the low 32 bits and a letter l.
  void resetFormat() noexcept;

  // Set a format and return the previous one.
  // Requires: the format has one argument of the type; it is not copied and must outlive its use. With null, numbers of
  // the type are not written.
  char const* setIntFormat(char const* format) noexcept;
  char const* setUIntFormat(char const* format) noexcept;
  char const* setLongFormat(char const* format) noexcept;
  char const* setULongFormat(char const* format) noexcept;
  // With `usePrecision` the format has two arguments, the precision and the value: "%.*f".
  char const* setDoubleFormat(char const* format, bool usePrecision, int precision) noexcept;

  // Sets the treatment of trailing zeros. The next two apply it to the number that was formatted last: as set, and
  // always.
  void SetTrailingZerosRemovalFormat(VRELRealTrailingZerosRemovalFormat const& removalFormat) noexcept;
  void RemoveTrailingZeros();
  void KeepDecimalAndOneZeroForTrailingZeros();

  // Removes trailing zeros, but keeps one digit after the decimal point of the numeric locale; copies `in` if it has no
  // decimal point. Only the first byte of a longer decimal point is used. Both arguments can be one object.
  // Errors: VREL_E_FAIL, with a copy of `in`, if the locale has no decimal point.
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

// Reference-counted object that writes itself; this class writes a string, which is not copied.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterObject : public VRELReferenceCount {
 public:
  explicit VRELStreamFormatterObject(char const* output = "") noexcept : text(output) {}

  virtual void dump(VRELStreamFormatter& formatter) const;

 private:
  char const* text;
};

// Indentation: four blanks per level.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterMargin : public VRELStreamFormatterObject {
 public:
  // `owner` is the formatter that the margin belongs to, or null.
  explicit VRELStreamFormatterMargin(VRELStreamFormatter* owner = nullptr) noexcept : formatter(owner) {}

  void dump(VRELStreamFormatter& target) const override;
  // Increase and decrease the depth.
  // Compatibility: there is no lower limit; a negative depth writes nothing.
  virtual void incr();
  virtual void decr();

 protected:
  int depth = 0;
  // Null after the formatter is destroyed.
  VRELStreamFormatter* formatter;

 private:
  friend class VRELStreamFormatter;
};

// Writes a long.
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

// Writes a blank.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterSpace : public VRELStreamFormatterObject {
 public:
  void dump(VRELStreamFormatter& formatter) const override;
};

// Writes a line feed.
class VREL_EXPORT VRELStreamFormatter::VRELStreamFormatterEndline : public VRELStreamFormatterObject {
 public:
  void dump(VRELStreamFormatter& formatter) const override;
};

// Call the virtual dump of the type.
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
// Addresses are written by dump, define and refer. Without this, a pointer would convert to bool.
VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, void const* address) = delete;

// Write the string up to its first zero byte, by dump(char const*).
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_String const& text);
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, Gk_ROString const& text);
