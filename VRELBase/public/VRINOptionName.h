// The public names of settings, and the paths that are made of them.
#pragma once

#include "VRELExport.h"
#include "VRINComponentName.h"
#include "VRINName.h"
#include "VRINReaderWriterName.h"
#include "VRINRepresentationName.h"

// The path of an option: the name of a setting, and before it, with dots between, for which component, representation
// and direction it holds. The settings that an application knows are static members.
//
//   VRINOptionName const path(VRINComponentName::Any, VRINRepresentationName::Assembly, VRINReaderWriterName::Reader,
//                             VRINOptionName::Representation);  // "*.Assembly.Reader.Representation"
//
// A part whose handle has no implementation is empty, and its dot stays.
class VREL_EXPORT VRINOptionName : public VRINName {
 public:
  VRINOptionName(char const* name);
  // A name of its own with the same text; an assignment shares the other's, as every public class does.
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
