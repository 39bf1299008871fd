#include "VRELChannelLine.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <string>
#include <vector>

#include "RecordingListener.h"
#include "VRELTestEvent.h"

namespace {

void Add(VRELChannelLine& line, char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  line.Format(format, arguments);
  va_end(arguments);
}

TEST(VRELChannelLineTest, CutsAtCapacity) {
  VRELChannelLine line(1);
  Add(line, "%d", 5);
  Add(line, "%s", "x");
  EXPECT_STREQ(line.Unescape(), "   5x");
  Add(line, "%s", std::string(1018, 'y').c_str());
  Add(line, "%s", "z");
  line.Format("z");
  EXPECT_EQ(line.Unescape(), "   5x" + std::string(1018, 'y'));
}

TEST(VRELChannelLineTest, FormatWithoutArgumentsUnescapesOnce) {
  VRELChannelLine line(0);
  line.Format("%%%% %d");
  EXPECT_STREQ(line.Unescape(), "% %d");
}

TEST(VRELChannelLineTest, CopyUnescapedHalvesPercentSigns) {
  char target[] = "........";
  EXPECT_EQ(VRELChannelLine::CopyUnescaped("a%%b%d%", target, 8), 6U);
  EXPECT_STREQ(target, "a%b%d%..");
  EXPECT_EQ(VRELChannelLine::CopyUnescaped("%%%%xyz", target, 3), 3U);
  EXPECT_STREQ(target, "%%x%d%..");
  EXPECT_EQ(VRELChannelLine::CopyUnescaped(target, target, 8), 7U);
  EXPECT_STREQ(target, "%x%d%...");
}

TEST(VRELChannelLineTest, RejectedFormatAppendsNothing) {
  VRELChannelLine line(1);
  // This character has no multibyte encoding in the C locale.
  Add(line, "before %ls", L"\u4E2D");
  EXPECT_STREQ(line.Unescape(), "   ");
  Add(line, "after");
  EXPECT_STREQ(line.Unescape(), "   after");
}

TEST(VRELChannelLineTest, SendsByVariadicConstructor) {
  RecordingListener const listener;
  VRELChannelLine line(1);
  Add(line, "%s", "50%% %n");
  VRELSendLine<VRELTestEvent>(line);
  VRELSendLine<VRELTestEvent>("%%s");
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"   50% %n", "%s"}));
  EXPECT_EQ(listener.events[0].level, 20);
}

}  // namespace
