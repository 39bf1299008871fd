// Module that calls a function of VRELTestDependency.
#include "VRELExport.h"

extern "C" int DependencyFunction();

extern "C" VREL_EXPORT int CallDependency() {
  return DependencyFunction();
}
