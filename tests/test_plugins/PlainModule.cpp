// Module with the entry points that its macros select. They send a message when they run.
#include "VRELExport.h"
#include "VRELInfo.h"

#ifdef HAS_INITIALIZE
extern "C" VREL_EXPORT void InitializeModule() {
  VRELInfo::NoTabPrintf("%s initialized", MODULE_NAME);
}
#endif

#ifdef HAS_FINALIZE
extern "C" VREL_EXPORT void FinalizeModule() {
  VRELInfo::NoTabPrintf("%s finalized", MODULE_NAME);
}
#endif

extern "C" VREL_EXPORT void OtherInitialize() {
  VRELInfo::NoTabPrintf("%s initialized in another way", MODULE_NAME);
}

extern "C" VREL_EXPORT int Answer() {
  return 42;
}

// 138 characters, more than the buffer on the stack.
extern "C" VREL_EXPORT int
FunctionWhoseNameIsLongFunctionWhoseNameIsLongFunctionWhoseNameIsLongFunctionWhoseNameIsLongFunctionWhoseNameIsLongFunctionWhoseNameIsLong() {
  return 138;
}
