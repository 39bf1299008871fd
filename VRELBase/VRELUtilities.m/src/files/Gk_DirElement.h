// Path of a directory, with queries and actions.
#pragma once

#include "Gk_FileElement.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"

// Path that is used as the path of a directory. A directory that cannot be read has no children.
//
//   for (Gk_FileElement const& file : Gk_DirElement(Gk_String("models")).fetchLeafFiles("*.stp")) Translate(file);
class VREL_EXPORT Gk_DirElement : public Gk_FileElement {
 public:
  Gk_DirElement(Gk_String const& path);

  // Return whether the path ends in "." but not in "..", and whether it ends in "..".
  //
  // Compatibility: only the end of the string is examined, so that "a." is a dot and "b.." a dot-dot.
  bool isDot() const;
  bool isDotDot() const;

  // Creates the directory and all missing parents, with mode 0777 less the umask. Returns whether the directory itself
  // was created; false if it existed.
  bool mkdir() const;
  // Removes the directory, which must be empty. Returns whether it was removed.
  bool rmdir() const;

  // Returns the path of each entry, "." and ".." included, in the order of the file system: the path of the directory,
  // "/" and the name of the entry.
  VRELDynamicArray<Gk_FileElement> children() const;

  // Returns the files below the directory whose paths match the pattern (see Gk_ROString::matchPathPattern). The path
  // of a file starts with the path of the directory. The order is that of children(), depth first. Symbolic links are
  // followed, except links to a directory that contains them; paths longer than PATH_MAX are skipped.
  //
  // Compatibility: directories whose names end in a dot are not searched.
  VRELDynamicArray<Gk_FileElement> fetchLeafFiles(Gk_ROString const& pattern) const;

  // Returns the path of the first child that is a directory and isDot(), without its last two characters: the path of
  // this directory. Returns an empty string if there is no such child.
  //
  // Compatibility: a child directory "a." that precedes "." in the order of the file system is returned without "a.".
  Gk_String fullPath() const;
};
