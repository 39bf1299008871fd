// Implementation object of VRINName.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINObjectImpl.h"
#include "VRINResult.h"

// Holds the string of a public name. GetName() without an argument is inherited and returns the diagnostic name.
class VREL_EXPORT VRINNameImpl : public VRINObjectImpl {
 public:
  VRINNameImpl(VRELString const& newText);

  using VRINObjectImpl::GetName;
  // Copies the string out. Returns VREL_S_OK.
  VRINResult GetName(VRELString& out) const;
  // Replaces the string. Returns VREL_S_OK.
  VRINResult SetName(VRELString const& newText);

 private:
  VRELString text;
};
