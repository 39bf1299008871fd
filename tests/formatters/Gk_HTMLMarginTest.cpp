#include "Gk_HTMLMargin.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "StreamText.h"

namespace {

// Executes steps: '{' is incr, '}' is decr, '.' writes the margin, and other characters are text.
std::string Walk(std::string const& steps) {
  return TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    out.margin() = new Gk_HTMLMargin(&out);
    for (char const step : steps) {
      if (step == '{') {
        out.margin()->incr();
      } else if (step == '}') {
        out.margin()->decr();
      } else if (step == '.') {
        out << out.margin();
      } else {
        out << step;
      }
    }
  });
}

std::string In(std::string const& letters) {
  return "<a name= \"" + letters + "M{\"></a><a href=\"#" + letters + "M}\">{</a><BLOCKQUOTE>";
}

std::string Out(std::string const& letters) {
  return "</BLOCKQUOTE><a name= \"" + letters + "M}\"></a><a href=\"#" + letters + "M{\">}</a>\n";
}

TEST(Gk_HTMLMarginTest, WritesBlock) {
  EXPECT_EQ(Walk("{x}"),
            "<a name= \"AM{\"></a><a href=\"#AM}\">{</a><BLOCKQUOTE>x</BLOCKQUOTE>"
            "<a name= \"AM}\"></a><a href=\"#AM{\">}</a>\n");
}

TEST(Gk_HTMLMarginTest, WritesNoBlanks) {
  EXPECT_EQ(Walk(".{.x."), In("A") + "x");
}

TEST(Gk_HTMLMarginTest, NamesHaveLetterPerLevel) {
  EXPECT_EQ(Walk("{}{}{}"), In("A") + Out("A") + In("B") + Out("B") + In("C") + Out("C"));
  EXPECT_EQ(Walk("{{}{}}"), In("A") + In("AA") + Out("AA") + In("AB") + Out("AB") + Out("A"));
}

TEST(Gk_HTMLMarginTest, LevelsAreNotReset) {
  EXPECT_EQ(Walk("{{}}{{}}"), In("A") + In("AA") + Out("AA") + Out("A") + In("B") + In("BB") + Out("BB") + Out("B"));
}

TEST(Gk_HTMLMarginTest, DecrUsesNameOfIncr) {
  EXPECT_EQ(Walk("{{{}}{{}{}}}"), In("A") + In("AA") + In("AAA") + Out("AAA") + Out("AA") + In("AB") + In("ABB") +
                                      Out("ABB") + In("ABC") + Out("ABC") + Out("AB") + Out("A"));
}

TEST(Gk_HTMLMarginTest, LettersAfterZ) {
  std::string steps;
  for (int i = 0; i < 28; ++i) steps += "{}";
  std::string const text = Walk(steps);
  std::string const end = In("Z") + Out("Z") + In("[") + Out("[") + In("\\") + Out("\\");
  ASSERT_GT(text.size(), end.size());
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

// 'A' + 191 is 256: the zero byte is omitted, and 'A' returns after 256 blocks.
TEST(Gk_HTMLMarginTest, LettersWrapAround) {
  std::string steps;
  for (int i = 0; i < 257; ++i) steps += "{}";
  std::string const text = Walk(steps);
  EXPECT_NE(text.find(In("\xFF") + Out("\xFF") + In("") + Out("") + In("\x01")), text.npos);
  std::string const end = In("@") + Out("@") + In("A") + Out("A");
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

// The longest name has 97 letters and the mark.
TEST(Gk_HTMLMarginTest, NamesAreBounded) {
  constexpr int depth = 500;
  std::string expected;
  for (int i = 1; i <= depth; ++i) expected += In(std::string(static_cast<std::size_t>(i < 97 ? i : 97), 'A'));
  for (int i = depth; i >= 1; --i) expected += Out(std::string(static_cast<std::size_t>(i < 97 ? i : 97), 'A'));
  EXPECT_EQ(Walk(std::string(depth, '{') + std::string(depth, '}')), expected);
}

TEST(Gk_HTMLMarginTest, DecrWithoutIncr) {
  EXPECT_EQ(Walk("}}{{"), Out("") + Out("") + In("") + In(""));
}

TEST(Gk_HTMLMarginTest, NullFormatterCounts) {
  Gk_HTMLMargin margin(nullptr);
  margin.incr();
  margin.decr();
  EXPECT_EQ(TextOf([&](VRELOutputStream* stream) { VRELStreamFormatter(stream).dump(&margin); }), "");
}

TEST(Gk_HTMLMarginTest, OutlivesFormatter) {
  VRELStreamFormatter::VRELStreamFormatterMarginHandle margin;
  {
    VRELStreamFormatter out(nullptr);
    out.margin() = new Gk_HTMLMargin(&out);
    margin = out.margin();
    margin->incr();
  }
  margin->incr();
  margin->decr();
}

}  // namespace
