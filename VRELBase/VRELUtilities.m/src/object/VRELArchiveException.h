// An object archive cannot be read on.
#pragma once

#include "VRELExport.h"

enum eVRELArchiveException : int {
  VRELArchiveEndReached = 1,  // a read returned fewer bytes than asked for
  VRELArchiveNotANumber = 2,  // a value that was read as a double is not a number
};

// Thrown as a pointer to a heap object, and that is promised: whoever catches it owns it and deletes it.
class VREL_EXPORT VRELArchiveException {
 public:
  explicit VRELArchiveException(eVRELArchiveException reason) noexcept : code(reason) {}

  eVRELArchiveException GetCode() const noexcept { return code; }

 private:
  eVRELArchiveException code;
};
