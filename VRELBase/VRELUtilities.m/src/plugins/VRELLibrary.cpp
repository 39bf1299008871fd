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

// A text in the process's default codepage; on the stack, unless it is long.
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

  // Never null; empty for a text that cannot be converted.
  char const* Get() const noexcept { return characters; }

 private:
  char local[128];
  char* heap = nullptr;
  char const* characters = "";
};

// Sets a flag while it lives.
class Raised {
 public:
  explicit Raised(bool& raisedFlag) noexcept : flag(raisedFlag) { flag = true; }
  ~Raised() { flag = false; }
  Raised(Raised const&) = delete;
  Raised& operator=(Raised const&) = delete;

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
    // What was thrown may be of a class that only the module knows, so the module stays.
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
  Raised const guard(initializing);
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
  Raised const guard(finalizing);
  void* function = nullptr;
  GetFunction(finalizeFunctionName, function);
  if (function == nullptr) return;
  reinterpret_cast<EntryPoint>(function)();
  initialized = false;
}

VRINResult VRELLibrary::FinalizeAndUnload() {
  // An entry point that asks for this would return into code that is gone.
  if (handle == nullptr || IsRunning()) return VREL_S_OK;
  if (initialized) Finalize();
  if (unloadable) {
    dlclose(handle);
    handle = nullptr;
  }
  return VREL_S_OK;
}
