// Exchange of two elements of a dynamic array.
#pragma once

#include <cstring>
#include <memory>

// Exchanges two objects byte by byte, which all elements of a VRELDynamicArray survive. Calls no operation of T and
// does not throw. Both may be the same object.
template <class T>
void VRELSwapObjectBytes(T& a, T& b) noexcept {
  alignas(T) unsigned char bytes[sizeof(T)];
  void* const first = std::addressof(a);
  void* const second = std::addressof(b);
  std::memcpy(bytes, first, sizeof(T));
  std::memmove(first, second, sizeof(T));
  std::memcpy(second, bytes, sizeof(T));
}
