// Module whose initialize entry point calls GetFunction of its own library.
#include "VRELExport.h"
#include "VRELInfo.h"
#include "VRELLibraryManager.h"

extern "C" VREL_EXPORT int Answer() {
  return 42;
}

extern "C" VREL_EXPORT void InitializeModule() {
  VRELLibrary* own = nullptr;
  VRELLibraryManager::CreateLibrary(MODULE_NAME, "", "", own);
  void* function = nullptr;
  VRINResult const result = own->GetFunction("Answer", function);
  VRELInfo::NoTabPrintf("%s called: %s, %s", MODULE_NAME, result.GetMessage(),
                        function == reinterpret_cast<void*>(&Answer) ? "its own" : "another");
}
