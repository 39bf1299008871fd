// Runs translations: what is written, where, and what a failed run leaves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "BrivetFixture.h"
#include "UnprivilegedProcess.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Names = std::vector<std::string>;

class BrivetTranslateTest : public BrivetFixture {
 protected:
  BrivetTranslateTest() { Write("washer.stp", kWasher); }
};

constexpr char kWasherText[] =
    "washer.stp\n"
    "\n"
    "Header\n"
    "------\n"
    "FILE_DESCRIPTION\n"
    "description              : Scheibe f\xC3\xBCr M8\n"
    "description 2            : washer\n"
    "implementation_level     : 2;1\n"
    "\n"
    "FILE_NAME\n"
    "File Name                : C:\\parts\\washer.stp\n"
    "time_stamp               : 2026-11-20T09:30:00\n"
    "Author                   : J\xC3\xB6rg\n"
    "Organization             : (none)\n"
    "preprocessor_version     : (unset)\n"
    "originating_system       : drawn by 'hand'\n"
    "authorization            : (empty)\n"
    "\n"
    "FILE_SCHEMA\n"
    "schema_identifiers       : AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }\n"
    "\n"
    "Instances\n"
    "---------\n"
    "data sections            : 1\n"
    "instances                : 3\n"
    "complex ones             : 1\n"
    "\n"
    "Types\n"
    "-----\n"
    "PRODUCT                  : 1\n"
    "(A B)                    : 1\n"
    "C                        : 1\n"
    "\n"
    "Data section 1\n"
    "--------------\n"
    "#10 = PRODUCT('w', '\xE3\x83\x96\xE3\x83\xAC\xE3\x83\xB3\xE3\x83\x89 R1', '/* no comment */', (#20))\n"
    "#20 = (A() B('\xC3\x81'))\n"
    "    referred to by #10\n"
    "#1204 = C('')\n";

constexpr char kWasherStep[] =
    "#10=PRODUCT('w','\\X2\\30D630EC30F330C9\\X0\\ R1','/* no comment */',(#20));\n"
    "#20=(A()B('\\S\\A'));\n"
    "#1204=C('');\n"
    "ENDSEC;\n"
    "END-ISO-10303-21;\n";

}  // namespace

TEST_F(BrivetTranslateTest, WritesPage) {
  ExpectTranslated(Brivet({"washer.stp"}), "washer.html: 3 instances of 3 types from washer.stp");
  std::string const page = folder.Read("washer.html");
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>\n<html lang=\"en\">\n"));
  for (char const* part :
       {"<title>washer.stp</title>", "<h1>washer.stp</h1>", "<section id=\"summary\"", "<dt>Instances</dt><dd>3</dd>",
        "<section id=\"instances\"", "<section id=\"header\"", "Scheibe f&#252;r M8", "id=\"data-instances-0\""}) {
    EXPECT_THAT(page, HasSubstr(part));
  }
  EXPECT_THAT(page, testing::EndsWith("</script>\n</body>\n</html>\n"));
  EXPECT_EQ(Files(), (Names{"brivet_read.log", "brivet_write.log", "washer.html", "washer.stp"}));
}

TEST_F(BrivetTranslateTest, WritesPlainPage) {
  ExpectTranslated(Brivet({"washer.stp", "-set", "Html.*.Writer.Plain=On"}),
                   "washer.html: 3 instances of 3 types from washer.stp");
  std::string const page = folder.Read("washer.html");
  for (char const* part : {"<H1>washer.stp</H1>", "Scheibe f&#252;r M8", "#<a name= \"10\">10</a> = PRODUCT(",
                           "(#<a href=\"#20\">20</a>))<br>", "referred to by #<a href=\"#10\">10</a>",
                           "&#12502;&#12524;&#12531;&#12489; R1", "</HTML>"}) {
    EXPECT_THAT(page, HasSubstr(part));
  }
  EXPECT_EQ(Files(), (Names{"brivet_read.log", "brivet_write.log", "washer.html", "washer.stp"}));
}

TEST_F(BrivetTranslateTest, WritesText) {
  for (Names const& words : {Names{"washer.stp", "washer.txt"}, Names{"-write", "text", "washer.stp"}}) {
    ExpectTranslated(Brivet(words), "washer.txt: 3 instances of 3 types from washer.stp");
    EXPECT_EQ(folder.Read("washer.txt"), kWasherText);
    unlink(folder.Path("washer.txt").c_str());
  }
}

TEST_F(BrivetTranslateTest, WritesStep) {
  ExpectTranslated(Brivet({"washer.stp", "new.stp"}), "new.stp: 3 instances of 3 types from washer.stp");
  EXPECT_THAT(folder.Read("new.stp"), testing::EndsWith(kWasherStep));
  ExpectTranslated(Brivet({"new.stp", "newer.stp"}), "newer.stp: 3 instances of 3 types from new.stp");
  EXPECT_EQ(folder.Read("newer.stp"), folder.Read("new.stp"));
}

TEST_F(BrivetTranslateTest, PassesOptionsToModules) {
  Write("base.cfg", "AuthorName = drawing office\nStep.*.Writer.FileLineLength = 40\n");
  ExpectTranslated(Brivet({"washer.stp", "new.stp", "-options", "base.cfg", "-set", "SendingSystemName=cad7"}),
                   "new.stp: 3 instances of 3 types from washer.stp");
  std::string const bytes = folder.Read("new.stp");
  EXPECT_THAT(bytes, HasSubstr("('drawing office')"));
  EXPECT_THAT(bytes, HasSubstr("'cad7'"));
  EXPECT_THAT(bytes, HasSubstr("\n'/* no comment */',(#20));\n"));
}

TEST_F(BrivetTranslateTest, WritesToCurrentDirectory) {
  Write("parts/deep/bolt.v2.STEP", kWasher);
  ExpectTranslated(Brivet({"parts/deep/bolt.v2.STEP"}),
                   "bolt.v2.html: 3 instances of 3 types from parts/deep/bolt.v2.STEP");
  EXPECT_TRUE(folder.Has("bolt.v2.html"));
  // The title is the name without its folder.
  EXPECT_THAT(folder.Read("bolt.v2.html"), HasSubstr("<h1>bolt.v2.STEP</h1>"));
}

TEST_F(BrivetTranslateTest, ReadsPipes) {
  ChildResult const result = Brivet({"-", "washer.txt"}, "C.UTF-8", kWasher);
  ExpectTranslated(result, "washer.txt: 3 instances of 3 types from standard input");
  EXPECT_THAT(folder.Read("washer.txt"), StartsWith("standard input\n"));
  EXPECT_EQ(Shell("cat washer.stp | \"$b\" /dev/stdin -w text && grep -c = stdin.txt").output,
            "stdin.txt: 3 instances of 3 types from /dev/stdin\n3\n");
  EXPECT_EQ(Shell("mkfifo p.stp; cat washer.stp >p.stp & \"$b\" p.stp").output,
            "p.html: 3 instances of 3 types from p.stp\n");
  ChildResult const broken = Brivet({"-"}, "C.UTF-8", "solid");
  EXPECT_EQ(broken.exitStatus, 21);
  EXPECT_THAT(broken.errors, HasSubstr("standard input:1:"));
}

TEST_F(BrivetTranslateTest, PipeWithoutExtensionIsStep) {
  ExpectTranslated(Shell("mkfifo p; cat washer.stp >p & sleep 0.2; timeout 20 \"$b\" p q.txt; s=$?; rm p; exit $s"),
                   "q.txt: 3 instances of 3 types from p");
  EXPECT_THAT(folder.Read("q.txt"), HasSubstr("#1204 = C('')\n"));
}

TEST_F(BrivetTranslateTest, WritesToStandardOutput) {
  for (char const* place : {"-", "/dev/stdout"}) {
    ChildResult const result = Brivet({"washer.stp", place, "-write", "text"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, kWasherText);
    EXPECT_EQ(result.errors, "");
  }
  // After what the file already holds.
  Shell("echo first >all; \"$b\" washer.stp /dev/stdout -w text >>all");
  EXPECT_EQ(folder.Read("all"), std::string("first\n") + kWasherText);
}

TEST_F(BrivetTranslateTest, QuietPrintsNothing) {
  Write("broken.stp", "solid");
  Write("half.stp", DocumentText("#1=A(;\n#2=B();\n"));
  struct Row {
    std::vector<std::string> words;
    int status;
  };
  Row const rows[] = {{{"washer.stp"}, 0},
                      {{"half.stp"}, 8},
                      {{"broken.stp"}, 21},
                      {{"missing.stp"}, 13},
                      {{"-set", "Healig=1", "washer.stp"}, 0},
                      {{"washer.stp", "/dev/full"}, 15},
                      {{"-list", "washer.stp"}, 0},
                      {{"-list", "broken.stp"}, 21},
                      {{"-nothing"}, 2},
                      {{"-options", "missing.cfg", "washer.stp"}, 13}};
  for (Row const& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    std::vector<std::string> words = row.words;
    words.insert(words.begin(), "-quiet");
    ChildResult const result = Brivet(words);
    EXPECT_EQ(result.exitStatus, row.status);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
  }
  EXPECT_TRUE(folder.Has("washer.html"));
}

TEST_F(BrivetTranslateTest, WritesLogs) {
  EXPECT_EQ(Brivet({"washer.stp", "-set", "AuthorName=office"}).exitStatus, 0);
  EXPECT_EQ(Log("brivet_read.log"), FileText(VREL_SOURCE_DIR "/tests/brivet/washer_read_log.txt"));
  EXPECT_EQ(Log("brivet_write.log"), FileText(VREL_SOURCE_DIR "/tests/brivet/washer_write_log.txt"));
}

// The log of an earlier run would describe a page that this run did not write.
TEST_F(BrivetTranslateTest, RemovesOldWriteLog) {
  EXPECT_EQ(Brivet({"washer.stp"}).exitStatus, 0);
  EXPECT_TRUE(folder.Has("brivet_write.log"));
  EXPECT_EQ(Brivet({"missing.stp"}).exitStatus, 13);
  EXPECT_FALSE(folder.Has("brivet_write.log"));
  EXPECT_THAT(Log(), HasSubstr("\nProduct Failed with code 16777229 (File Not Found)\n"));
}

TEST_F(BrivetTranslateTest, LogsTimesOfTasks) {
  EXPECT_EQ(Shell("VRELTaskTiming=On \"$b\" washer.stp").exitStatus, 0);
  for (char const* name : {"brivet_read.log", "brivet_write.log"}) {
    std::string const log = folder.Read(name);
    EXPECT_THAT(log,
                testing::EndsWith("Message : ================= End Timing Performance Summary =================\n"));
    for (char const* task :
         {"Product", "Options", "Translation", "Read File", "Source Document Preprocessing", "Read Entities",
          "Conversion", "Target Document Preprocessing", "Target Document Postprocessing", "File Write"}) {
      EXPECT_THAT(log, testing::ContainsRegex(std::string(" ") + task + " = .* 1x\n"));
    }
  }
  EXPECT_THAT(folder.Read("brivet_read.log"), StartsWith("Message : Task Timing On\nProduct "));
}

TEST_F(BrivetTranslateTest, ChecksOutputBeforeReading) {
  if (std::string const reason = WhyNotUnprivileged(); !reason.empty()) GTEST_SKIP() << reason;
  struct Row {
    std::vector<std::string> words;
    char const* error;
  };
  Row const rows[] = {
      {{"washer.stp", "."}, "'.': Is a directory"},
      {{"washer.stp", "missing/a.html"}, "'missing/a.html': No such file or directory"},
      {{"washer.stp", "washer.stp"}, "'washer.stp': it is the input file"},
      {{"washer.stp", "-write", "step"}, "'washer.stp': it is the input file"},
      {{"washer.stp", "./washer.stp"}, "'./washer.stp': it is the input file"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.error);
    ExpectRefused(Brivet(row.words), 15, std::string("cannot write ") + row.error);
    EXPECT_THAT(Log(), Not(HasSubstr("Entity Reading")));
    EXPECT_EQ(Files(), (Names{"brivet_read.log", "washer.stp"}));
    EXPECT_EQ(folder.Read("washer.stp"), kWasher);
  }
  ASSERT_EQ(mkdir(folder.Path("closed").c_str(), 0555), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  RunUnprivileged([this] {
    unlink(folder.Path("brivet_read.log").c_str());
    ExpectRefused(Brivet({"washer.stp", "closed/a.html"}), 15, "cannot write 'closed/a.html': Permission denied");
  });
}

TEST_F(BrivetTranslateTest, ReportReplacesNoFileOfRun) {
  Write("base.cfg", "Assembly = On\n");
  ASSERT_EQ(symlink("washer.stp", folder.Path("symbolic").c_str()), 0);
  ASSERT_EQ(link(folder.Path("washer.stp").c_str(), folder.Path("hard").c_str()), 0);
  struct Row {
    std::vector<std::string> words;
    char const* error;
  };
  Row const rows[] = {
      {{"-report", "washer.stp", "washer.stp", "q.txt"}, "'washer.stp': it is the input file"},
      {{"-report", "./washer.stp", "washer.stp", "q.txt"}, "'./washer.stp': it is the input file"},
      {{"-report", "symbolic", "washer.stp", "q.txt"}, "'symbolic': it is the input file"},
      {{"-report", "hard", "washer.stp", "q.txt"}, "'hard': it is the input file"},
      {{"-report", "washer.stp", "-list", "washer.stp"}, "'washer.stp': it is the input file"},
      {{"-report", "q.txt", "washer.stp", "./q.txt"}, "'q.txt': it is the output file"},
      {{"-report", "washer.html", "washer.stp"}, "'washer.html': it is the output file"},
      {{"-options", "base.cfg", "-report", "base.cfg", "washer.stp"}, "'base.cfg': it is an options file"},
      {{"-options", "base.cfg", "-write", "text", "washer.stp", "base.cfg"}, "'base.cfg': it is an options file"},
  };
  Names const before = Files();
  for (Row const& row : rows) {
    SCOPED_TRACE(row.error);
    ExpectRefused(Brivet(row.words), 15, std::string("cannot write ") + row.error);
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(folder.Read("washer.stp"), kWasher);
    EXPECT_EQ(folder.Read("base.cfg"), "Assembly = On\n");
  }
  ExpectRefused(Shell("\"$b\" -report washer.stp - q.txt <washer.stp"), 15,
                "cannot write 'washer.stp': it is the input file");
  EXPECT_EQ(folder.Read("washer.stp"), kWasher);
}

TEST_F(BrivetTranslateTest, LogDoesNotOverwriteReport) {
  ChildResult const result = Brivet({"-report", "brivet_read.log", "washer.stp", "q.txt"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "brivet: warning: cannot write the log 'brivet_read.log': it is a file of this run\n");
  EXPECT_THAT(folder.Read("brivet_read.log"), StartsWith("{\"input\":\"washer.stp\""));
}

TEST_F(BrivetTranslateTest, FailureKeepsOldOutput) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "the limit would cut the coverage data as well";
#endif
  Write("washer.html", "old");
  Write("broken.stp", DocumentText("#1=A();\n#1=A();\n"));
  EXPECT_EQ(Brivet({"broken.stp", "washer.html"}).exitStatus, 21);
  EXPECT_EQ(folder.Read("washer.html"), "old");
  // As on a full disk: the limit for a file is 1,024 bytes.
  ChildResult const full = Shell("ulimit -f 1; VRELLogLevel=NONE \"$b\" washer.stp");
  ExpectRefused(full, 15, "cannot write 'washer.html': File too large");
  EXPECT_EQ(folder.Read("washer.html"), "old");
  EXPECT_EQ(Files(), (Names{"brivet_read.log", "brivet_write.log", "broken.stp", "washer.html", "washer.stp"}));
}

TEST_F(BrivetTranslateTest, WritesToDevices) {
  ExpectTranslated(Brivet({"washer.stp", "/dev/null"}), "/dev/null: 3 instances of 3 types from washer.stp");
  ExpectRefused(Brivet({"washer.stp", "/dev/full"}), 15, "cannot write '/dev/full': No space left on device");
  ExpectRefused(Shell("\"$b\" washer.stp - >/dev/full"), 15,
                "cannot write to standard output: No space left on device");
  ExpectRefused(Brivet({"washer.stp", "/dev/full"}), 15, "cannot write '/dev/full': No space left on device");
  EXPECT_THAT(Log("brivet_write.log"), HasSubstr("Output File \"/dev/full\" Writing has Failed with code16777231\n"));
  EXPECT_EQ(Shell("mkfifo p; cat p >copy & \"$b\" washer.stp p -w text; wait; test -p p").exitStatus, 0);
  EXPECT_EQ(folder.Read("copy"), kWasherText);
}

TEST_F(BrivetTranslateTest, LogDoesNotOverwriteOutput) {
  ChildResult const result = Brivet({"washer.stp", "brivet_write.log", "-w", "text"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(folder.Read("brivet_write.log"), kWasherText);
  EXPECT_EQ(result.errors, "brivet: warning: cannot write the log 'brivet_write.log': it is a file of this run\n");
  ChildResult const other = Brivet({"washer.stp", "brivet_read.log", "-w", "text"});
  EXPECT_EQ(other.exitStatus, 0);
  EXPECT_EQ(folder.Read("brivet_read.log"), kWasherText);
}

TEST_F(BrivetTranslateTest, WarnsAboutDanglingReferences) {
  Write("a.stp", DocumentText("#1=A(#2);\n#3=B(#1,\n#44);\n"));
  ChildResult const result = Brivet({"a.stp", "a.txt"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, testing::ContainsRegex("a\\.stp:7:.*#2[^0-9]"));
  EXPECT_THAT(result.errors, testing::ContainsRegex("a\\.stp:9:.*#44[^0-9]"));
  EXPECT_THAT(folder.Read("a.txt"), testing::EndsWith("#1 = A(#2)\n    referred to by #3\n#3 = B(#1, #44)\n"));
}

TEST_F(BrivetTranslateTest, SkipsInvalidInstance) {
  Write("a.stp", DocumentText("#1=A(;\n#2=B();\n"));
  ChildResult const result = Brivet({"a.stp", "a.txt"});
  EXPECT_EQ(result.exitStatus, 8);
  EXPECT_EQ(result.output, "a.txt: 1 instance of 1 type from a.stp, 1 lost\n");
  EXPECT_THAT(result.errors, HasSubstr("a.stp:7:"));
  EXPECT_THAT(Log("brivet_write.log"), HasSubstr("\nTranslation Result : Partial Success\n"));
  EXPECT_THAT(Log("brivet_write.log"), HasSubstr("\nFailed Entities : 1\n"));
}

TEST_F(BrivetTranslateTest, ShowsProgress) {
  ChildResult const result = Brivet({"-progress", "washer.stp"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, StartsWith("\rreading [                                        ]   0%"));
  EXPECT_THAT(result.errors, HasSubstr("\rwriting [                                        ]   0%"));
  EXPECT_EQ(result.errors.back(), '\r');
  EXPECT_EQ(Brivet({"-progress", "-quiet", "washer.stp"}).errors, "");
}

// A limit for file sizes ends a program that does not ignore SIGXFSZ.
TEST_F(BrivetTranslateTest, ReportsFileSizeLimit) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "the limit would cut the coverage data as well";
#endif
  ChildResult const result = Shell("ulimit -f 1; VRELLogLevel=NONE \"$b\" washer.stp");
  ExpectRefused(result, 15, "cannot write 'washer.html': File too large");
  EXPECT_FALSE(folder.Has("washer.html"));
}

TEST_F(BrivetTranslateTest, UnprintableSummaryIsWarning) {
  for (char const* command : {"\"$b\" washer.stp >/dev/full", "\"$b\" washer.stp >&-"}) {
    SCOPED_TRACE(command);
    ChildResult const result = Shell(std::string(command) + "; echo $? >status");
    EXPECT_EQ(folder.Read("status"), "0\n");
    EXPECT_THAT(result.errors, StartsWith("brivet: warning: cannot write to standard output: "));
    EXPECT_THAT(folder.Read("washer.html"), testing::EndsWith("</html>\n"));
    EXPECT_THAT(Log("brivet_write.log"), testing::EndsWith("Product Completed Successfully\n"));
    unlink(folder.Path("washer.html").c_str());
  }
}

TEST_F(BrivetTranslateTest, ReplacementKeepsMode) {
  Write("washer.html", "old");
  ASSERT_EQ(chmod(folder.Path("washer.html").c_str(), 0600), 0);
  EXPECT_EQ(Brivet({"washer.stp"}).exitStatus, 0);
  struct stat status;
  ASSERT_EQ(stat(folder.Path("washer.html").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

// Files with the names that an earlier version used for its temporary files.
TEST_F(BrivetTranslateTest, TemporaryNamesAreUnpredictable) {
  EXPECT_EQ(Shell("for i in 0 1 2; do for p in $(seq $$ $(($$ + 20))); do mkdir .brivet-$p-$i; done; done; "
                  "\"$b\" washer.stp")
                .exitStatus,
            0);
  EXPECT_TRUE(folder.Has("washer.html"));
}

TEST_F(BrivetTranslateTest, LinkDoesNotRedirectLogs) {
  Write("victim", "precious");
  for (char const* command : {"ln -s victim brivet_read.log", "ln victim brivet_write.log"}) {
    SCOPED_TRACE(command);
    ChildResult const result = Shell(std::string(command) + "; \"$b\" washer.stp");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.errors, testing::MatchesRegex(
                                   "brivet: warning: cannot write the log 'brivet_(read|write).log': it (is a symbolic "
                                   "link|has several hard links)\n"));
    EXPECT_EQ(folder.Read("victim"), "precious");
    Shell("rm -f brivet_*.log");
  }
}

TEST_F(BrivetTranslateTest, ControlCharactersCannotForgeOutput) {
  std::string const name = "a\nError : forged\x1B[2J\xC2\x9B\xE2\x80\xAE.stp";
  std::string const shown = "a<U+000A>Error : forged<U+001B>[2J<U+009B><U+202E>";
  Write(name, kWasher);
  ChildResult const result = Brivet({name, "-set", "Healig=x\nError : forged\x07"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, shown + ".html: 3 instances of 3 types from " + shown + ".stp\n");
  EXPECT_EQ(result.errors,
            "brivet: warning: -set Healig=x<U+000A>Error : forged<U+0007>: unknown option 'Healig'; did "
            "you mean 'Healing'?\n");
  for (char const* log : {"brivet_read.log", "brivet_write.log"}) {
    EXPECT_THAT(folder.Read(log), Not(HasSubstr("\nError : forged"))) << log;
    EXPECT_THAT(folder.Read(log), Not(HasSubstr("\x1B"))) << log;
    EXPECT_THAT(folder.Read(log), Not(HasSubstr("\x07"))) << log;
  }
  EXPECT_THAT(folder.Read("brivet_read.log"), HasSubstr("\nMessage : Healig = x<U+000A>Error : forged<U+0007>\n"));
  ChildResult const missing = Brivet({"b\nc\x1B"});
  EXPECT_EQ(missing.errors, "brivet: cannot open 'b<U+000A>c<U+001B>': No such file or directory\n");
}

// The file is in another user's folder and may not be opened by name.
TEST_F(BrivetTranslateTest, ReadsStandardInputFromDescriptor) {
  if (std::string const reason = WhyNotUnprivileged(); !reason.empty()) GTEST_SKIP() << reason;
  if (geteuid() != 0) GTEST_SKIP() << "only root may open the file";
  ASSERT_EQ(chmod(folder.Path("washer.stp").c_str(), 0600), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  ChildResult const result =
      Shell("exec <washer.stp; exec setpriv --reuid=65534 --regid=65534 --clear-groups \"$b\" - washer.txt");
  ExpectTranslated(result, "washer.txt: 3 instances of 3 types from standard input");
}
