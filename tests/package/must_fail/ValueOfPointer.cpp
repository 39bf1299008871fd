// A value is not created from a pointer that is not a string: it would be stored as true.
// error: uses? (of )?deleted function
#include "VRINValue.h"

struct Part {};

VRINValue Value(Part* part) {
#ifdef WRONG
  return VRINValue(part);
#else
  return VRINValue(part != nullptr);
#endif
}
