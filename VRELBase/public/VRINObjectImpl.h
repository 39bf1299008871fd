// The root of what stands behind the public handles.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"

// An implementation object: counted by the handles (see VRINObject) that hold it, and known by a name for diagnosis.
// It derives from no other counted class, and its count may go below 0.
class VREL_EXPORT VRINObjectImpl {
 public:
  // Count 0, and the name "type[n]" for the n-th implementation object of the process. The library's own public names
  // are the first ones.
  VRINObjectImpl(char const* type);
  VRINObjectImpl(VRINObjectImpl const&) = delete;
  VRINObjectImpl& operator=(VRINObjectImpl const&) = delete;
  virtual ~VRINObjectImpl();

  // The new count. Neither stops at 0, and neither deletes the object.
  long Ref() noexcept { return ++referenceCount; }
  long Unref() noexcept { return --referenceCount; }

  // The data of a handle as what they are.
  static VRINObjectImpl* Cast(void* data) noexcept { return static_cast<VRINObjectImpl*>(data); }

  VRELString GetName() const { return name; }
  void SetName(VRELString const& newName) { name = newName; }

  // How many were ever made.
  static int _objectCounter;

 private:
  long referenceCount = 0;
  VRELString name;
};
