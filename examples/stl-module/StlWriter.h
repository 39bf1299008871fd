// Writer of STL files.
#pragma once

#include "VRINResult.h"

struct BrivetWriteRequest;

// Writes the FACET instances of a document, in the form that StlDocument describes.
//
// Errors: VREL_E_NOT_SUPPORTED after a report, if the document has none; VREL_E_FILE_SAVE.
VRINResult WriteStl(BrivetWriteRequest& request);
