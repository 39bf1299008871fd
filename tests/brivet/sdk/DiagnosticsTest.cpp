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

TEST(DiagnosticsTest, ReportProblemEscapesText) {
  struct Row {
    std::string subject;
    std::string text;
    std::string message;
  };
  Row const rows[] = {
      {"part.stp:12", "expected ';', found '#5'", "part.stp:12: expected ';', found '#5'"},
      {"", "b", ": b"},
      {"100%", "%s %%d %%%n", "100%: %s %%d %%%n"},
      {"m\xFCller\n", std::string("a\0b", 3), "m\xFCller<U+000A>: a<U+0000>b"},
      {std::string(600, 'a'), "b", std::string(600, 'a') + ": b"},
      {"x" + std::string(600, 'a'), "b", "..." + std::string(600, 'a') + ": b"},
      // A percent sign takes two bytes.
      {std::string(300, '%'), "b", std::string(300, '%') + ": b"},
      {std::string(301, '%'), "b", "..." + std::string(300, '%') + ": b"},
      {std::string(4096, '%'), std::string(100, '%'), "..." + std::string(300, '%') + ": " + std::string(100, '%')},
      // 200 characters of three bytes are 600 bytes.
      {Times(300, "\xE3\x83\x96"), "b", "..." + Times(200, "\xE3\x83\x96") + ": b"},
      {Times(300, "\xE3\x83\x96") + "ab", "b", "..." + Times(199, "\xE3\x83\x96") + "ab: b"},
      {std::string(1000, '\x80'), "b", "..." + Times(75, "<U+0080>") + ": b"},
      {"a\x1B[2J", "\x07 \xC2\x9B \xE2\x80\xAE", "a<U+001B>[2J: <U+0007> <U+009B> <U+202E>"},
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

TEST(DiagnosticsTest, ReportProblemNeedsNoSubject) {
  RecordingListener listener;
  ReportProblem("50% of --x");
  ReportProblem(std::string(2000, 'a'));
  ASSERT_EQ(listener.events.size(), 2U);
  EXPECT_EQ(listener.events[0].text, "50% of --x");
  EXPECT_EQ(listener.events[1].text, std::string(1023, 'a'));
}

TEST(DiagnosticsTest, ReportsUseTheirChannels) {
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

TEST(DiagnosticsTest, ReportAtNamesLocationAndSeverity) {
  RecordingListener listener;
  ReportErrorAt({"part.stp", 12, 34}, "expected ')', found ';'");
  ReportWarningAt({"100%.stp", 9, 0}, "50%", "add\n'%s'");
  ReportErrorAt({"a\nb", 0, 7}, "c");
  ASSERT_EQ(listener.events.size(), 3U);
  EXPECT_EQ(listener.events[0].name, "VRELErrorEvent");
  EXPECT_EQ(listener.events[0].text, "part.stp:12:34: error: expected ')', found ';'");
  EXPECT_EQ(listener.events[1].name, "VRELWarningEvent");
  EXPECT_EQ(listener.events[1].text, "100%.stp:9: warning: 50%\nhint: add<U+000A>'%s'");
  EXPECT_EQ(listener.events[2].text, "a<U+000A>b: error: c");
}

TEST(DiagnosticsTest, FormatLocationOmitsUnknown) {
  EXPECT_EQ(FormatLocation({"a", 1, 2}), "a:1:2");
  EXPECT_EQ(FormatLocation({"a", 1, 0}), "a:1");
  EXPECT_EQ(FormatLocation({"a", 0, 2}), "a");
  EXPECT_EQ(FormatLocation({"x" + std::string(600, 'a'), 1, 2}), "..." + std::string(600, 'a') + ":1:2");
}

TEST(DiagnosticsTest, HasLocationFindsSeverity) {
  EXPECT_TRUE(HasLocation("a:1:2: error: b"));
  EXPECT_TRUE(HasLocation("a:1: warning: b"));
  EXPECT_FALSE(HasLocation("cannot open 'a': No such file or directory"));
}
