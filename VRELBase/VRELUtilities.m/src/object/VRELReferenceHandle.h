// Smart pointer to a reference-counted object.
#pragma once

#include <cstddef>
#include <utility>

#include "VRELExport.h"
#include "VRELReferenceCount.h"

// Smart pointer to a VRELReferenceCount on the heap. It calls the virtual RaiseReference and LowerReference and deletes
// the object when the count reaches 0. Use a typed handle (VRELTypedHandle) if the class of the object is known.
//
//   VRELReferenceHandle handle(new Face);
//   VRELReferenceHandle other = std::move(handle);  // no change of the count
//   if (handle == nullptr) ...                      // true
//   other.reset();                                  // deletes the object
//
// Performance: a pointer and a virtual table pointer. A copy costs one virtual call, a move none.
// Thread safety: none; see VRELReferenceCount.
// Compatibility: assigning to the object itself (`*handle = value`) sets its count to 0, so that the next handle that
// releases it deletes it while others still point to it. Assign to the handle instead.
//
// The destructor of an object that holds a handle on the next one runs recursively. Release a long chain in a loop:
//
//   while (head != nullptr) head = head->next;
class VREL_EXPORT VRELReferenceHandle {
 public:
  // Creates a handle on `object`, or an invalid handle if it is null.
  VRELReferenceHandle(VRELReferenceCount* object = nullptr);
  VRELReferenceHandle(VRELReferenceHandle const& other);
  // Takes the object over; `other` becomes invalid.
  VRELReferenceHandle(VRELReferenceHandle&& other) noexcept : instance(std::exchange(other.instance, nullptr)) {}
  virtual ~VRELReferenceHandle();

  // Returns true if the handle holds an object.
  virtual bool IsValid() const;

  // Releases the held object, then holds the object of `other`. Does nothing if both hold the same object. `other` may
  // be a member of the released object, as in `node = node->next`.
  VRELReferenceHandle& operator=(VRELReferenceHandle const& other);

  // Releases the held object and takes over that of `other`, which becomes invalid. `other` may be a member of the
  // released object. A self-assignment does nothing.
  VRELReferenceHandle& operator=(VRELReferenceHandle&& other) noexcept;

  // Releases the held object, then holds `object`, which may be null or the held object itself.
  void reset(VRELReferenceCount* object = nullptr) { *this = VRELReferenceHandle(object); }

  // Returns the held object, or null. The handle keeps its reference.
  VRELReferenceCount* GetInstance() const noexcept { return instance; }

  // Returns true if the handle holds an object.
  explicit operator bool() const noexcept { return instance != nullptr; }

  // Returns true if this is the only handle of its object; false for an invalid handle.
  bool IsLastCall() const;

  // Compare the addresses of the held objects.
  bool operator==(VRELReferenceHandle const& other) const noexcept { return instance == other.instance; }
  bool operator!=(VRELReferenceHandle const& other) const noexcept { return instance != other.instance; }
  bool operator<(VRELReferenceHandle const& other) const noexcept;

  bool operator==(std::nullptr_t) const noexcept { return instance == nullptr; }
  bool operator!=(std::nullptr_t) const noexcept { return instance != nullptr; }
  friend bool operator==(std::nullptr_t, VRELReferenceHandle const& handle) noexcept { return handle == nullptr; }
  friend bool operator!=(std::nullptr_t, VRELReferenceHandle const& handle) noexcept { return handle != nullptr; }

 private:
  static void Release(VRELReferenceCount* object);
  void ReleaseBefore(VRELReferenceCount* next);

  VRELReferenceCount* instance;
};
