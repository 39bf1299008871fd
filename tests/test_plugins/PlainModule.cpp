// A module with the entry points that it is built with. They tell on the bus that they ran.
#include "VRELExport.h"
#include "VRELInfo.h"

#ifdef HAS_INITIALIZE
extern "C" VREL_EXPORT void InitializeModule() {
  VRELInfo::NoTabPrintf("%s initialised", MODULE_NAME);
}
#endif

#ifdef HAS_FINALIZE
extern "C" VREL_EXPORT void FinalizeModule() {
  VRELInfo::NoTabPrintf("%s finalised", MODULE_NAME);
}
#endif

extern "C" VREL_EXPORT void OtherInitialize() {
  VRELInfo::NoTabPrintf("%s initialised in another way", MODULE_NAME);
}

extern "C" VREL_EXPORT int Answer() {
  return 42;
}

// 138 characters: more than a buffer on the stack would hold.
extern "C" VREL_EXPORT int
FunctionWhoseNameIsLongFunctionWhoseNameIsLongFunctionWhoseNameIsLongFunctionWhoseNameIsLongFunctionWhoseNameIsLongFunctionWhoseNameIsLong() {
  return 138;
}
