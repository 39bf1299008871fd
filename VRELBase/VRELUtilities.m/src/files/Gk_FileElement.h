// The file system as the library's older layer sees it: a path of bytes and what can be asked of it.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"

// A path, which is the string itself and no more: nothing is looked up before it is asked for, and nothing is kept.
// Nothing here throws for what the file system says; a failure is false, 0 or an empty string.
//
//   Gk_FileElement file(Gk_String("models/wheel.tar.gz"));
//   file.identifier();        // "wheel"
//   file.changeExtn("log");   // models/wheel.log
//   file.ensureParent();      // makes models
//
// Unlike a plain Gk_String a copy has bytes of its own, so that a change shows in no other element. "/" separates
// directories; a backslash does so only where an operation says it.
class VREL_EXPORT Gk_FileElement : public Gk_String {
 public:
  Gk_FileElement(Gk_String const& path);
  Gk_FileElement(Gk_FileElement const& other);
  Gk_FileElement& operator=(Gk_FileElement const& other);

  Gk_String const& pathName() const noexcept { return *this; }

  // What the file system says of the file, links followed; each is one call of stat, and false or 0 when that fails.
  bool exists() const;
  bool isDirectory() const;
  // A regular file; no device, pipe or socket.
  bool isFile() const;
  // Whether the owner may read or write it. That this says nothing about the caller is promised.
  bool canRead() const;
  bool canWrite() const;
  // In bytes.
  long length() const;
  // In seconds since 1970.
  long lastModified() const;

  // The text in front of the last "/"; without one that in front of the last backslash; without either ".". It is the
  // empty text for "/name".
  Gk_String dirName() const;
  // The text behind the last "/", or all of it. That a backslash does not count here is promised.
  Gk_String baseName() const;
  // The base name up to its first dot.
  Gk_String identifier() const;
  // Cuts this path at its first dot and puts a dot and the extension there; null counts as the empty text. That a dot
  // in a directory's name counts is promised: "txt" makes "d.txt" of "d.e/f".
  Gk_FileElement& changeExtn(char const* extension);
  // Makes an underscore of each "/" and each backslash in this path.
  Gk_FileElement& flatten();
  // The text behind `base` and a "/"; an empty string unless this path begins so.
  Gk_String relativeName(Gk_FileElement const& base) const;

  // Whether the name was removed; it must not be that of a directory.
  bool erase() const;
  // Whether the file was renamed. This path stays as it is.
  bool renameTo(Gk_FileElement const& target) const;
  // An empty text where the path does not fit into 1024 bytes.
  static Gk_String getCurrentDir();
  // Makes the directory of this path, and those that lead to it. False, with nothing made, if it exists; otherwise
  // true, which is promised even where it could not be made.
  bool ensureParent() const;
};
