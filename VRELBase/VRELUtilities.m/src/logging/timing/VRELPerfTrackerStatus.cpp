#include "VRELPerfTrackerStatus.h"

VRELPerfTrackerStatus::VRELPerfTrackerStatus() : tracking(false) {}

VRELPerfTrackerStatus::~VRELPerfTrackerStatus() = default;
