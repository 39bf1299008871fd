// Entry of a directory.
#pragma once

#include <dirent.h>

#include "VRELExport.h"

// Entry of a directory, or none. Refers to the record of the C library, which is valid until the next entry is read.
//
//   Gk_DirEntry const& entry = traversor->current();
//   if (entry.isValid()) Show(entry.name());
class VREL_EXPORT Gk_DirEntry {
 public:
  explicit Gk_DirEntry(dirent const* entry = nullptr) noexcept : record(entry) {}

  bool isValid() const noexcept { return record != nullptr; }

  // Returns the name, or null without an entry.
  char const* name() const noexcept { return record != nullptr ? record->d_name : nullptr; }

  // Returns one of the DT_ constants of dirent.h; DT_UNKNOWN if the file system does not report types, and without an
  // entry.
  unsigned char type() const noexcept {
    return record != nullptr ? record->d_type : static_cast<unsigned char>(DT_UNKNOWN);
  }

 private:
  dirent const* record;
};
