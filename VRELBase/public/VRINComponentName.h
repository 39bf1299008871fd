// The public names of the components of the family.
#pragma once

#include "VRELExport.h"
#include "VRINName.h"

// Which component an option is for; Any stands for all of them. It stands in an option's path: see VRINOptionName.
class VREL_EXPORT VRINComponentName : public VRINName {
 public:
  VRINComponentName(char const* name) : VRINName(name) {}

#define VREL_NAME(identifier, text) static VRINComponentName identifier;
#include "VRINComponentNames.def"

 private:
  explicit VRINComponentName(Literal literal) : VRINName(literal) {}
};
