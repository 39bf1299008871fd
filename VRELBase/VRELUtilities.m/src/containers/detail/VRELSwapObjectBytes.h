// How elements of a dynamic array change places.
#pragma once

#include <cstring>
#include <memory>

// Exchanges two objects byte by byte, which all that stands in a VRELDynamicArray survives. Calls nothing of T and
// never throws; both may be one object.
template <class T>
void VRELSwapObjectBytes(T& a, T& b) noexcept {
  alignas(T) unsigned char held[sizeof(T)];
  void* const first = std::addressof(a);
  void* const second = std::addressof(b);
  std::memcpy(held, first, sizeof(T));
  std::memmove(first, second, sizeof(T));
  std::memcpy(second, held, sizeof(T));
}
