// Interface between the driver and the format modules.
//
// A module is a shared library, lib + NAME + .so, with its manifest NAME.brivet next to it. It exports the functions
// that are named here, with C linkage. A module that only writes omits the function that opens, and vice versa.
#pragma once

#include <string>

#include "VRELFile.h"
#include "VRELFileHandle.h"
#include "VRINResult.h"

class Document;
struct ProductModel;
class Progress;
class ShapeEvaluator;
class VRELOptions;
class VRELOutputStream;

// The entry points that VRELBrivetLibrary calls after loading and before unloading a module.
#define BRIVET_INITIALIZE "BrivetInitialize"
#define BRIVET_FINALIZE "BrivetFinalize"
#define BRIVET_OPEN "BrivetOpenDocument"
#define BRIVET_WRITE "BrivetWriteDocument"
#define BRIVET_EVALUATE "BrivetEvaluateShapes"

#define BRIVET_MODULE_ENTRY extern "C" __attribute__((visibility("default"))) void

// Request to open a document.
struct BrivetOpenRequest {
  VRELFileHandle file;           // the document: a path
  std::string shownName;         // how messages name it
  Document* document = nullptr;  // set by the module on success: allocated with new and opened; owned by the caller,
                                 // who stores it in a VRELFormatReaderHandle
  VRINResult result = VREL_E_NOT_IMPLEMENTED;
  VRELOptions* options = nullptr;  // those that the user set; may be null
};

// Request to write a document that was read.
struct BrivetWriteRequest {
  Document* document = nullptr;
  VRELOutputStream* stream = nullptr;  // if it accepts fewer bytes than it is given, writing ends with VREL_E_FILE_SAVE
  VRELOptions* options = nullptr;      // those that the user set; may be null
  Progress* progress = nullptr;
  std::string title;      // the document's name, for readers
  std::string shownName;  // how messages name the document
  VRINResult result = VREL_E_NOT_IMPLEMENTED;
  std::string format;                // name of the format, for modules that write several
  ShapeEvaluator* shapes = nullptr;  // evaluates the shapes of the document; may be null
};

// Request to evaluate the exact shapes of a document. See ShapeEvaluator::Evaluate.
struct BrivetEvaluateRequest {
  std::string path;                // the document
  std::string shownName;           // how messages name it
  ProductModel* model = nullptr;   // completed by the module
  int parts = 0;                   // of ShapeEvaluator::Parts
  VRELOptions* options = nullptr;  // those that the user set; may be null
  VRINResult result = VREL_E_NOT_IMPLEMENTED;
};

using BrivetEntryFunction = void();
using BrivetOpenFunction = void(BrivetOpenRequest&);
using BrivetWriteFunction = void(BrivetWriteRequest&);
using BrivetEvaluateFunction = void(BrivetEvaluateRequest&);
