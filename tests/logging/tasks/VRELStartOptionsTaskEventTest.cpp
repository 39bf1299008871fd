#include "VRELStartOptionsTaskEvent.h"

#include <gtest/gtest.h>

#include "TaskRecorder.h"

namespace {

TEST(VRELStartOptionsTaskEventTest, WritesHeading) {
  VRELStartOptionsTaskEvent event;
  ExpectTaskEvent(event, 0, "VRELStartOptionsTaskEvent", "Options");
  EXPECT_EQ(DescriptionOf(event), "--------------------- Options Set by User ------------------\n");
}

TEST(VRELStartOptionsTaskEventTest, FireSendsAlways) {
  TaskRecorder const recorder;
  VRELStartOptionsTaskEvent::Fire();
  ASSERT_EQ(recorder.tasks.size(), 1U);
  EXPECT_EQ(recorder.tasks[0].name, "VRELStartOptionsTaskEvent");
  EXPECT_EQ(recorder.tasks[0].level, 50);
  EXPECT_TRUE(recorder.tasks[0].isStamped);
}

}  // namespace
