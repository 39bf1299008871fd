// A value does not take a pointer for a flag.
// error: use of deleted function|call to deleted|uses deleted function
#include "VRELValue.h"

void Use(VRELValue& value, [[maybe_unused]] VRELString const* text) {
#ifdef WRONG
  value.SetValue(text);
#else
  value.SetValue(text != nullptr);
#endif
}
