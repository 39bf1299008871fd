// The stack of the library.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"

// A stack of pointers in one array. What they point at is never looked at and never deleted. Unlike an array, a copy
// shares nothing with its source.
class VREL_EXPORT VRELStack {
 public:
  VRELStack() = default;
  VRELStack(VRELStack const& other) : elements(other.elements.copy()) {}
  VRELStack& operator=(VRELStack const& other);

  virtual int Size() const;
  // Returns the new size. Throws VRELAllocException.
  virtual int Push(void* element);
  // Takes the last element off and returns it; null for an empty stack.
  virtual void* Pop();
  // The last element, which stays; null for an empty stack.
  virtual void* GetTop() const;
  virtual ~VRELStack();

  bool IsEmpty() const { return Size() == 0; }
  // The element at an index from the bottom; null outside the stack.
  void* ElementAt(int index) const { return index >= 0 && index < elements.size() ? elements[index] : nullptr; }

 private:
  VRELDynamicArray<void*> elements;
};
