// A file is not created from a boolean: it would be descriptor 0 or 1.
// error: uses? (of )?deleted function
#include "VRINFile.h"

VRINFile File(bool isOutput) {
#ifdef WRONG
  return VRINFile(isOutput);
#else
  return VRINFile(isOutput ? 1 : 0);
#endif
}
