// Description of a file: path, C stream or descriptor.
#pragma once

#include <cstdio>
#include <memory>

#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELFilePath;
class VRELString;

// Counted description of a file that a format reader reads: a path, a C stream, a descriptor or any combination. It
// opens a stream on its path on demand. Constructors do not access the file system.
//
//   VRELFileHandle const file(new VRELFile("wheel.step"));
//   std::FILE* stream = nullptr;
//   if (file->GetFilePointer(stream, VRELFile::BinaryOpen).IsSuccess()) ...
//
// Ownership: streams and descriptors passed to the constructor are never closed. A stream that the object opened is
// closed when the object opens another one or is destroyed.
// Errors: all operations return VREL_E_FAIL on failure.
class VREL_EXPORT VRELFile : public VRELReferenceCount {
 public:
  // How to open the stream. Other values are used like BinaryOpen.
  enum VRELFilePointerOpenType : int {
    NoOpen = 0,      // do not open
    TextOpen = 1,    // fopen with "r"
    BinaryOpen = 2,  // fopen with "rb"
  };

  VRELFile();
  // A negative descriptor means none.
  VRELFile(int descriptor);
  VRELFile(std::FILE* stream);
  VRELFile(VRELFilePath const& path);
  VRELFile(VRELString const& path);
  // `path` is in the default codepage of the process. Null is the empty path.
  VRELFile(char const* path);

  VRELFile(VRELFile const&) = delete;
  VRELFile& operator=(VRELFile const&) = delete;
  ~VRELFile() override;

  // Returns whether there is a stream, a valid path, or descriptor 0, 1 or 2.
  //
  // Compatibility: a file with only a descriptor above 2 is not valid.
  bool IsValidFile() const;

  // Stores the current stream, which may be null. Fails if it is null.
  VRINResult GetFilePointer(std::FILE*& stream) const;
  // Opens the path from its start and stores the new stream. The previous stream is closed if the object opened it, and
  // forgotten otherwise. With NoOpen nothing is opened, and the current stream is stored.
  //
  // Errors: VREL_E_FAIL, with `stream` null, if there is no path or the file cannot be opened.
  VRINResult GetFilePointer(std::FILE*& stream, VRELFilePointerOpenType type);

  // Store the descriptor, the whole path as a string, and the path. Fail without changing the argument if there is
  // none.
  VRINResult GetFileDescriptor(int& descriptor) const;
  VRINResult GetFileName(VRELString& name) const;
  VRINResult GetFilePath(VRELFilePath& path) const;

  // Returns the type of the last attempt to open the path; NoOpen if there was none.
  VRELFilePointerOpenType GetFilePointerOpenType() const noexcept { return openType; }

 private:
  VRELFile(std::FILE* stream, std::unique_ptr<VRELFilePath> path, int descriptor);

  void ReleaseStream();

  std::FILE* filePointer;
  std::unique_ptr<VRELFilePath> filePath;  // never null
  int fileDescriptor;                      // -1 for none
  VRELFilePointerOpenType openType;
};
