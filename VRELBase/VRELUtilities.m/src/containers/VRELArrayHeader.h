// The untyped growable array under every sequence of the library, and the functions that drive it.
#pragma once

#include <cstdint>

#include "VRELExport.h"

// Describes one block of elements. Comes from vrelArrayAllocate, goes back through vrelArrayFree, and may have several
// owners. Elements move by plain byte copy whenever the block grows: no constructor or destructor runs.
//
// The functions below give 1 for success and 0 for failure. A header whose checkWord differs from data is treated as no
// array: nothing is changed and nothing is freed. No locking; the share count is a plain variable.
struct VRELArrayHeader {
  unsigned char* checkWord;  // equals data while the header is valid, null just before it is freed
  std::int32_t capacity;     // element slots in data
  std::int32_t count;        // live elements, 0 to capacity
  std::int32_t elementSize;  // bytes, at least 1
  float growthFactor;        // 1.5
  std::int32_t shareCount;   // further owners; 0 means exactly one
  unsigned char* data;       // from malloc; slots that never held an element are zero

  bool IsValid() const noexcept { return data == checkWord; }
};

// A new, empty header with one owner; null if an argument is below 1. Throws VRELAllocException.
VREL_EXPORT VRELArrayHeader* vrelArrayAllocate(int capacity, int elementSize);
// Whether there is a valid header.
VREL_EXPORT int vrelArrayCheck(VRELArrayHeader*& header);
// Live elements; 0 without a valid header.
VREL_EXPORT int vrelArrayCount(VRELArrayHeader* header);
// Forgets the elements and keeps storage and capacity.
VREL_EXPORT int vrelArrayClear(VRELArrayHeader*& header);
// Counts one owner more and returns the same header; what is no valid header comes back uncounted.
VREL_EXPORT VRELArrayHeader* vrelArrayCopy(VRELArrayHeader* header);
// Releases one owner. The last one frees everything and gets a null pointer; the pointer of the others stays as it is.
VREL_EXPORT int vrelArrayFree(VRELArrayHeader*& header);

// Grows once, to capacity * growthFactor + 1, truncated: 10, 16, 25, 38, 58, 88, 133. Throws VRELAllocException, with
// the array unchanged, when memory runs out or the capacity would exceed an int.
VREL_EXPORT int vrelArrayRealloc(VRELArrayHeader*& header);
// The same, and gives back where `element` is now: elsewhere if it stood inside the array's own storage.
VREL_EXPORT void const* vrelArrayReallocAround(VRELArrayHeader*& header, void const* element);
// Makes room for `added` elements behind the live ones, in the steps of vrelArrayRealloc but with one move. Throws like
// it.
VREL_EXPORT int vrelArrayReallocFor(VRELArrayHeader*& header, int added);

// Copies elementSize bytes to the end. In this and the functions below the element may stand inside the array itself.
VREL_EXPORT int vrelArrayAdd(VRELArrayHeader*& header, void* element);
// Inserts before index; an index above count adds at the end. 0 for a negative index. Grows one slot earlier than
// vrelArrayAdd, when the array would become full; that is promised.
VREL_EXPORT int vrelArrayInsertAt(VRELArrayHeader*& header, int index, void* element);
// Overwrites one slot. 0 if index is no live element.
VREL_EXPORT int vrelArraySetAt(VRELArrayHeader*& header, int index, void* element);
// Moves the tail down by one slot. 0 if index is no live element.
VREL_EXPORT int vrelArrayRemoveAt(VRELArrayHeader*& header, int index);
// Adds as many elements to target as source has. Their bytes come from the start of the target's own data and not from
// source, of which only the length counts: that is promised. 0 unless both are valid and of one element size.
VREL_EXPORT int vrelArrayAppend(VRELArrayHeader*& target, VRELArrayHeader* source);
