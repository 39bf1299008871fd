// The stack of the library.
#pragma once

#include <initializer_list>

#include "VRELDynamicArray.h"
#include "VRELExport.h"

// Stack of pointers in one array.
//
//   VRELStack path;
//   path.Push(node);
//   while (void* const top = path.Pop()) Leave(top);
//
// A copy is independent of its source, unlike that of an array; a move leaves the source empty. All operations but
// copies take constant time.
//
// Errors: Push throws VRELAllocException if memory is exhausted.
// Ownership: the objects belong to the caller.
// Thread safety: none.
class VREL_EXPORT VRELStack {
 public:
  VRELStack() = default;
  // Pushes the listed pointers, the last one on top.
  VRELStack(std::initializer_list<void*> values) : elements(values) {}
  VRELStack(VRELStack const& other) : elements(other.elements.copy()) {}
  VRELStack& operator=(VRELStack const& other);
  VRELStack(VRELStack&&) noexcept = default;
  VRELStack& operator=(VRELStack&&) noexcept = default;

  virtual int Size() const;
  // Adds the element on top. Returns the new size.
  virtual int Push(void* element);
  // Removes the top element and returns it; null for an empty stack.
  virtual void* Pop();
  // Returns the top element; null for an empty stack.
  virtual void* GetTop() const;
  virtual ~VRELStack();

  bool IsEmpty() const { return Size() == 0; }
  // Returns the element at an index from the bottom; null for an index out of range.
  void* ElementAt(int index) const { return index >= 0 && index < elements.size() ? elements[index] : nullptr; }

  // Returns whether both stacks have the same pointers in the same order.
  bool operator==(VRELStack const& other) const noexcept { return elements == other.elements; }
  bool operator!=(VRELStack const& other) const noexcept { return !(*this == other); }

 private:
  VRELDynamicArray<void*> elements;
};
