// Translations from outside: what is written, where, and what is left of a run that fails.
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
  BrivetTranslateTest() { Write("washer.stp", WASHER); }
};

// The washer as text: what refers to an instance stands below it.
constexpr char WASHER_TEXT[] =
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

constexpr char WASHER_STEP[] =
    "#10=PRODUCT('w','\\X2\\30D630EC30F330C9\\X0\\ R1','/* no comment */',(#20));\n"
    "#20=(A()B('\\S\\A'));\n"
    "#1204=C('');\n"
    "ENDSEC;\n"
    "END-ISO-10303-21;\n";

}  // namespace

TEST_F(BrivetTranslateTest, WritesAPage) {
  ExpectTranslated(Brivet({"washer.stp"}), "washer.html: 3 instances of 3 types from washer.stp");
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
    EXPECT_EQ(folder.Read("washer.txt"), WASHER_TEXT);
    unlink(folder.Path("washer.txt").c_str());
  }
}

TEST_F(BrivetTranslateTest, WritesStep) {
  ExpectTranslated(Brivet({"washer.stp", "new.stp"}), "new.stp: 3 instances of 3 types from washer.stp");
  EXPECT_THAT(folder.Read("new.stp"), testing::EndsWith(WASHER_STEP));
  ExpectTranslated(Brivet({"new.stp", "newer.stp"}), "newer.stp: 3 instances of 3 types from new.stp");
  EXPECT_EQ(folder.Read("newer.stp"), folder.Read("new.stp"));
}

TEST_F(BrivetTranslateTest, HandsOptionsToTheModules) {
  Write("base.cfg", "AuthorName = drawing office\nStep.*.Writer.FileLineLength = 40\n");
  ExpectTranslated(Brivet({"washer.stp", "new.stp", "-options", "base.cfg", "-set", "SendingSystemName=cad7"}),
                   "new.stp: 3 instances of 3 types from washer.stp");
  std::string const bytes = folder.Read("new.stp");
  EXPECT_THAT(bytes, HasSubstr("('drawing office')"));
  EXPECT_THAT(bytes, HasSubstr("'cad7'"));
  EXPECT_THAT(bytes, HasSubstr("\n'/* no comment */',(#20));\n"));
}

TEST_F(BrivetTranslateTest, WritesBesideTheFolderOfTheInput) {
  Write("parts/deep/bolt.v2.STEP", WASHER);
  ExpectTranslated(Brivet({"parts/deep/bolt.v2.STEP"}),
                   "bolt.v2.html: 3 instances of 3 types from parts/deep/bolt.v2.STEP");
  EXPECT_TRUE(folder.Has("bolt.v2.html"));
  // The title is the name without its folder.
  EXPECT_THAT(folder.Read("bolt.v2.html"), HasSubstr("<H1>bolt.v2.STEP</H1>"));
}

TEST_F(BrivetTranslateTest, ReadsPipes) {
  ChildResult const result = Brivet({"-", "washer.txt"}, "C.UTF-8", WASHER);
  ExpectTranslated(result, "washer.txt: 3 instances of 3 types from standard input");
  EXPECT_THAT(folder.Read("washer.txt"), StartsWith("standard input\n"));
  EXPECT_EQ(Shell("cat washer.stp | \"$b\" /dev/stdin -w text && grep -c = stdin.txt").output,
            "stdin.txt: 3 instances of 3 types from /dev/stdin\n3\n");
  EXPECT_EQ(Shell("mkfifo p.stp; cat washer.stp >p.stp & \"$b\" p.stp").output,
            "p.html: 3 instances of 3 types from p.stp\n");
  ChildResult const broken = Brivet({"-"}, "C.UTF-8", "solid");
  ExpectRefused(broken, 21,
                "standard input:1: expected ISO-10303-21, found solid; translate an ISO 10303-21 (STEP) file");
}

TEST_F(BrivetTranslateTest, WritesToStandardOutput) {
  for (char const* place : {"-", "/dev/stdout"}) {
    ChildResult const result = Brivet({"washer.stp", place, "-write", "text"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, WASHER_TEXT);
    EXPECT_EQ(result.errors, "");
  }
  // Behind what stands there.
  Shell("echo first >all; \"$b\" washer.stp /dev/stdout -w text >>all");
  EXPECT_EQ(folder.Read("all"), std::string("first\n") + WASHER_TEXT);
}

TEST_F(BrivetTranslateTest, IsQuiet) {
  Write("broken.stp", "solid");
  Write("half.stp", DocumentText("#1=A(;\n#2=B();\n"));
  struct Row {
    std::vector<std::string> words;
    int status;
  };
  Row const rows[] = {{{"washer.stp"}, 0},
                      {{"half.stp"}, 0},
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

TEST_F(BrivetTranslateTest, WritesItsLogs) {
  EXPECT_EQ(Brivet({"washer.stp", "-set", "AuthorName=office"}).exitStatus, 0);
  EXPECT_EQ(Log("brivet_read.log"), FileText(VREL_SOURCE_DIR "/tests/brivet/washer_read_log.txt"));
  EXPECT_EQ(Log("brivet_write.log"), FileText(VREL_SOURCE_DIR "/tests/brivet/washer_write_log.txt"));
}

// The log of an earlier run would tell of a page that this run did not write.
TEST_F(BrivetTranslateTest, LeavesNoOldLogOfTheWritingHalf) {
  EXPECT_EQ(Brivet({"washer.stp"}).exitStatus, 0);
  EXPECT_TRUE(folder.Has("brivet_write.log"));
  EXPECT_EQ(Brivet({"missing.stp"}).exitStatus, 13);
  EXPECT_FALSE(folder.Has("brivet_write.log"));
  EXPECT_THAT(Log(), HasSubstr("\nProduct Failed with code 16777229 (File Not Found)\n"));
}

TEST_F(BrivetTranslateTest, TellsTheTimeOfItsTasks) {
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

TEST_F(BrivetTranslateTest, RefusesAnOutputBeforeItReads) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "another user may not write the figures of the coverage, and is told so";
#endif
  struct Row {
    std::vector<std::string> words;
    char const* error;
  };
  Row const rows[] = {
      {{"washer.stp", "."}, ".: expected a place to write to, found: Is a directory"},
      {{"washer.stp", "missing/a.html"},
       "missing/a.html: expected a place to write to, found: No such file or directory"},
      {{"washer.stp", "washer.stp"}, "washer.stp: expected a place to write to, found: the input itself"},
      {{"washer.stp", "-write", "step"}, "washer.stp: expected a place to write to, found: the input itself"},
      {{"washer.stp", "./washer.stp"}, "./washer.stp: expected a place to write to, found: the input itself"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.error);
    ExpectRefused(Brivet(row.words), 15, std::string(row.error) + "; name another OUTPUT");
    EXPECT_THAT(Log(), Not(HasSubstr("Entity Reading")));
    EXPECT_EQ(Files(), (Names{"brivet_read.log", "washer.stp"}));
    EXPECT_EQ(folder.Read("washer.stp"), WASHER);
  }
  ASSERT_EQ(mkdir(folder.Path("closed").c_str(), 0555), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  RunUnprivileged([this] {
    unlink(folder.Path("brivet_read.log").c_str());
    ExpectRefused(Brivet({"washer.stp", "closed/a.html"}), 15,
                  "closed/a.html: expected a place to write to, found: Permission denied; name another OUTPUT");
  });
}

// Whatever happens, what stood there stays, and nothing else is left.
TEST_F(BrivetTranslateTest, LeavesTheOldPageWhenItFails) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "the limit would cut the figures of the coverage too";
#endif
  Write("washer.html", "of yesterday");
  Write("broken.stp", DocumentText("#1=A();\n#1=A();\n"));
  EXPECT_EQ(Brivet({"broken.stp", "washer.html"}).exitStatus, 21);
  EXPECT_EQ(folder.Read("washer.html"), "of yesterday");
  // As on a full disk: a file takes 1,024 bytes.
  ChildResult const full = Shell("trap '' XFSZ; ulimit -f 1; VRELLogLevel=NONE \"$b\" washer.stp");
  ExpectRefused(full, 15,
                "washer.html: expected a place that takes all of the output, found: File too large; make room, or "
                "name another OUTPUT");
  EXPECT_EQ(folder.Read("washer.html"), "of yesterday");
  EXPECT_EQ(Files(), (Names{"brivet_read.log", "brivet_write.log", "broken.stp", "washer.html", "washer.stp"}));
}

TEST_F(BrivetTranslateTest, WritesToDevices) {
  ExpectTranslated(Brivet({"washer.stp", "/dev/null"}), "/dev/null: 3 instances of 3 types from washer.stp");
  ExpectRefused(Brivet({"washer.stp", "/dev/full"}), 15,
                "/dev/full: expected a place that takes all of the output, found: No space left on device; make room, "
                "or name another OUTPUT");
  EXPECT_THAT(Log("brivet_write.log"), HasSubstr("Output File \"/dev/full\" Writing has Failed with code16777231\n"));
  EXPECT_EQ(Shell("mkfifo p; cat p >copy & \"$b\" washer.stp p -w text; wait; test -p p").exitStatus, 0);
  EXPECT_EQ(folder.Read("copy"), WASHER_TEXT);
}

TEST_F(BrivetTranslateTest, DoesNotWriteALogOverItsOutput) {
  ChildResult const result = Brivet({"washer.stp", "brivet_write.log", "-w", "text"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(folder.Read("brivet_write.log"), WASHER_TEXT);
  EXPECT_THAT(result.errors, HasSubstr("brivet_write.log: expected a log that can be written, found: a file of this "
                                       "run; rename it to get a log"));
  ChildResult const other = Brivet({"washer.stp", "brivet_read.log", "-w", "text"});
  EXPECT_EQ(other.exitStatus, 0);
  EXPECT_EQ(folder.Read("brivet_read.log"), WASHER_TEXT);
}

TEST_F(BrivetTranslateTest, WarnsOfAReferenceToNothing) {
  Write("a.stp", DocumentText("#1=A(#2);\n#3=B(#1,\n#44);\n"));
  ChildResult const result = Brivet({"a.stp", "a.txt"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors,
            "brivet: warning: a.stp:7: expected an instance #2, to which #1, a A, refers, found none; it is written "
            "without a link\n"
            "brivet: warning: a.stp:9: expected an instance #44, to which #3, a B, refers, found none; it is written "
            "without a link\n");
  EXPECT_THAT(folder.Read("a.txt"), testing::EndsWith("#1 = A(#2)\n    referred to by #3\n#3 = B(#1, #44)\n"));
}

TEST_F(BrivetTranslateTest, LeavesOutWhatCannotBeRead) {
  Write("a.stp", DocumentText("#1=A(;\n#2=B();\n"));
  ChildResult const result = Brivet({"a.stp", "a.txt"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "a.txt: 1 instance of 1 type from a.stp, 1 left out\n");
  EXPECT_EQ(result.errors,
            "brivet: warning: a.stp:7: expected a parameter, found ;; the instance that begins in line 7 is left out, "
            "mend the file and translate it again\n");
  EXPECT_THAT(Log("brivet_write.log"), HasSubstr("\nTranslation Result : Partial Success\n"));
  EXPECT_THAT(Log("brivet_write.log"), HasSubstr("\nFailed Entities : 1\n"));
}

TEST_F(BrivetTranslateTest, ShowsHowFarItIs) {
  ChildResult const result = Brivet({"-progress", "washer.stp"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, StartsWith("\rreading [                                        ]   0%"));
  EXPECT_THAT(result.errors, HasSubstr("\rwriting [                                        ]   0%"));
  EXPECT_EQ(result.errors.back(), '\r');
  EXPECT_EQ(Brivet({"-progress", "-quiet", "washer.stp"}).errors, "");
}
