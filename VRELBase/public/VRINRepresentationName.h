// The public names of the representations of a model.
#pragma once

#include "VRELExport.h"
#include "VRINName.h"

// Which representation an option is for; Any stands for all of them. It stands in an option's path: see VRINOptionName.
class VREL_EXPORT VRINRepresentationName : public VRINName {
 public:
  VRINRepresentationName(char const* name) : VRINName(name) {}

#define VREL_NAME(identifier, text) static VRINRepresentationName identifier;
#include "VRINRepresentationNames.def"

 private:
  explicit VRINRepresentationName(Literal literal) : VRINName(literal) {}
};
