// The counted base of all objects that the library shares.
#pragma once

#include "VRELExport.h"

// An object with a use count. It is made with count 0; the first handle that takes it raises the count to 1, and the
// handle that lowers the count to 0 deletes it. An object that never met a handle belongs to whoever made it, and may
// stand on the stack.
//
// Counts are plain integers: handles to one object stay on one thread.
class VREL_EXPORT VRELReferenceCount {
 public:
  explicit VRELReferenceCount(unsigned int initialCount = 0) noexcept : count(initialCount) {}

  // A use count is never copied: the new object starts at 0.
  VRELReferenceCount(VRELReferenceCount const&) noexcept : count(0) {}

  // Sets this object's count to 0 and nothing else. That an object which is assigned to forgets its handles is
  // promised.
  VRELReferenceCount& operator=(VRELReferenceCount const&) noexcept {
    count = 0;
    return *this;
  }

  virtual ~VRELReferenceCount();

  // Adds 1 and returns the new count.
  virtual unsigned int RaiseReference();

  // Subtracts 1, unless the count is 0 already, and returns the count. Never deletes: that is the handle's part.
  virtual unsigned int LowerReference();

  // A hook for derived classes; null here.
  virtual char const* GetName();

  // Whether exactly one handle holds the object.
  bool IsLastCall() const noexcept { return count == 1; }

  unsigned int GetReferenceCount() const noexcept { return count; }

 private:
  unsigned int count;
};
