// Base class of objects with an intrusive reference count.
#pragma once

#include "VRELExport.h"

// Base class of objects with an intrusive reference count. Handles (VRELReferenceHandle, VRELTypedHandle) raise and
// lower the count and delete the object when it reaches 0.
//
//   class Face : public VRELReferenceCount { ... };
//   using FaceHandle = VRELTypedHandle<Face>;
//
//   FaceHandle const first(new Face);  // count 1
//   FaceHandle const second(first);    // count 2
//
// Ownership: a new object has count 0 and belongs to its creator until the first handle holds it. An object that never
// gets a handle can be a local variable or a member.
// Thread safety: the count is a plain integer. Use the handles of one object on one thread only.
// Compatibility: assignment sets the count of the left side to 0. If handles hold that object, the first of them to
// release it deletes it, and the others dangle. Assign a new object to the handle instead (`handle.reset(new Face)`),
// or copy the values member by member.
class VREL_EXPORT VRELReferenceCount {
 public:
  explicit VRELReferenceCount(unsigned int initialCount = 0) noexcept : count(initialCount) {}

  // Creates an object with count 0; the count of the source is not copied.
  VRELReferenceCount(VRELReferenceCount const&) noexcept : count(0) {}

  // Sets the count to 0, also in a self-assignment. See Compatibility above.
  VRELReferenceCount& operator=(VRELReferenceCount const&) noexcept {
    count = 0;
    return *this;
  }

  virtual ~VRELReferenceCount();

  // Adds 1 and returns the new count.
  virtual unsigned int RaiseReference();

  // Subtracts 1 unless the count is 0, and returns the count. Does not delete the object.
  virtual unsigned int LowerReference();

  // Returns null. Derived classes can override it.
  virtual char const* GetName();

  // Returns true if the count is 1.
  bool IsLastCall() const noexcept { return count == 1; }

  unsigned int GetReferenceCount() const noexcept { return count; }

 private:
  unsigned int count;
};
