// A list of options.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELOption.h"

// Carries options for the modules of the family; nothing in here puts one into it.
class VREL_EXPORT VRELOptionsArray {
 public:
  VRELOptionsArray();
  virtual ~VRELOptionsArray();

 private:
  VRELDynamicArray<VRELOption> options;
};
