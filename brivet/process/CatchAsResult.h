// Conversion of exceptions to results.
#pragma once

#include <functional>
#include <string>

#include "VRINResult.h"

// Calls `work` and returns its result. An exception is reported once by ReportProblem and becomes a result:
//
//   exception                           result              message
//   FileError                           its own             its own, then its hint on a line of its own
//   InputError                          its own             `subject`, its text; with a line as ReportErrorAt
//   ReadFailure                         VREL_E_FILE_OPEN    `subject`, its text
//   VRELAbortException                  VREL_E_ABORTED      "interrupted"
//   std::bad_alloc, VRELAllocException  VREL_E_UNEXPECTED   "out of memory"
//   any other                           VREL_E_FAIL         "internal error"
//   Gk_Exception                        VREL_E_FAIL         none: it was reported when it was raised
//
// A success becomes VREL_E_FAIL if VRELErrorTracker counted an error during the call, and counts as std::bad_alloc if a
// string of the library lost its content because memory ran out.
// Errors: std::bad_alloc or VRELAllocException if there is too little memory even for the message.
VRINResult CatchAsResult(std::string const& subject, std::function<VRINResult()> const& work);

// Throws std::bad_alloc if a string of the library has lost its content because memory ran out: output made from
// strings may be incomplete.
void CheckMemory();
