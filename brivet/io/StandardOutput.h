// Standard output of the program.
#pragma once

#include <string>

#include "VRINResult.h"

// Writes the whole text to standard output.
//
// Errors: VREL_E_FILE_SAVE, reported by ReportProblem, if not all of it can be written; VRELAbortException if an abort
// is requested while it waits.
VRINResult PrintText(std::string const& text);

// Opens /dev/null for each standard stream that is closed, so that no file that is opened later takes its descriptor
// and receives the program's messages. Writing to such a stream still fails. Call it first.
void ReserveStandardStreams();
