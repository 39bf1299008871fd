// The parallel arrays of the hash containers.
#pragma once

#include <type_traits>

#include "VRELDynamicArray.h"
#include "VRELHashTraits.h"
#include "detail/VRELIndexedControlBytes.h"

// Whether VRELHashTraits<K> has the second hash that a slot index needs; see VRELHashTraits.
template <class K, class = void>
struct VRELHasSeededHash : std::false_type {};
template <class K>
struct VRELHasSeededHash<K, std::void_t<decltype(&VRELHashTraits<K>::SeededHash)>> : std::true_type {};

// Control bytes of the slots (VRELHashControlBytes.h).
template <class K>
using VRELHashOccupied =
    std::conditional_t<VRELHasSeededHash<K>::value, VRELIndexedControlBytes, VRELDynamicArray<unsigned char>>;

// Rows of a map, one for each slot. A vacant slot has a default key and value, and 0 in `occupied`.
template <class K, class V>
struct VRELHashRows {
  VRELDynamicArray<K> keys;
  VRELDynamicArray<V> values;
  VRELHashOccupied<K> occupied;

  // Calls action(array...) for the keys and for the values of one or several sets of rows.
  template <class Action, class... Rows>
  static void ForEachColumn(Action action, Rows&... rows) {
    action(rows.keys...);
    action(rows.values...);
  }
};

// Rows of a list, which have no values.
template <class K>
struct VRELHashRows<K, void> {
  VRELDynamicArray<K> keys;
  VRELHashOccupied<K> occupied;

  template <class Action, class... Rows>
  static void ForEachColumn(Action action, Rows&... rows) {
    action(rows.keys...);
  }
};
