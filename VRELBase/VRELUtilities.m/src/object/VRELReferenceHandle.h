// The smart pointer to a counted object.
#pragma once

#include "VRELExport.h"
#include "VRELReferenceCount.h"

// Holds one use of a VRELReferenceCount on the heap, or nothing. Counts are raised and lowered through the object's
// virtual operations; a count that falls to 0 deletes the object. Use the typed handles (VRELTypedHandle) where the
// class of the object is known.
class VREL_EXPORT VRELReferenceHandle {
 public:
  // Null is allowed and gives an invalid handle.
  VRELReferenceHandle(VRELReferenceCount* object = nullptr);
  VRELReferenceHandle(VRELReferenceHandle const& other);
  virtual ~VRELReferenceHandle();

  // Whether an object is held.
  virtual bool IsValid() const;

  // Releases the held object, then takes the other's. Nothing happens when both hold the same object. The other handle
  // may stand inside the object that is released: `node = node->next` walks down a list and drops it behind.
  VRELReferenceHandle& operator=(VRELReferenceHandle const& other);

  // The held object; null in an invalid handle. The handle keeps its use.
  VRELReferenceCount* GetInstance() const noexcept { return instance; }

  // Whether this is the only handle of its object; false for an invalid handle.
  bool IsLastCall() const;

  // Whether both hold the same object.
  bool operator==(VRELReferenceHandle const& other) const noexcept { return instance == other.instance; }
  bool operator!=(VRELReferenceHandle const& other) const noexcept { return instance != other.instance; }
  // Orders by address.
  bool operator<(VRELReferenceHandle const& other) const noexcept;

 private:
  void Release();
  void ReleaseBeside(VRELReferenceCount* kept);

  VRELReferenceCount* instance;
};
