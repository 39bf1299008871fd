#include "VRELStartTaskEvent.h"

#include <gtest/gtest.h>

#include "TaskRecorder.h"

namespace {

TEST(VRELStartTaskEventTest, WritesNothing) {
  VRELStartTaskEvent event("Meshing", "Mesh", VREL_LEVEL_VERBOSE);
  ExpectTaskEvent(event, 0, "Meshing", "Mesh", 30);
  EXPECT_EQ(DescriptionOf(event), "");
  EXPECT_EQ(sizeof(VRELStartTaskEvent), sizeof(VRELTaskEvent));
}

TEST(VRELStartTaskEventTest, FireSendsNothingWithoutTracking) {
  TaskRecorder const recorder;
  VRELStartTaskEvent::Fire("Meshing", "Mesh", VREL_LEVEL_INFO);
  EXPECT_TRUE(recorder.tasks.empty());
}

TEST(VRELStartTaskEventTest, FireSendsStampedEventWithTracking) {
  TaskRecorder const recorder;
  {
    PerfTracking const tracking;
    VRELStartTaskEvent::Fire("Meshing", "Mesh", VREL_LEVEL_DEBUG);
  }
  VRELStartTaskEvent::Fire("late", "late", VREL_LEVEL_DEBUG);
  ASSERT_EQ(recorder.tasks.size(), 1U);
  RecordedTask const& task = recorder.tasks[0];
  EXPECT_EQ(task.name, "Meshing");
  EXPECT_EQ(task.identifier, "Mesh");
  EXPECT_EQ(task.kind, 0);
  EXPECT_EQ(task.level, 10);
  EXPECT_TRUE(task.isStamped);
}

TEST(VRELStartTaskEventTest, FireAcceptsNull) {
  PerfTracking const tracking;
  TaskRecorder const recorder;
  VRELStartTaskEvent::Fire(nullptr, nullptr, VREL_LEVEL_INFO);
  ASSERT_EQ(recorder.tasks.size(), 1U);
  EXPECT_EQ(recorder.tasks[0].name, "(none)");
  EXPECT_EQ(recorder.tasks[0].identifier, "(none)");
}

}  // namespace
