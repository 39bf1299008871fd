// What a program keeps of a format module.
#pragma once

#include "VRELExport.h"
#include "VRELLibraryHandle.h"
#include "VRELString.h"
#include "VRINResult.h"

// Names a module and its two entry points, and loads it when it is first needed. All objects on one name share one
// VRELLibrary, whose initialise entry point runs once for the process.
//
//   VRELBrivetLibrary step(L"VRELStep", L"InitializeStep", L"FinalizeStep");
//   void* function = nullptr;
//   if (step.GetFunction(L"CreateStepReader", function).IsSuccess()) ...
//
// The module stays loaded when the object goes: VRELLibraryManager::FreeLibraries() unloads what has no user.
class VREL_EXPORT VRELBrivetLibrary {
 public:
  VRELBrivetLibrary(VRELString const& name, VRELString const& initFunction, VRELString const& finalFunction);
  // A copy shares the library.
  VRELBrivetLibrary(VRELBrivetLibrary const&) = default;
  VRELBrivetLibrary& operator=(VRELBrivetLibrary const&) = default;
  virtual ~VRELBrivetLibrary();

  // Whether the module may be taken out of memory; true at first. The object that loads last decides.
  void SetUnloadable(bool mayUnload);

  // Finds the module's library and loads and initialises it, unless this object has a library already. VREL_E_FAIL when
  // the module cannot be loaded. That a second call is a success even so is promised: the object has its library then,
  // and GetFunction tries to load it again.
  VRINResult Load();

  // Load(), then what VRELLibrary::GetFunction gives.
  VRINResult GetFunction(VRELString const& function, void*& address);

 private:
  VRELString libraryName;
  VRELString initializeFunctionName;
  VRELString finalizeFunctionName;
  VRELLibraryHandle library;
  bool unloadable = true;
};
