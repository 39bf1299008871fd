// Exception for an object archive that is truncated or malformed.
#pragma once

#include "VRELExport.h"

enum eVRELArchiveException : int {
  VRELArchiveEndReached = 1,  // a read returned fewer bytes than requested
  VRELArchiveNotANumber = 2,  // a value read as a double is NaN
};

// Thrown by VRELArchive.
//
//   try {
//     archive >> value;
//   } catch (VRELArchiveException* exception) {
//     std::unique_ptr<VRELArchiveException> const owner(exception);
//     ...
//   }
//
// Compatibility: thrown as a pointer to a heap object.
// Ownership: the handler deletes it.
class VREL_EXPORT VRELArchiveException {
 public:
  explicit VRELArchiveException(eVRELArchiveException reason) noexcept : code(reason) {}

  eVRELArchiveException GetCode() const noexcept { return code; }

 private:
  eVRELArchiveException code;
};
