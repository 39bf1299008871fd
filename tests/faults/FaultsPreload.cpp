// Records the number of allocations before main. Preloaded libraries are initialized last, just before main.
#include "FaultPlan.h"

namespace {

__attribute__((constructor)) void RecordMain() {
  if (faultPlan != nullptr) faultPlan->beforeMain = faultPlan->count.load();
}

}  // namespace
