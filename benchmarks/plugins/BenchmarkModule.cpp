// Module with the functions of a format module.
#include "VRELExport.h"

extern "C" VREL_EXPORT void InitializeModule() {}
extern "C" VREL_EXPORT void FinalizeModule() {}
extern "C" VREL_EXPORT void* CreateFormatReader() {
  return nullptr;
}
