// Compile-time checks of declarations, and reads of fields by offset.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

// Returns true. Compiles only if the argument can be converted to `Member`, which selects an overload:
//
//   static_assert(IsDeclared<VRELString (VRELFilePath::*)() const>(&VRELFilePath::GetName));
//
// `noexcept` is not part of the comparison.
template <class Member>
constexpr bool IsDeclared(Member /*member*/) {
  return true;
}

// Returns whether `Derived` has `Base` as its public direct or indirect base at offset 0, without virtual inheritance.
template <class Base, class Derived>
bool IsFirstBase(Derived const& object) {
  static_assert(std::is_convertible_v<Derived const*, Base const*>);
  return static_cast<void const*>(static_cast<Base const*>(&object)) == static_cast<void const*>(&object);
}

// Returns the bytes at `offset` of `object` as a `Field`.
template <class Field, class Object>
Field FieldAt(Object const& object, std::size_t offset) {
  static_assert(std::is_trivially_copyable_v<Field>);
  Field field;
  std::memcpy(&field, reinterpret_cast<unsigned char const*>(&object) + offset, sizeof field);
  return field;
}

// Returns the offset of a part of an object, given a reference to the part.
template <class Object, class Part>
std::size_t OffsetOf(Object const& object, Part const& part) {
  return static_cast<std::size_t>(reinterpret_cast<unsigned char const*>(&part) -
                                  reinterpret_cast<unsigned char const*>(&object));
}
