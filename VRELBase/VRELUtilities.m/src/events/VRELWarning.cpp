#include "VRELWarning.h"

int _VRELWarningTab = 0;

VRELWarning::~VRELWarning() = default;
