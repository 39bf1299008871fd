// An array refuses elements that do not survive a move by byte copy.
// error: store VRELString instead of a standard string
#include <string>

#include "VRELDynamicArray.h"
#include "VRELString.h"

void Use() {
#ifdef WRONG
  VRELDynamicArray<std::string> names;
#else
  VRELDynamicArray<VRELString> names;
#endif
  names.endGrow(1);
}
