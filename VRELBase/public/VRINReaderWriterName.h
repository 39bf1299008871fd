// The public names of the directions of a translation.
#pragma once

#include "VRELExport.h"
#include "VRINName.h"

// Whether an option is for reading or for writing; Any stands for both. It stands in an option's path: see
// VRINOptionName.
class VREL_EXPORT VRINReaderWriterName : public VRINName {
 public:
  VRINReaderWriterName(char const* name) : VRINName(name) {}

#define VREL_NAME(identifier, text) static VRINReaderWriterName identifier;
#include "VRINReaderWriterNames.def"

 private:
  explicit VRINReaderWriterName(Literal literal) : VRINName(literal) {}
};
