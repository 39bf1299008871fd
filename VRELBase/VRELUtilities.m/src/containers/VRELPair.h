// A key and its value, as the enumeration of a hash map gives them out.
#pragma once

template <class K, class V>
class VRELPair {
 public:
  // Default key and value: zero for numbers and pointers.
  VRELPair() : key(), value() {}
  VRELPair(K const& theKey, V const& theValue) : key(theKey), value(theValue) {}
  VRELPair(VRELPair const&) = default;
  VRELPair& operator=(VRELPair const&) = default;

  K& GetKey() noexcept { return key; }
  K const& GetKey() const noexcept { return key; }
  V& GetValue() noexcept { return value; }
  V const& GetValue() const noexcept { return value; }

  K key;
  V value;
};
