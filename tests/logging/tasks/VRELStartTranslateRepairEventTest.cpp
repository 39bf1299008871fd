#include "VRELStartTranslateRepairEvent.h"

#include <gtest/gtest.h>

#include "TaskRecorder.h"

namespace {

TEST(VRELStartTranslateRepairEventTest, ReturnsEntity) {
  char const type[] = "Face";
  char const representation[] = "Exact";
  VRELStartTranslateRepairEvent event(type, representation, 12, VREL_LEVEL_ERROR);
  ExpectTaskEvent(event, 0, "VRELStartTranslateRepairEvent", "Repair", 80);
  // Not copied.
  EXPECT_EQ(event.GetEntityType(), type);
  EXPECT_EQ(event.GetRepresentation(), representation);
  EXPECT_EQ(event.GetEntityNumber(), 12);
  EXPECT_EQ(DescriptionOf(event), "Exact Face[12]\n");
  VRELStartTranslateRepairEvent const copy(event);
  EXPECT_EQ(copy.GetEntityType(), type);
}

TEST(VRELStartTranslateRepairEventTest, WritesEntityIfComplete) {
  struct {
    char const* type;
    char const* representation;
    int number;
    char const* text;
  } const cases[] = {
      {"Face", "Exact", -3, "Exact Face[-3]\n"},
      {"100%d", "%s", 2147483647, "%s 100%d[2147483647]\n"},
      {"", "", 0, " [0]\n"},
      {nullptr, "Exact", 1, ""},
      {"Face", nullptr, 1, ""},
      {nullptr, nullptr, 1, ""},
  };
  for (auto const& each : cases) {
    EXPECT_EQ(
        DescriptionOf(VRELStartTranslateRepairEvent(each.type, each.representation, each.number, VREL_LEVEL_INFO)),
        each.text);
  }
}

TEST(VRELStartTranslateRepairEventTest, FireSendsAtLevelVerbose) {
  TaskRecorder const recorder;
  VRELStartTranslateRepairEvent::Fire("Face", "Exact", 12);
  ASSERT_EQ(recorder.tasks.size(), 1U);
  EXPECT_EQ(recorder.tasks[0].name, "VRELStartTranslateRepairEvent");
  EXPECT_EQ(recorder.tasks[0].level, 30);
  EXPECT_EQ(recorder.tasks[0].text, "Exact Face[12]\n");
  EXPECT_TRUE(recorder.tasks[0].isStamped);
}

}  // namespace
