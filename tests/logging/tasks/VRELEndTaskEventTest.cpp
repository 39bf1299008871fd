#include "VRELEndTaskEvent.h"

#include <gtest/gtest.h>

#include <string>

#include "TaskRecorder.h"
#include "VRELLogger.h"
#include "VRELStringOutputStream.h"

namespace {

std::string const kRule(80, '-');

TEST(VRELEndTaskEventTest, KeepsResult) {
  VRINResult result = VREL_S_PARTIAL;
  VRELEndTaskEvent event(result, "Meshing", "Mesh", VREL_LEVEL_VERBOSE, false);
  ExpectTaskEvent(event, 1, "Meshing", "Mesh", 30);
  EXPECT_EQ(event.getTaskResult(), VREL_S_PARTIAL);
  result = VREL_E_FAIL;
  EXPECT_EQ(event.getTaskResult(), VREL_S_PARTIAL);
  event.setTaskResult(result);
  EXPECT_EQ(event.getTaskResult(), VREL_E_FAIL);
}

TEST(VRELEndTaskEventTest, WritesResultBetweenRules) {
  struct {
    long result;
    char const* line;
  } const cases[] = {
      {VREL_S_OK, "Meshing Result : Success\n"},      {VREL_S_PARTIAL, "Meshing Result : Partial Success\n"},
      {VREL_E_FAIL, "Meshing Result : Failure\n"},    {VREL_E_FILE_NOT_FOUND, "Meshing Result : File Not Found\n"},
      {VREL_E_ABORTED, "Meshing Result : Aborted\n"}, {VREL_UNDETERMINED, "Meshing Result : Undetermined\n"},
      {12345, "Meshing Result : Unknown Result\n"},
  };
  for (auto const& each : cases) {
    EXPECT_EQ(DescriptionOf(VRELEndTaskEvent(each.result, "Meshing", "Mesh", VREL_LEVEL_INFO, false)),
              kRule + "\n" + each.line + kRule + "\n");
  }
}

TEST(VRELEndTaskEventTest, WritesEventNameVerbatim) {
  VRELEndTaskEvent event(VREL_S_OK, "100%s %n \xC3\x96", "Mesh", VREL_LEVEL_INFO, false);
  event.SetTaskName("another");
  EXPECT_EQ(DescriptionOf(event), kRule + "\n100%s %n \xC3\x96 Result : Success\n" + kRule + "\n");
  EXPECT_EQ(DescriptionOf(VRELEndTaskEvent(VREL_S_OK, nullptr, nullptr, VREL_LEVEL_INFO, false)),
            kRule + "\n Result : Success\n" + kRule + "\n");
}

TEST(VRELEndTaskEventTest, SilentEventWritesNothing) {
  EXPECT_EQ(DescriptionOf(VRELEndTaskEvent(VREL_E_FAIL, "Meshing", "Mesh", VREL_LEVEL_INFO, true)), "");
}

TEST(VRELEndTaskEventTest, FireSendsNothingWithoutTracking) {
  TaskRecorder const recorder;
  VRELEndTaskEvent::Fire(VREL_S_OK, "Meshing", "Mesh", VREL_LEVEL_INFO, false);
  EXPECT_TRUE(recorder.tasks.empty());
}

TEST(VRELEndTaskEventTest, FireSendsStampedEventWithTracking) {
  PerfTracking const tracking;
  TaskRecorder const recorder;
  VRINResult result = VREL_E_ERROR;
  VRELEndTaskEvent::Fire(result, "Meshing", "Mesh", VREL_LEVEL_DEBUG, false);
  ASSERT_EQ(recorder.tasks.size(), 1U);
  RecordedTask const& task = recorder.tasks[0];
  EXPECT_EQ(task.name, "Meshing");
  EXPECT_EQ(task.identifier, "Mesh");
  EXPECT_EQ(task.kind, 1);
  EXPECT_EQ(task.level, 10);
  EXPECT_EQ(task.result, 0x1000002);
  EXPECT_TRUE(task.isStamped);
  EXPECT_EQ(task.text, kRule + "\nMeshing Result : Error Encountered\n" + kRule + "\n");
}

TEST(VRELEndTaskEventTest, SilentEventReachesListeners) {
  PerfTracking const tracking;
  VRELLogger logger;
  auto* const log = new VRELStringOutputStream;
  logger.Initialize(log, VREL_LEVEL_ALL);
  TaskRecorder const recorder;
  VRELEndTaskEvent::Fire(VREL_S_OK, "Meshing", "Mesh", VREL_LEVEL_INFO, true);
  ASSERT_EQ(recorder.tasks.size(), 1U);
  EXPECT_EQ(recorder.tasks[0].identifier, "Mesh");
  EXPECT_EQ(recorder.tasks[0].text, "");
  VRELEndTaskEvent::Fire(VREL_S_OK, "Meshing", "Mesh", VREL_LEVEL_INFO, false);
  EXPECT_EQ(TakeText(*log), kRule + "\nMeshing Result : Success\n" + kRule + "\n");
}

TEST(VRELEndTaskEventTest, AddsTwoFields) {
  EXPECT_EQ(sizeof(VRELEndTaskEvent), sizeof(VRELTaskEvent) + 8);
}

}  // namespace
