// A string is not created from a flag, which would be a code point.
// error: use of deleted function|call to deleted|uses deleted function
#include "VRELStringConversions.h"

VRELString Use(bool flag) {
#ifdef WRONG
  return VRELString(flag);
#else
  return VRELStringFromBool(flag);
#endif
}
