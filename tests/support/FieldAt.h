// Reads a field of an object by its offset.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

// Returns the bytes at `offset` of `object` as a T.
template <class T, class Object>
T FieldAt(Object const& object, std::size_t offset) {
  static_assert(std::is_trivially_copyable_v<T>);
  T value;
  std::memcpy(&value, reinterpret_cast<unsigned char const*>(&object) + offset, sizeof value);
  return value;
}

// Returns the offset of a part of an object, given a reference to the part.
template <class Object, class Part>
std::size_t OffsetOf(Object const& object, Part const& part) {
  return static_cast<std::size_t>(reinterpret_cast<unsigned char const*>(&part) -
                                  reinterpret_cast<unsigned char const*>(&object));
}
