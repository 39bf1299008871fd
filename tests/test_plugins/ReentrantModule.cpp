// Module whose entry points try to unload all modules, their own included, and load another one.
#include "VRELExport.h"
#include "VRELInfo.h"
#include "VRELLibraryManager.h"

namespace {

void ReloadModules(char const* when) {
  VRELLibraryManager::FreeLibraries();
  VRELLibrary* library = nullptr;
  VRELLibraryManager::CreateLibrary(MODULE_NAME, "InitializeModule", "FinalizeModule", library);
  library->FinalizeAndUnload();
  VRELLibraryManager::CreateLibrary("VRELTestBoth", "InitializeModule", "FinalizeModule", library);
  library->LoadAndInitialize();
  VRELInfo::NoTabPrintf("%s %s", MODULE_NAME, when);
}

}  // namespace

extern "C" VREL_EXPORT void InitializeModule() {
  ReloadModules("initialized");
}

extern "C" VREL_EXPORT void FinalizeModule() {
  ReloadModules("finalized");
}
