// The root of the boxes.
#pragma once

#include "VRELExport.h"

// What a box of any dimension can do. A box is deleted by its own type, VRELBox2D or VRELBox3D.
class VREL_EXPORT VRELBox {
 public:
  // Makes the box empty.
  virtual void Reset() = 0;
  // Moves each side outward. Whether any did.
  virtual bool expand(double distance) = 0;
  // 2 or 3.
  virtual int GetDimension() const = 0;

 protected:
  VRELBox() noexcept = default;
  VRELBox(VRELBox const&) noexcept = default;
  VRELBox& operator=(VRELBox const&) noexcept = default;
  ~VRELBox() = default;
};
