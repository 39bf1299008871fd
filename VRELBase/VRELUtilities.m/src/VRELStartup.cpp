// Every object with a constructor or a destructor that lives for the whole process, in the order in which the library
// comes up. They go down in the reverse order. No other source of the library defines such an object.
#include "VRELError.h"
#include "VRELEventBus.h"
#include "VRINResult.h"

VRINResult VRINResult::E_FAIL_RESULT(VREL_E_FAIL);

VRELError VRELError::FAIL_ERROR(VREL_E_FAIL);

VRELEventBus VRELEventBus::_eventBus;
