#include "VRELMessageEvent.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <string>

namespace {

VRELMessageEvent MakeFromList(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELMessageEvent event(arguments, format);
  va_end(arguments);
  return event;
}

TEST(VRELMessageEventTest, IsPrefixedByDefault) {
  EXPECT_TRUE(VRELMessageEvent("text").IsPrefixed());
  EXPECT_TRUE(MakeFromList("text").IsPrefixed());
  EXPECT_TRUE(VRELMessageEvent("text", true).IsPrefixed());
  EXPECT_FALSE(VRELMessageEvent("text", false).IsPrefixed());
}

TEST(VRELMessageEventTest, BoolConstructorFormatsRemainingArguments) {
  VRELMessageEvent const event("%s has %d faces, %.2f", false, "hub", 12, 0.5);
  EXPECT_FALSE(event.IsPrefixed());
  EXPECT_STREQ(event.GetMessage(), "hub has 12 faces, 0.50");
  EXPECT_EQ(event.GetLevel(), 50);
  EXPECT_STREQ(event.GetEventName(), "VRELMessageEvent");
  EXPECT_EQ(VRELMessageEvent("", false).GetMessage(), nullptr);
  EXPECT_EQ(VRELMessageEvent(nullptr, false).GetMessage(), nullptr);
  std::string const fits(1023, 'x');
  EXPECT_EQ(VRELMessageEvent("%sy", false, fits.c_str()).GetMessage(), fits);
}

TEST(VRELMessageEventTest, NumberAfterFormatIsArgument) {
  VRELMessageEvent const event("%d of %d", 0, 7);
  EXPECT_STREQ(event.GetMessage(), "0 of 7");
  EXPECT_TRUE(event.IsPrefixed());
}

TEST(VRELMessageEventTest, CopyKeepsPrefix) {
  VRELMessageEvent const source("text", false);
  VRELMessageEvent const copy(source);
  EXPECT_FALSE(copy.IsPrefixed());
  EXPECT_STREQ(copy.GetMessage(), "text");
  EXPECT_NE(copy.GetMessage(), source.GetMessage());
}

}  // namespace
