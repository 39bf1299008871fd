// Array of options.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELOption.h"

// Owns an array of options. The class has no operations of its own: it is a base for modules that pass lists of
// options.
//
//   class ReaderOptions : public VRELOptionsArray { ... };
class VREL_EXPORT VRELOptionsArray {
 public:
  VRELOptionsArray();
  virtual ~VRELOptionsArray();

 private:
  VRELDynamicArray<VRELOption> options;
};
