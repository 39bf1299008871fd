// A hash list refuses elements that do not survive a move by byte copy.
// error: store VRELString instead of a standard string
#include <string>

#include "VRELHashList.h"
#include "VRELString.h"

void Use() {
#ifdef WRONG
  VRELHashList<std::string> names;
#else
  VRELHashList<VRELString> names;
#endif
  names.Clear();
}
