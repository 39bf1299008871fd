#include "VRELEndTranslationTaskEvent.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <ctime>
#include <string>

#include "TaskRecorder.h"

namespace {

std::string const kRule = std::string(80, '-') + "\n";

// Checks the first two lines, a time of 24 characters and an empty line, and returns the rest.
std::string AfterTime(std::string const& text) {
  std::string const label = "Finish Time : ";
  std::size_t const start = label.size() + 24 + 2;
  if (text.rfind(label, 0) != 0 || text.size() < start || text.substr(start - 2, 2) != "\n\n")
    return "no time: " + text;
  std::string const time = text.substr(label.size(), 24);
  std::tm fields{};
  char const* const rest = strptime(time.c_str(), "%a %b %e %H:%M:%S %Y", &fields);
  return rest != nullptr && *rest == '\0' ? text.substr(start) : "no time: " + text;
}

TEST(VRELEndTranslationTaskEventTest, HasTranslationTask) {
  VRINResult result = VREL_S_PARTIAL;
  VRELEndTranslationTaskEvent event(result, false, 3);
  ExpectTaskEvent(event, 1, "Translation", "Translation");
  EXPECT_EQ(event.getTaskResult(), VREL_S_PARTIAL);
}

TEST(VRELEndTranslationTaskEventTest, WritesResultFailuresAndPart) {
  struct {
    long result;
    bool isPartInAssembly;
    int failedEntities;
    char const* message;
    char const* failures;
  } const cases[] = {
      {VREL_S_OK, false, -1, "Success", ""},
      {VREL_S_OK, false, 0, "Success", ""},
      {VREL_S_OK, false, 3, "Success", ""},
      {VREL_S_NO_ENTITY, false, 3, "No Entity to Translate", ""},
      {VREL_S_NO_GEOMETRY, false, 3, "No translatable geometry", ""},
      {VREL_S_PARTIAL, false, 3, "Partial Success", "Failed Entities : 3\n"},
      {VREL_S_PARTIAL, false, -1, "Partial Success", ""},
      {VREL_E_FAIL, false, 0, "Failure", "Failed Entities : 0\n"},
      {VREL_E_FAIL, false, -1, "Failure", ""},
      {VREL_E_FAIL, false, -2, "Failure", "Failed Entities : -2\n"},
      {VREL_E_ABORTED, true, 2147483647, "Aborted", "Failed Entities : 2147483647\n"},
      {VREL_S_OK, true, -1, "Success", ""},
  };
  for (auto const& each : cases) {
    SCOPED_TRACE(std::to_string(each.result) + " " + std::to_string(each.failedEntities));
    std::string expected = kRule + "Translation Result : " + each.message + "\n" + kRule + each.failures + kRule;
    if (each.isPartInAssembly) expected += "End Translation of Part Definition Document In Assembly\n" + kRule;
    EXPECT_EQ(
        AfterTime(DescriptionOf(VRELEndTranslationTaskEvent(each.result, each.isPartInAssembly, each.failedEntities))),
        expected);
  }
}

// The time of the construction, not of the writing.
TEST(VRELEndTranslationTaskEventTest, WritesLocalTimeOfConstruction) {
  std::time_t const before = std::time(nullptr);
  VRELEndTranslationTaskEvent event(VREL_S_OK, false, -1);
  std::time_t const after = std::time(nullptr);
  while (std::time(nullptr) == after) usleep(10000);
  std::string const text = DescriptionOf(event);
  bool isFound = false;
  for (std::time_t time = before; time <= after; ++time) {
    char expected[64];
    std::strftime(expected, sizeof expected, "Finish Time : %a %b %e %H:%M:%S %Y\n\n", std::localtime(&time));
    isFound = isFound || text.rfind(expected, 0) == 0;
  }
  EXPECT_TRUE(isFound) << text;
}

TEST(VRELEndTranslationTaskEventTest, FireSendsUnknownFailureCount) {
  TaskRecorder const recorder;
  VRINResult const failure = VREL_E_FAIL;
  VRELEndTranslationTaskEvent::Fire(failure, true);
  VRELEndTranslationTaskEvent::Fire(VREL_E_FAIL, false);
  VRELEndTranslationTaskEvent::Fire(0, false);
  ASSERT_EQ(recorder.tasks.size(), 3U);
  EXPECT_EQ(AfterTime(recorder.tasks[0].text), kRule + "Translation Result : Failure\n" + kRule + kRule +
                                                   "End Translation of Part Definition Document In Assembly\n" + kRule);
  EXPECT_EQ(AfterTime(recorder.tasks[1].text), kRule + "Translation Result : Failure\n" + kRule + kRule);
  EXPECT_EQ(AfterTime(recorder.tasks[2].text), kRule + "Translation Result : Success\n" + kRule + kRule);
  for (RecordedTask const& task : recorder.tasks) {
    EXPECT_EQ(task.identifier, "Translation");
    EXPECT_EQ(task.level, 50);
    EXPECT_TRUE(task.isStamped);
  }
}

TEST(VRELEndTranslationTaskEventTest, AddsThreeFields) {
  EXPECT_EQ(sizeof(VRELEndTranslationTaskEvent), sizeof(VRELEndTaskEvent) + sizeof(std::tm) + 8);
}

}  // namespace
