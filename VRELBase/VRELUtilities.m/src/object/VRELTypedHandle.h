// The shape that every typed handle has.
#pragma once

#include "VRELReferenceHandle.h"

// A handle that knows the class of its object. A class that is passed around shared names its own handle:
//
//   class VREL_EXPORT VRELFileHandle : public VRELTypedHandle<VRELFile> {
//    public:
//     using VRELTypedHandle::VRELTypedHandle;
//   };
//
// Access through -> or the conversion is not checked: ask IsValid() first. T may be incomplete until then.
template <class T>
class VRELTypedHandle : public VRELReferenceHandle {
 public:
  // Takes one use of the object; null is allowed.
  VRELTypedHandle(T* object = nullptr) : VRELReferenceHandle(object) {}

  // The held object, null in an invalid handle; still owned by the handles.
  operator T*() const { return static_cast<T*>(GetInstance()); }

  T* operator->() { return static_cast<T*>(GetInstance()); }
  T* operator->() const { return static_cast<T*>(GetInstance()); }

  bool operator==(VRELTypedHandle const& other) const noexcept { return VRELReferenceHandle::operator==(other); }
  bool operator!=(VRELTypedHandle const& other) const noexcept { return VRELReferenceHandle::operator!=(other); }
  bool operator<(VRELTypedHandle const& other) const noexcept { return VRELReferenceHandle::operator<(other); }
};
