// Shaded pages written by the program, with and without the shape module, and with workers that fail.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "BrivetFixture.h"
#include "ModuleRegistry.h"
#include "TestDocument.h"

namespace {

using testing::HasSubstr;

class BrivetShadeTest : public BrivetFixture {
 protected:
  void SetUp() override {
    match = ModuleRegistry::Get().FindName("shape", ModuleRegistry::Evaluating);
    if (!match) GTEST_SKIP() << "no shape module";
    Write("bracket.stp", FileText(BracketPath()));
    modules = folder.Path() + "/modules";
    mkdir(modules.c_str(), 0755);
    Write("modules/BrivetShape.brivet", FileText(match.module->manifest));
    Write("modules/libBrivetShape.so", FileText(match.module->library));
  }

  void WriteWorker(std::string const& commands) {
    Write("modules/brivet-shape-worker", "#!/bin/sh\n" + commands);
    chmod((modules + "/brivet-shape-worker").c_str(), 0755);
  }

  // Translates the bracket to a page, with the module in the folder of the test.
  ChildResult Shade(std::vector<std::string> const& words = {}) const {
    ProgramOptions options;
    options.directory = folder.Path();
    options.environment = {"LC_ALL=C.UTF-8", "BRIVET_MODULE_PATH=" + modules};
    std::vector<std::string> all = {BRIVET_PROGRAM, "-nolog", "bracket.stp", "page.html"};
    all.insert(all.end(), words.begin(), words.end());
    return RunProgram(all, options);
  }

  // Without the page in the message of a failure.
  bool PageHas(std::string const& markup, std::string const& name = "page.html") const {
    return folder.Read(name).find(markup) != std::string::npos;
  }

  ModuleRegistry::Match match;
  std::string modules;
};

}  // namespace

// The page of the installed module has more geometry, and the computed volume.
TEST_F(BrivetShadeTest, OptionSelectsShading) {
  ASSERT_EQ(Brivet({"bracket.stp", "off.html", "-set", "Html.*.Writer.Shade=Off"}).exitStatus, 0);
  ASSERT_EQ(Brivet({"bracket.stp", "auto.html"}).exitStatus, 0);
  ASSERT_EQ(Brivet({"bracket.stp", "on.html", "-set", "Shade=On"}).exitStatus, 0);
  EXPECT_FALSE(PageHas("<dt>Volume</dt>", "off.html"));
  EXPECT_TRUE(PageHas("<dt>Volume</dt>", "auto.html"));
  EXPECT_GT(folder.Read("auto.html").size(), folder.Read("off.html").size() + 1000);
  EXPECT_EQ(folder.Read("auto.html").size(), folder.Read("on.html").size());
  ChildResult const result = Brivet({"bracket.stp", "no.html", "-set", "Html.*.Writer.Shade=Maybe"});
  EXPECT_NE(result.exitStatus, 0);
  EXPECT_THAT(result.errors, HasSubstr("Auto, On, Off"));
}

TEST_F(BrivetShadeTest, OffNeverStartsWorker) {
  WriteWorker("echo started >> '" + folder.Path() + "/started'\nexit 1\n");
  EXPECT_EQ(Shade({"-set", "Html.*.Writer.Shade=Off"}).exitStatus, 0);
  EXPECT_FALSE(folder.Has("started"));
  EXPECT_EQ(Shade().exitStatus, 0);
  EXPECT_EQ(folder.Read("started"), "started\n");
}

// The page keeps the edges, the summary has the reason, and the status is that of the document.
TEST_F(BrivetShadeTest, PageSurvivesFailureOfWorker) {
  struct Row {
    char const* commands;
    char const* reason;
  };
  for (Row const& row :
       {Row{"kill -SEGV $$\n", "the shape worker has crashed: Segmentation fault"},
        Row{"kill -ABRT $$\n", "the shape worker has crashed: Aborted"},
        Row{"exit 7\n", "the memory limit of 8192 MB was reached; the option Shape.*.Reader.MemoryLimit raises it"},
        Row{"while :; do :; done\n",
            "the time limit of 1 s was reached; the option Shape.*.Reader.TimeLimit raises it"},
        Row{"printf BRVSHP99\n", "the shape worker is not usable: it is of another version"},
        Row{"exit 127\n", "the shape worker does not start: Open CASCADE 7.6 is not installed"},
        Row{"exit 0\n", "the answer of the shape worker is incomplete"}}) {
    WriteWorker(row.commands);
    ChildResult const result = Shade({"-set", "Shape.*.Reader.TimeLimit=1"});
    EXPECT_EQ(result.exitStatus, 0) << row.commands;
    EXPECT_THAT(result.errors,
                HasSubstr(std::string("warning: bracket.stp: exact shapes are not evaluated: ") + row.reason + "\n"));
    EXPECT_TRUE(PageHas(std::string("<p>The faces of 1 product are not shaded: ") + row.reason + ".</p>"));
    EXPECT_TRUE(PageHas("id=\"data-geometry\""));
    EXPECT_TRUE(PageHas("<path"));
    EXPECT_FALSE(PageHas("<dt>Volume</dt>"));
  }
}

TEST_F(BrivetShadeTest, LogHasWarning) {
  WriteWorker("kill -SEGV $$\n");
  ProgramOptions options;
  options.directory = folder.Path();
  options.environment = {"LC_ALL=C.UTF-8", "BRIVET_MODULE_PATH=" + modules};
  RunProgram({BRIVET_PROGRAM, "bracket.stp", "page.html"}, options);
  EXPECT_THAT(Log("brivet_write.log"), HasSubstr("exact shapes are not evaluated: the shape worker has crashed"));
}

TEST_F(BrivetShadeTest, ReportsMissingWorker) {
  ChildResult const result = Shade();
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, HasSubstr("exact shapes are not evaluated: brivet-shape-worker is not installed\n"));
  EXPECT_TRUE(PageHas("The faces of 1 product are not shaded: brivet-shape-worker is not installed.", "page.html"));
}

TEST_F(BrivetShadeTest, CountsFacesThatAreNotShaded) {
  std::string text = FileText(BracketPath());
  std::size_t const begin = text.find("PLANE('");
  std::size_t const reference = text.find('#', begin);
  ASSERT_NE(reference, text.npos);
  std::size_t const end = text.find(')', reference);
  text.replace(reference, end - reference, "#9999999");
  Write("bracket.stp", text);
  ChildResult const result = Brivet({"-nolog", "bracket.stp", "page.html"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, HasSubstr("the face depends on a damaged or missing instance"));
  EXPECT_TRUE(PageHas("<p>1 face is not shaded: the engine does not evaluate it.</p>", "page.html"));
}
