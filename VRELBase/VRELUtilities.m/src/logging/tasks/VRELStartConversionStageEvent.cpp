#include "VRELStartConversionStageEvent.h"

#include "VRELTextCopy.h"

VRELStartConversionStageEvent::VRELStartConversionStageEvent(char const* typeOfEntities, int countOfEntities,
                                                             double percent, bool isLeaf)
    : VRELStartTaskEvent("VRELStartConversionStageEvent", nullptr, VREL_LEVEL_INFO),
      stagePercent(percent),
      entityType(VRELTextCopy(typeOfEntities)),
      entityCount(countOfEntities),
      finished(false),
      leaf(isLeaf) {}

VRELStartConversionStageEvent::VRELStartConversionStageEvent(VRELStartConversionStageEvent const& other)
    : VRELStartTaskEvent(other),
      stagePercent(other.stagePercent),
      entityType(VRELTextCopy(other.entityType)),
      entityCount(other.entityCount),
      finished(other.finished),
      leaf(other.leaf) {}

VRELStartConversionStageEvent::~VRELStartConversionStageEvent() {
  delete[] entityType;
}
