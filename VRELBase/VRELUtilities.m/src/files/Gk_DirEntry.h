// What a walk through a directory has just read.
#pragma once

#include <dirent.h>

#include "VRELExport.h"

// An entry of a directory, or none. It points at the C library's own record, which holds until the walk goes on.
class VREL_EXPORT Gk_DirEntry {
 public:
  explicit Gk_DirEntry(dirent const* entry = nullptr) noexcept : record(entry) {}

  bool isValid() const noexcept { return record != nullptr; }

  // Null without an entry.
  char const* name() const noexcept { return record != nullptr ? record->d_name : nullptr; }

  // One of the DT_ constants of dirent.h; DT_UNKNOWN where the file system does not tell, and without an entry.
  unsigned char type() const noexcept {
    return record != nullptr ? record->d_type : static_cast<unsigned char>(DT_UNKNOWN);
  }

 private:
  dirent const* record;
};
