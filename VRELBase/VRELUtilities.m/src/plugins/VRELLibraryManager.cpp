#include "VRELLibraryManager.h"

#include "VRELDynamicArray.h"
#include "VRELPair.h"

namespace {

VRELString KeyOf(VRELLibrary& library) {
  return VRELString(library.GetLibraryName());
}

// Look-up order
// =============
//
// CreateLibrary looks up the caller's name; AddLibrary enters the library under its own name, which is at most 63 bytes
// long. The two differ for longer names, so CreateLibrary looks up the library's name again after adding it.
//
// FreeLibraries first collects the names of unused libraries and then removes them one by one: finalize entry points
// run during a removal and may change the table, which must not happen during an enumeration.

VRELDynamicArray<VRELString> UnusedNames() {
  // One reference each: the table, the pair that GetNext fills, and the local handle.
  constexpr unsigned int kOwnReferences = 3;
  VRELDynamicArray<VRELString> names;
  VRELPair<VRELString, VRELLibraryHandle> entry;
  VRELLibraryManager::_libraries.InitEnumeration();
  while (VRELLibraryManager::_libraries.GetNext(entry)) {
    VRELLibraryHandle const library = entry.value;
    if (!library.IsValid() || library->GetReferenceCount() != kOwnReferences) continue;
    // A running entry point would return into unloaded code.
    if (!library->IsRunning()) names.add(entry.key);
  }
  return names;
}

}  // namespace

VRINResult VRELLibraryManager::CreateLibrary(VRELString const& name, VRELString const& initFunction,
                                             VRELString const& finalFunction, VRELLibrary*& library) {
  VRINResult result = VREL_S_OK;
  VRELLibraryHandle found;
  if (!_libraries.Get(name, found)) {
    found = new VRELLibrary(name, initFunction, finalFunction);
    result &= AddLibrary(found);
    // A truncated name may be in the table already; the new library is then dropped.
    _libraries.Get(KeyOf(*found), found);
  }
  library = found;
  return result;
}

VRINResult VRELLibraryManager::AddLibrary(VRELLibrary* library) {
  if (library == nullptr) return VREL_E_INVALID_ARGUMENT;
  VRELLibraryHandle const held(library);
  _libraries.Add(KeyOf(*library), held);
  return VREL_S_OK;
}

VRINResult VRELLibraryManager::FreeLibraries() {
  VRELDynamicArray<VRELString> const names = UnusedNames();
  for (VRELString const& name : names) {
    // Destroyed after the removal, so that a finalize entry point can use the table.
    VRELLibraryHandle library;
    _libraries.Get(name, library);
    _libraries.Remove(name);
  }
  return VREL_S_OK;
}
