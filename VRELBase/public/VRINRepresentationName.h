// Names of the representations of a model.
#pragma once

#include "VRELExport.h"
#include "VRINName.h"

// Representation that an option applies to, such as `Assembly` or `Mesh`; `Any` matches every representation. Part of
// an option path: see VRINOptionName for an example.
class VREL_EXPORT VRINRepresentationName : public VRINName {
 public:
  VRINRepresentationName(char const* name) : VRINName(name) {}

#define VREL_NAME(identifier, text) static VRINRepresentationName identifier;
#include "VRINRepresentationNames.def"

 private:
  explicit VRINRepresentationName(Literal literal) : VRINName(literal) {}
};
