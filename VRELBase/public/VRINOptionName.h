// Names of options, and option paths.
#pragma once

#include "VRELExport.h"
#include "VRINComponentName.h"
#include "VRINName.h"
#include "VRINReaderWriterName.h"
#include "VRINRepresentationName.h"

// Name of an option, or a path that restricts it to a component, a representation and a direction. The options that an
// application can set are static members.
//
//   VRINOptionName const path(VRINComponentName::Any, VRINRepresentationName::Assembly, VRINReaderWriterName::Reader,
//                             VRINOptionName::Representation);  // "*.Assembly.Reader.Representation"
//
// The parts are joined by dots. A part without an implementation object is empty; its dot remains.
class VREL_EXPORT VRINOptionName : public VRINName {
 public:
  VRINOptionName(char const* name);
  // Creates a new implementation object with the same string.
  //
  // Compatibility: unlike the copy constructor, an assignment shares the implementation object of `other`.
  VRINOptionName(VRINOptionName const& other);
  VRINOptionName(VRINComponentName const& component, VRINOptionName const& option);
  VRINOptionName(VRINComponentName const& component, VRINRepresentationName const& representation,
                 VRINOptionName const& option);
  VRINOptionName(VRINComponentName const& component, VRINRepresentationName const& representation,
                 VRINReaderWriterName const& direction, VRINOptionName const& option);
  VRINOptionName& operator=(VRINOptionName const& other) = default;

#define VREL_NAME(identifier, text) static VRINOptionName identifier;
#include "VRINOptionNames.def"

 private:
  explicit VRINOptionName(Literal literal) : VRINName(literal) {}
};
