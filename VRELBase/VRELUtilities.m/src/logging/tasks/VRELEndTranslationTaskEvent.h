// A translation is over.
#pragma once

#include <ctime>

#include "VRELEndTaskEvent.h"

// Has no start of its own: VRELStartTaskEvent::Fire opens the task "Translation".
class VREL_EXPORT VRELEndTranslationTaskEvent : public VRELEndTaskEvent {
 public:
  // The time at which the translation ended is that of the construction. The number of entities that could not be
  // translated is -1 where it is not known.
  VRELEndTranslationTaskEvent(VRINResult const& result, bool isPartInAssembly, int failedEntitiesCount);

  // The local time, the result, and the failed entities unless the result is a complete success; a part in an assembly
  // is told to be one.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Send one, with -1 as the number of failed entities.
  static void Fire(VRINResult const& result, bool isPartInAssembly);
  static void Fire(long result, bool isPartInAssembly);

 private:
  std::tm finishTime;
  int failedEntities;
  bool partInAssembly;
};
