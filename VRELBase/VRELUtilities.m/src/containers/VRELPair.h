// A key and its value.
#pragma once

#include <type_traits>
#include <utility>

// Pair of a key and a value, as GetNext of a hash map returns them.
//
//   VRELPair<VRELString, int> pair;
//   for (counts.InitEnumeration(); counts.GetNext(pair);) Print(pair.GetKey(), pair.GetValue());
//
// Structured bindings work too: auto const& [key, value] = pair.
template <class K, class V>
class VRELPair {
 public:
  // Value-initializes both; numbers and pointers are zero.
  VRELPair() : key(), value() {}
  VRELPair(K const& theKey, V const& theValue) : key(theKey), value(theValue) {}

  K& GetKey() noexcept { return key; }
  K const& GetKey() const noexcept { return key; }
  V& GetValue() noexcept { return value; }
  V const& GetValue() const noexcept { return value; }

  K key;
  V value;
};

template <class K, class V>
auto operator==(VRELPair<K, V> const& a, VRELPair<K, V> const& b)
    -> decltype(static_cast<bool>(a.key == b.key && a.value == b.value)) {
  return static_cast<bool>(a.key == b.key && a.value == b.value);
}
template <class K, class V>
auto operator!=(VRELPair<K, V> const& a, VRELPair<K, V> const& b)
    -> decltype(static_cast<bool>(a.key == b.key && a.value == b.value)) {
  return !(a == b);
}
