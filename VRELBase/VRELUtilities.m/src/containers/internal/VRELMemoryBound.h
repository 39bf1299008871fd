// An allocator that detects writes past the ends of its blocks.
//
// The library does not use it; it is for programs that look for such errors:
//
//   char* const buffer = static_cast<char*>(VRELMemoryBoundAllocate(100));
//   Fill(buffer);
//   VRELMemoryBoundFree(buffer);  // prints a message if Fill wrote past the block
//
// Thread safety: none.
#pragma once

#include "VRELExport.h"

// The bytes that are allocated now (each block rounded up), the highest value so far, and the serial number of the
// latest block.
VREL_EXPORT extern unsigned int VRELHeapSizeCurrent;
VREL_EXPORT extern unsigned int VRELHeapSizeMax;
VREL_EXPORT extern unsigned int VRELMemoryAllocCounter;
// Always 0; nothing reads it.
VREL_EXPORT extern unsigned int VRELMemoryAllocate;

// Allocates a block of at least size + 1 bytes, rounded up to a multiple of 16, between guard words.
//
// Errors: returns null if memory is exhausted or the rounded size does not fit 32 bits.
// Ownership: the caller releases the block by VRELMemoryBoundFree.
VREL_EXPORT void* VRELMemoryBoundAllocate(unsigned int size);

// Frees a block, and reports damaged guard words on standard output first. Does nothing for null.
VREL_EXPORT void VRELMemoryBoundFree(void* block);
