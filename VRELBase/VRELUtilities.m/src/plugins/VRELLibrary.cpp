#include "VRELLibrary.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "VRELDebug.h"
#include "VRELError.h"
#include "VRELWarning.h"

namespace {

using EntryPoint = void (*)();

// String in the default codepage of the process. Short strings are on the stack.
class PlainCharacters {
 public:
  explicit PlainCharacters(VRELString const& text) {
    if (text.convertToMBCS(local, sizeof local, nullptr, false).IsSuccess()) {
      characters = local;
    } else if (VRELStringToChars(text, heap).IsSuccess()) {
      characters = heap;
    }
  }
  ~PlainCharacters() { VRELReleaseChars(heap); }
  PlainCharacters(PlainCharacters const&) = delete;
  PlainCharacters& operator=(PlainCharacters const&) = delete;

  // Returns an empty string, not null, if the string cannot be converted.
  char const* Get() const noexcept { return characters; }

 private:
  char local[128];
  char* heap = nullptr;
  char const* characters = "";
};

// Sets a flag for the duration of a scope.
class FlagScope {
 public:
  explicit FlagScope(bool& scopedFlag) noexcept : flag(scopedFlag) { flag = true; }
  ~FlagScope() { flag = false; }
  FlagScope(FlagScope const&) = delete;
  FlagScope& operator=(FlagScope const&) = delete;

 private:
  bool& flag;
};

}  // namespace

bool VRELLibrary::mayLoad = true;

VRELLibrary::VRELLibrary(VRELString const& name, VRELString const& initFunction, VRELString const& finalFunction)
    : initializeFunctionName(initFunction), finalizeFunctionName(finalFunction) {
  PlainCharacters const plainName(name);
  std::size_t const length = std::strlen(plainName.Get());
  std::memcpy(libraryName, plainName.Get(), std::min<std::size_t>(length, nameSize - 1));
  if (length < nameSize) return;
  VRELDebug::Printf("%s library name is too long and was truncated to %s.\n", plainName.Get(), libraryName);
  VRELDebug::Printf("%s library will not be loaded.\n", plainName.Get());
}

VRELLibrary::~VRELLibrary() {
  try {
    FinalizeAndUnload();
  } catch (...) {
    // The module stays loaded: the class of the exception may be defined in it.
  }
}

unsigned int VRELLibrary::RaiseReference() {
  return VRELReferenceCount::RaiseReference();
}

unsigned int VRELLibrary::LowerReference() {
  return VRELReferenceCount::LowerReference();
}

void VRELLibrary::Load() noexcept {
  if (!mayLoad) return;
  char fileName[256];
  std::snprintf(fileName, sizeof fileName, "lib%s.so", libraryName);
  handle = dlopen(fileName, RTLD_NOW | RTLD_GLOBAL);
}

void VRELLibrary::Initialize() {
  FlagScope const scope(initializing);
  void* function = nullptr;
  GetFunction(initializeFunctionName, function);
  if (function == nullptr) return;
  reinterpret_cast<EntryPoint>(function)();
  initialized = true;
}

VRINResult VRELLibrary::LoadAndInitialize() {
  if (handle == nullptr) Load();
  if (handle == nullptr) {
    VRELWarning::Printf("%s library not loaded.", libraryName);
    return VREL_E_FAIL;
  }
  if (!initialized && !initializing) Initialize();
  return VREL_S_OK;
}

VRINResult VRELLibrary::GetFunction(VRELString const& name, void*& function) {
  PlainCharacters const plainName(name);
  if (*plainName.Get() == '\0') return VREL_E_INVALID_ARGUMENT;
  VRINResult result = VREL_S_OK;
  if (handle == nullptr || !initialized) result &= LoadAndInitialize();
  if (result.IsFailure()) return result;
  function = dlsym(handle, plainName.Get());
  if (function != nullptr) return VREL_S_OK;
  VRELError::Printf("No %s function in %s library.\n", plainName.Get(), libraryName);
  return VREL_E_FAIL;
}

void VRELLibrary::Finalize() {
  FlagScope const scope(finalizing);
  void* function = nullptr;
  GetFunction(finalizeFunctionName, function);
  if (function == nullptr) return;
  reinterpret_cast<EntryPoint>(function)();
  initialized = false;
}

VRINResult VRELLibrary::FinalizeAndUnload() {
  // A running entry point would return into unloaded code.
  if (handle == nullptr || IsRunning()) return VREL_S_OK;
  if (initialized) Finalize();
  if (unloadable) {
    dlclose(handle);
    handle = nullptr;
  }
  return VREL_S_OK;
}
