// Temporary file that its object removes.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELFilePath.h"

// Temporary file: chooses an unpredictable name in the system's directory for temporary files, creates the file on
// demand, and removes it in the destructor.
//
//   VRELTemporaryFile file(VRELFilePath("/d/m.stp"), "y.tmp", 3);  // for example /tmp/fileAbCdEf_m.stp_y.tmp_3
//   std::FILE* const stream = file.Open(nullptr);
//
// The constructor only chooses the name. Open creates the file exclusively. If the name is taken by then, Open accepts
// it only if it is a regular file of the same user with a single link; symbolic links are not followed.
//
// Errors: nothing throws and no event is sent.
class VREL_EXPORT VRELTemporaryFile {
 public:
  VRELTemporaryFile();
  // Appends to the name "_" and the name of `source` if that is valid, "_" and the name part of `name` if that is not
  // null, and "_" and `number` if that is not 0 and `name` is not null. The directories of both are ignored.
  //
  // Compatibility: a part that would make the path 4095 characters or longer is left out.
  VRELTemporaryFile(VRELFilePath const& source, char const* name, unsigned int number);
  VRELTemporaryFile(VRELTemporaryFile const&) = delete;
  VRELTemporaryFile& operator=(VRELTemporaryFile const&) = delete;
  // Calls Terminate().
  virtual ~VRELTemporaryFile();

  // Stores the path; empty after Terminate().
  void GetPath(VRELFilePath& out) const;

  // Opens the file with a mode of fopen, "w+b" if `mode` is null, and returns the stream, or null on failure. If the
  // file is open, returns its stream and ignores `mode`.
  //
  // Ownership: the object closes the stream.
  std::FILE* Open(char const* mode);
  // Closes the stream. The file stays.
  void Close();

  // Removes the file; the stream stays open. Returns 0 on success and if there is no path, or -1 on failure, for
  // example if the file was never created.
  int Remove();

  // Closes and removes the file and clears the path. The file cannot be opened afterwards.
  void Terminate();

 private:
  void InitializeName(VRELFilePath const& source, char const* name, unsigned int number);
  std::FILE* OpenAs(char const* mode) const;

  std::FILE* stream = nullptr;
  VRELFilePath path;
};
