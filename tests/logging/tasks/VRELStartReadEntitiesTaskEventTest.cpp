#include "VRELStartReadEntitiesTaskEvent.h"

#include <gtest/gtest.h>

#include "TaskEventFacts.h"

namespace {

TEST(VRELStartReadEntitiesTaskEventTest, EventNameLacksSecondT) {
  VRELStartReadEntitiesTaskEvent event;
  ExpectTaskEvent(event, 0, "VRELStarReadEntitiesTaskEvent", "Read Entities");
  EXPECT_FALSE(event.IsA("VRELStartReadEntitiesTaskEvent"));
  EXPECT_EQ(DescriptionOf(event), "");
}

}  // namespace
