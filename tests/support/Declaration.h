// Compile-time checks of declarations, and reads of fields by offset.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

// Returns true. Compiles only if `Member` names a function of type `Type`, which selects an overload:
//
//   static_assert(IsDeclared<VRELString (VRELFilePath::*)() const>(&VRELFilePath::GetName));
template <class Type>
constexpr bool IsDeclared(Type /*member*/) {
  return true;
}

// Whether `Derived` has `Base` as its public direct or indirect base at offset 0, without virtual inheritance.
template <class Base, class Derived>
bool IsFirstBase(Derived const& object) {
  static_assert(std::is_convertible_v<Derived const*, Base const*>);
  return static_cast<void const*>(static_cast<Base const*>(&object)) == static_cast<void const*>(&object);
}

// Returns the field of type `Field` at a byte offset of an object.
template <class Field>
Field FieldAt(void const* object, std::size_t offset) {
  static_assert(std::is_trivially_copyable_v<Field>);
  Field field;
  std::memcpy(&field, static_cast<char const*>(object) + offset, sizeof field);
  return field;
}
