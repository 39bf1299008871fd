// Notes where the program's own code begins; it comes up last of all libraries that are loaded in front of a program.
#include "FaultPlan.h"

namespace {

__attribute__((constructor)) void NoteMain() {
  if (faultPlan != nullptr) faultPlan->beforeMain = faultPlan->count.load();
}

}  // namespace
