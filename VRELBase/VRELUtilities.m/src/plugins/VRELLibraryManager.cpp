#include "VRELLibraryManager.h"

#include "VRELDynamicArray.h"
#include "VRELPair.h"

namespace {

VRELString KeyOf(VRELLibrary& library) {
  return VRELString(library.GetLibraryName());
}

VRELDynamicArray<VRELString> NamesOfUnused() {
  // The table's own handle, the one in the pair that the enumeration fills, and a local one.
  constexpr unsigned int kOwnReferences = 3;
  VRELDynamicArray<VRELString> names;
  VRELPair<VRELString, VRELLibraryHandle> entry;
  VRELLibraryManager::_libraries.InitEnumeration();
  while (VRELLibraryManager::_libraries.GetNext(entry)) {
    VRELLibraryHandle const library = entry.value;
    if (!library.IsValid() || library->GetReferenceCount() != kOwnReferences) continue;
    // The entry point that asks would return into a library that is gone.
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
    // A name that was cut may stand there already; the new library is then one too many.
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
  VRELDynamicArray<VRELString> const names = NamesOfUnused();
  for (VRELString const& name : names) {
    // Goes behind the entry: what a finalise entry point asks of the table finds it whole.
    VRELLibraryHandle library;
    _libraries.Get(name, library);
    _libraries.Remove(name);
  }
  return VREL_S_OK;
}
