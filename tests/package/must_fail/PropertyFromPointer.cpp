// VRELProperties::Set does not take a pointer for a bool.
// error: use of deleted function|call to deleted member function
#include "VRELProperties.h"

VRINResult Use(VRELProperties& properties, [[maybe_unused]] double const* mass) {
#ifdef WRONG
  return properties.Set(L"mass", mass);
#else
  return properties.Set(L"mass", *mass);
#endif
}
