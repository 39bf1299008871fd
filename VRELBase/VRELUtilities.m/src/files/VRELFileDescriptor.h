// Open file with positioned reads and writes.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELReferenceCount.h"

class VRELFilePath;

// Counted POSIX descriptor. Streams share it through a VRELFileDescriptorHandle.
//
//   VRELFilePath const path("wheel.step");
//   VRELFileDescriptorHandle const file(new VRELFileDescriptor(path, VRELFileDescriptor::ModeRead));
//   char bytes[80];
//   long const count = file->readBytes(bytes, sizeof bytes, 0);
//
// Ownership: a descriptor that the constructor opened is closed by the destructor; all others stay open.
// Errors: operations return the result of the system call, -1 on failure. Short reads and writes are not repeated.
// Thread safety: none. All users of a descriptor share its position.
class VREL_EXPORT VRELFileDescriptor : public VRELReferenceCount {
 public:
  enum IOMode : int {
    ModeFind = 0,       // derived from the permissions of the owner
    ModeRead = 1,       // reading
    ModeWrite = 2,      // writing
    ModeReadWrite = 3,  // both; opens a path like ModeWrite
  };

  // Use a descriptor of the caller. ModeFind is replaced by ModeRead, ModeWrite or ModeReadWrite if the owner of the
  // file has read permission, write permission or both, and stays if it has neither. How the file was opened does not
  // matter.
  VRELFileDescriptor(int descriptor, IOMode mode);
  VRELFileDescriptor(std::FILE* stream, IOMode mode);

  // Opens the file: ModeRead and ModeFind for reading; ModeWrite and ModeReadWrite for writing, after creating it with
  // mode 0600 less the umask or truncating it. GetMode() returns `mode`.
  //
  // Errors: raises "CANNOT_OPEN_FILE" through Gk_ErrMgr if the file cannot be opened.
  // Compatibility: ModeReadWrite truncates the file and opens it for writing only.
  VRELFileDescriptor(VRELFilePath const& path, IOMode mode);

  VRELFileDescriptor(VRELFileDescriptor const&) = delete;
  VRELFileDescriptor& operator=(VRELFileDescriptor const&) = delete;
  ~VRELFileDescriptor() override;

  // Set the position, from the start of the file or relative to the current position, and return the new position.
  // offset(0) returns the current position.
  long seek(long position) const;
  long offset(long delta) const;

  // Returns the size in bytes. The position does not change.
  long fileSize() const;

  // Read or write `size` bytes at `position`, or at the current position if it is -1. Return the number of bytes; 0 at
  // the end of the file.
  //
  // Compatibility: if the position cannot be set, the bytes are read or written at the current position.
  long readBytes(char* buffer, unsigned size, long position);
  long writeBytes(char const* buffer, unsigned size, long position);

  // Does nothing: the class does not buffer.
  void commit();

  IOMode GetMode() const noexcept { return mode; }

 private:
  int descriptor;
  IOMode mode;
  bool isOwned;
};
