// Names of the directions of a translation.
#pragma once

#include "VRELExport.h"
#include "VRINName.h"

// Direction that an option applies to: `Reader`, `Writer` or `Any`. Part of an option path: see VRINOptionName for an
// example.
class VREL_EXPORT VRINReaderWriterName : public VRINName {
 public:
  VRINReaderWriterName(char const* name) : VRINName(name) {}

#define VREL_NAME(identifier, text) static VRINReaderWriterName identifier;
#include "VRINReaderWriterNames.def"

 private:
  explicit VRINReaderWriterName(Literal literal) : VRINName(literal) {}
};
