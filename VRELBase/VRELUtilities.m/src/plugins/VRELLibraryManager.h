// Table of the modules of the process.
#pragma once

#include "VRELExport.h"
#include "VRELHashMap.h"
#include "VRELLibraryHandle.h"
#include "VRELString.h"
#include "VRINResult.h"

// Table of the loaded modules, by name, of which there is one in the process. All users of a name share its
// VRELLibrary.
//
//   VRELLibrary* library = nullptr;
//   VRELLibraryManager::CreateLibrary(L"VRELStep", L"InitializeStep", L"FinalizeStep", library);
//   ...
//   VRELLibraryManager::FreeLibraries();
//
// Libraries that are left when the process exits are finalized and unloaded then. Nothing is loaded any more at that
// time.
// Thread safety: none.
class VREL_EXPORT VRELLibraryManager {
 public:
  // Stores the library with this name, which is created if it is not in the table. Loads nothing.
  //
  // Requires: names have at most 63 bytes. A longer name is entered under its first 63 bytes, and every call with it
  // returns the library that is entered there.
  // Ownership: the pointer is valid while the library is in the table or a handle refers to it.
  // Compatibility: if the name is in the table, the names of the entry points are ignored.
  static VRINResult CreateLibrary(VRELString const& name, VRELString const& initFunction,
                                  VRELString const& finalFunction, VRELLibrary*& library);

  // Adds a library, which must have been created with new, under its own name.
  //
  // Errors: VREL_E_INVALID_ARGUMENT for null.
  // Compatibility: if the name is in the table, returns VREL_S_OK without adding the library, and deletes it unless a
  // handle refers to it.
  static VRINResult AddLibrary(VRELLibrary* library);

  // Removes the libraries to which only the table refers, which finalizes and unloads them. Libraries with a running
  // entry point stay. Returns VREL_S_OK.
  static VRINResult FreeLibraries();

  static VRELHashMap<VRELString, VRELLibraryHandle> _libraries;
};
