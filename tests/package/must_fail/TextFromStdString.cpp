// A text is made from a std::string only on purpose.
// error: invalid initialization of reference|no viable conversion
#include <string>

#include "VRELString.h"

int Length(VRELString const& text);

int Use(std::string const& text) {
#ifdef WRONG
  return Length(text);
#else
  return Length(VRELString(text));
#endif
}
