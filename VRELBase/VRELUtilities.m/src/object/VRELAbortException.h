// Exception that stops a translation on request.
#pragma once

#include "VRELExport.h"

// Thrown by value by Gk_ErrMgr::checkAbort and VRELCallbackShared::IsAborted after an abort request. The driver catches
// it and returns VREL_E_ABORTED.
class VREL_EXPORT VRELAbortException {};
