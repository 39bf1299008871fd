// The place where an application puts its progress function.
#pragma once

#include "VRELExport.h"

// The function that modules report their progress to. An application sets its own; nothing in this library calls it,
// and what the arguments mean is settled between the modules and the application.
VREL_EXPORT extern void (*VRELProgressReport_fct)(double, int&);

// What stands there at first; does nothing.
VREL_EXPORT void VRELProgressReport_DefaultFct(double, int&);
