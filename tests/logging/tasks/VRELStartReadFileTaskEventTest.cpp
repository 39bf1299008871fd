#include "VRELStartReadFileTaskEvent.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "LocaleProcess.h"
#include "TaskRecorder.h"

namespace {

TEST(VRELStartReadFileTaskEventTest, KeepsFileName) {
  VRELStartReadFileTaskEvent fromText(VRELString(L"parts/wheel.step"));
  ExpectTaskEvent(fromText, 0, "VRELStartReadFileTaskEvent", "Read File");
  EXPECT_STREQ(fromText.GetFileName(), "parts/wheel.step");
  std::string bytes = "100%s.step";
  VRELStartReadFileTaskEvent fromBytes(bytes.c_str());
  bytes[0] = 'X';
  ExpectTaskEvent(fromBytes, 0, "VRELStartReadFileTaskEvent", "Read File");
  EXPECT_STREQ(fromBytes.GetFileName(), "100%s.step");
  EXPECT_EQ(DescriptionOf(fromText), "");
  EXPECT_EQ(DescriptionOf(fromBytes), "");
}

TEST(VRELStartReadFileTaskEventTest, FileNameUsesProcessCodepage) {
  RunTestInLocale("C.UTF-8", [] {
    EXPECT_STREQ(VRELStartReadFileTaskEvent(VRELString(L"\u00D6l/\u4E2D.step")).GetFileName(),
                 "\xC3\x96l/\xE4\xB8\xAD.step");
    EXPECT_STREQ(VRELStartReadFileTaskEvent("\xC3\x96l.step").GetFileName(), "\xC3\x96l.step");
  });
}

TEST(VRELStartReadFileTaskEventTest, EmptyNameIsNull) {
  char const* const none = nullptr;
  EXPECT_EQ(VRELStartReadFileTaskEvent(VRELString()).GetFileName(), nullptr);
  EXPECT_EQ(VRELStartReadFileTaskEvent("").GetFileName(), nullptr);
  EXPECT_EQ(VRELStartReadFileTaskEvent(none).GetFileName(), nullptr);
}

TEST(VRELStartReadFileTaskEventTest, CopyIsDeep) {
  auto source = std::make_unique<VRELStartReadFileTaskEvent>("wheel.step");
  VRELStartReadFileTaskEvent const copy(*source);
  source.reset();
  EXPECT_STREQ(copy.GetFileName(), "wheel.step");
  EXPECT_EQ(VRELStartReadFileTaskEvent(VRELStartReadFileTaskEvent("")).GetFileName(), nullptr);
}

TEST(VRELStartReadFileTaskEventTest, FireSendsAlways) {
  TaskRecorder const recorder;
  VRELString name(L"wheel.step");
  VRELStartReadFileTaskEvent::Fire(name);
  VRELStartReadFileTaskEvent::Fire("wheel.step");
  ASSERT_EQ(recorder.tasks.size(), 2U);
  for (RecordedTask const& task : recorder.tasks) {
    EXPECT_EQ(task.name, "VRELStartReadFileTaskEvent");
    EXPECT_EQ(task.identifier, "Read File");
    EXPECT_EQ(task.level, 50);
    EXPECT_TRUE(task.isStamped);
    EXPECT_EQ(task.text, "");
  }
  EXPECT_EQ(sizeof(VRELStartReadFileTaskEvent), sizeof(VRELTaskEvent) + sizeof(char*));
}

}  // namespace
