// Path of a file as a byte string, with queries and actions.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"

// Path of a file in the older, byte-string layer of the library. The element is the string: queries go to the file
// system each time, and nothing is cached. Use VRELFilePath in new code.
//
//   Gk_FileElement file(Gk_String("models/wheel.tar.gz"));
//   file.identifier();        // "wheel"
//   file.changeExtn("log");   // models/wheel.log
//   file.ensureParent();      // creates models
//
// "/" separates directories. A backslash does so only where an operation mentions it. Unlike a Gk_String, a copy does
// not share its bytes with the source.
//
// Errors: failed system calls return false, 0 or an empty string. Nothing throws except on allocation failure.
class VREL_EXPORT Gk_FileElement : public Gk_String {
 public:
  Gk_FileElement(Gk_String const& path);
  Gk_FileElement(Gk_FileElement const& other);
  Gk_FileElement& operator=(Gk_FileElement const& other);

  Gk_String const& pathName() const noexcept { return *this; }

  // Query the file system with one call of stat each, which follows symbolic links.
  bool exists() const;
  bool isDirectory() const;
  // Returns true for regular files only, not for devices, pipes or sockets.
  bool isFile() const;
  // Return whether the owner of the file has read or write permission.
  //
  // Compatibility: the permissions of the caller are not considered.
  bool canRead() const;
  bool canWrite() const;
  // Returns the size in bytes.
  long length() const;
  // Returns the time of the last modification in seconds since 1970.
  long lastModified() const;

  // Returns the part before the last "/"; without "/" the part before the last backslash; without either ".". The
  // result is empty for "/name".
  Gk_String dirName() const;
  // Returns the part after the last "/".
  //
  // Compatibility: a backslash is not a separator here.
  Gk_String baseName() const;
  // Returns the base name up to its first dot.
  Gk_String identifier() const;
  // Replaces everything from the first dot of the path by "." and `extension`, or appends them if there is no dot. Null
  // is an empty extension.
  //
  // Compatibility: the first dot may be in the name of a directory: changeExtn("txt") turns "d.e/f" into "d.txt".
  Gk_FileElement& changeExtn(char const* extension);
  // Replaces each "/" and backslash by "_".
  Gk_FileElement& flatten();
  // Returns the part after `base` and "/", or an empty string if the path does not start with them.
  Gk_String relativeName(Gk_FileElement const& base) const;

  // Removes the file. Returns false for a directory.
  bool erase() const;
  // Renames the file. Does not change this element.
  bool renameTo(Gk_FileElement const& target) const;
  // Returns the current directory, or an empty string if its path needs more than 1023 bytes.
  static Gk_String getCurrentDir();
  // Creates the directory of the path and all missing parents. Returns false if it exists.
  //
  // Compatibility: returns true even if the directory could not be created.
  bool ensureParent() const;
};
