// Base class of the public handles.
#pragma once

#include "VRELExport.h"
#include "VRINObjectImpl.h"

// Base class of the public handles: VRINFile, VRINValue, VRINUnit and the names. A handle points to an implementation
// object, which is counted and deleted with its last handle. Copies and assignments share the implementation object.
//
//   VRINValue const tolerance(0.01);
//   VRINValue const copy(tolerance);  // the same implementation object
//
// Errors: constructors do not throw for bad input. IsValid() returns false instead, and reads of an invalid handle
// return default values.
// Thread safety: the counts are plain integers. Use handles that share an implementation object on one thread only.
class VREL_EXPORT VRINObject {
 public:
  // Creates an invalid handle.
  // Requires: `type`, the name of the type, outlives the handle; use a string literal.
  VRINObject(char const* type) noexcept;
  VRINObject(VRINObject const& other) noexcept;
  VRINObject& operator=(VRINObject const& other);

  // Returns true if the handle has a type name and an implementation object.
  virtual bool IsValid() const;

  // Releases the implementation object.
  virtual ~VRINObject();

  // Returns the implementation object, a VRINObjectImpl*, or null.
  // Ownership: the handles.
  void* GetData() const noexcept { return data; }
  // Releases the implementation object and holds `impl`, a VRINObjectImpl* from new, or null for an invalid handle.
  // Does nothing if `impl` is already held.
  void SetData(void* impl);

  // Raises the count of the implementation object. Returns the new count, or 0 for an invalid handle.
  long Ref() noexcept;
  // Lowers the count. If it is then 0 or less, deletes the implementation object and makes this handle invalid. Returns
  // the new count, or 0 for an invalid handle.
  long Unref();

 protected:
  // Returns the implementation object, or null.
  template <class Impl>
  Impl* GetDataAs() const noexcept {
    return static_cast<Impl*>(VRINObjectImpl::Cast(data));
  }

  // Returns the implementation object, or null if IsValid() returns false.
  template <class Impl>
  Impl* GetImpl() const {
    return IsValid() ? GetDataAs<Impl>() : nullptr;
  }

  void SetImpl(VRINObjectImpl* impl) { SetData(impl); }

 private:
  char const* typeName;
  void* data = nullptr;
};
