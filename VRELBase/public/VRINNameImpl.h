// What stands behind the public names.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINObjectImpl.h"
#include "VRINResult.h"

// Holds the text of a name. GetName() without an argument is the base's and tells the object's name for diagnosis.
class VREL_EXPORT VRINNameImpl : public VRINObjectImpl {
 public:
  VRINNameImpl(VRELString const& newText);

  // Copy the text out and in; always VREL_S_OK.
  using VRINObjectImpl::GetName;
  VRINResult GetName(VRELString& out) const;
  VRINResult SetName(VRELString const& newText);

 private:
  VRELString text;
};
