// Options of the STEP module.
#pragma once

#include <string>

#include "VRELString.h"

class VRELOption;
class VRELOptions;

// Returns the option "Step.Assembly.DIRECTION.NAME", or null if it is not set. `options` may be null.
VRELOption* FindStepOption(VRELOptions* options, std::string const& direction, VRELString const& name);

// Copies its value. Returns false, and changes nothing, if the option is not set.
bool FindStepOption(VRELOptions* options, std::string const& direction, VRELString const& name, VRELString& value);
