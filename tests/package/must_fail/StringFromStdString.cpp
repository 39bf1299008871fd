// A std::string does not convert to a string implicitly.
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
