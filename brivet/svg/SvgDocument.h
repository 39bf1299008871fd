// Drawing of a document as an SVG file.
#pragma once

#include "VRINResult.h"

struct BrivetWriteRequest;

// The values of the option Svg.*.Writer.View, in the order of DrawingOptions::View.
constexpr char const* kSvgViews[] = {"Isometric", "Front", "Top", "Right", "All"};

// Writes the drawing that the options of the request select.
//
// Errors: VREL_E_FAIL, after a report, if the document has nothing to draw; VREL_E_FILE_SAVE if the stream does not
// accept everything.
VRINResult WriteSvg(BrivetWriteRequest& request);
