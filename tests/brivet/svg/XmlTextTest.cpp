#include "XmlText.h"

#include <gtest/gtest.h>

#include <string>

TEST(XmlTextTest, EscapesMarkup) {
  EXPECT_EQ(EscapeXml("a<b>&\"c'", 100), "a&lt;b&gt;&amp;&quot;c'");
  EXPECT_EQ(EscapeXml("", 100), "");
  EXPECT_EQ(EscapeXml("\xE3\x83\x96", 100), "\xE3\x83\x96");
}

TEST(XmlTextTest, ReplacesWhatXmlExcludes) {
  EXPECT_EQ(EscapeXml(std::string("\0\x1B", 2), 100), "&lt;U+0000&gt;&lt;U+001B&gt;");
  EXPECT_EQ(EscapeXml("\xFFz\xEF\xBF\xBE", 100), "\xEF\xBF\xBDz\xEF\xBF\xBD");
  EXPECT_EQ(EscapeXml("\xC3(", 100), "\xEF\xBF\xBD(");
}

TEST(XmlTextTest, CutsLongStrings) {
  EXPECT_EQ(EscapeXml("abcdef", 3), "abc\xE2\x80\xA6");
  EXPECT_EQ(EscapeXml("abc", 3), "abc");
}
