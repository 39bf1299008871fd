#include "VRELProgressReport.h"

void (*VRELProgressReport_fct)(double, int&) = VRELProgressReport_DefaultFct;

void VRELProgressReport_DefaultFct(double /*progress*/, int& /*state*/) {}
