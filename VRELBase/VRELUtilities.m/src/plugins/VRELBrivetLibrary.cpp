#include "VRELBrivetLibrary.h"

#include "VRELLibraryManager.h"

VRELBrivetLibrary::VRELBrivetLibrary(VRELString const& name, VRELString const& initFunction,
                                     VRELString const& finalFunction)
    : libraryName(name), initializeFunctionName(initFunction), finalizeFunctionName(finalFunction) {}

VRELBrivetLibrary::~VRELBrivetLibrary() = default;

void VRELBrivetLibrary::SetUnloadable(bool mayUnload) {
  unloadable = mayUnload;
  if (library.IsValid()) library->SetUnloadable(mayUnload);
}

VRINResult VRELBrivetLibrary::Load() {
  VRINResult result = VREL_S_OK;
  if (!library.IsValid()) {
    VRELLibrary* created = nullptr;
    result &= VRELLibraryManager::CreateLibrary(libraryName, initializeFunctionName, finalizeFunctionName, created);
    if (created != nullptr) {
      // The handle keeps the library if its initialize entry point calls FreeLibraries.
      VRELLibraryHandle const held(created);
      created->SetUnloadable(unloadable);
      result &= created->LoadAndInitialize();
      library = held;
    }
  }
  if (!library.IsValid()) result &= VREL_E_FAIL;
  return result;
}

VRINResult VRELBrivetLibrary::GetFunction(VRELString const& function, void*& address) {
  VRINResult result = Load();
  if (result.IsSuccess() && library.IsValid()) result &= library->GetFunction(function, address);
  return result;
}
