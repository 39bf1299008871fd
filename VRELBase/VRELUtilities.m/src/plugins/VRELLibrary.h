// Shared library that is loaded at run time.
#pragma once

#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRINResult.h"

// Shared library of a format module, with two optional entry points: one to run after loading and one to run before
// unloading. Entry points are functions with C linkage, without parameters or result.
//
//   VRELLibraryHandle const library(new VRELLibrary(L"VRELStep", L"InitializeStep", L"FinalizeStep"));
//   void* function = nullptr;
//   if (library->GetFunction(L"CreateStepReader", function).IsFailure()) return;
//
// The file name is "lib" + name + ".so". It is passed to dlopen without a path, so that the search rules of the dynamic
// loader apply. Symbols are resolved at load (RTLD_NOW) and are visible to libraries that are loaded later
// (RTLD_GLOBAL).
//
// Programs normally use VRELBrivetLibrary, and VRELLibraryManager shares libraries by name. The constructor loads
// nothing.
//
// Errors: exceptions of entry points are rethrown, except by the destructor.
// Thread safety: none.
class VREL_EXPORT VRELLibrary : public VRELReferenceCount {
 public:
  // Keeps the first 63 bytes of `name` in the default codepage of the process.
  VRELLibrary(VRELString const& name, VRELString const& initFunction, VRELString const& finalFunction);
  VRELLibrary(VRELLibrary const&) = delete;
  VRELLibrary& operator=(VRELLibrary const&) = delete;
  // Calls FinalizeAndUnload(). If the finalize entry point throws, the module stays loaded.
  ~VRELLibrary() override;

  unsigned int RaiseReference() override;
  unsigned int LowerReference() override;

  // Returns the module name, owned by this object.
  char* GetLibraryName() noexcept { return libraryName; }

  bool IsLoaded() const noexcept { return handle != nullptr; }

  // Returns whether an entry point of the module is running.
  bool IsRunning() const noexcept { return initializing || finalizing; }

  // Sets whether FinalizeAndUnload may unload the module; true by default.
  void SetUnloadable(bool mayUnload) noexcept { unloadable = mayUnload; }

  // Loads the module if it is not loaded, and runs its initialize entry point if that has not run.
  //
  // Errors: VREL_E_FAIL if the module cannot be loaded. The warning "NAME library not loaded." is sent; it does not say
  // why. Run the program with LD_DEBUG=libs to see the search. The next call tries again.
  // Compatibility: a module without the initialize entry point counts as loaded; an error event is sent, and each later
  // GetFunction looks for the entry point again.
  VRINResult LoadAndInitialize();

  // Stores the address of a function or variable that the module, or a library that it depends on, exports. Loads and
  // initializes the module first if necessary. The initialize entry point may call it too.
  //
  // Errors: VREL_E_INVALID_ARGUMENT if `name` is empty. VREL_E_FAIL if the module cannot be loaded; `function` is
  // unchanged in both cases. VREL_E_FAIL if there is no such symbol; `function` is null and an error event is sent.
  VRINResult GetFunction(VRELString const& name, void*& function);

  // Runs the finalize entry point if the module is initialized, and unloads the module if it may be unloaded. Does
  // nothing while an entry point of the module is running. Returns VREL_S_OK.
  //
  // Compatibility: a module without the finalize entry point stays initialized, so that its initialize entry point does
  // not run when it is loaded again.
  VRINResult FinalizeAndUnload();

  // Disables loading: from now on every load fails. Called when the process exits, because a module must not be loaded
  // while the library is being destroyed.
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
