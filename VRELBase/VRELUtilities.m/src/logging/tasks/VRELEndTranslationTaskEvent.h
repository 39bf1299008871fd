// End of a translation.
#pragma once

#include <ctime>

#include "VRELEndTaskEvent.h"

// End of a translation. There is no class for its start: start the task with
// VRELStartTaskEvent::Fire(name, "Translation", level).
class VREL_EXPORT VRELEndTranslationTaskEvent : public VRELEndTaskEvent {
 public:
  // Stores the current local time as the finish time. `failedEntitiesCount` is -1 if unknown.
  VRELEndTranslationTaskEvent(VRINResult const& result, bool isPartInAssembly, int failedEntitiesCount);

  // Writes the finish time and the result, the number of failed entities if it is known and the result is not a
  // complete success, and a line that marks a part in an assembly.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Send the event with an unknown number of failed entities.
  static void Fire(VRINResult const& result, bool isPartInAssembly);
  static void Fire(long result, bool isPartInAssembly);

 private:
  std::tm finishTime;
  int failedEntities;
  bool partInAssembly;
};
