// Base class template of typed handles.
#pragma once

#include "VRELReferenceHandle.h"

// Handle on an object of class T, which derives from VRELReferenceCount. A class that is shared defines its handle
// once:
//
//   class VREL_EXPORT VRELFileHandle : public VRELTypedHandle<VRELFile> {
//    public:
//     using VRELTypedHandle::VRELTypedHandle;
//   };
//
//   VRELFileHandle file(new VRELFile(path));
//   if (file != nullptr) file->GetFilePointer(stream, VRELFile::BinaryOpen);
//
// T can be incomplete where the handle is declared.
//
// Requires: the handle is valid where the object is accessed through -> or the pointer; neither is checked.
// Compatibility: assigning to the object (`*handle = value`) sets its reference count to 0; see VRELReferenceHandle.
template <class T>
class VRELTypedHandle : public VRELReferenceHandle {
 public:
  // Creates a handle on `object`, or an invalid handle if it is null.
  VRELTypedHandle(T* object = nullptr) : VRELReferenceHandle(object) {}

  // Releases the held object, then holds `object`, which may be null or the held object itself.
  void reset(T* object = nullptr) { VRELReferenceHandle::reset(object); }

  // Converts to the pointer, null for an invalid handle.
  // Ownership: the handles.
  operator T*() const { return static_cast<T*>(GetInstance()); }

  T* operator->() { return static_cast<T*>(GetInstance()); }
  T* operator->() const { return static_cast<T*>(GetInstance()); }

  // Compare the addresses of the held objects.
  bool operator==(VRELTypedHandle const& other) const noexcept { return VRELReferenceHandle::operator==(other); }
  bool operator!=(VRELTypedHandle const& other) const noexcept { return VRELReferenceHandle::operator!=(other); }
  bool operator<(VRELTypedHandle const& other) const noexcept { return VRELReferenceHandle::operator<(other); }

  bool operator==(std::nullptr_t) const noexcept { return GetInstance() == nullptr; }
  bool operator!=(std::nullptr_t) const noexcept { return GetInstance() != nullptr; }
  bool operator==(T* object) const noexcept { return static_cast<T*>(GetInstance()) == object; }
  bool operator!=(T* object) const noexcept { return static_cast<T*>(GetInstance()) != object; }
  bool operator==(T const* object) const noexcept { return static_cast<T const*>(GetInstance()) == object; }
  bool operator!=(T const* object) const noexcept { return static_cast<T const*>(GetInstance()) != object; }

  friend bool operator==(std::nullptr_t, VRELTypedHandle const& handle) noexcept { return handle == nullptr; }
  friend bool operator!=(std::nullptr_t, VRELTypedHandle const& handle) noexcept { return handle != nullptr; }
  friend bool operator==(T* object, VRELTypedHandle const& handle) noexcept { return handle == object; }
  friend bool operator!=(T* object, VRELTypedHandle const& handle) noexcept { return handle != object; }
  friend bool operator==(T const* object, VRELTypedHandle const& handle) noexcept { return handle == object; }
  friend bool operator!=(T const* object, VRELTypedHandle const& handle) noexcept { return handle != object; }
};
