// Document to translate, in a form that modules can read.
#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

#include "InputFile.h"

// A regular file is used as it is. Other input is first copied into an unnamed temporary file, which disappears with
// the object: a pipe, a device, a standard input that is not at its beginning or that this user may not open again. The
// temporary file is in the folder that TMPDIR names, by default in /tmp. "-" and "/dev/stdin" are standard input.
//
// Errors: FileError with VREL_E_FILE_NOT_FOUND or VREL_E_FILE_OPEN if the input cannot be read, with VREL_E_FILE_SAVE
// if the copy cannot be written; VRELAbortException if an abort is requested while the constructor waits for bytes.
class InputDocument {
 public:
  static constexpr long kNoLimit = 1L << 62U;

  // A temporary copy has at most `spaceLimit` bytes.
  explicit InputDocument(std::string const& path, long spaceLimit = kNoLimit);

  // Returns a path that opens the bytes, from the first one on, any number of times while the object exists. It
  // contains nothing of the document's name, so that a name in any encoding is accepted.
  std::string const& Path() const { return readable; }
  long Size() const { return size; }
  // Returns the status of the named file at the time when it was opened.
  struct stat Status() const {
    return status;
  }

  // Returns what is wrong with compressed input that could be decompressed partly; empty if nothing is.
  std::string const& Damage() const { return damage; }

  // Throws FileError with VREL_E_FILE_OPEN if the document has changed since it was opened: its size, its time of
  // modification, or the file that its name refers to. A copied document cannot change.
  void CheckUnchanged() const;

 private:
  bool IsUsable(std::string const& path);
  void Copy();
  void CreateCopy();
  void Append(std::string_view bytes);
  void CopyZip();
  [[noreturn]] void FailToCopy(std::string const& reason, std::string const& hint) const;

  std::string name;
  InputFile file;
  InputFile copy;  // no file if the document is used as it is
  struct stat status;
  std::string readable;
  std::string damage;
  std::string folder;  // of the copy
  long limit;
  long size = 0;
};

// Returns whether a regular file begins as a STEP file or, decompressed, as one. A zip archive counts as one. Nothing
// else is opened: a pipe would lose its writer.
bool IsStepDocument(std::string const& path);
