// A directory, by its path.
#pragma once

#include "Gk_FileElement.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"

// A path that is taken for that of a directory. As with all elements, nothing is looked up before it is asked for; a
// directory that cannot be read is one without children.
//
//   for (Gk_FileElement const& file : Gk_DirElement(Gk_String("models")).fetchLeafFiles("*.stp")) Translate(file);
class VREL_EXPORT Gk_DirElement : public Gk_FileElement {
 public:
  Gk_DirElement(Gk_String const& path);

  // Whether the path ends with "." but not with "..", and whether it ends with "..". That only the end of the text
  // counts is promised: "a." and "b.." pass too.
  bool isDot() const;
  bool isDotDot() const;

  // Makes the directories that lead to this one, as far as they do not exist, and then this one. Whether this one was
  // made: false if it exists. The modes are 0777 less the umask.
  bool mkdir() const;
  // Whether the directory, which must be empty, was removed.
  bool rmdir() const;

  // The path of each entry, "." and ".." among them: this path, "/" and the entry's name. In the order of the file
  // system.
  VRELDynamicArray<Gk_FileElement> children() const;

  // The files below this directory whose paths, this one in front, match the pattern by Gk_ROString::matchPathPattern:
  // child by child in the order of children(), where a directory stands for what is found in it. Links count as what
  // they lead to.
  //
  // Directories whose names end in a dot are not gone into, which is promised. A link that leads back to a directory on
  // the way to it is not followed, nor is anything whose path is longer than the system allows.
  VRELDynamicArray<Gk_FileElement> fetchLeafFiles(Gk_ROString const& pattern) const;

  // The path of the first child that is a directory and isDot, without its last two characters: this path, if it is
  // that of a directory. That a child such as "a.", if it comes first, gives a path without "a." is promised. An empty
  // string where there is no such child.
  Gk_String fullPath() const;
};
