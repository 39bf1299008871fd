// A stage of the conversion, for whoever shows progress.
#pragma once

#include "VRELStartTaskEvent.h"

// Has no task identifier, and so is never measured.
class VREL_EXPORT VRELStartConversionStageEvent : public VRELStartTaskEvent {
 public:
  // What kind of entities the stage converts, how many, its share of the work in percent, and whether the stage has no
  // stages below it. A null or empty type is kept as null.
  VRELStartConversionStageEvent(char const* typeOfEntities, int countOfEntities, double percent, bool isLeaf);
  // A copy has an entity type of its own.
  VRELStartConversionStageEvent(VRELStartConversionStageEvent const& other);
  ~VRELStartConversionStageEvent() override;

  void SetFinished() noexcept { finished = true; }
  bool GetFinished() const noexcept { return finished; }
  // Owned by the event.
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
