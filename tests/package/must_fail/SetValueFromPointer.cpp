// VRELOption::SetValue does not take a pointer for a bool.
// error: use of deleted function|call to deleted member function
#include "VRELOption.h"

VRINResult Use(VRELOption& option, [[maybe_unused]] VRELOption const* other) {
#ifdef WRONG
  return option.SetValue(other);
#else
  return option.SetValue(L"text");
#endif
}
