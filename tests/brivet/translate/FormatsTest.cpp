#include "Formats.h"

#include <gtest/gtest.h>

TEST(FormatsTest, AreKnownByName) {
  EXPECT_STREQ(Format::Named("html")->module, "BrivetHtml");
  EXPECT_STREQ(Format::Named("text")->module, "BrivetText");
  EXPECT_STREQ(Format::Named("step")->module, "BrivetStep");
  for (char const* name : {"", "HTML", "htm", "stp", "html "}) EXPECT_EQ(Format::Named(name), nullptr) << name;
  EXPECT_STREQ(Format::Page().name, "html");
}

TEST(FormatsTest, AreKnownByTheExtension) {
  EXPECT_STREQ(Format::OfOutput("a.html")->name, "html");
  EXPECT_STREQ(Format::OfOutput("b.c/a.HtM")->name, "html");
  EXPECT_STREQ(Format::OfOutput("a.txt")->name, "text");
  EXPECT_STREQ(Format::OfOutput("a.text")->name, "text");
  for (char const* path : {"a.stp", "a.STEP", "a.html.p21"}) EXPECT_STREQ(Format::OfOutput(path)->name, "step") << path;
  for (char const* path : {"", "a", ".html", "a.", "a.htm l", "x.html/a", "a.ht", "a.html.htm "}) {
    EXPECT_EQ(Format::OfOutput(path), nullptr) << path;
  }
}

TEST(FormatsTest, TakeEveryInputForStep) {
  for (char const* path : {"a.stp", "a", "a.html", "-"}) {
    EXPECT_STREQ(Format::OfInput(path).module, "BrivetStep") << path;
  }
}

TEST(FormatsTest, CutNames) {
  struct Row {
    char const* path;
    char const* base;
    char const* extension;
  };
  Row const rows[] = {{"", "", ""},       {"a", "a", ""},       {"a.b", "a.b", ".b"}, {"x/a.b.c", "a.b.c", ".c"},
                      {"x.y/a", "a", ""}, {"x/", "", ""},       {".a", ".a", ""},     {"..a", "..a", ".a"},
                      {"a.", "a.", "."},  {"/a.b", "a.b", ".b"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(BaseNameOf(row.path), row.base);
    EXPECT_EQ(ExtensionOf(row.path), row.extension);
  }
}
