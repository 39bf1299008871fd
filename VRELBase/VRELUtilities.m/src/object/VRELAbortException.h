// The run is to stop, on request of the application.
#pragma once

#include "VRELExport.h"

// Thrown by value where the library polls for an abort. The driver above the library turns it into VREL_E_ABORTED.
class VREL_EXPORT VRELAbortException {};
