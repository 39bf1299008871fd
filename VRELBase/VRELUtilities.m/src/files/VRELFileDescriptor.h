// An open file with positioned reads and writes, which the file streams share.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELReferenceCount.h"

class VRELFilePath;

// Wraps a descriptor of the operating system. It opens in its constructor or not at all, and closes in its destructor
// if it opened; a VRELFileDescriptorHandle shares it. All who hold one share its position.
//
// Operations give the result of the system's calls, -1 on failure, and report nothing more. No call is repeated: a
// short read or write is told as it came.
class VREL_EXPORT VRELFileDescriptor : public VRELReferenceCount {
 public:
  enum IOMode : int {
    ModeFind = 0,       // by the owner's permissions on the file
    ModeRead = 1,       // reading
    ModeWrite = 2,      // writing
    ModeReadWrite = 3,  // both; a path is opened as for ModeWrite
  };

  // The descriptor, or that of the stream, stays the caller's. ModeFind becomes ModeRead, ModeWrite or ModeReadWrite if
  // the file's owner may read, write, or both, and stays if neither: permissions count, not how the file was opened.
  VRELFileDescriptor(int descriptor, IOMode mode);
  VRELFileDescriptor(std::FILE* stream, IOMode mode);

  // Opens the file. ModeWrite makes or empties it, with read and write permission for the owner alone, less the
  // process's mask; ModeRead and ModeFind open it for reading. That ModeReadWrite empties the file and opens it for
  // writing alone, and that ModeFind stays what it is, is promised. A file that cannot be opened raises
  // "CANNOT_OPEN_FILE" through Gk_ErrMgr.
  VRELFileDescriptor(VRELFilePath const& path, IOMode mode);

  VRELFileDescriptor(VRELFileDescriptor const&) = delete;
  VRELFileDescriptor& operator=(VRELFileDescriptor const&) = delete;
  ~VRELFileDescriptor() override;

  // Moves to a position in bytes from the start, or from where the file stands, and returns the new one. offset(0)
  // tells where the file stands.
  long seek(long position) const;
  long offset(long delta) const;

  // In bytes; the position stays.
  long fileSize() const;

  // Move to `position` first, unless it is -1, and return the number of bytes read or written; 0 at the end of a file.
  // That a failed move does not keep the bytes from being read or written is promised.
  long readBytes(char* buffer, unsigned size, long position);
  long writeBytes(char const* buffer, unsigned size, long position);

  // Nothing is held back, so there is nothing to do.
  void commit();

  IOMode GetMode() const noexcept { return mode; }

 private:
  int descriptor;
  IOMode mode;
  bool isOwned;
};
