// The document that is translated, as modules can read it.
#pragma once

#include <sys/stat.h>

#include <string>

#include "InputFile.h"

// A regular file stays where it is; what has no length (a pipe, a device, standard input behind its begin) is first
// copied into a file without a name in the folder that TMPDIR names, else in /tmp, which is gone with the object. "-"
// and /dev/stdin are standard input.
//
// Throws InputError without a line where there is nothing to read (VREL_E_FILE_NOT_FOUND, VREL_E_FILE_OPEN) or no room
// for the copy (VREL_E_FILE_SAVE); VRELAbortException when an abort is asked for while it waits for bytes.
class InputDocument {
 public:
  explicit InputDocument(std::string const& path);

  // What opens the bytes, from the first one on, as often as wanted while the object lives. It holds no letter of the
  // document's name, so that a name in any encoding will do.
  std::string const& Path() const { return readable; }
  long Size() const { return size; }
  // Of what was named.
  struct stat Status() const {
    return file.Status();
  }

 private:
  void Spool();

  InputFile file;
  InputFile copy;  // in use where there had to be one
  std::string readable;
  long size = 0;
};
