// The parallel arrays of the hash containers.
#pragma once

#include "VRELDynamicArray.h"

// One row for each slot of a map. A free slot holds a default key and value, and 0 for not occupied; in an occupied one
// that byte is the mark of the key (VRELHashControlBytes.h).
template <class K, class V>
struct VRELHashRows {
  VRELDynamicArray<K> keys;
  VRELDynamicArray<V> values;
  VRELDynamicArray<unsigned char> occupied;

  // Calls action(array...) for the keys and for the values of one or several sets of rows.
  template <class Action, class... Rows>
  static void ForEachColumn(Action action, Rows&... rows) {
    action(rows.keys...);
    action(rows.values...);
  }
};

// The rows of a list have no values.
template <class K>
struct VRELHashRows<K, void> {
  VRELDynamicArray<K> keys;
  VRELDynamicArray<unsigned char> occupied;

  template <class Action, class... Rows>
  static void ForEachColumn(Action action, Rows&... rows) {
    action(rows.keys...);
  }
};
