// Start of a stage of the conversion.
#pragma once

#include "VRELStartTaskEvent.h"

// Start of a stage of the conversion, for listeners that show progress. It has no task identifier, so VRELTimingLogger
// ignores it.
class VREL_EXPORT VRELStartConversionStageEvent : public VRELStartTaskEvent {
 public:
  // `percent` is the share of the stage in the whole conversion. A leaf has no stages below it. A null or empty type is
  // stored as null.
  VRELStartConversionStageEvent(char const* typeOfEntities, int countOfEntities, double percent, bool isLeaf);
  VRELStartConversionStageEvent(VRELStartConversionStageEvent const& other);
  ~VRELStartConversionStageEvent() override;

  void SetFinished() noexcept { finished = true; }
  bool GetFinished() const noexcept { return finished; }
  // Returns the entity type, which the event owns, or null.
  char const* GetEntityType() const noexcept { return entityType; }
  int GetEntityCount() const noexcept { return entityCount; }
  double GetStagePercent() const noexcept { return stagePercent; }
  bool GetLeaf() const noexcept { return leaf; }

 private:
  double stagePercent;
  char* entityType;
  int entityCount;
  bool finished;
  bool leaf;
};
