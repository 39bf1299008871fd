#include "Diagnostics.h"

#include <gtest/gtest.h>

#include "RecordingListener.h"

namespace {

std::string Times(int count, std::string const& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

}  // namespace

TEST(DiagnosticsTest, SendsOneErrorEventWithTheBytesAsTheyStand) {
  struct Row {
    std::string subject;
    std::string text;
    std::string message;
  };
  Row const rows[] = {
      {"part.stp:12", "expected ; behind #4, found #5", "part.stp:12: expected ; behind #4, found #5"},
      {"", "b", ": b"},
      {"100%", "%s %%d %%%n", "100%: %s %%d %%%n"},
      {"m\xFCller\n", std::string("a\0b", 3), "m\xFCller\n: a?b"},
      {std::string(600, 'a'), "b", std::string(600, 'a') + ": b"},
      {"x" + std::string(600, 'a'), "b", "..." + std::string(600, 'a') + ": b"},
      // A percent sign takes the room of two.
      {std::string(300, '%'), "b", std::string(300, '%') + ": b"},
      {std::string(301, '%'), "b", "..." + std::string(300, '%') + ": b"},
      {std::string(4096, '%'), std::string(100, '%'), "..." + std::string(300, '%') + ": " + std::string(100, '%')},
      // 199 characters of three bytes are 597 bytes; the next one would be cut.
      {Times(300, "\xE3\x83\x96"), "b", "..." + Times(200, "\xE3\x83\x96") + ": b"},
      {Times(300, "\xE3\x83\x96") + "ab", "b", "..." + Times(199, "\xE3\x83\x96") + "ab: b"},
      {std::string(1000, '\x80'), "b", "...: b"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.message);
    RecordingListener listener;
    ReportProblem(row.subject, row.text);
    ASSERT_EQ(listener.events.size(), 1U);
    EXPECT_EQ(listener.events[0].name, "VRELErrorEvent");
    EXPECT_EQ(listener.events[0].level, 80);
    EXPECT_EQ(listener.events[0].text, row.message);
  }
}

TEST(DiagnosticsTest, SendsATextWithoutASubject) {
  RecordingListener listener;
  ReportProblem("50% of --x");
  ReportProblem(std::string(2000, 'a'));
  ASSERT_EQ(listener.events.size(), 2U);
  EXPECT_EQ(listener.events[0].text, "50% of --x");
  EXPECT_EQ(listener.events[1].text, std::string(1023, 'a'));
}

TEST(DiagnosticsTest, SendsWarningsAndMessagesOnTheirChannels) {
  RecordingListener listener;
  ReportWarning("100%", "%s %%d");
  ReportWarning("x" + std::string(600, 'a'), "b");
  ReportMessage("-set a=100%%d");
  ASSERT_EQ(listener.events.size(), 3U);
  EXPECT_EQ(listener.events[0].name, "VRELWarningEvent");
  EXPECT_EQ(listener.events[0].level, 70);
  EXPECT_EQ(listener.events[0].text, "100%: %s %%d");
  EXPECT_EQ(listener.events[1].text, "..." + std::string(600, 'a') + ": b");
  EXPECT_EQ(listener.events[2].name, "VRELMessageEvent");
  EXPECT_EQ(listener.events[2].level, 50);
  EXPECT_EQ(listener.events[2].text, "-set a=100%%d");
}
