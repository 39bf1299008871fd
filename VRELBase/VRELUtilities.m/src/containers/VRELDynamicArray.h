// The one sequence type of the library.
#pragma once

#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "VRELArrayHeader.h"

// A growable array whose copies share one storage. Copying takes constant time and copies no element: what is added or
// removed through one copy is seen through all, and the last owner destroys the elements. Call copy() for an array of
// your own.
//
//   VRELDynamicArray<VRELString> names;
//   names.add(VRELString(L"hub"));
//   for (VRELString const& name : names) ...
//
// Elements stand in place at stride sizeof(T). When the storage grows they move by plain byte copy, with no constructor
// and no destructor, so T must survive that: it may hold no pointer into itself, as std::string does. Storage
// never shrinks.
//
// What adds throws VRELAllocException when memory runs out or the capacity would exceed an int; no element has then
// been added. No locking, and copies on two threads share one count.
template <class T>
class VRELDynamicArray {
 public:
  static constexpr int defaultCapacity = 10;

  VRELDynamicArray() : VRELDynamicArray(Storage{}, defaultCapacity) {}
  // n copies of value in a storage of just n slots; as the default constructor if n is below 1.
  VRELDynamicArray(int n, T const& value) : VRELDynamicArray(Storage{}, n < 1 ? defaultCapacity : n) {
    if (n < 1) return;
    std::uninitialized_fill_n(end(), n, value);
    header->count = n;
  }
  // Shares the storage.
  VRELDynamicArray(VRELDynamicArray const& other) : header(vrelArrayCopy(other.header)) {}
  ~VRELDynamicArray() { release(); }

  // Leaves the own storage, with its elements if nobody else holds it, and shares the other's.
  VRELDynamicArray& operator=(VRELDynamicArray const& other) {
    if (this == &other) return *this;
    // The other array may be an element of this one.
    VRELArrayHeader* const shared = vrelArrayCopy(other.header);
    release();
    header = shared;
    return *this;
  }

  int size() const noexcept { return isValid() ? header->count : 0; }

  // Whether another array holds the same storage.
  bool isShared() const noexcept { return isValid() && header->shareCount > 0; }

  // No range check of any kind: index is 0 to size() - 1.
  T& operator[](int index) noexcept { return reinterpret_cast<T*>(header->data)[index]; }
  T const& operator[](int index) const noexcept { return reinterpret_cast<T const*>(header->data)[index]; }

  // The first element; valid until the array grows.
  T* getArray() noexcept { return header == nullptr ? nullptr : reinterpret_cast<T*>(header->data); }
  T const* getArray() const noexcept { return header == nullptr ? nullptr : reinterpret_cast<T const*>(header->data); }

  T* begin() noexcept { return getArray(); }
  T const* begin() const noexcept { return getArray(); }
  T* end() noexcept { return getArray() + size(); }
  T const* end() const noexcept { return getArray() + size(); }

  // Copies the value to the end. It may be an element of this array.
  void add(T const& value) {
    if (isValid() && header->count < header->capacity) {
      constructAtEnd(value);
    } else if constexpr (std::is_trivially_copyable_v<T>) {
      // The address of a copy, so that the caller's own variable may live in a register.
      T const held = value;
      addToFullArray(held);
    } else {
      addToFullArray(value);
    }
  }

  // Moves the value to the end. It may be an element of this array.
  void addMoved(T&& value) {
    if (!isValid()) return;
    T* source = std::addressof(value);
    if (header->count >= header->capacity) {
      source = const_cast<T*>(static_cast<T const*>(vrelArrayReallocAround(header, source)));
    }
    int const last = header->count;
    ::new (static_cast<void*>(getArray() + last)) T(std::move(*source));
    header->count = last + 1;
  }

  // Adds a copy of each element of the other array, which may be this one.
  void append(VRELDynamicArray const& other) {
    int const added = other.size();
    if (vrelArrayReallocFor(header, added) == 0) return;
    std::uninitialized_copy_n(other.begin(), added, end());
    header->count += added;
  }

  // Adds copies of n elements that stand in a row; they may stand in this array. Nothing for an n below 1.
  void append(T const* elements, int n) {
    if (n < 1 || !isValid()) return;
    if (header->capacity - header->count < n) elements = growAround(elements, n);
    std::uninitialized_copy_n(elements, n, getArray() + header->count);
    header->count += n;
  }

  // A new array with a storage and elements of its own.
  VRELDynamicArray copy() const {
    VRELDynamicArray result;
    result.append(*this);
    return result;
  }

  // Destroys the elements, for all owners, and keeps the storage.
  void clear() {
    destroyFirst(size());
    vrelArrayClear(header);
  }

  // Destroys one element and moves the ones behind it down. Always 1; an index outside the array removes nothing. One
  // that names a free slot runs the destructor on it all the same, which is promised, as far as that is safe: a slot
  // that is not zero has had its destructor, and a class with virtual operations cannot run one on zeros.
  int removeAt(int index) {
    if (!isValid() || index < 0 || index >= header->capacity) return 1;
    if (index < header->count || (!std::is_polymorphic_v<T> && isZero(index))) destroy(index);
    vrelArrayRemoveAt(header, index);
    return 1;
  }

  // Adds n default elements, zero for numbers and pointers. Always 1.
  int endGrow(int n) {
    if (n < 1 || vrelArrayReallocFor(header, n) == 0) return 1;
    std::uninitialized_value_construct_n(end(), n);
    header->count += n;
    return 1;
  }

  // Removes the last n elements, the last one first; all of them if there are fewer. Always 1.
  int endShrink(int n) {
    for (int left = n < size() ? n : size(); left > 0; --left) removeAt(size() - 1);
    return 1;
  }

  // Removes the first n elements, the first one first; all of them if there are fewer. Always 1.
  int frontShrink(int n) {
    int const removed = n < size() ? n : size();
    if (removed < 1) return 1;
    destroyFirst(removed);
    int const left = header->count - removed;
    std::memmove(header->data, header->data + static_cast<std::size_t>(removed) * sizeof(T),
                 static_cast<std::size_t>(left) * sizeof(T));
    header->count = left;
    return 1;
  }

  // Grows or shrinks at the end to n elements. Always 1.
  int resize(int n) {
    int const wanted = n < 0 ? 0 : n;
    return wanted > size() ? endGrow(wanted - size()) : endShrink(size() - wanted);
  }

 private:
  struct Storage {};

  VRELDynamicArray(Storage, int capacity) : header(vrelArrayAllocate(capacity, sizeof(T))) {
    static_assert(alignof(T) <= alignof(std::max_align_t), "the storage is aligned as malloc's");
  }

  bool isValid() const noexcept { return header != nullptr && header->IsValid(); }

  void constructAtEnd(T const& value) {
    // Read once: an int that is stored here could be the count, for all that the compiler knows.
    int const last = header->count;
    ::new (static_cast<void*>(getArray() + last)) T(value);
    header->count = last + 1;
  }

  [[gnu::noinline]] void addToFullArray(T const& value) {
    if (!isValid()) return;
    constructAtEnd(*static_cast<T const*>(vrelArrayReallocAround(header, std::addressof(value))));
  }

  // Makes room for n more elements; tells where the given ones stand then.
  [[gnu::noinline]] T const* growAround(T const* elements, int n) {
    std::less<T const*> const before;
    bool const isOwn = !before(elements, begin()) && before(elements, end());
    std::ptrdiff_t const place = isOwn ? elements - begin() : 0;
    vrelArrayReallocFor(header, n);
    return isOwn ? begin() + place : elements;
  }

  void destroy(int index) noexcept {
    if constexpr (!std::is_trivially_destructible_v<T>) {
      (*this)[index].T::~T();
    }
  }

  void destroyFirst(int n) noexcept {
    if constexpr (!std::is_trivially_destructible_v<T>) {
      for (int i = 0; i < n; ++i) destroy(i);
    }
  }

  bool isZero(int index) const noexcept {
    unsigned char const* const slot = header->data + static_cast<std::size_t>(index) * sizeof(T);
    for (std::size_t i = 0; i < sizeof(T); ++i) {
      if (slot[i] != 0) return false;
    }
    return true;
  }

  void release() noexcept {
    if (header == nullptr) return;
    if (header->shareCount == 0) destroyFirst(size());
    vrelArrayFree(header);
    header = nullptr;
  }

  VRELArrayHeader* header;
};

// The index of the first element that is == value; -1 if there is none.
template <class T>
int vrelArrayFind(VRELDynamicArray<T> const& array, T const& value) {
  for (int i = 0, n = array.size(); i < n; ++i) {
    if (array[i] == value) return i;
  }
  return -1;
}

// Removes the first element that is == value. Returns the index that it had; -1 if there was none.
template <class T>
int vrelArrayRemove(VRELDynamicArray<T>& array, T const& value) {
  int const index = vrelArrayFind<T>(array, value);
  if (index >= 0) array.removeAt(index);
  return index;
}

// Adds the value unless it is there already; true if it was added.
template <class T>
bool vrelArrayAddUnique(VRELDynamicArray<T>& array, T const& value) {
  if (vrelArrayFind<T>(array, value) >= 0) return false;
  array.add(value);
  return true;
}
