// Reader of serialized object archives.
#pragma once

#include "VRELExport.h"
#include "VRELStringInputStream.h"
#include "VRINResult.h"

class VRELString;

// Reads an archive in the layout of the MFC class CArchive from a stream: little-endian values of fixed width, counts
// and lengths of variable width, counted strings and class records. There is no writer.
//
// A short read throws, so that a reader is straight-line code:
//
//   VRELArchive archive(&stream);
//   try {
//     for (long n = archive.RestoreCount(); n > 0; --n) {
//       archive >> id >> radius;
//       archive.RestoreCString(name);
//     }
//   } catch (VRELArchiveException* exception) {  // a pointer, deleted by the handler
//     delete exception;
//   }
//
// Errors: throws a VRELArchiveException* with code 1 for a short or failed read, and with code 2 for a double that is
// not a number. Bytes that were read stay consumed, and the target of the failed read keeps its value.
//
// Performance: values are read without a virtual call from a VRELStringInputStream. The memory for a string is
// committed only as its bytes arrive, so that a false length in the archive does not exhaust memory.
class VREL_EXPORT VRELArchive {
 public:
  // Ownership: the stream is not owned and must outlive the archive. Null is a stream at its end.
  explicit VRELArchive(VRELInputStream* input);

  // Reads exactly `count` bytes with one read of the stream, and returns `count`.
  // Errors: throws code 1 if the stream returns any other number.
  int Read(char* buffer, int count) {
    int const taken = stream != nullptr ? stream->read(buffer, count) : 0;
    bytesRead += taken;
    if (taken != count) ThrowEndReached();
    return taken;
  }

  // Returns the sum of all results of the stream's reads, including the -1 of a failed one.
  long GetBytesRead() const { return bytesRead; }

  // Read a value of 1, 2 or 4 bytes.
  VRELArchive& operator>>(unsigned char& value) { return Restore(value); }
  VRELArchive& operator>>(char& value) { return Restore(value); }
  VRELArchive& operator>>(unsigned short& value) { return Restore(value); }
  VRELArchive& operator>>(short& value) { return Restore(value); }
  VRELArchive& operator>>(unsigned int& value) { return Restore(value); }
  VRELArchive& operator>>(int& value) { return Restore(value); }
  // Reads a signed value of 4 bytes, independent of the size of long.
  VRELArchive& operator>>(long& value) {
    value = Take<int>();
    return *this;
  }
  // Reads 4 bytes. Not-a-number is not an error.
  VRELArchive& operator>>(float& value) { return Restore(value); }
  // Reads 8 bytes.
  // Errors: not-a-number is stored and throws code 2.
  VRELArchive& operator>>(double& value) {
    value = Take<double>();
    if (value != value) ThrowNotANumber();
    return *this;
  }

  // Reads a count: 2 bytes if it is below 65535; otherwise 2 bytes 0xFF and 4 bytes. Never negative.
  long RestoreCount();

  // Reads the length of a string: 1 byte if it is below 255; otherwise 0xFF and 2 bytes if it is below 65534; otherwise
  // 3 bytes 0xFF and 4 bytes. Returns -1 for 0xFF 0xFE 0xFF, the mark of a wide string, whose length follows.
  long GetCStringLength();

  // Reads a length and a string: bytes in the default codepage of the process, or wide characters of 4 bytes. The
  // result ends at the first zero. The units are read with one read of the stream.
  // Errors: throws code 1 if they do not arrive, or do not fit into memory or an int. A string that cannot be converted
  // is reported by `out`, as by its constructors.
  void RestoreCString(VRELString& out);

  // Reads the class record before an object, and stores its 2-byte tag in `tagOut` unless that is null.
  //
  // Succeeds for a new class whose name equals `name`, or is stored in `name` if that is empty; and for a reference to
  // a class that was read before, whose name is not in the record.
  // Errors: VREL_E_FAIL for a reference to an object, for a tag of 0, for another name, and for a name of 64 bytes or
  // more, which is not consumed.
  VRINResult RestoreClassObject(VRELString& name, unsigned short* tagOut);
  // Reads the class record of a class with this name; null and the empty string accept any name.
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

  // Out of line, so that the values of the fast path stay in registers.
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
  VRELStringInputStream* memory;  // the stream, if it is of exactly this class; else null
};

// Returns 0 if 4 bytes, read as a float, are finite; otherwise their word with all bits of the mantissa set.
// Compatibility: counts infinities too. operator>>(float&) does not call it.
VREL_EXPORT int VRELIsnan(char const* bytes);
