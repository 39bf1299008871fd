// Exception for an allocation failure of an array.
#pragma once

#include "VRELExport.h"

// Thrown by value when memory for the elements of a VRELDynamicArray cannot be allocated. The array is unchanged.
class VREL_EXPORT VRELAllocException {};
