// The library's headers name ICU's class and do not bring it.
// error: incomplete type
#include "VRELBase.h"

icu::UnicodeString* Use(icu::UnicodeString* text) {
#ifdef WRONG
  return new icu::UnicodeString(*text);
#else
  return text;
#endif
}
