// Reads serialised object archives.
#pragma once

#include "VRELExport.h"
#include "VRELStringInputStream.h"
#include "VRINResult.h"

class VRELString;

// Reads an archive in the layout of the MFC class CArchive from a stream: little-endian values of fixed widths, counts
// and lengths that take as many bytes as they need, counted strings and class records. There is no way to write one.
//
// A read that gets fewer bytes than it needs throws, so that a reader is straight-line code:
//
//   VRELArchive archive(&stream);
//   try {
//     for (long n = archive.RestoreCount(); n > 0; --n) {
//       archive >> id >> radius;
//       archive.RestoreCString(name);
//     }
//   } catch (VRELArchiveException* exception) {  // a pointer, owned by who catches it
//     delete exception;
//   }
//
// Code 1 of the exception is the end of the input or a failed read, code 2 a double that is not a number. What was read
// up to there stays read; the target of the read that threw keeps its value. A length that the archive tells is not
// believed: memory grows with the bytes that really come.
class VREL_EXPORT VRELArchive {
 public:
  // The stream is not owned and must outlive the archive; null is one at its end.
  explicit VRELArchive(VRELInputStream* input);

  // Reads exactly `count` bytes and returns `count`; throws code 1 if the stream gives any other number.
  int Read(char* buffer, int count) {
    int const taken = stream != nullptr ? stream->read(buffer, count) : 0;
    bytesRead += taken;
    if (taken != count) ThrowEndReached();
    return taken;
  }

  // All that the stream's reads have returned so far, the -1 of a failed one included.
  long GetBytesRead() const { return bytesRead; }

  // 1, 2 and 4 bytes.
  VRELArchive& operator>>(unsigned char& value) { return Restore(value); }
  VRELArchive& operator>>(char& value) { return Restore(value); }
  VRELArchive& operator>>(unsigned short& value) { return Restore(value); }
  VRELArchive& operator>>(short& value) { return Restore(value); }
  VRELArchive& operator>>(unsigned int& value) { return Restore(value); }
  VRELArchive& operator>>(int& value) { return Restore(value); }
  // A signed value of 4 bytes, as long as the host's long may be.
  VRELArchive& operator>>(long& value) {
    value = Take<int>();
    return *this;
  }
  // 4 bytes; one that is not a number is no error.
  VRELArchive& operator>>(float& value) { return Restore(value); }
  // 8 bytes. One that is not a number throws code 2 and is left in the variable.
  VRELArchive& operator>>(double& value) {
    value = Take<double>();
    if (value != value) ThrowNotANumber();
    return *this;
  }

  // A count of 2 bytes below 65535, or of 4 bytes behind 2 that are all ones; never negative.
  long RestoreCount();

  // A length of 1 byte below 255, of 2 below 65534, or of 4, each behind ones in all shorter places; -1 where the
  // string is wide and its length comes next.
  long GetCStringLength();

  // A text behind its length: bytes in the process's default codepage, or wide characters of 4 bytes. It ends at its
  // first zero; what cannot be converted is told by `out` as by its constructors.
  void RestoreCString(VRELString& out);

  // Reads the record that stands in front of an object. Success for a class that the archive tells for the first time,
  // whose name goes to an empty `name` and must otherwise be `name`; and for one that it refers back to, whose name is
  // not told. VREL_E_FAIL for a reference to an object, a tag of 0, another name, or a name of 64 bytes or more, which
  // is then still unread. The 2-byte tag goes to `tagOut` unless that is null, success or not.
  VRINResult RestoreClassObject(VRELString& name, unsigned short* tagOut);
  // The same with a name that is expected; null and the empty text take any.
  VRINResult RestoreClassObject(char const* name, unsigned short* tagOut);

 private:
  [[noreturn]] static void ThrowEndReached();
  [[noreturn]] static void ThrowNotANumber();

  template <class T>
  T Take() {
    T value;
    if (memory == nullptr || !memory->readWhole(reinterpret_cast<char*>(&value), sizeof value)) {
      return TakeFromStream<T>();
    }
    bytesRead += static_cast<long>(sizeof value);
    return value;
  }

  // Apart, so that the values of the way above may live in registers.
  template <class T>
  [[gnu::noinline]] T TakeFromStream() {
    T value;
    Read(reinterpret_cast<char*>(&value), sizeof value);
    return value;
  }

  template <class T>
  VRELArchive& Restore(T& value) {
    value = Take<T>();
    return *this;
  }

  template <class Unit>
  VRELString TakeText(long length);
  VRINResult RestoreNewClass(VRELString& name);

  VRELInputStream* stream;
  long bytesRead = 0;
  VRELStringInputStream* memory;  // the stream, where it is one of this very class: its read is known and not called
};

// Looks at 4 bytes as a float: 0 for a finite one, otherwise its word with all bits of the mantissa set. That this
// counts infinities too, and that no reader of an archive asks it, is promised.
VREL_EXPORT int VRELIsnan(char const* bytes);
