// Compile-time check of declarations.
#pragma once

// Selects an overload by its exact type, given as the template argument:
//
//   static_assert(IsDeclared<int (VRELString::*)() const>(&VRELString::length));
//
// Does not compile if there is no such member. `noexcept` is not part of the comparison.
template <class Pointer>
constexpr bool IsDeclared(Pointer) {
  return true;
}
