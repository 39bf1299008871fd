// Translates several inputs at once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "BrivetFixture.h"
#include "UnprivilegedProcess.h"

namespace {

using testing::HasSubstr;
using Names = std::vector<std::string>;

class BrivetBatchTest : public BrivetFixture {
 protected:
  BrivetBatchTest() {
    Write("a.stp", kWasher);
    Write("b.step", kWasher);
    Write("half.stp", DocumentText("#1=A(;\n#2=B();\n"));
    Write("bad.stp", "solid");
  }

  // Returns a report with all times set to 0.
  static std::string WithoutSeconds(std::string const& report) {
    return std::regex_replace(report, std::regex("\"seconds\":[0-9.]+"), "\"seconds\":0");
  }

  std::vector<std::string> FilesIn(std::string const& name) const {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(folder.Path(name))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
};

}  // namespace

TEST_F(BrivetBatchTest, WritesOutputsAndLogsToFolder) {
  ChildResult const result = Brivet({"-outdir", "out/deep", "-jobs", "1", "a.stp", "b.step"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "out/deep/a.html: 3 instances of 3 types from a.stp\n"
            "out/deep/b.html: 3 instances of 3 types from b.step\n");
  EXPECT_EQ(FilesIn("out/deep"), (Names{"a.html", "a.read.log", "a.write.log", "b.html", "b.read.log", "b.write.log"}));
  EXPECT_THAT(folder.Read("out/deep/a.read.log"), testing::EndsWith("\nProduct Completed Successfully\n"));
  EXPECT_THAT(folder.Read("out/deep/a.read.log"), HasSubstr("\nOutput File          : out/deep/a.html\n"));
  EXPECT_FALSE(folder.Has("brivet_read.log"));
  // The output is that of a single run.
  Brivet({"a.stp", "single.html"});
  EXPECT_EQ(folder.Read("out/deep/a.html"), folder.Read("single.html"));
}

TEST_F(BrivetBatchTest, PassesOptionsToWorkers) {
  Write("base.cfg", "AuthorName = office\n");
  ChildResult const result = Brivet({"-outdir=out", "-write", "step", "-nolog", "-quiet", "-nosync", "-options",
                                     "base.cfg", "-set", "SendingSystemName=x=y z", "a.stp", "b.step"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output + result.errors, "");
  EXPECT_EQ(FilesIn("out"), (Names{"a.stp", "b.stp"}));
  EXPECT_THAT(folder.Read("out/b.stp"), HasSubstr("('office')"));
  EXPECT_THAT(folder.Read("out/b.stp"), HasSubstr("'x=y z'"));
}

TEST_F(BrivetBatchTest, LogsGoToFolderOfTheirOwn) {
  EXPECT_EQ(Brivet({"-outdir", "out", "-logdir", "logs", "a.stp"}).exitStatus, 0);
  EXPECT_EQ(FilesIn("out"), Names{"a.html"});
  EXPECT_EQ(FilesIn("logs"), (Names{"a.read.log", "a.write.log"}));
}

TEST_F(BrivetBatchTest, WarnsAboutOptionsOnce) {
  ChildResult const result = Brivet({"-outdir", "out", "-set", "Healig=1", "a.stp", "b.step"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "brivet: warning: -set Healig=1: unknown option 'Healig'; did you mean 'Healing'?\n");
  Write("base.cfg", "x\n");
  EXPECT_EQ(Brivet({"-outdir", "other", "-options", "base.cfg", "a.stp"}).exitStatus, 1);
  EXPECT_FALSE(folder.Has("other"));
}

// A failure does not stop the others; the status is that of the first input that failed.
TEST_F(BrivetBatchTest, FailureDoesNotStopOthers) {
  struct Row {
    Names inputs;
    int status;
  };
  Write("empty.stp", "");
  Row const rows[] = {{{"a.stp", "b.step"}, 0},
                      {{"a.stp", "half.stp", "b.step"}, 8},
                      {{"half.stp", "bad.stp", "missing.stp", "b.step"}, 21},
                      {{"missing.stp", "bad.stp", "b.step"}, 13},
                      {{"half.stp", ".", "b.step"}, 14},
                      {{"empty.stp", "b.step"}, 21}};
  for (Row const& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.inputs));
    Names words = {"-outdir", "out", "-quiet"};
    words.insert(words.end(), row.inputs.begin(), row.inputs.end());
    EXPECT_EQ(Brivet(words).exitStatus, row.status);
    EXPECT_TRUE(folder.Has("out/b.html"));
    Shell("rm -r out");
  }
}

TEST_F(BrivetBatchTest, ReportsEachInputInOrder) {
  ChildResult const result =
      Brivet({"-outdir", "out", "-jobs", "3", "-report", "-", "half.stp", "a.stp", "missing.stp"});
  EXPECT_EQ(result.exitStatus, 13);
  std::size_t const half = folder.Read("half.stp").size();
  EXPECT_THAT(
      WithoutSeconds(result.output),
      testing::MatchesRegex(
          "\\{\"input\":\"half.stp\",\"output\":\"out/half.html\",\"status\":\"partial\",\"exit\":8,\"instances\":1,"
          "\"lost\":\\[\\{\"line\":7,\"lastLine\":7,\"instances\":\\[\"#1\"\\],\"reason\":\"[^\"]+\"\\}\\],"
          "\"dangling\":0,"
          "\"seconds\":0,\"bytes\":" +
          std::to_string(half) +
          "\\}\n"
          "\\{\"input\":\"a.stp\",\"output\":\"out/a.html\",\"status\":\"success\",\"exit\":0,\"instances\":3,"
          "\"lost\":\\[\\],\"dangling\":0,\"seconds\":0,\"bytes\":[0-9]+\\}\n"
          "\\{\"input\":\"missing.stp\",\"output\":null,\"status\":\"failure\",\"exit\":13,\"instances\":0,"
          "\"lost\":\\[\\],\"dangling\":0,\"seconds\":0,\"bytes\":0\\}\n"));
  EXPECT_THAT(result.errors, HasSubstr("brivet: cannot open 'missing.stp': No such file or directory\n"));
  EXPECT_EQ(Brivet({"-outdir", "out", "-report", "r.json", "a.stp", "b.step"}).exitStatus, 0);
  std::string const report = folder.Read("r.json");
  EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 2);
}

TEST_F(BrivetBatchTest, RefusesEqualOutputs) {
  Write("x/a.stp", kWasher);
  Write("a.step", kWasher);
  for (char const* other : {"a.step", "x/a.stp", "a.stp"}) {
    ChildResult const result = Brivet({"-outdir", "out", "b.step", "a.stp", other});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors, std::string("brivet: inputs 'a.stp' and '") + other +
                                 "' have the same output 'out/a.html'\nhint: translate them to different folders\n");
    EXPECT_FALSE(folder.Has("out"));
  }
  ASSERT_EQ(mkdir(folder.Path("gz").c_str(), 0777), 0);
  Shell("cp a.stp gz/b.stp; cd gz && cp ../a.stp . && gzip a.stp");
  ChildResult const input = Brivet({"-outdir", "gz", "-write", "step", "b.step", "gz/b.stp"});
  EXPECT_EQ(input.exitStatus, 2);
}

TEST_F(BrivetBatchTest, RefusesOverwritingInputs) {
  ChildResult const result = Brivet({"-outdir", ".", "-write", "step", "b.step", "a.stp"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_THAT(result.errors, HasSubstr("brivet: the output of 'a.stp' would overwrite the input 'a.stp'\n"));
  EXPECT_EQ(folder.Read("a.stp"), kWasher);
}

// One after the other, inputs take about as long as in runs of their own.
TEST_F(BrivetBatchTest, DoesNotWaitBetweenInputs) {
  constexpr int kInputs = 30;
  using Clock = std::chrono::steady_clock;
  std::vector<std::string> words = {"-nolog", "-jobs", "1", "-outdir", "out"};
  for (int i = 0; i < kInputs; ++i) {
    words.push_back("input" + std::to_string(i) + ".stp");
    Write(words.back(), kWasher);
  }
  // Without an event, a batch waits for a tenth of a second. Other processes can make an attempt slow.
  bool isFast = false;
  for (int attempt = 0; attempt < 10 && !isFast; ++attempt) {
    Clock::time_point const begin = Clock::now();
    for (int i = 0; i < kInputs; ++i) EXPECT_EQ(Brivet({"-nolog", "-quiet", "a.stp", "out.html"}).exitStatus, 0);
    Clock::time_point const middle = Clock::now();
    EXPECT_EQ(Brivet(words).exitStatus, 0);
    isFast = (Clock::now() - middle) - (middle - begin) < std::chrono::milliseconds(100);
  }
  EXPECT_TRUE(isFast);
}

TEST_F(BrivetBatchTest, ReportReplacesNoFileOfRun) {
  Write("base.cfg", "Assembly = On\n");
  ASSERT_EQ(link(folder.Path("a.stp").c_str(), folder.Path("other").c_str()), 0);
  struct Row {
    char const* report;
    char const* reason;
  };
  Row const rows[] = {{"a.stp", "it is an input file"},
                      {"other", "it is an input file"},
                      {"./b.html", "it is an output file"},
                      {"base.cfg", "it is an options file"},
                      {"a.read.log", "it is a log of this run"}};
  for (Row const& row : rows) {
    ChildResult const result =
        Brivet({"-outdir", ".", "-options", "base.cfg", "-report", row.report, "a.stp", "b.step"});
    ExpectRefused(result, 15, std::string("cannot write '") + row.report + "': " + row.reason);
    EXPECT_FALSE(folder.Has("a.html"));
  }
  EXPECT_EQ(folder.Read("a.stp"), kWasher);
  EXPECT_EQ(folder.Read("base.cfg"), "Assembly = On\n");
}

TEST_F(BrivetBatchTest, ReportsUnusableFolders) {
  Write("file", "");
  ChildResult const result = Brivet({"-outdir", "file", "a.stp"});
  EXPECT_EQ(result.exitStatus, 15);
  EXPECT_THAT(result.errors, HasSubstr("brivet: cannot create the folder 'file': "));
  ChildResult const report = Brivet({"-outdir", "out", "-report", "missing/r.json", "a.stp"});
  EXPECT_EQ(report.exitStatus, 15);
  EXPECT_FALSE(folder.Has("out/a.html"));
}

// Each worker has the limit of a full disk; the output of the first fits.
TEST_F(BrivetBatchTest, FullDiskLosesOnlySomeOutputs) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "the limit would cut the coverage data as well";
#endif
  std::string data;
  for (int i = 1; i < 2000; ++i) data += "#" + std::to_string(i) + "=ORIENTED_EDGE('',*,*,$,.F.);\n";
  Write("large.stp", DocumentText(data));
  ChildResult const result = Shell("ulimit -f 40; \"$b\" -outdir out -write text -nolog -jobs 2 large.stp a.stp");
  EXPECT_EQ(result.exitStatus, 15);
  EXPECT_THAT(result.errors, HasSubstr("brivet: cannot write 'out/large.txt': File too large\n"));
  EXPECT_EQ(FilesIn("out"), Names{"a.txt"});
}

TEST_F(BrivetBatchTest, ReadsStandardInputAndPipes) {
  ChildResult const result = Shell(
      "mkfifo p.stp; cat a.stp >p.stp & cat b.step | \"$b\" -outdir out -write text - a.stp p.stp; echo $? >status");
  EXPECT_EQ(folder.Read("status"), "0\n");
  EXPECT_THAT(folder.Read("out/stdin.txt"), HasSubstr("#1204 = C('')"));
  EXPECT_THAT(folder.Read("out/p.txt"), HasSubstr("#1204 = C('')"));
}

TEST_F(BrivetBatchTest, EscapesNamesWithControlCharacters) {
  Write("c\nd.stp", kWasher);
  ChildResult const result = Brivet({"-outdir", "out", "-report", "r.json", "c\nd.stp"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "out/c<U+000A>d.html: 3 instances of 3 types from c<U+000A>d.stp\n");
  EXPECT_THAT(folder.Read("r.json"),
              testing::StartsWith("{\"input\":\"c\\u000ad.stp\",\"output\":\"out/c\\u000ad.html\""));
}

TEST_F(BrivetBatchTest, TranslatesManyInputs) {
  Names words = {"-outdir", "out", "-nolog", "-quiet", "-nosync", "-report", "r.json", "-write", "text"};
  for (int i = 0; i < 200; ++i) {
    std::string const name = "part" + std::to_string(i) + ".stp";
    Write(name, kWasher);
    words.push_back(name);
  }
  EXPECT_EQ(Brivet(words).exitStatus, 0);
  EXPECT_EQ(FilesIn("out").size(), 200U);
  std::string const report = folder.Read("r.json");
  EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 200);
}

TEST_F(BrivetBatchTest, ShowsTotalProgress) {
  ChildResult const result = Brivet({"-outdir", "out", "-progress", "-jobs", "1", "a.stp", "b.step"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, testing::StartsWith("\r0 of 2 files [" + std::string(40, ' ') + "]   0%"));
  EXPECT_EQ(result.errors.back(), '\r');
}

// One file, of which parts are done before it is.
TEST_F(BrivetBatchTest, ProgressCountsFilesInWork) {
  std::string data;
  for (int i = 1; i <= 600'000; ++i) data += "#" + std::to_string(i) + "=A('a string',(1,2,3,4,5,6,7,8,9));\n";
  Write("large.stp", DocumentText(data));
  ChildResult const result =
      Brivet({"-outdir", "out", "-write", "step", "-progress", "-report", "r.json", "large.stp"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, testing::ContainsRegex("0 of 1 files \\[#+ +\\] +[1-9][0-9]?%"));
  EXPECT_THAT(folder.Read("r.json"), testing::StartsWith("{\"input\":\"large.stp\""));
}

TEST_F(BrivetBatchTest, VerboseNotesUnusedOptionsOnce) {
  ChildResult const result = Brivet({"-verbose", "-outdir", "out", "-set", "Healing=On", "a.stp", "b.step"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "brivet: note: option 'Healing' has no effect on this translation\n");
}

TEST_F(BrivetBatchTest, ReportsUnreadableInput) {
  if (std::string const reason = WhyNotUnprivileged(); !reason.empty()) GTEST_SKIP() << reason;
  ASSERT_EQ(chmod(folder.Path("a.stp").c_str(), 0), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  RunUnprivileged([this] {
    ChildResult const result = Brivet({"-outdir", "out", "a.stp", "b.step"});
    EXPECT_EQ(result.exitStatus, 14);
    EXPECT_EQ(result.errors, "brivet: cannot open 'a.stp': Permission denied\n");
    EXPECT_TRUE(folder.Has("out/b.html"));
  });
}

// A worker that is killed is a failure of its input alone.
TEST_F(BrivetBatchTest, ReportsKilledWorker) {
  std::string data;
  for (int i = 1; i <= 400000; ++i) data += "#" + std::to_string(i) + "=ORIENTED_EDGE('',*,*,$,.F.);\n";
  Write("large.stp", DocumentText(data));
  ChildResult const result = Shell(
      "\"$b\" -outdir out -jobs 1 -report r.json large.stp a.stp & p=$!; "
      "while ! test -e out/large.read.log; do sleep 0.01; done; "
      "kill -KILL $(cat /proc/$p/task/$p/children); wait $p; echo $? >status");
  EXPECT_EQ(folder.Read("status"), "7\n");
  EXPECT_THAT(result.errors, HasSubstr("brivet: the process for 'large.stp' was ended by signal 9 (Killed)\n"));
  EXPECT_TRUE(folder.Has("out/a.html"));
  EXPECT_FALSE(folder.Has("out/large.html"));
  EXPECT_THAT(folder.Read("r.json"),
              HasSubstr("{\"input\":\"large.stp\",\"output\":null,\"status\":\"failure\",\"exit\":7,"));
}

TEST_F(BrivetBatchTest, StopsWithinTwoSeconds) {
  std::string data;
  for (int i = 1; i <= 1000000; ++i) data += "#" + std::to_string(i) + "=ORIENTED_EDGE('',*,*,$,.F.);\n";
  Names inputs;
  for (char const* name : {"l1.stp", "l2.stp", "l3.stp"}) {
    Write(name, DocumentText(data));
    inputs.emplace_back(name);
  }
  ChildResult const result = Shell(
      "\"$b\" -outdir out -jobs 2 -report r.json l1.stp l2.stp l3.stp 2>errors & p=$!; "
      "while ! test -e out/l2.read.log; do sleep 0.01; done; sleep 0.3; "
      "date +%s%N >begin; kill -TERM $p; wait $p; echo $? >status; date +%s%N >end");
  EXPECT_EQ(folder.Read("status"), "3\n");
  EXPECT_EQ(folder.Read("errors"), "brivet: interrupted\n");
  // Two seconds, and two for a busy machine.
  EXPECT_LT(std::stoll(folder.Read("end")) - std::stoll(folder.Read("begin")), 4'000'000'000);
  for (std::string const& name : FilesIn("out")) EXPECT_THAT(name, testing::EndsWith(".log"));
  std::string const report = folder.Read("r.json");
  EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 3);
  EXPECT_THAT(report, Not(HasSubstr("\"exit\":0")));
}
