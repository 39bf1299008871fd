// Base class of the boxes.
#pragma once

#include "VRELExport.h"

// Interface of an axis-aligned box of any dimension; see VRELBox2D and VRELBox3D.
//
// Ownership: delete a box through its own type; this destructor is not virtual.
class VREL_EXPORT VRELBox {
 public:
  // Makes the box empty.
  virtual void Reset() = 0;
  // Moves each side outward by `distance`. Returns true if a side was moved.
  virtual bool expand(double distance) = 0;
  // Returns 2 or 3.
  virtual int GetDimension() const = 0;

 protected:
  VRELBox() noexcept = default;
  VRELBox(VRELBox const&) noexcept = default;
  VRELBox& operator=(VRELBox const&) noexcept = default;
  ~VRELBox() = default;
};
