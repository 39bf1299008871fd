#include "VRELEventListener.h"

VRELEventListener::~VRELEventListener() = default;
