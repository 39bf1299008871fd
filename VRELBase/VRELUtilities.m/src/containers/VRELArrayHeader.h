// The untyped growable array under every sequence of the library, with a C interface.
#pragma once

#include <cstdint>

#include "VRELExport.h"

// Header of one block of elements: a growable byte array that several owners can share.
//
// VRELDynamicArray<T> is the typed interface; use these functions from other languages, or for elements whose size is
// known at run time only.
//
//   VRELArrayHeader* numbers = vrelArrayAllocate(10, sizeof(int));
//   int number = 7;
//   vrelArrayAdd(numbers, &number);
//   int const* const first = reinterpret_cast<int const*>(numbers->data);
//   vrelArrayFree(numbers);
//
// Elements move by byte copy whenever the block grows: no constructor or destructor runs.
//
// Errors: the functions return 1 for success and 0 for failure. A header whose checkWord differs from data is treated
// as no array: nothing is changed and nothing is freed. Functions that allocate throw VRELAllocException, with the
// array unchanged.
// Ownership: a header comes from vrelArrayAllocate and is released by one vrelArrayFree for each owner.
// Thread safety: none. The share count is a plain variable, so that copies must stay on one thread.
struct VRELArrayHeader {
  unsigned char* checkWord;  // equals data while the header is valid, null just before it is freed
  std::int32_t capacity;     // element slots in data
  std::int32_t count;        // live elements, 0 to capacity
  std::int32_t elementSize;  // bytes, at least 1
  float growthFactor;        // 1.5
  std::int32_t shareCount;   // additional owners; 0 means exactly one
  unsigned char* data;       // from malloc; slots that never held an element are zero

  bool IsValid() const noexcept { return data == checkWord; }
};

extern "C" {

// Returns a new, empty header with one owner, or null if an argument is below 1.
VREL_EXPORT VRELArrayHeader* vrelArrayAllocate(int capacity, int elementSize);
// Returns 1 if there is a valid header, else 0.
VREL_EXPORT int vrelArrayCheck(VRELArrayHeader*& header);
// Returns the number of live elements; 0 without a valid header.
VREL_EXPORT int vrelArrayCount(VRELArrayHeader* header);
// Sets the count to 0 and keeps storage and capacity.
VREL_EXPORT int vrelArrayClear(VRELArrayHeader*& header);
// Adds one owner and returns the same header. A null or invalid header is returned uncounted.
VREL_EXPORT VRELArrayHeader* vrelArrayCopy(VRELArrayHeader* header);
// Releases one owner. For the last owner, frees the block and sets the caller's pointer to null; the pointer of any
// other owner is left unchanged.
VREL_EXPORT int vrelArrayFree(VRELArrayHeader*& header);

// Grows once, to capacity * growthFactor + 1, truncated, and to INT_MAX where that is larger: 10, 16, 25, 38, 58, 88.
//
// Errors: throws VRELAllocException if memory is exhausted or the capacity is INT_MAX already.
VREL_EXPORT int vrelArrayRealloc(VRELArrayHeader*& header);
// Grows as vrelArrayRealloc does. Returns the address of `element` after the growth, which has changed if the element
// is in the array's own storage.
VREL_EXPORT void const* vrelArrayReallocAround(VRELArrayHeader*& header, void const* element);
// Grows until `added` more elements fit, in the steps of vrelArrayRealloc but with one move.
VREL_EXPORT int vrelArrayReallocFor(VRELArrayHeader*& header, int added);
// Grows to exactly `capacity` slots. Does nothing if there are as many already.
VREL_EXPORT int vrelArrayReserve(VRELArrayHeader*& header, int capacity);

// Copies elementSize bytes to the end. In this function and those below, the element may be in the array itself.
VREL_EXPORT int vrelArrayAdd(VRELArrayHeader*& header, void* element);
// Inserts before `index`. An index above the count adds at the end; a negative one fails.
//
// Compatibility: grows one slot earlier than vrelArrayAdd, if the array would become full.
VREL_EXPORT int vrelArrayInsertAt(VRELArrayHeader*& header, int index, void* element);
// Overwrites one live element. Fails for any other index.
VREL_EXPORT int vrelArraySetAt(VRELArrayHeader*& header, int index, void* element);
// Removes one live element and moves those after it down by one slot. Fails for any other index.
VREL_EXPORT int vrelArrayRemoveAt(VRELArrayHeader*& header, int index);
// Adds as many elements to `target` as `source` has. Fails unless both are valid and have the same element size.
//
// Compatibility: the bytes are copied from the start of `target`, not from `source`.
VREL_EXPORT int vrelArrayAppend(VRELArrayHeader*& target, VRELArrayHeader* source);
}
