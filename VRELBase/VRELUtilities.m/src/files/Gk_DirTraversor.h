// A walk through the entries of a directory.
#pragma once

#include <dirent.h>

#include "Gk_DirElement.h"
#include "Gk_DirEntry.h"
#include "VRELExport.h"

// Reads a directory entry by entry, "." and ".." among them, in the order of the file system; the path that it has as
// an element is that of the directory. Entries that come or go while it walks may be met or not.
//
//   std::unique_ptr<Gk_DirTraversor> const walk(Gk_DirTraversor::create(directory));
//   if (walk == nullptr) return;
//   do Show(walk->currentName());
//   while (walk->next());
//
// The directory is open until the last entry is read, or until the traversor is deleted.
class VREL_EXPORT Gk_DirTraversor : public Gk_DirElement {
 public:
  // A walk that stands at the first entry; the caller deletes it. Null where the directory cannot be opened or read.
  static Gk_DirTraversor* create(Gk_DirElement const& theDirectory);

  Gk_DirTraversor(Gk_DirTraversor const&) = delete;
  Gk_DirTraversor& operator=(Gk_DirTraversor const&) = delete;
  ~Gk_DirTraversor();

  // Goes on to the next entry. False behind the last one, where the directory is closed and there is no entry.
  bool next();

  // Goes on to the end, and adds the path of each entry from the current one on to entries().
  void readAll();

  Gk_DirEntry const& current() const noexcept { return entry; }
  // The directory's path, "/" and the entry's name; an empty string without an entry. Good until the walk goes on.
  Gk_String const& currentName() const noexcept { return curName; }
  VRELDynamicArray<Gk_FileElement> const& entries() const noexcept { return list; }

  // Of the open directory; -1 once it is closed.
  int descriptor() const noexcept;

 private:
  explicit Gk_DirTraversor(Gk_DirElement const& theDirectory);

  void read();
  void makeCurName(char const* name);
  void close() noexcept;

  VRELDynamicArray<Gk_FileElement> list;
  DIR* directory;
  Gk_DirEntry entry;
  Gk_String curName;
};
