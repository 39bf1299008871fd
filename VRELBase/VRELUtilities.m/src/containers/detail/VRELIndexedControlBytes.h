// The control bytes of a hash table that may have an index of its slots.
#pragma once

#include <cstddef>
#include <cstring>
#include <limits>
#include <utility>

#include "VRELAllocException.h"
#include "VRELDynamicArray.h"
#include "detail/VRELHashSlotIndex.h"

// Array of control bytes whose storage ends in a pointer to a slot index.
//
// Copies of a hash container share their arrays, and each of them changes the slots for all. So they must share the
// index too, and they do because the pointer is in the shared storage, in the bytes after the elements, which are zero
// while there is no index. The last owner of the storage deletes the index.
class VRELIndexedControlBytes : public VRELDynamicArray<unsigned char> {
 public:
  VRELIndexedControlBytes() = default;
  VRELIndexedControlBytes(VRELIndexedControlBytes const&) = default;
  VRELIndexedControlBytes(VRELIndexedControlBytes&&) noexcept = default;
  VRELIndexedControlBytes& operator=(VRELIndexedControlBytes const& other) {
    if (this == &other) return *this;
    DropOwnedIndex();
    VRELDynamicArray<unsigned char>::operator=(other);
    return *this;
  }
  VRELIndexedControlBytes& operator=(VRELIndexedControlBytes&& other) noexcept {
    if (this == &other) return *this;
    DropOwnedIndex();
    VRELDynamicArray<unsigned char>::operator=(std::move(other));
    return *this;
  }
  ~VRELIndexedControlBytes() { DropOwnedIndex(); }

  // Returns the bytes in a storage of their own, without an index.
  VRELIndexedControlBytes copy() const {
    VRELIndexedControlBytes result;
    result.endGrow(size());
    if (size() > 0) std::memcpy(result.getArray(), getArray(), static_cast<std::size_t>(size()));
    return result;
  }

  // Requires: the array is empty.
  void endGrow(int n) {
    if (n < 1) return;
    if (n > std::numeric_limits<int>::max() - kPointerSize) throw VRELAllocException();
    reserve(n + kPointerSize);
    VRELDynamicArray<unsigned char>::endGrow(n);
  }

  void clear() {
    SetIndex(nullptr);
    if (size() > 0) std::memset(getArray(), 0, static_cast<std::size_t>(size()));
    VRELDynamicArray<unsigned char>::clear();
  }

  // Returns null if there is no index.
  VRELHashSlotIndex* GetIndex() const noexcept {
    VRELHashSlotIndex* index = nullptr;
    if (size() > 0) std::memcpy(&index, getArray() + size(), sizeof index);
    return index;
  }

  // Replaces the index, for all owners of the storage, and deletes the previous one. The elements are unchanged, so
  // that an array that serves a search only can do it.
  void SetIndex(VRELHashSlotIndex* index) noexcept {
    if (size() < 1) return;
    delete GetIndex();
    std::memcpy(getArray() + size(), &index, sizeof index);
  }

 private:
  static constexpr int kPointerSize = sizeof(VRELHashSlotIndex*);

  void DropOwnedIndex() noexcept {
    if (!isShared()) SetIndex(nullptr);
  }
};
