// The sequence type of the library.
#pragma once

#include <cstddef>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "VRELArrayHeader.h"
#include "VRELIsByteMovable.h"

// Growable array whose copies share one storage.
//
// Copying takes constant time and copies no element: elements added or removed through one copy are seen through all,
// and the last owner destroys the elements. Call copy() for an independent array.
//
//   VRELDynamicArray<VRELString> names = {VRELString(L"hub"), VRELString(L"rim")};
//   names.reserve(100);
//   names.add(VRELString(L"spoke"));
//   for (VRELString const& name : names) ...
//
// Elements are stored in place at stride sizeof(T). When the storage grows they move by byte copy, with no constructor
// and no destructor, so that T must survive that; see VRELIsByteMovable. Storage never shrinks.
//
// Errors: operations that add throw VRELAllocException if memory is exhausted or the array has INT_MAX elements; no
// element has then been added.
// Thread safety: none. Copies on two threads share one count.
template <class T>
class VRELDynamicArray {
 public:
  using value_type = T;
  using size_type = int;
  using difference_type = std::ptrdiff_t;
  using reference = T&;
  using const_reference = T const&;
  using iterator = T*;
  using const_iterator = T const*;

  static constexpr int defaultCapacity = 10;

  VRELDynamicArray() : VRELDynamicArray(Storage{}, defaultCapacity) {}
  // Adds n copies of `value` to a storage of exactly n slots. Equal to the default constructor if n is below 1.
  VRELDynamicArray(int n, T const& value) : VRELDynamicArray(Storage{}, n < 1 ? defaultCapacity : n) {
    if (n < 1) return;
    std::uninitialized_fill_n(end(), n, value);
    header->count = n;
  }
  // Adds copies of the listed elements. As with the standard containers, braces mean a list wherever T allows it:
  // VRELDynamicArray<int>{3, 7} has two elements, VRELDynamicArray<int>(3, 7) has three.
  VRELDynamicArray(std::initializer_list<T> elements) : VRELDynamicArray() {
    append(elements.begin(), static_cast<int>(elements.size()));
  }
  // Shares the storage.
  VRELDynamicArray(VRELDynamicArray const& other) : header(vrelArrayCopy(other.header)) {}
  // Takes the storage. The source is empty afterwards and gets a new storage when an element is added.
  VRELDynamicArray(VRELDynamicArray&& other) noexcept : header(std::exchange(other.header, nullptr)) {}
  ~VRELDynamicArray() { release(); }

  // Releases the own storage, with its elements if there is no other owner, and shares the other's.
  VRELDynamicArray& operator=(VRELDynamicArray const& other) {
    if (this == &other) return *this;
    // The other array may be an element of this one.
    VRELArrayHeader* const shared = vrelArrayCopy(other.header);
    release();
    header = shared;
    return *this;
  }
  // The same, but takes the storage, which leaves the source empty. An array moved to itself is unchanged.
  VRELDynamicArray& operator=(VRELDynamicArray&& other) noexcept {
    if (this == &other) return *this;
    VRELArrayHeader* const taken = std::exchange(other.header, nullptr);
    release();
    header = taken;
    return *this;
  }

  int size() const noexcept { return isValid() ? header->count : 0; }

  // Returns whether another array shares the storage.
  bool isShared() const noexcept { return isValid() && header->shareCount > 0; }

  // Requires: 0 <= index < size(). There is no range check.
  T& operator[](int index) noexcept { return reinterpret_cast<T*>(header->data)[index]; }
  T const& operator[](int index) const noexcept { return reinterpret_cast<T const*>(header->data)[index]; }

  // Returns the address of the first element, valid until the array grows; null for an array that was moved from.
  T* getArray() noexcept { return header == nullptr ? nullptr : reinterpret_cast<T*>(header->data); }
  T const* getArray() const noexcept { return header == nullptr ? nullptr : reinterpret_cast<T const*>(header->data); }

  T* begin() noexcept { return getArray(); }
  T const* begin() const noexcept { return getArray(); }
  T* end() noexcept { return getArray() + size(); }
  T const* end() const noexcept { return getArray() + size(); }

  // Allocates room for n elements in all, so that adding up to that number moves none. Does nothing if there is room.
  void reserve(int n) {
    if (n < 1) return;
    ensureHeader();
    vrelArrayReserve(header, n);
  }

  // Adds a copy of `value` at the end. It may be an element of this array.
  void add(T const& value) {
    if (isValid() && header->count < header->capacity) {
      constructAtEnd(value);
    } else if constexpr (std::is_trivially_copyable_v<T>) {
      // Passes the address of a copy, so that the caller's own variable can stay in a register.
      T const copied = value;
      addToFullArray(copied);
    } else {
      addToFullArray(value);
    }
  }

  // Moves `value` to the end. It may be an element of this array.
  void addMoved(T&& value) {
    ensureHeader();
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
    if (added < 1) return;
    ensureHeader();
    if (vrelArrayReallocFor(header, added) == 0) return;
    std::uninitialized_copy_n(other.begin(), added, end());
    header->count += added;
  }

  // Adds copies of n consecutive elements, which may be in this array. Does nothing if n is below 1.
  void append(T const* elements, int n) {
    if (n < 1) return;
    ensureHeader();
    if (!isValid()) return;
    if (header->capacity - header->count < n) elements = growAround(elements, n);
    std::uninitialized_copy_n(elements, n, getArray() + header->count);
    header->count += n;
  }

  // Returns a new array with its own storage and elements.
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

  // Destroys one element and moves those after it down by one slot. Returns 1.
  //
  // Requires: 0 <= index < size().
  // Compatibility: for a free slot of the storage, runs the destructor on the bytes that the slot holds, which may be
  // those of an element that was destroyed before, and removes nothing. Any other index is ignored.
  int removeAt(int index) {
    if (!isValid() || index < 0 || index >= header->capacity) return 1;
    destroy(index);
    vrelArrayRemoveAt(header, index);
    return 1;
  }

  // Adds n value-initialized elements at the end; numbers and pointers are zero. Returns 1.
  int endGrow(int n) {
    if (n < 1) return 1;
    ensureHeader();
    if (vrelArrayReallocFor(header, n) == 0) return 1;
    std::uninitialized_value_construct_n(end(), n);
    header->count += n;
    return 1;
  }

  // Removes the last n elements, from the last one down; all elements if there are fewer. Returns 1.
  int endShrink(int n) {
    for (int left = n < size() ? n : size(); left > 0; --left) removeAt(size() - 1);
    return 1;
  }

  // Removes the first n elements, from the first one up. Returns 1.
  //
  // Requires: n <= size().
  // Compatibility: runs n destructors in slot 0. Those beyond the size run on the bytes that the slot then holds.
  int frontShrink(int n) {
    if (n < 1 || !isValid()) return 1;
    int const removed = n < header->count ? n : header->count;
    if constexpr (!std::is_trivially_destructible_v<T>) {
      for (int i = 0; i < n; ++i) {
        if (i > 0 && i < removed) std::memcpy(header->data, slotBytes(i), sizeof(T));
        destroy(0);
      }
    }
    int const left = header->count - removed;
    if (left > 0) std::memmove(header->data, slotBytes(removed), static_cast<std::size_t>(left) * sizeof(T));
    header->count = left;
    return 1;
  }

  // Grows or shrinks at the end to n elements; a negative n removes all. Returns 1.
  int resize(int n) {
    int const wanted = n < 0 ? 0 : n;
    return wanted > size() ? endGrow(wanted - size()) : endShrink(size() - wanted);
  }

 private:
  struct Storage {};

  VRELDynamicArray(Storage, int capacity) : header(vrelArrayAllocate(capacity, sizeof(T))) { checkElementType(); }

  static constexpr void checkElementType() noexcept {
    static_assert(alignof(T) <= alignof(std::max_align_t), "the storage is aligned as malloc aligns it");
    static_assert(
        VRELIsByteMovable<T>::value,
        "Elements move by byte copy, which this type does not survive: store VRELString instead of a standard "
        "string, VRELDynamicArray, VRELHashMap or std::vector instead of other standard containers, or a "
        "std::unique_ptr to the object. Specialize VRELIsByteMovable if your type is safe to move.");
  }

  bool isValid() const noexcept { return header != nullptr && header->IsValid(); }

  // Allocates a storage for an array that was moved from.
  void ensureHeader() {
    checkElementType();
    if (header == nullptr) header = vrelArrayAllocate(defaultCapacity, sizeof(T));
  }

  unsigned char const* slotBytes(int index) const noexcept {
    return header->data + static_cast<std::size_t>(index) * sizeof(T);
  }

  void constructAtEnd(T const& value) {
    // Reads the count once: for the compiler, an int that is stored here could be the count.
    int const last = header->count;
    ::new (static_cast<void*>(getArray() + last)) T(value);
    header->count = last + 1;
  }

  [[gnu::noinline]] void addToFullArray(T const& value) {
    ensureHeader();
    if (!isValid()) return;
    T const* source = std::addressof(value);
    if (header->count >= header->capacity) source = static_cast<T const*>(vrelArrayReallocAround(header, source));
    constructAtEnd(*source);
  }

  // Makes room for n more elements. Returns the address of `elements` after the growth.
  [[gnu::noinline]] T const* growAround(T const* elements, int n) {
    std::less<T const*> const before;
    bool const isOwn = !before(elements, begin()) && before(elements, end());
    std::ptrdiff_t const offset = isOwn ? elements - begin() : 0;
    vrelArrayReallocFor(header, n);
    return isOwn ? begin() + offset : elements;
  }

  // The qualified call does not read the virtual table, which a slot without an object lacks.
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

  void release() noexcept {
    if (header == nullptr) return;
    if (header->shareCount == 0) destroyFirst(size());
    vrelArrayFree(header);
    header = nullptr;
  }

  VRELArrayHeader* header;
};

// Compares element by element.
template <class T>
auto operator==(VRELDynamicArray<T> const& a, VRELDynamicArray<T> const& b)
    -> decltype(static_cast<bool>(a[0] == b[0])) {
  if (a.size() != b.size()) return false;
  for (int i = 0, n = a.size(); i < n; ++i) {
    if (!static_cast<bool>(a[i] == b[i])) return false;
  }
  return true;
}
template <class T>
auto operator!=(VRELDynamicArray<T> const& a, VRELDynamicArray<T> const& b)
    -> decltype(static_cast<bool>(a[0] == b[0])) {
  return !(a == b);
}

// Returns the index of the first element that equals `value`, or -1.
template <class T>
int vrelArrayFind(VRELDynamicArray<T> const& array, T const& value) {
  for (int i = 0, n = array.size(); i < n; ++i) {
    if (array[i] == value) return i;
  }
  return -1;
}

// Removes the first element that equals `value`. Returns the index that it had, or -1.
template <class T>
int vrelArrayRemove(VRELDynamicArray<T>& array, T const& value) {
  int const index = vrelArrayFind<T>(array, value);
  if (index >= 0) array.removeAt(index);
  return index;
}

// Adds `value` unless an element equals it. Returns whether it was added.
template <class T>
bool vrelArrayAddUnique(VRELDynamicArray<T>& array, T const& value) {
  if (vrelArrayFind<T>(array, value) >= 0) return false;
  array.add(value);
  return true;
}
