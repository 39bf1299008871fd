// Sorting of a dynamic array.
//
// Quicksort with the middle element as pivot and Lomuto's partition (Cormen et al., Introduction to Algorithms, section
// 7.1), made iterative by a stack of ranges. The order of equal elements is part of the interface, so that the
// partition and the order of the ranges are fixed, and so is one oddity: when a pivot lands at index 0, the whole array
// is sorted once more, before the ranges that are pending. With equal elements such a pass can repeat itself
// forever. VRELArraySort detects that and refuses the pass, which changes no order that the steps would have reached.
#pragma once

#include <cstddef>
#include <cstring>
#include <vector>

#include "VRELDynamicArray.h"
#include "detail/VRELSwapObjectBytes.h"

// State of one call of qsort, which is below.
template <class T>
class VRELArraySort {
 public:
  explicit VRELArraySort(VRELDynamicArray<T>& target) : array(target), elements(target.getArray()) {}

  // Requires: both indexes are in the array.
  void Run(int low, int high) {
    SortLeftParts(low, high);
    while (pending.size() > 0) {
      Range const range = pending[pending.size() - 1];
      pending.endShrink(1);
      SortLeftParts(range.low, range.high);
    }
  }

 private:
  struct Range {
    int low;
    int high;
  };

  // Partitions the range, then its left part, and so on. The right parts are pending: a pass that begins meanwhile
  // precedes them.
  void SortLeftParts(int low, int high) {
    while (high - low > 1) {
      int const pivot = Partition(low, high);
      if (high - pivot > 1) pending.add({pivot + 1, high});
      high = pivot == 0 ? BeginPass() : pivot - 1;
    }
    if (high - low == 1 && elements[low] > elements[high]) Swap(low, high);
  }

  // Moves the pivot, the element in the middle, after all elements that are <= it. Returns its index.
  int Partition(int low, int high) {
    Swap(low + (high - low) / 2, low);
    int last = low;
    for (int i = low + 1; i <= high; ++i) {
      if (elements[i] <= elements[low]) Swap(i, ++last);
    }
    Swap(low, last);
    return last;
  }

  // Begins a pass over the whole array, after a pivot has landed at index 0. Returns the last index of the pass, or -1
  // if it is refused.
  //
  // A pass depends on the arrangement of the keys alone. One that begins with the arrangement of an earlier pass, as
  // happens with the keys 0 1 1 1, would cause passes forever. It is refused: index 0 has its element already, and the
  // pending ranges of the latest pass sort the others. To detect it, the arrangements of pass 1, 2, 4, 8 ... are kept,
  // each until the next one (Brent's cycle detection). Passes beyond the number of elements are refused too; only
  // contradictory operators cause that many.
  int BeginPass() {
    ++passes;
    if (passes > array.size() || (passes > 1 && IsKeptArrangement())) {
      pending.frontShrink(firstOfPass);
      firstOfPass = 0;
      return -1;
    }
    bool const isPowerOfTwo = (passes & (passes - 1)) == 0;
    if (isPowerOfTwo) kept.assign(Bytes(), Bytes() + sizeof(T) * static_cast<std::size_t>(array.size()));
    firstOfPass = pending.size();
    return array.size() - 1;
  }

  // Elements survive a byte copy, so that copied bytes can be compared as elements.
  bool IsKeptArrangement() const {
    auto const* const keptElements = reinterpret_cast<T const*>(kept.data());
    for (int i = 0, n = array.size(); i < n; ++i) {
      T const& now = elements[i];
      T const& then = keptElements[i];
      // An element without an order, such as a NaN, is compared by its bytes.
      bool const isSame = std::memcmp(static_cast<void const*>(&now), static_cast<void const*>(&then), sizeof(T)) == 0;
      if (!isSame && !(now <= then && then <= now)) return false;
    }
    return true;
  }

  unsigned char const* Bytes() const { return reinterpret_cast<unsigned char const*>(elements); }

  void Swap(int a, int b) {
    if (a != b) VRELSwapObjectBytes(elements[a], elements[b]);
  }

  VRELDynamicArray<T>& array;
  T* elements;
  VRELDynamicArray<Range> pending;
  int passes = 0;
  int firstOfPass = 0;  // index in `pending` of the first range of the latest pass
  std::vector<unsigned char> kept;
};

// Sorts the elements from `low` to `high` in place by > and <=. A `high` of -1 means the last element; other indexes
// are clipped to the array. Elements are exchanged by byte copy, and equal ones do not keep their order.
//
//   qsort(names, 0, -1);
//
// Takes n log n comparisons on average, and n squared if many elements are equal.
// Compatibility: if a pivot lands at index 0, the whole array is sorted, also if only a part was to be sorted.
template <class T>
void qsort(VRELDynamicArray<T>& array, int low, int high) {
  int const last = array.size() - 1;
  VRELArraySort<T>(array).Run(low < 0 ? 0 : low, high == -1 || high > last ? last : high);
}
