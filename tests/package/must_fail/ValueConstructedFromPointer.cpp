// A value is not created from a pointer that would convert to bool.
// error: use of deleted function|call to deleted|uses deleted function
#include "VRELValue.h"

VRELValue Use([[maybe_unused]] int const* number) {
#ifdef WRONG
  return VRELValue(number);
#else
  return VRELValue(*number);
#endif
}
