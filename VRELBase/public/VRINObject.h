// The root of the public handles: what an application holds of the library.
#pragma once

#include "VRELExport.h"
#include "VRINObjectImpl.h"

// A handle on an implementation object that it may share with other handles; the implementation dies with the last of
// them. A handle has no state of its own. Handles are copied and assigned by sharing: what one shows, all show.
//
// No constructor of a public class reports a failure: ask IsValid(). A handle that was never given what it stands for
// is invalid, and each read of it gives a default.
//
// The counts are plain integers: handles that share an implementation stay on one thread.
class VREL_EXPORT VRINObject {
 public:
  // An invalid handle. The name of its type is a literal that is kept by its address.
  VRINObject(char const* type) noexcept;
  VRINObject(VRINObject const& other) noexcept;
  VRINObject& operator=(VRINObject const& other);

  // Whether there are a type's name and an implementation.
  virtual bool IsValid() const;

  // Lets go of the implementation.
  virtual ~VRINObject();

  // The implementation, a VRINObjectImpl; null in an invalid handle. It stays owned by its handles.
  void* GetData() const noexcept { return data; }
  // Lets go of the implementation at hand and takes another, a VRINObjectImpl from new; null makes the handle invalid.
  // The one that is held already is not touched.
  void SetData(void* impl);

  // Counts one use of the implementation more, and one less; the last one deletes it and makes this handle invalid.
  // Both return the new count, 0 for an invalid handle.
  long Ref() noexcept;
  long Unref();

 protected:
  // The implementation as its class; null where there is none.
  template <class Impl>
  Impl* GetDataAs() const noexcept {
    return static_cast<Impl*>(VRINObjectImpl::Cast(data));
  }

  // The same; null also where IsValid() says no.
  template <class Impl>
  Impl* GetImpl() const {
    return IsValid() ? GetDataAs<Impl>() : nullptr;
  }

  void SetImpl(VRINObjectImpl* impl) { SetData(impl); }

 private:
  char const* typeName;
  void* data = nullptr;
};
