#include "VRELStartConversionTaskEvent.h"

#include <gtest/gtest.h>

#include "TaskRecorder.h"

namespace {

TEST(VRELStartConversionTaskEventTest, HasConversionTask) {
  VRELStartConversionTaskEvent event;
  ExpectTaskEvent(event, 0, "VRELStartConversionTaskEvent", "Conversion");
  EXPECT_EQ(DescriptionOf(event), "");
}

TEST(VRELStartConversionTaskEventTest, FireSendsAlways) {
  TaskRecorder const recorder;
  VRELStartConversionTaskEvent::Fire();
  ASSERT_EQ(recorder.tasks.size(), 1U);
  EXPECT_EQ(recorder.tasks[0].identifier, "Conversion");
  EXPECT_EQ(recorder.tasks[0].level, 50);
  EXPECT_TRUE(recorder.tasks[0].isStamped);
}

}  // namespace
