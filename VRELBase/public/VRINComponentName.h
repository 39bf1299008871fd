// Names of the components of an option path.
#pragma once

#include "VRELExport.h"
#include "VRINName.h"

// Component (format) that an option applies to; `Any` matches every component. It is the first part of an option path:
// see VRINOptionName for an example.
class VREL_EXPORT VRINComponentName : public VRINName {
 public:
  VRINComponentName(char const* name) : VRINName(name) {}

#define VREL_NAME(identifier, text) static VRINComponentName identifier;
#include "VRINComponentNames.def"

 private:
  explicit VRINComponentName(Literal literal) : VRINName(literal) {}
};
