// A description of a file: a path, a C stream, a descriptor, or any mix of them.
#pragma once

#include <cstdio>
#include <memory>

#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELFilePath;
class VRELString;

// What a format reader is given to read from. It is passed around as a VRELFileHandle and can open a C stream from its
// path on demand; making one touches no file.
//
//   VRELFileHandle const file(new VRELFile("wheel.step"));
//   std::FILE* stream = nullptr;
//   if (file->GetFilePointer(stream, VRELFile::BinaryOpen).IsSuccess()) ...
//
// Only a stream that the object opened itself is closed by it, when it opens anew or dies. Streams and descriptors that
// are handed in stay the caller's. Failures are VREL_E_FAIL.
class VREL_EXPORT VRELFile : public VRELReferenceCount {
 public:
  // How the object opened its stream. Every value but the first two opens as BinaryOpen does.
  enum VRELFilePointerOpenType : int {
    NoOpen = 0,      // it did not
    TextOpen = 1,    // fopen with "r"
    BinaryOpen = 2,  // fopen with "rb"
  };

  VRELFile();
  // A value below 0 counts as no descriptor.
  VRELFile(int descriptor);
  VRELFile(std::FILE* stream);
  VRELFile(VRELFilePath const& path);
  VRELFile(VRELString const& path);
  // Bytes in the process's default codepage; null gives the empty path.
  VRELFile(char const* path);

  VRELFile(VRELFile const&) = delete;
  VRELFile& operator=(VRELFile const&) = delete;
  ~VRELFile() override;

  // Whether there is a stream, a path, or one of the three standard descriptors. That a file with nothing but another
  // descriptor is not valid is promised.
  bool IsValidFile() const;

  // The stream at hand, null included; fails when it is null. Opens nothing.
  VRINResult GetFilePointer(std::FILE*& stream) const;
  // The same for NoOpen. Any other type lets go of the stream at hand, which is closed only if this object opened it,
  // and opens the path from its start; null and a failure when there is no path or it cannot be opened.
  VRINResult GetFilePointer(std::FILE*& stream, VRELFilePointerOpenType type);

  // Each leaves its argument as it was when there is no such thing.
  VRINResult GetFileDescriptor(int& descriptor) const;
  // The whole path, not only the name.
  VRINResult GetFileName(VRELString& name) const;
  VRINResult GetFilePath(VRELFilePath& path) const;

  // The type of the last call that tried to open the path.
  VRELFilePointerOpenType GetFilePointerOpenType() const noexcept { return openType; }

 private:
  VRELFile(std::FILE* stream, std::unique_ptr<VRELFilePath> path, int descriptor);

  void LetGoOfStream();

  std::FILE* filePointer;
  std::unique_ptr<VRELFilePath> filePath;  // never null
  int fileDescriptor;                      // -1 for none
  VRELFilePointerOpenType openType;
};
