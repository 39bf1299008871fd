// Writer of STL files.
#pragma once

#include "VRINResult.h"

struct BrivetWriteRequest;

// Writes the triangles of a document's product model in millimetres, with all components in their places.
//
// Errors: VREL_E_NOT_SUPPORTED after a report, if there are none; VREL_E_FILE_SAVE; those of Document::GetModelResult.
VRINResult WriteStl(BrivetWriteRequest& request);
