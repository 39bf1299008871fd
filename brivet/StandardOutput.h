// The place where pages go.
#pragma once

#include <string>

#include "VRINResult.h"

// Writes the whole page to standard output. Where not all of it can be written, VREL_E_FILE_SAVE, reported by
// ReportProblem: half a page is no success.
VRINResult PrintPage(std::string const& page);
