// Sorting of a dynamic array.
#pragma once

#include <cstddef>
#include <cstring>
#include <vector>

#include "VRELDynamicArray.h"
#include "detail/VRELSwapObjectBytes.h"

// One run of qsort. Programs call qsort, below.
template <class T>
class VRELArraySort {
 public:
  explicit VRELArraySort(VRELDynamicArray<T>& target) : array(target), elements(target.getArray()) {}

  // Sorts low to high, both inside the array.
  void Run(int low, int high) {
    SortLeftParts(low, high);
    while (waiting.size() > 0) {
      Range const range = waiting[waiting.size() - 1];
      waiting.endShrink(1);
      SortLeftParts(range.low, range.high);
    }
  }

 private:
  struct Range {
    int low;
    int high;
  };

  // Partitions the range, then its left part, and so on. The right parts wait: a pass that begins on the way comes
  // before them.
  void SortLeftParts(int low, int high) {
    while (high - low > 1) {
      int const pivot = Partition(low, high);
      if (high - pivot > 1) waiting.add({pivot + 1, high});
      high = pivot == 0 ? BeginPass() : pivot - 1;
    }
    if (high - low == 1 && elements[low] > elements[high]) Swap(low, high);
  }

  // Where the pivot, the element in the middle, lands: behind all that are <= it.
  int Partition(int low, int high) {
    Swap(low + (high - low) / 2, low);
    int last = low;
    for (int i = low + 1; i <= high; ++i) {
      if (elements[i] <= elements[low]) Swap(i, ++last);
    }
    Swap(low, last);
    return last;
  }

  // A pivot that lands at index 0 begins a pass over the whole array, ahead of all that waits. That is promised: the
  // order of equal elements comes of it. Gives the last index of the pass; -1 if it is refused.
  //
  // What a pass does depends on the arrangement of keys alone. One that begins where an earlier pass began, as happens
  // with the keys 0 1 1 1, would therefore bring on passes for ever. It is refused: index 0 holds its element already,
  // and what waits of the latest pass sorts the rest. To notice it, the arrangements of pass 1, 2, 4, 8 ... are kept,
  // each until the next of these. Passes beyond the number of elements are refused too; only operators that contradict
  // each other come that far.
  int BeginPass() {
    ++passes;
    if (passes > array.size() || (passes > 1 && IsKeptArrangement())) {
      waiting.frontShrink(latestPass);
      latestPass = 0;
      return -1;
    }
    bool const isPowerOfTwo = (passes & (passes - 1)) == 0;
    if (isPowerOfTwo) kept.assign(Bytes(), Bytes() + sizeof(T) * static_cast<std::size_t>(array.size()));
    latestPass = waiting.size();
    return array.size() - 1;
  }

  // Elements move by byte copy, so that bytes kept aside can be compared as elements.
  bool IsKeptArrangement() const {
    auto const* const before = reinterpret_cast<T const*>(kept.data());
    for (int i = 0, n = array.size(); i < n; ++i) {
      T const& now = elements[i];
      T const& then = before[i];
      // An element that cannot be ordered, such as a NaN, is at least like its own bytes.
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
  VRELDynamicArray<Range> waiting;
  int passes = 0;
  int latestPass = 0;  // what waits from here on belongs to the latest pass
  std::vector<unsigned char> kept;
};

// Sorts the elements low to high in place by > and <=, with high -1 for the last one. Elements are swapped by byte
// copy. Equal elements do not keep their order. When a pivot lands at index 0 the whole array is sorted, also if only a
// part of it was asked for; that is promised. Always ends: mostly after n log n comparisons, after n squared where many
// elements are equal. Indexes are clipped to the array.
template <class T>
void qsort(VRELDynamicArray<T>& array, int low, int high) {
  int const last = array.size() - 1;
  VRELArraySort<T>(array).Run(low < 0 ? 0 : low, high == -1 || high > last ? last : high);
}
