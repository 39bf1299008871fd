// An allocator that notices writes past the ends of its blocks, for programs built on the library.
#pragma once

#include "VRELExport.h"

// Bytes now outstanding (each block rounded up), the highest value so far, and the serial number of the latest block.
// Plain variables without locking.
VREL_EXPORT extern unsigned int VRELHeapSizeCurrent;
VREL_EXPORT extern unsigned int VRELHeapSizeMax;
VREL_EXPORT extern unsigned int VRELMemoryAllocCounter;
// Always 0; nothing reads it.
VREL_EXPORT extern unsigned int VRELMemoryAllocate;

// A block of at least size + 1 bytes, rounded up to a multiple of 16, with guard words in front and behind; null when
// memory runs out or the rounded size would not fit 32 bits. Goes back through VRELMemoryBoundFree.
VREL_EXPORT void* VRELMemoryBoundAllocate(unsigned int size);

// Frees a block; null does nothing. A block with damaged guards is reported on standard output first.
VREL_EXPORT void VRELMemoryBoundFree(void* block);
