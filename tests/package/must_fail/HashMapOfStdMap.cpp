// A hash map refuses values that do not survive a move by byte copy.
// error: VRELHashMap or std::vector instead of other standard containers
#include <map>

#include "VRELHashMap.h"
#include "VRELString.h"

void Use() {
#ifdef WRONG
  VRELHashMap<VRELString, std::map<int, int>> groups;
#else
  VRELHashMap<VRELString, VRELHashMap<int, int>> groups;
#endif
  groups.Remove(VRELString("hub"));
}
