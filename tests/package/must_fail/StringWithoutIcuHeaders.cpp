// The library's headers declare ICU's class and do not include its header.
// error: incomplete type
#include "VRELBase.h"

icu::UnicodeString* Use(icu::UnicodeString* text) {
#ifdef WRONG
  return new icu::UnicodeString(*text);
#else
  return text;
#endif
}
