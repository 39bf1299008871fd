// A named failure that is thrown by value.
#pragma once

#include "Gk_Marker.h"

// The token tells what failed: "CANNOT_OPEN_FILE", "Gk_IOException", "Array index is out of bound".
class VREL_EXPORT Gk_Exception : public Gk_Marker {
 public:
  // The token must outlive the exception. The parent is taken and not kept.
  explicit Gk_Exception(char const* token, Gk_Exception* parent = nullptr) noexcept;
};
