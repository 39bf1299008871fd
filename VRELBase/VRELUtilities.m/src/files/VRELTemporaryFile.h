// A scratch file that removes itself.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELFilePath.h"

// Names a file of its own in the system's directory for temporary files, opens it on demand, and removes it at the end.
//
//   VRELTemporaryFile file(VRELFilePath("/d/m.stp"), "y.tmp", 3);  // say /tmp/fileAbCdEf_m.stp_y.tmp_3
//   std::FILE* const stream = file.Open(nullptr);
//
// The name is drawn at random and stands for no file as yet: the file comes with Open. What appears under the name in
// the meantime, unless it is a plain file of this process's own user, is taken for a trap: it is not opened.
//
// Nothing here throws or sends an event.
class VREL_EXPORT VRELTemporaryFile {
 public:
  VRELTemporaryFile();
  // Adds "_" and the name of `source`, then "_" and the name in the path `name`, then "_" and the number, each where it
  // is given: a valid path, a text, a number other than 0 behind a text. Where they are says nothing about where the
  // file goes. A name that would make the path longer than 4095 characters is left out, which is promised.
  VRELTemporaryFile(VRELFilePath const& source, char const* name, unsigned int number);
  VRELTemporaryFile(VRELTemporaryFile const&) = delete;
  VRELTemporaryFile& operator=(VRELTemporaryFile const&) = delete;
  // As Terminate does.
  virtual ~VRELTemporaryFile();

  void GetPath(VRELFilePath& out) const;

  // The stream, which this object owns. The first call opens it, in the mode of fopen; "w+b" for null. As long as it is
  // open the mode is ignored. Null where it cannot be opened.
  std::FILE* Open(char const* mode);
  void Close();

  // Removes the file, and leaves the stream alone: 0, or -1 where that failed, as it does for a file that was never
  // opened. 0 without a path.
  int Remove();

  // Closes and removes the file and forgets its path; it cannot be opened any more.
  void Terminate();

 private:
  void InitializeName(VRELFilePath const& source, char const* name, unsigned int number);
  std::FILE* OpenAs(char const* mode) const;

  std::FILE* stream = nullptr;
  VRELFilePath path;
};
