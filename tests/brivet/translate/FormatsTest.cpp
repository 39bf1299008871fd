#include "Formats.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "OpenWatch.h"
#include "ScratchDirectory.h"

TEST(FormatsTest, FindsByName) {
  EXPECT_STREQ(Format::Named("html")->module, "BrivetHtml");
  EXPECT_STREQ(Format::Named("text")->module, "BrivetText");
  EXPECT_STREQ(Format::Named("step")->module, "BrivetStep");
  for (char const* name : {"", "HTML", "htm", "stp", "html "}) EXPECT_EQ(Format::Named(name), nullptr) << name;
  EXPECT_STREQ(Format::Page().name, "html");
}

TEST(FormatsTest, FindsByExtension) {
  EXPECT_STREQ(Format::OfOutput("a.html")->name, "html");
  EXPECT_STREQ(Format::OfOutput("b.c/a.HtM")->name, "html");
  EXPECT_STREQ(Format::OfOutput("a.txt")->name, "text");
  EXPECT_STREQ(Format::OfOutput("a.text")->name, "text");
  for (char const* path : {"a.stp", "a.STEP", "a.html.p21", "a.stp.gz"})
    EXPECT_STREQ(Format::OfOutput(path)->name, "step") << path;
  for (char const* path : {"", "a", ".html", "a.", "a.htm l", "x.html/a", "a.ht", "a.html.htm ", "a.gz"}) {
    EXPECT_EQ(Format::OfOutput(path), nullptr) << path;
  }
}

TEST(FormatsTest, InputFormatIsAlwaysStep) {
  for (char const* path : {"a.stp", "a", "a.html", "-"}) {
    EXPECT_STREQ(Format::OfInput(path).module, "BrivetStep") << path;
  }
}

// Opening and closing it would end its writer.
TEST(FormatsTest, PipeIsNotOpened) {
  ScratchDirectory const folder;
  std::string const pipe = folder.Path("pipe");
  std::string const file = folder.Write("file", "solid");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  OpenWatch const pipeWatch(pipe);
  OpenWatch const fileWatch(file);
  if (!pipeWatch.IsWatching()) GTEST_SKIP() << "inotify is not available";
  EXPECT_STREQ(Format::OfInput(pipe).name, "step");
  EXPECT_STREQ(Format::OfInput(file).name, "step");
  EXPECT_FALSE(pipeWatch.WasOpened());
  EXPECT_TRUE(fileWatch.WasOpened());
}

TEST(FormatsTest, ListsWrittenNames) {
  EXPECT_EQ(Format::WrittenNames(), "glb, html, json, obj, stl, svg, text, step");
}

TEST(FormatsTest, ListsFormats) {
  EXPECT_EQ(Format::WrittenExtensions(), ".glb, .html, .htm, .json, .obj, .stl, .svg, .txt, .text, .stp, .step, .p21");
  EXPECT_EQ(Format::Table().rfind("glb      glTF     write       BrivetMesh   ", 0), 0U);
  EXPECT_NE(Format::Table().find("\nhtml     HTML     write       BrivetHtml   "), std::string::npos);
}

TEST(FormatsTest, NamesOutputs) {
  Format const& html = *Format::Named("html");
  struct Row {
    char const* input;
    char const* output;
  };
  Row const rows[] = {{"a.stp", "a.html"},
                      {"x/a.b.STEP", "a.b.html"},
                      {"a.stp.gz", "a.html"},
                      {"a.STPZ", "a.html"},
                      {"a", "a.html"},
                      {"-", "stdin.html"},
                      {".stp", ".stp.html"},
                      {"a.gz", "a.html"},
                      {"/dev/stdin", "stdin.html"}};
  for (Row const& row : rows) EXPECT_EQ(html.OutputName(row.input), row.output) << row.input;
}
