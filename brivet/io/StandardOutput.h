// The place where pages go.
#pragma once

#include <string>

#include "VRINResult.h"

// Writes the whole page to standard output. Where not all of it can be written, VREL_E_FILE_SAVE, reported by
// ReportProblem: half a page is no success. Throws VRELAbortException when an abort is asked for while it waits.
VRINResult PrintPage(std::string const& page);

// Fills the places of standard streams that are closed, so that no file which is opened later gets the page, or the
// messages, of the program. What writes there still fails as on a closed stream. To be called first.
void ReserveStandardStreams();
