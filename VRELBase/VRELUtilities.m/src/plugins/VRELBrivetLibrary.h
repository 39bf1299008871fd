// Format module as a program uses it.
#pragma once

#include "VRELExport.h"
#include "VRELLibraryHandle.h"
#include "VRELString.h"
#include "VRINResult.h"

// Format module as a program uses it: a module name with the names of two entry points, loaded at first use. All
// objects with one module name share one VRELLibrary, so that the initialize entry point runs once in the process.
//
//   VRELBrivetLibrary step(L"VRELStep", L"InitializeStep", L"FinalizeStep");
//   void* function = nullptr;
//   if (step.GetFunction(L"CreateStepReader", function).IsSuccess()) ...
//
// Ownership: the module stays loaded when the object is destroyed. VRELLibraryManager::FreeLibraries() unloads modules
// that are not in use. Copies share the library.
// Thread safety: none.
class VREL_EXPORT VRELBrivetLibrary {
 public:
  // Copies the names. Loads nothing.
  VRELBrivetLibrary(VRELString const& name, VRELString const& initFunction, VRELString const& finalFunction);
  VRELBrivetLibrary(VRELBrivetLibrary const&) = default;
  VRELBrivetLibrary& operator=(VRELBrivetLibrary const&) = default;
  virtual ~VRELBrivetLibrary();

  // Sets whether the module may be unloaded; true by default. The last call of Load of all objects with the same module
  // name determines the setting.
  void SetUnloadable(bool mayUnload);

  // Loads and initializes the module, unless this object has loaded it before.
  //
  // Errors: VREL_E_FAIL if the module cannot be loaded; a warning is sent (see VRELLibrary::LoadAndInitialize).
  // Compatibility: a second call returns VREL_S_OK even if the first one failed. GetFunction tries to load the module
  // again.
  VRINResult Load();

  // Calls Load() and then VRELLibrary::GetFunction.
  VRINResult GetFunction(VRELString const& function, void*& address);

 private:
  VRELString libraryName;
  VRELString initializeFunctionName;
  VRELString finalizeFunctionName;
  VRELLibraryHandle library;
  bool unloadable = true;
};
