// Base class of the implementation objects of the public handles.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"

// Implementation object of a public handle: it has a reference count, managed by VRINObject, and a diagnostic name.
//
// Compatibility: independent of VRELReferenceCount. The count is signed and can become negative.
class VREL_EXPORT VRINObjectImpl {
 public:
  // Creates an object with count 0 and the diagnostic name "type[n]", where n counts all implementation objects of the
  // process. The names that the library defines have the first numbers. A null type is treated as the empty string.
  VRINObjectImpl(char const* type);
  VRINObjectImpl(VRINObjectImpl const&) = delete;
  VRINObjectImpl& operator=(VRINObjectImpl const&) = delete;
  virtual ~VRINObjectImpl();

  // Add or subtract 1 and return the new count. Neither stops at 0 or deletes the object.
  long Ref() noexcept { return ++referenceCount; }
  long Unref() noexcept { return --referenceCount; }

  // Converts the pointer of VRINObject::GetData.
  static VRINObjectImpl* Cast(void* data) noexcept { return static_cast<VRINObjectImpl*>(data); }

  VRELString GetName() const { return name; }
  void SetName(VRELString const& newName) { name = newName; }

  // Number of implementation objects ever created.
  // Thread safety: a plain integer; create public objects on one thread.
  static int _objectCounter;

 private:
  long referenceCount = 0;
  VRELString name;
};
