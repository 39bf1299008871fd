// Access to the fields of an object by their offset.
#pragma once

#include <cstddef>
#include <cstring>

// Returns a copy of the bytes at an offset of the object as a Field.
template <class Field, class Object>
Field FieldAt(Object const& object, std::size_t offset) {
  Field field;
  std::memcpy(&field, reinterpret_cast<char const*>(&object) + offset, sizeof field);
  return field;
}
