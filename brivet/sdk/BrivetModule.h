// What a format module and the driver agree on.
//
// A module is a shared library, lib + NAME + .so, that lies beside libVRELBase.so and offers, with C linkage, the
// functions named here. One that only writes leaves out the opening function, and the other way round.
#pragma once

#include <string>

#include "VRELFile.h"
#include "VRELFileHandle.h"
#include "VRINResult.h"

class Document;
class Progress;
class VRELOptions;
class VRELOutputStream;

// The entry points of VRELBrivetLibrary: called when the module comes and goes.
#define BRIVET_INITIALIZE "BrivetInitialize"
#define BRIVET_FINALIZE "BrivetFinalize"
#define BRIVET_OPEN "BrivetOpenDocument"
#define BRIVET_WRITE "BrivetWriteDocument"

#define BRIVET_MODULE_ENTRY extern "C" __attribute__((visibility("default"))) void

// Asks a module for a document. The module makes it with `new` and opens it.
struct BrivetOpenRequest {
  VRELFileHandle file;           // the document: a path
  std::string shownName;         // how messages name it
  Document* document = nullptr;  // set by the module if the result is a success; goes into a VRELFormatReaderHandle
  VRINResult result = VREL_E_NOT_IMPLEMENTED;
};

// Asks a module to write a document that was read.
struct BrivetWriteRequest {
  Document* document = nullptr;
  VRELOutputStream* stream = nullptr;  // a write that takes fewer bytes ends the work
  VRELOptions* options = nullptr;      // those that the user set
  Progress* progress = nullptr;
  std::string title;  // for people: the document's name
  VRINResult result = VREL_E_NOT_IMPLEMENTED;
};

using BrivetEntryFunction = void();
using BrivetOpenFunction = void(BrivetOpenRequest&);
using BrivetWriteFunction = void(BrivetWriteRequest&);
