// Where exceptions end and become results.
#pragma once

#include <functional>
#include <string>

#include "VRINResult.h"

// Does the work and tells how it ended. What the work throws is reported by ReportProblem, once and with the subject in
// front, and becomes a result:
//
//   InputError                          its result, the subject followed by its line
//   ReadFailure                        VREL_E_FILE_OPEN
//   VRELAbortException                 VREL_E_ABORTED
//   std::bad_alloc, VRELAllocException VREL_E_UNEXPECTED
//   anything else                      VREL_E_UNEXPECTED
//   Gk_Exception                       VREL_E_FAIL, without a report: it was told when it was raised
//
// Work that comes to its end gives its own result or, where that is a success and an error was told on the way (see
// VRELErrorTracker), VREL_E_FAIL.
// A success during which a text of the library was lost for want of memory counts as std::bad_alloc. Memory may be too
// short even for the report; a std::bad_alloc or VRELAllocException then leaves for the caller.
VRINResult CatchAsResult(std::string const& subject, std::function<VRINResult()> const& work);

// Throws std::bad_alloc once a text of the library was lost for want of memory: what is made of texts is not whole.
void CheckMemory();
