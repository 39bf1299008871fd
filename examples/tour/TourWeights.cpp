// The module of the tour: what one part weighs, in grams.
#include <cstring>

#include "VRELExport.h"
#include "VRELInfo.h"

extern "C" {

// Called after the module is loaded, and before it is unloaded.
VREL_EXPORT void StartWeights() {
  VRELInfo::Printf("weights come from TourWeights");
}
VREL_EXPORT void StopWeights() {
  VRELInfo::Printf("no more weights");
}

VREL_EXPORT double GramsOf(char const* name) {
  return std::strcmp(name, "bolt") == 0 ? 32.5 : 4.0;
}
}
