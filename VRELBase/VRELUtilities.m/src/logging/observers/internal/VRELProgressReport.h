// Progress function of the application.
#pragma once

#include "VRELExport.h"

// Function to which format modules report progress. An application replaces it. The library does not call it; the
// modules and the application agree on the meaning of the arguments.
VREL_EXPORT extern void (*VRELProgressReport_fct)(double, int&);

// Initial value of VRELProgressReport_fct. Does nothing.
VREL_EXPORT void VRELProgressReport_DefaultFct(double, int&);
