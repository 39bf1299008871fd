// How a key type of the hash containers is hashed and compared by default.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <type_traits>

// Returns the 32-bit mix that hashes integers and pointers. Sums wrap around and right shifts are arithmetic, so that
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

// Hash and equality of a key type. Specialize it next to a class that is used as a key:
//
//   template <>
//   struct VRELHashTraits<Cell> {
//     static unsigned int Hash(Cell const& cell) { return VRELMixInteger(cell.row * 31 + cell.column); }
//     static bool Equal(Cell const& a, Cell const& b) { return a.row == b.row && a.column == b.column; }
//   };
//
// A program may specialize VRELHashList<T>::GetHashValue and HashEqualFunction instead, or set the functions of one
// container by SetFunctions.
//
// Without any of them: integers and enumerations are hashed by the mix of their low 32 bits, floating-point numbers
// likewise after truncation toward zero, pointers by the low 32 bits of their address; other types use std::hash where
// it is defined. Equality is ==. A type that has none of these has the hash 0 and equals its own object only, so that a
// container compiles before SetFunctions is called.
//
// Two more operations are optional. They make searches fast and change no result:
//
//   static unsigned char Mark(T const& key);           // a control byte above 1, or 1 if nothing is known of the key
//   static std::uint64_t SeededHash(T const& key);     // a second hash that cannot be predicted; see VRELSeededHash
//
// Both must be the same for keys that are Equal, except that a Mark of 1 goes with any other. With a SeededHash, keys
// that were made to collide under Hash cost no more than others. It must not throw.
template <class T>
struct VRELHashTraits {
  static unsigned int Hash(T const& key) {
    if constexpr (std::is_pointer_v<T>) {
      return VRELMixInteger(static_cast<int>(reinterpret_cast<std::uintptr_t>(key)));
    } else if constexpr (std::is_floating_point_v<T>) {
      // A number that no int represents is converted as the processor does it.
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

// Sets of untyped pointers can be larger than the cache, where control bytes rule out most keys without a read of them.
template <>
struct VRELHashTraits<void*> {
  static unsigned int Hash(void* const& key) noexcept {
    return VRELMixInteger(static_cast<int>(reinterpret_cast<std::uintptr_t>(key)));
  }
  static bool Equal(void* const& a, void* const& b) noexcept { return a == b; }
  // A multiplicative hash, so that it depends on other bits than the slot.
  static unsigned char Mark(void* const& key) noexcept {
    auto const address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(key));
    return static_cast<unsigned char>(address * 0x9E3779B1U >> 24 | 2);
  }
};
