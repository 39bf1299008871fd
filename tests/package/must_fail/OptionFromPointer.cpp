// An option does not take a pointer for a bool.
// error: use of deleted function|call to deleted constructor
#include "VRELOption.h"

VRELOption Use(VRELOptionName const& name, [[maybe_unused]] int const* count) {
#ifdef WRONG
  return VRELOption(name, count, false);
#else
  return VRELOption(name, "text", false);
#endif
}
