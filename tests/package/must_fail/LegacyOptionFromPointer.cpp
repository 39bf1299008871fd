// Gk_Option::set does not take a pointer for a bool.
// error: use of deleted function|call to deleted member function
#include "Gk_Option.h"

VRINResult Use(Gk_Option& option, [[maybe_unused]] double const* number) {
#ifdef WRONG
  return option.set(number);
#else
  return option.set(*number);
#endif
}
