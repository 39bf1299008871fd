// The process's table of modules.
#pragma once

#include "VRELExport.h"
#include "VRELHashMap.h"
#include "VRELLibraryHandle.h"
#include "VRELString.h"
#include "VRINResult.h"

// Shares one VRELLibrary for each name among all its users, for as long as its entry stands. What is left when the
// process ends is finalised and unloaded then, when the module's own static objects are gone and nothing more is
// loaded. No locking.
class VREL_EXPORT VRELLibraryManager {
 public:
  // The library of that name: the one in the table, or a new one that is put there. Nothing is loaded. That the names
  // of its entry points are those of the first call for the name is promised. The pointer stays good while the entry
  // stands or a handle holds the library.
  //
  // Names should have at most 63 bytes: a longer one stands in the table by its first 63. Every call for it gives the
  // library that stands there.
  static VRINResult CreateLibrary(VRELString const& name, VRELString const& initFunction,
                                  VRELString const& finalFunction, VRELLibrary*& library);

  // Puts a library from the heap into the table, under its own name. Where that name stands already nothing is put, and
  // a library that no handle holds is deleted; that this counts as a success is promised. VREL_E_INVALID_ARGUMENT for
  // null.
  static VRINResult AddLibrary(VRELLibrary* library);

  // Takes the libraries that nobody outside the table holds out of it, which finalises and unloads them; not those of
  // which an entry point is running. Always VREL_S_OK.
  static VRINResult FreeLibraries();

  static VRELHashMap<VRELString, VRELLibraryHandle> _libraries;
};
