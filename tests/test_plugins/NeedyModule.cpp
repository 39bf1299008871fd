// Module that calls a function of VRELTestNeeded.
#include "VRELExport.h"

extern "C" int LentFunction();

extern "C" VREL_EXPORT int CallLentFunction() {
  return LentFunction();
}
