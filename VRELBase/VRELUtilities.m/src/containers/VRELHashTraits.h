// How a key type of the hash containers is hashed and compared, unless a container is told otherwise.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <type_traits>

// The mix of 32 bits behind the hashes of integers and pointers: wrap-around sums and arithmetic right shifts, so that
// negative keys hash differently from the unsigned variant of this mix.
constexpr unsigned int VRELMixInteger(int key) noexcept {
  std::uint32_t x = static_cast<std::uint32_t>(key);
  auto const shiftedRight = [](std::uint32_t value, int bits) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(value) >> bits);
  };
  x += ~(x << 15);
  x ^= shiftedRight(x, 10);
  x += x << 3;
  x ^= shiftedRight(x, 6);
  x += ~(x << 11);
  x ^= shiftedRight(x, 16);
  return x;
}

// Hash and equality of a key type. A class that serves as a key specialises this beside itself, with the two
// operations that stand here; a client may instead specialise VRELHashList<T>::GetHashValue and HashEqualFunction, or
// hand functions to one container by SetFunctions.
//
// Without either: integers and enumerations go through the mix by their low 32 bits, floating-point numbers too after
// truncation toward zero, pointers by the low 32 bits of their address; other types use std::hash where it is defined.
// Equality is ==. A type that has none of these is found by the address of its slot alone, which only serves to let
// the container compile until SetFunctions has run.
template <class T>
struct VRELHashTraits {
  static unsigned int Hash(T const& key) {
    if constexpr (std::is_pointer_v<T>) {
      return VRELMixInteger(static_cast<int>(reinterpret_cast<std::uintptr_t>(key)));
    } else if constexpr (std::is_floating_point_v<T>) {
      // What the processor gives for a number that no int holds.
      bool const fits = key > -2147483649.0 && key < 2147483648.0;
      return VRELMixInteger(fits ? static_cast<int>(key) : std::numeric_limits<int>::min());
    } else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
      return VRELMixInteger(static_cast<int>(key));
    } else if constexpr (std::is_default_constructible_v<std::hash<T>>) {
      return VRELMixInteger(static_cast<int>(std::hash<T>()(key)));
    } else {
      return 0;
    }
  }

  static bool Equal(T const& a, T const& b) {
    if constexpr (HasEquality<T>::value) {
      return static_cast<bool>(a == b);
    } else {
      return &a == &b;
    }
  }

 private:
  template <class U, class = void>
  struct HasEquality : std::false_type {};
  template <class U>
  struct HasEquality<U, std::void_t<decltype(std::declval<U const&>() == std::declval<U const&>())>> : std::true_type {
  };
};

// Sets of bare pointers may be large and far from the processor, where marks tell most other keys without a look at
// them.
template <>
struct VRELHashTraits<void*> {
  static unsigned int Hash(void* const& key) noexcept {
    return VRELMixInteger(static_cast<int>(reinterpret_cast<std::uintptr_t>(key)));
  }
  static bool Equal(void* const& a, void* const& b) noexcept { return a == b; }
  // Of other bits than the slot is, by a multiplication that spreads the low ones.
  static unsigned char Mark(void* const& key) noexcept {
    auto const address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(key));
    return static_cast<unsigned char>(address * 0x9E3779B1U >> 24 | 2);
  }
};
