#include "VRELStack.h"

VRELStack& VRELStack::operator=(VRELStack const& other) {
  elements = other.elements.copy();
  return *this;
}

int VRELStack::Size() const {
  return elements.size();
}

int VRELStack::Push(void* element) {
  elements.add(element);
  return elements.size();
}

void* VRELStack::Pop() {
  int const size = elements.size();
  if (size == 0) return nullptr;
  void* const top = elements[size - 1];
  elements.endShrink(1);
  return top;
}

void* VRELStack::GetTop() const {
  int const size = elements.size();
  return size == 0 ? nullptr : elements[size - 1];
}

VRELStack::~VRELStack() = default;
