// The program from outside: what it prints, where, and how it ends.
#include "BrivetFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <langinfo.h>

#include <clocale>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "UnprivilegedProcess.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class BrivetTest : public BrivetFixture {};

constexpr char WASHER_LISTING[] =
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
    "data sections              1\n"
    "entity instances           3\n"
    "  simple                   2\n"
    "  complex                  1\n"
    "entity types               3\n"
    "escaped strings            5\n"
    "\n"
    "     count  type\n"
    "         1  PRODUCT\n"
    "         1  (A B)\n"
    "         1  C\n"
    "\n"
    "  line  instance  text\n"
    "     4  header    Scheibe f\xC3\xBCr M8\n"
    "     5  header    C:\\parts\\washer.stp\n"
    "     5  header    J\xC3\xB6rg\n"
    "    10  #10       \xE3\x83\x96\xE3\x83\xAC\xE3\x83\xB3\xE3\x83\x89 R1\n"
    "    12  #20       \xC3\x81\n";

}  // namespace

TEST_F(BrivetTest, ListsAFile) {
  Write("washer.stp", WASHER);
  for (char const* locale : {"C", "C.UTF-8", "no_SUCH.locale"}) {
    ChildResult const result = Brivet({"-list", "washer.stp"}, locale);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, WASHER_LISTING) << locale;
    EXPECT_EQ(result.errors, "");
  }
}

TEST_F(BrivetTest, ReadsPipes) {
  for (char const* name : {"/dev/stdin", "-"}) {
    ChildResult const result = Brivet({"-list", name}, "C.UTF-8", WASHER);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, WASHER_LISTING);
  }
}

TEST_F(BrivetTest, TakesANameThatLooksLikeAnOption) {
  Write("--help", WASHER);
  ChildResult const result = Brivet({"-list", "--", "--help"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, WASHER_LISTING);
}

TEST_F(BrivetTest, ReadsBytesBeyondAsciiAsUtf8OrByTheLocale) {
  auto const nameLine = [this](std::string const& name, char const* locale) {
    std::string document = WASHER;
    document.replace(document.find("washer.stp"), 10, name);
    Write("washer.stp", document);
    ChildResult const result = Brivet({"-list", "washer.stp"}, locale);
    EXPECT_EQ(result.exitStatus, 0);
    std::size_t const at = result.output.find("File Name ");
    return result.output.substr(at, result.output.find('\n', at) - at);
  };
  EXPECT_EQ(nameLine("m\xC3\xBCller", "C"), "File Name                : C:\\parts\\m\xC3\xBCller");
  // No UTF-8, and a locale that does not know the byte either.
  EXPECT_EQ(nameLine("m\xFCller", "C.UTF-8"), "File Name                : C:\\parts\\m\xEF\xBF\xBDller");
}

TEST_F(BrivetTest, ReadsBytesThatAreNoUtf8InTheEncodingOfTheLocale) {
  ScratchDirectory const locales;
  RunProgram({"localedef", "-i", "de_DE", "-f", "ISO-8859-1", locales.Path("de_DE.ISO-8859-1")});
  // Without the source of the character map a locale comes out too, but not one of ISO 8859-1.
  ChildResult const made = RunInChildWithoutTeardown([&] {
    setenv("LOCPATH", locales.Path().c_str(), 1);
    bool const isUsable = std::setlocale(LC_ALL, "de_DE.ISO-8859-1") != nullptr;
    return isUsable && std::string(nl_langinfo(CODESET)) == "ISO-8859-1" ? 0 : 1;
  });
  if (made.exitStatus != 0) GTEST_SKIP() << "the system cannot make a locale of ISO 8859-1: install locales";
  std::string document = WASHER;
  document.replace(document.find("washer.stp"), 10, "m\xFCller");
  ProgramOptions options;
  options.directory = folder.Path();
  options.environment = {"LOCPATH=" + locales.Path(), "LC_ALL=de_DE.ISO-8859-1"};
  options.input = document;
  ChildResult const result = RunProgram({BRIVET_PROGRAM, "-list", "/dev/stdin"}, options);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, HasSubstr("File Name                : C:\\parts\\m\xC3\xBCller\n"));
}

TEST_F(BrivetTest, ListsTheShippedDocument) {
  ChildResult const result = Brivet({"-list", BracketPath()});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  for (char const* line : {
           "\ndescription 2            : L bracket with two holes\n",
           "\nFile Name                : bracket.stp\n",
           "\nAuthor 2                 : \xE4\xBD\x90\xE8\x97\xA4 Yui\n",
           "\nschema_identifiers       : AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }\n",
           "\nentity instances         232\n",
           "\n  complex                  5\n",
           "\nentity types              41\n",
           "\nescaped strings           10\n",
           "\n        48  ORIENTED_EDGE\n",
           "\n         1  (LENGTH_UNIT NAMED_UNIT SI_UNIT)\n",
           "\n     5  header    Halter f\xC3\xBCr Schaltschrank\n",
           "\n    22  #5        Winkel f\xC3\xBCr Tr\xC3\xA4ger "
           "\xE3\x83\x96\xE3\x83\xA9\xE3\x82\xB1\xE3\x83\x83\xE3\x83\x88\n",
           "\n    23  #5        L bracket, two holes \xE2\x8C\x80"
           "9 for M8; holder's side is the short leg.  "
           "Deburr all edges.\n",
           "\n    26  #6        second issue, \xC3\x9C"
           "berarbeitet\n",
           "\n    30  #10       hardware \xF0\x9F\x94\xA9\n",
           "\n    31  #10       files under D:\\parts\\brackets\n",
           "\n    34  #11       Gro\xC3\x9F\n",
       }) {
    EXPECT_THAT(result.output, HasSubstr(line));
  }
}

// The listing that the documentation shows is what the program prints.
TEST_F(BrivetTest, IsDocumentedByItsOwnPage) {
  std::string shown;
  std::istringstream documentation(FileText(VREL_SOURCE_DIR "/docs/brivet.md"));
  std::string line;
  while (line != "    $ brivet -list examples/bracket.stp" && std::getline(documentation, line)) {
  }
  while (std::getline(documentation, line) && (line.empty() || line.rfind("    ", 0) == 0)) {
    shown += (line.empty() ? "" : line.substr(4)) + "\n";
  }
  EXPECT_EQ(Brivet({"-list", BracketPath()}).output + "\n", shown);
}

TEST_F(BrivetTest, RefusesWhatIsNoFile) {
  ExpectRefused(Brivet({"-list", "missing.stp"}), 13,
                "missing.stp: expected a file that can be read, found: No such file or directory; check the name");
  ExpectRefused(Brivet({""}), 13,
                ": expected a file that can be read, found: No such file or directory; check the name");
  ExpectRefused(Brivet({"."}), 14,
                ".: expected a file that can be read, found: Is a directory; check what stands there, and whether you "
                "may read it");
  ExpectRefused(Brivet({"a\nb\x1B"}), 13,
                "a?b?: expected a file that can be read, found: No such file or directory; check the name");
}

// Messages pass the library's channels, which format twice and cut at 1023 bytes.
TEST_F(BrivetTest, TellsNamesAndContentsAsTheyStand) {
  ExpectRefused(Brivet({"100%s%%d %n.stp"}), 13,
                "100%s%%d %n.stp: expected a file that can be read, found: No such file or directory; check the name");
  ExpectRefused(Brivet({"m\xFC.stp"}), 13,
                "m\xFC.stp: expected a file that can be read, found: No such file or directory; check the name");
}

// The end of the name and the reason are seen.
TEST_F(BrivetTest, ShortensALongName) {
  std::string const path = std::string(2000, '/') + "missing.stp";
  ExpectRefused(Brivet({path}), 13,
                "..." + std::string(589, '/') +
                    "missing.stp: expected a file that can be read, found: "
                    "No such file or directory; check the name");
  ExpectRefused(Brivet({std::string(100000, 'a')}), 14,
                "..." + std::string(600, 'a') +
                    ": expected a file that can be read, found: File name too long; check what stands there, and "
                    "whether you may read it");
}

TEST_F(BrivetTest, RefusesWhatIsNoStepFile) {
  std::string const washer = WASHER;
  struct Row {
    std::string bytes;
    char const* error;
  };
  Row const rows[] = {
      {"", "1: expected ISO-10303-21, found the end of the file"},
      {"solid cube\n", "1: expected ISO-10303-21, found solid"},
      {std::string("\x89PNG\r\n\x1A\n\0\0", 10), "1: expected ISO-10303-21, found byte 0x89"},
      {std::string(100000, '\0'), "1: expected ISO-10303-21, found byte 0x00"},
      {std::string("<a\0b>", 5), "1: expected ISO-10303-21, found <a?b>"},
      {washer.substr(0, washer.find("washer */")),
       "3: expected */ at the end of the comment that begins here, found the end of the file"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.error);
    Write("part.stp", row.bytes);
    for (std::vector<std::string> const& words : {std::vector<std::string>{"part.stp"}, {"-list", "part.stp"}}) {
      ExpectRefused(Brivet(words), 21,
                    std::string("part.stp:") + row.error + "; translate an ISO 10303-21 (STEP) file");
    }
    EXPECT_FALSE(folder.Has("part.html"));
  }
}

// What a damaged document still holds is read, with a warning for each fault; nothing left is a failure.
TEST_F(BrivetTest, ReadsWhatADamagedFileHolds) {
  std::string const washer = WASHER;
  auto const cutBehind = [&washer](std::string const& text) {
    return washer.substr(0, washer.find(text) + text.size());
  };
  std::string const end = ", found the end of the file; ";
  std::string const leftOut = " is left out, mend the file and translate it again\n";
  std::string const warning = "brivet: warning: part.stp:";
  std::string const nothing =
      "brivet: part.stp: expected instances that can be read, found none; mend the file and translate it again\n";
  struct Row {
    std::string bytes;
    int status;
    std::string instances;  // as listed; empty for nothing
    std::string errors;
  };
  Row const rows[] = {
      {"ISO-10303-21;HEADER;<100%s%%>ENDSEC;END-ISO-10303-21;", 21, "",
       warning + "1: expected an entity of the header or ENDSEC;, found <100%s%%>; this part of the header" + leftOut +
           warning + "1: expected FILE_DESCRIPTION in the header, found none; the header is shown without it\n" +
           warning + "1: expected FILE_NAME in the header, found none; the header is shown without it\n" + warning +
           "1: expected FILE_SCHEMA in the header, found none; the header is shown without it\n" + nothing},
      {cutBehind("FILE_SCHEMA"), 21, "",
       warning + "7: expected ( behind an entity name" + end + "this entity of the header" + leftOut + warning +
           "7: expected an entity of the header or ENDSEC;" + end + "what was read up to here is kept\n" + warning +
           "7: expected FILE_SCHEMA in the header, found none; the header is shown without it\n" + nothing},
      {cutBehind("30EC\n"), 21, "",
       warning + "10: expected ' at the end of the string that begins here" + end +
           "the instance that begins in line 10" + leftOut + warning + "11: expected an instance or ENDSEC;" + end +
           "what was read up to here is kept\n" + nothing},
      {cutBehind("#20=(A()"), 0, "1",
       warning + "12: expected an entity name" + end + "the instance that begins in line 12" + leftOut + warning +
           "12: expected an instance or ENDSEC;" + end + "what was read up to here is kept\n"},
      {cutBehind("#1204=C('')"), 0, "2",
       warning + "13: expected ; behind an instance" + end + "the instance that begins in line 13" + leftOut + warning +
           "13: expected an instance or ENDSEC;" + end + "what was read up to here is kept\n"},
      {cutBehind("*/\nENDSEC;\n"), 0, "3",
       warning + "15: expected END-ISO-10303-21;" + end + "what was read is kept, but the file may be cut off\n"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.errors);
    Write("part.stp", row.bytes);
    ChildResult const result = Brivet({"-list", "part.stp"});
    EXPECT_EQ(result.exitStatus, row.status);
    EXPECT_EQ(result.errors, row.errors);
    if (row.instances.empty()) {
      EXPECT_EQ(result.output, "");
    } else {
      EXPECT_THAT(result.output, HasSubstr("\nentity instances           " + row.instances + "\n"));
    }
    EXPECT_EQ(Brivet({"part.stp"}).exitStatus, row.status);
    EXPECT_EQ(folder.Has("part.html"), row.status == 0);
  }
}

TEST_F(BrivetTest, TellsWhenTheOutputCannotBeWritten) {
  Write("washer.stp", WASHER);
  for (char const* command :
       {"\"$b\" -list washer.stp >/dev/full", "\"$b\" --help >/dev/full", "\"$b\" --version >/dev/full"}) {
    SCOPED_TRACE(command);
    ExpectRefused(Shell(command), 15,
                  "standard output: expected a place to write to, found: No space left on device; make room, or send "
                  "it elsewhere");
  }
  ExpectRefused(
      Shell("\"$b\" -list washer.stp >&-"), 15,
      "standard output: expected a place to write to, found: Bad file descriptor; make room, or send it elsewhere");
  // No file of the run takes the place of a closed stream.
  EXPECT_EQ(Shell("\"$b\" -list -set Healig=1 washer.stp <&- >&- 2>&-").exitStatus, 15);
  EXPECT_EQ(Shell("\"$b\" -list -set Healig=1 washer.stp 2>&-").output, WASHER_LISTING);
  EXPECT_THAT(Log(), StartsWith("Product              : STEP reader\nApplication "));
  EXPECT_THAT(Log(), testing::EndsWith("----\nProduct Completed Successfully\n"));
}

// The system takes half a page, and refuses the rest only when it is asked again.
TEST_F(BrivetTest, TakesHalfAPageForNoSuccess) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "the limit would cut the figures of the coverage too";
#endif
  ChildResult const result = Shell("trap '' XFSZ; ulimit -f 1; \"$b\" --help >page");
  std::string const page = folder.Read("page");
  EXPECT_GT(page.size(), 0U);
  EXPECT_LT(page.size(), Brivet({"--help"}).output.size());
  ExpectRefused(
      result, 15,
      "standard output: expected a place to write to, found: File too large; make room, or send it elsewhere");
}

TEST_F(BrivetTest, TeachesItsUse) {
  for (char const* option : {"--help", "-help", "-h", "--he"}) {
    ChildResult const result = Brivet({option});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, StartsWith("brivet [options] INPUT [OUTPUT]\n"));
    EXPECT_THAT(result.output, HasSubstr("Exit status: 0 when all is well,"));
    EXPECT_EQ(result.errors, "");
  }
  for (char const* option : {"--version", "-version", "-v", "-vers"}) {
    ChildResult const result = Brivet({option});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, testing::MatchesRegex("brivet [0-9]+\\.[0-9]+\\.[0-9]+\n"));
  }
}

TEST_F(BrivetTest, RefusesAWrongCommandLine) {
  struct Row {
    std::vector<std::string> words;
    char const* reason;
  };
  Row const rows[] = {
      {{}, "expected INPUT and at most one OUTPUT, found 0 files"},
      {{"a.stp", "b.stp", "c.stp"}, "expected INPUT and at most one OUTPUT, found 3 files"},
      {{"--"}, "expected INPUT and at most one OUTPUT, found 0 files"},
      {{"--help", "a.stp"}, "expected nothing but options beside -help or -version"},
      {{"-set", "a=1"}, "expected INPUT and at most one OUTPUT, found 0 files"},
      {{"-list", "a.stp", "b.html"}, "expected one INPUT beside -list, found 2 files"},
      {{"a.stp", "-write", "pdf"}, "expected html, text or step behind -write, found pdf"},
      {{"a.stp", "-options"}, "expected FILE behind -options, found nothing"},
      {{"a.stp", "-options", "-b"}, "expected FILE behind -options, found -b: put ./ in front of a file of this name"},
      {{"a.stp", "-set"}, "expected NAME=VALUE behind -set, found nothing"},
      {{"-set", "a.stp"}, "expected NAME=VALUE behind -set, found a.stp: write -set Healing=On, for example"},
      {{"-set", "=1", "a.stp"}, "expected a name in front of = behind -set, found =1"},
      {{"-set", "a..b=1", "a.stp"}, "expected a name with something between its dots behind -set, found a..b=1"},
      {{"-set", "a=", "a.stp"}, "expected a value behind -set a=, found nothing: write \"\" for an empty text"},
      {{"--verbose"}, "unknown option --verbose: see brivet --help, or put -- in front of a file of this name"},
      {{"part.stp", "-100%%"}, "unknown option -100%%: see brivet --help, or put -- in front of a file of this name"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.reason);
    ChildResult const result = Brivet(row.words);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_FALSE(folder.Has("brivet_read.log"));
    EXPECT_EQ(result.errors, std::string("brivet: ") + row.reason +
                                 "\nusage: brivet [options] INPUT [OUTPUT]; brivet --help tells more\n");
  }
}

TEST_F(BrivetTest, WritesItsLog) {
  Write("washer.stp", WASHER);
  Write("base.cfg", "# for all parts\n\nConvertAttributes = On\n*.*.Reader.ConvertAttributes: off\n");
  ChildResult const result =
      Brivet({"-options", "base.cfg", "-list", "washer.stp", "-set", "Stp.*.Reader.ConvertAttributes=a=b c"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, WASHER_LISTING);
  EXPECT_EQ(result.errors,
            "brivet: warning: -set Stp.*.Reader.ConvertAttributes=a=b c: unknown option "
            "Stp.*.Reader.ConvertAttributes, set all the same; did you mean Step.*.Reader.ConvertAttributes, "
            "Step.*.Reader.ConvertEdgeAttributes or Step.*.ConvertAttributes?\n");
  EXPECT_EQ(Log(), FileText(VREL_SOURCE_DIR "/tests/brivet/washer_list_log.txt"));
}

TEST_F(BrivetTest, LogsAFailure) {
  Write("brivet_read.log", "the log of another run, which was longer" + std::string(10000, 'x'));
  ExpectRefused(Brivet({"-list", "missing.stp"}), 13,
                "missing.stp: expected a file that can be read, found: No such file or directory; check the name");
  EXPECT_EQ(Log(),
            "Product              : STEP reader\n"
            "Application          : brivet VERSION\n"
            "Input File           : missing.stp\n"
            "--------------------- Options Set by User ------------------\n"
            "Options : 0 set, 0 unknown\n"
            "------------------------------------------------------------\n"
            "Error : missing.stp: expected a file that can be read, found: No such file or directory; check the name\n"
            "Finish Time : TIME\n"
            "\n"
            "--------------------------------------------------------------------------------\n"
            "Translation Result : File Not Found\n"
            "--------------------------------------------------------------------------------\n"
            "--------------------------------------------------------------------------------\n"
            "Product Failed with code 16777229 (File Not Found)\n");
  Write("part.stp", DocumentText("#1=A()\n"));
  EXPECT_EQ(Brivet({"-list", "part.stp"}).exitStatus, 21);
  EXPECT_THAT(Log(), HasSubstr("\nError : part.stp: expected instances that can be read, found none; mend the file and "
                               "translate it again\n"
                               "--------------------------------------------------------------------------------\n"
                               "Entity Reading Result : Invalid file\n"));
  ExpectRefused(
      Shell("\"$b\" ../nothing/../brivet.stp >/dev/full; exit $?"), 13,
      "../nothing/../brivet.stp: expected a file that can be read, found: No such file or directory; check the name");
}

// As much as the environment asks for.
TEST_F(BrivetTest, LogsByTheLevelOfTheEnvironment) {
  Write("washer.stp", WASHER);
  EXPECT_EQ(Shell("VRELLogLevel=NONE \"$b\" -list -set Healig=1 washer.stp").exitStatus, 0);
  EXPECT_EQ(Log(), "");
  EXPECT_EQ(Shell("VRELLogLevel=ERROR \"$b\" -set Healig=1 missing.stp").exitStatus, 13);
  EXPECT_EQ(
      Log(),
      "Error : missing.stp: expected a file that can be read, found: No such file or directory; check the name\n");
}

TEST_F(BrivetTest, LogsThatThePageCouldNotBeWritten) {
  Write("washer.stp", WASHER);
  EXPECT_EQ(Shell("\"$b\" -list washer.stp >/dev/full").exitStatus, 15);
  EXPECT_THAT(Log(), HasSubstr("Error : standard output: expected a place to write to, found: No space left on device; "
                               "make room, or send it elsewhere\n"
                               "Finish Time : TIME\n"));
  EXPECT_THAT(Log(), testing::EndsWith("Product Failed with code 16777231 (File Save Error)\n"));
}

TEST_F(BrivetTest, ReadsOnWithoutALog) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "another user may not write the figures of the coverage, and is told so";
#endif
  Write("washer.stp", WASHER);
  std::string const warning = "brivet: warning: brivet_read.log: expected a log that can be written, found: ";
  std::string const advice = "; the run goes on without a log\n";
  ChildResult const full = Shell("ln -s /dev/full brivet_read.log; \"$b\" -list washer.stp");
  EXPECT_EQ(full.exitStatus, 0);
  EXPECT_EQ(full.output, WASHER_LISTING);
  EXPECT_EQ(full.errors, warning + "No space left on device" + advice);
  ChildResult const missing = Brivet({"-list", "missing.stp"});
  EXPECT_EQ(missing.exitStatus, 13);
  EXPECT_EQ(missing.errors, warning + "No space left on device" + advice +
                                "brivet: missing.stp: expected a file that can be read, found: "
                                "No such file or directory; check the name\n");
  Shell("rm brivet_read.log; chmod 555 .");
  RunUnprivileged([&] {
    ChildResult const closed = Brivet({"-list", "washer.stp"});
    EXPECT_EQ(closed.exitStatus, 0);
    EXPECT_EQ(closed.output, WASHER_LISTING);
    EXPECT_EQ(closed.errors, warning + "Permission denied" + advice);
  });
  EXPECT_FALSE(folder.Has("brivet_read.log"));
}

TEST_F(BrivetTest, DoesNotWriteItsLogOverWhatItReads) {
  Write("brivet_read.log", WASHER);
  ChildResult const result = Brivet({"-list", "brivet_read.log"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, WASHER_LISTING);
  EXPECT_THAT(result.errors, HasSubstr("found: a file of this run; rename it to get a log"));
  EXPECT_EQ(folder.Read("brivet_read.log"), WASHER);
  Write("washer.stp", WASHER);
  Write("brivet_read.log", "Healing=On\n");
  EXPECT_EQ(Brivet({"-options", "brivet_read.log", "-list", "washer.stp"}).exitStatus, 0);
  EXPECT_EQ(folder.Read("brivet_read.log"), "Healing=On\n");
  Shell("\"$b\" -list washer.stp >brivet_read.log");
  EXPECT_EQ(folder.Read("brivet_read.log"), WASHER_LISTING);
  Shell("\"$b\" -list missing.stp 2>brivet_read.log");
  EXPECT_THAT(folder.Read("brivet_read.log"),
              testing::MatchesRegex("brivet: warning: brivet_read.log: [^\n]*\nbrivet: missing.stp: [^\n]*\n"));
}

// With all that is wrong, and before anything is read or written.
TEST_F(BrivetTest, RefusesBrokenOptionsFiles) {
  Write("washer.stp", WASHER);
  Write("brivet_read.log", "of the run before");
  struct Row {
    std::string bytes;
    std::string errors;
  };
  std::string const message = ": Incorrect syntax: line ";
  Row const rows[] = {
      {"Healing\n", "1" + message + "1:Healing *** \"key=value\" expected"},
      {"Healing=\n", "1" + message + "1:Healing= *** \"key=value\" expected"},
      {"=On", "1" + message + "1:=On *** \"key=value\" expected"},
      {"Healing=On\n[Step\n", "2" + message + "2:[Step *** \"[section name]' expected."},
      {"Healing=On\n\n a%sb%% \n[\n\x1B=\n", "3" + message + "3:a%sb%% *** \"key=value\" expected\n" +
                                                 "brivet: base.cfg:4" + message +
                                                 "4:[ *** \"[section name]' expected.\n" + "brivet: base.cfg:5" +
                                                 message + "5:?= *** \"key=value\" expected"},
      {"Healing=" + std::string(1020, 'x'),
       "1: expected a line of at most 1023 bytes, found a longer one\n"
       "brivet: base.cfg:1" +
           message + "2:xxxxx *** \"key=value\" expected"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.bytes);
    Write("base.cfg", row.bytes);
    ExpectRefused(Brivet({"-options", "base.cfg", "-set", "Healing=On", "washer.stp"}), 1, "base.cfg:" + row.errors);
  }
  Write("base.cfg", "x");
  Write("more.cfg", "y");
  ExpectRefused(
      Brivet({"-options", "base.cfg", "-options", "none.cfg", "-options", "more.cfg", "missing.stp"}), 1,
      "base.cfg:1" + message + "1:x *** \"key=value\" expected\n" +
          "brivet: none.cfg: expected a file that can be read, found: No such file or directory; check the name\n" +
          "brivet: more.cfg:1" + message + "1:y *** \"key=value\" expected");
  ExpectRefused(Brivet({"-options", "none.cfg", "washer.stp"}), 13,
                "none.cfg: expected a file that can be read, found: No such file or directory; check the name");
  ExpectRefused(Brivet({"-options", ".", "washer.stp"}), 14,
                ".: expected a file that can be read, found: Is a directory; check what stands there, and whether you "
                "may read it");
  ExpectRefused(Brivet({"-options", "/dev/zero", "washer.stp"}), 21,
                "/dev/zero: expected an options file of at most 1048576 bytes, found more");
  EXPECT_EQ(folder.Read("brivet_read.log"), "of the run before");
}

TEST_F(BrivetTest, WarnsOfUnknownOptions) {
  Write("washer.stp", WASHER);
  Write("base.cfg", "\nSewTolerence=1\nHealing=On\n\nFoo=1\n");
  ChildResult const result =
      Brivet({"-set", "Healig=1", "-options", "base.cfg", "-list", "washer.stp", "-set", "Healig=2"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, WASHER_LISTING);
  std::string const warnings[] = {
      "-set Healig=1: unknown option Healig, set all the same; did you mean Healing?",
      "base.cfg:2: unknown option SewTolerence, set all the same; did you mean SewTolerance?",
      "base.cfg:5: unknown option Foo, set all the same; no known name is close to it",
      "-set Healig=2: unknown option Healig, set all the same; did you mean Healing?",
  };
  std::string errors;
  std::string logged;
  for (std::string const& warning : warnings) {
    errors += "brivet: warning: " + warning + "\n";
    logged += "Warning : " + warning + "\n";
  }
  EXPECT_EQ(result.errors, errors);
  EXPECT_THAT(Log(), HasSubstr("\nMessage : -set Healig=1\nMessage : -options base.cfg\nMessage : -set Healig=2\n"));
  EXPECT_THAT(Log(), HasSubstr("\n" + logged + "Options : 5 set, 4 unknown\n"));
  // Stored all the same, the last value of a name.
  for (char const* line : {"\nMessage : Healig = 2\n", "\nMessage : Foo = 1\n", "\nMessage : Healing = true\n"}) {
    EXPECT_THAT(Log(), HasSubstr(line));
  }
  EXPECT_THAT(Log(), Not(HasSubstr("Healig = 1")));
}

TEST_F(BrivetTest, ReadsOptionsFromAPipe) {
  Write("washer.stp", WASHER);
  ChildResult const result =
      Brivet({"-options", "/dev/stdin", "-list", "washer.stp"}, "C.UTF-8", "Healing=On\nHealig=On\n");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors,
            "brivet: warning: /dev/stdin:2: unknown option Healig, set all the same; did you mean Healing?\n");
  EXPECT_THAT(Log(), HasSubstr("\nMessage : Healing = true\n"));
}
