#include "HtmlText.h"

#include <gtest/gtest.h>

TEST(HtmlTextTest, EscapesMarkup) {
  EXPECT_EQ(EscapeHtml(""), "");
  EXPECT_EQ(EscapeHtml("a < b & c > \"d\" 'e'"), "a &lt; b &amp; c &gt; &quot;d&quot; 'e'");
  EXPECT_EQ(EscapeHtml("&#12;</SCRIPT>"), "&amp;#12;&lt;/SCRIPT&gt;");
}

TEST(HtmlTextTest, WritesCharacterReferences) {
  struct Row {
    char const* text;
    char const* html;
  };
  Row const rows[] = {{"\xC2\x80", "&#128;"},
                      {"\xC3\xA4", "&#228;"},
                      {"\xDF\xBF", "&#2047;"},
                      {"\xE0\xA0\x80", "&#2048;"},
                      {"\xE3\x83\x96", "&#12502;"},
                      {"\xEF\xBF\xBF", "&#65535;"},
                      {"\xED\x9F\xBF", "&#55295;"},
                      {"\xEE\x80\x80", "&#57344;"},
                      {"\xF0\x90\x80\x80", "&#65536;"},
                      {"\xF0\x9F\x94\xA9", "&#128297;"},
                      {"\xF4\x8F\xBF\xBF", "&#1114111;"}};
  for (Row const& row : rows) EXPECT_EQ(EscapeHtml(row.text), row.html);
}

TEST(HtmlTextTest, ReplacesInvalidUtf8) {
  std::string const bad = "&#65533;";
  EXPECT_EQ(EscapeHtml("\x80z"), bad + "z");
  EXPECT_EQ(EscapeHtml("\xC3"), bad);
  EXPECT_EQ(EscapeHtml("\xC3z"), bad + "z");
  EXPECT_EQ(EscapeHtml("\xE3\x83z"), bad + bad + "z");
  EXPECT_EQ(EscapeHtml("\xFF"), bad);
  // Overlong, a surrogate, above the last code point.
  EXPECT_EQ(EscapeHtml("\xC0\x80"), bad + bad);
  EXPECT_EQ(EscapeHtml("\xE0\x80\x80"), bad + bad + bad);
  EXPECT_EQ(EscapeHtml("\xF0\x80\x80\x80"), bad + bad + bad + bad);
  EXPECT_EQ(EscapeHtml("\xED\xA0\x80"), bad + bad + bad);
  EXPECT_EQ(EscapeHtml("\xF4\x90\x80\x80"), bad + bad + bad + bad);
}

TEST(HtmlTextTest, AppendsToString) {
  std::string page = "<B>";
  AppendHtml(page, "<");
  EXPECT_EQ(page, "<B>&lt;");
}

TEST(HtmlTextTest, KeepsAsciiMarkup) {
  std::string page = "<svg>";
  AppendAsciiMarkup(page, "<title>a &amp; \xC3\xA4\xFF</title>");
  EXPECT_EQ(page, "<svg><title>a &amp; &#228;&#65533;</title>");
}
