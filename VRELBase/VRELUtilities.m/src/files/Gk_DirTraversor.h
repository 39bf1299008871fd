// Iterator over the entries of a directory.
#pragma once

#include <dirent.h>

#include "Gk_DirElement.h"
#include "Gk_DirEntry.h"
#include "VRELExport.h"

// Iterator over the entries of a directory, "." and ".." included, in the order of the file system. As an element it is
// the path of the directory. Entries that are created or removed during the iteration may or may not be returned.
//
//   std::unique_ptr<Gk_DirTraversor> const traversor(Gk_DirTraversor::create(directory));
//   if (traversor == nullptr) return;
//   do Show(traversor->currentName());
//   while (traversor->next());
//
// The directory is open until the last entry is read or the traversor is deleted.
class VREL_EXPORT Gk_DirTraversor : public Gk_DirElement {
 public:
  // Returns a traversor at the first entry, or null if the directory cannot be read.
  //
  // Ownership: the caller deletes the traversor.
  static Gk_DirTraversor* create(Gk_DirElement const& theDirectory);

  Gk_DirTraversor(Gk_DirTraversor const&) = delete;
  Gk_DirTraversor& operator=(Gk_DirTraversor const&) = delete;
  ~Gk_DirTraversor();

  // Moves to the next entry. Returns false after the last entry; the directory is then closed.
  bool next();

  // Adds the paths of the current and all following entries to entries().
  void readAll();

  Gk_DirEntry const& current() const noexcept { return entry; }
  // Returns the path of the directory, "/" and the name of the entry; empty without an entry. The reference is valid
  // until the next entry is read.
  Gk_String const& currentName() const noexcept { return curName; }
  VRELDynamicArray<Gk_FileElement> const& entries() const noexcept { return list; }

  // Returns the descriptor of the open directory, or -1 after it was closed.
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
