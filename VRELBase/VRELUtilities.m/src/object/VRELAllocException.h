// Memory for the elements of an array could not be obtained.
#pragma once

#include "VRELExport.h"

// Thrown by value; the array that wanted to grow is as it was.
class VREL_EXPORT VRELAllocException {};
