#include "VRELVerbose.h"

int _VRELVerboseTab = 0;

VRELVerbose::~VRELVerbose() = default;
