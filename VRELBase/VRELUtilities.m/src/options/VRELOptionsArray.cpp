#include "VRELOptionsArray.h"

VRELOptionsArray::VRELOptionsArray() = default;

VRELOptionsArray::~VRELOptionsArray() = default;
