// A module with the functions that a format module has.
#include "VRELExport.h"

extern "C" VREL_EXPORT void InitializeModule() {}
extern "C" VREL_EXPORT void FinalizeModule() {}
extern "C" VREL_EXPORT void* CreateFormatReader() {
  return nullptr;
}
