// A shared library that is loaded on demand: a format module.
#pragma once

#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRINResult.h"

// One module by its base name, with the names of two entry points that it may have: one that runs when the module has
// been loaded, and one that runs before it is unloaded. Both take no arguments and return nothing.
//
// The module's file is "lib" + name + ".so". The bare file name goes to dlopen, so that the search is the dynamic
// loader's own. All symbols are resolved at load, and the module's symbols are visible to modules that are loaded
// later.
//
// Making one loads nothing. Modules are mostly shared by name through VRELLibraryManager; programs hold them through a
// VRELBrivetLibrary. What an entry point throws passes through; only the destructor lets nothing out. No locking.
class VREL_EXPORT VRELLibrary : public VRELReferenceCount {
 public:
  // Of a name of more than 63 bytes in the process's default codepage the first 63 are kept.
  VRELLibrary(VRELString const& name, VRELString const& initFunction, VRELString const& finalFunction);
  VRELLibrary(VRELLibrary const&) = delete;
  VRELLibrary& operator=(VRELLibrary const&) = delete;
  // FinalizeAndUnload(). A module whose finalise entry point throws stays mapped.
  ~VRELLibrary() override;

  unsigned int RaiseReference() override;
  unsigned int LowerReference() override;

  // The base name, owned by this object.
  char* GetLibraryName() noexcept { return libraryName; }

  bool IsLoaded() const noexcept { return handle != nullptr; }

  // Whether an entry point of the module is running.
  bool IsRunning() const noexcept { return initializing || finalizing; }

  // Whether FinalizeAndUnload may take the module out of memory; true at first.
  void SetUnloadable(bool mayUnload) noexcept { unloadable = mayUnload; }

  // Loads the module unless it is loaded, and runs its initialise entry point unless that has run. VREL_E_FAIL, and a
  // warning, when the loader has no such module; the next call tries again.
  //
  // That a module without that entry point counts as loaded is promised: an error tells of it, and every later
  // GetFunction looks for it once more.
  VRINResult LoadAndInitialize();

  // The address of a function or variable that the module, or a library that it needs, exports. Loads and initialises
  // first where that has not been done; while the initialise entry point runs it may itself ask for functions.
  // VREL_E_INVALID_ARGUMENT for an empty name; VREL_E_FAIL, an error and null when there is no such symbol. In all
  // other failures `function` stays as it was.
  VRINResult GetFunction(VRELString const& name, void*& function);

  // Runs the finalise entry point of an initialised module, then unloads it if that is allowed. Always VREL_S_OK.
  //
  // Does nothing while an entry point of the module runs. That a module without a finalise entry point goes on
  // counting as initialised is promised: loaded again, it is not initialised again.
  VRINResult FinalizeAndUnload();

  // From now on no library loads a module, as if the loader had none. Called when the process ends: the loader would
  // bring up anew what is going down.
  static void StopLoading() noexcept { mayLoad = false; }

 private:
  static constexpr int nameSize = 64;
  static bool mayLoad;

  void Load() noexcept;
  void Initialize();
  void Finalize();

  void* handle = nullptr;
  char libraryName[nameSize] = {};
  bool unloadable = true;
  bool initialized = false;
  bool initializing = false;
  VRELString initializeFunctionName;
  VRELString finalizeFunctionName;
  bool finalizing = false;
};
