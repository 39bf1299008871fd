// Module that exports a function to modules that are loaded later.
#include "VRELExport.h"

extern "C" VREL_EXPORT int DependencyFunction() {
  return 7;
}
