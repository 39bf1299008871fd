// The program from outside: what it prints, where, and how it ends.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <langinfo.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "ScratchDirectory.h"
#include "TextSource.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class BrivetTest : public testing::Test {
 protected:
  BrivetTest() {
    std::string pattern = testing::TempDir() + "brivetXXXXXX";
    if (mkdtemp(pattern.data()) != nullptr) folder = pattern;
  }
  ~BrivetTest() override {
    for (std::string const& name : written) std::remove((folder + "/" + name).c_str());
    rmdir(folder.c_str());
  }

  void Write(std::string const& name, std::string const& bytes) {
    std::ofstream(folder + "/" + name, std::ios::binary) << bytes;
    written.push_back(name);
  }

  // Runs where the written files are; messages in plain English.
  ChildResult Brivet(std::vector<std::string> words, std::string const& locale = "C.UTF-8",
                     std::string const& input = "") const {
    words.insert(words.begin(), BRIVET_PROGRAM);
    ProgramOptions options;
    options.directory = folder;
    options.environment = {"LC_ALL=" + locale};
    options.input = input;
    return RunProgram(words, options);
  }

  ChildResult Shell(std::string const& command) const {
    ProgramOptions options;
    options.directory = folder;
    options.environment = {"LC_ALL=C.UTF-8"};
    return RunProgram({"sh", "-c", std::string("b='") + BRIVET_PROGRAM + "'; " + command}, options);
  }

  void ExpectRefused(ChildResult const& result, int status, std::string const& error) const {
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitStatus, status);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "brivet: " + error + "\n");
  }

  std::string folder;
  std::vector<std::string> written;
};

constexpr char WASHER[] = R"(ISO-10303-21;
HEADER;
/* it's a washer */
FILE_DESCRIPTION(('Scheibe f\S\|r M8','washer'),'2;1');
FILE_NAME('C:\\parts\\washer.stp','2026-11-20T09:30:00',('J\S\vrg'),(),
  $,'drawn by ''hand''','');
FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));
ENDSEC;
DATA;
#10=PRODUCT('w','\X2\30D630EC
30F330C9\X0\ R1','/* no comment */',(#20));
#20=(A()B('\S\A'));
#1204=C(''); /* '\S\A' */
ENDSEC;
END-ISO-10303-21;
)";

constexpr char WASHER_PAGE[] =
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
    "escaped strings            5\n"
    "\n"
    "  line  instance  text\n"
    "     4  header    Scheibe f\xC3\xBCr M8\n"
    "     5  header    C:\\parts\\washer.stp\n"
    "     5  header    J\xC3\xB6rg\n"
    "    10  #10       \xE3\x83\x96\xE3\x83\xAC\xE3\x83\xB3\xE3\x83\x89 R1\n"
    "    12  #20       \xC3\x81\n";

}  // namespace

TEST_F(BrivetTest, SummarisesAFile) {
  Write("washer.stp", WASHER);
  for (char const* locale : {"C", "C.UTF-8", "no_SUCH.locale"}) {
    ChildResult const result = Brivet({"washer.stp"}, locale);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, WASHER_PAGE) << locale;
    EXPECT_EQ(result.errors, "");
  }
}

TEST_F(BrivetTest, ReadsPipes) {
  ChildResult const result = Brivet({"/dev/stdin"}, "C.UTF-8", WASHER);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, WASHER_PAGE);
}

TEST_F(BrivetTest, TakesANameThatLooksLikeAnOption) {
  Write("--help", WASHER);
  ChildResult const result = Brivet({"--", "--help"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, WASHER_PAGE);
}

TEST_F(BrivetTest, ReadsBytesBeyondAsciiAsUtf8OrByTheLocale) {
  auto const nameLine = [this](std::string const& name, char const* locale) {
    std::string document = WASHER;
    document.replace(document.find("washer.stp"), 10, name);
    Write("washer.stp", document);
    ChildResult const result = Brivet({"washer.stp"}, locale);
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
  options.environment = {"LOCPATH=" + locales.Path(), "LC_ALL=de_DE.ISO-8859-1"};
  options.input = document;
  ChildResult const result = RunProgram({BRIVET_PROGRAM, "/dev/stdin"}, options);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, HasSubstr("File Name                : C:\\parts\\m\xC3\xBCller\n"));
}

TEST_F(BrivetTest, SummarisesTheShippedDocument) {
  ChildResult const result = Brivet({BracketPath()});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  for (char const* line : {
           "\ndescription 2            : L bracket with two holes\n",
           "\nFile Name                : bracket.stp\n",
           "\nAuthor 2                 : \xE4\xBD\x90\xE8\x97\xA4 Yui\n",
           "\nschema_identifiers       : AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }\n",
           "\nentity instances         232\n",
           "\n  complex                  5\n",
           "\nescaped strings           10\n",
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

// The page that the documentation shows is the page that the program prints.
TEST_F(BrivetTest, IsDocumentedByItsOwnPage) {
  std::string shown;
  std::istringstream documentation(FileText(VREL_SOURCE_DIR "/docs/brivet.md"));
  std::string line;
  while (line != "    $ brivet examples/bracket.stp" && std::getline(documentation, line)) {
  }
  while (std::getline(documentation, line) && (line.empty() || line.rfind("    ", 0) == 0)) {
    shown += (line.empty() ? "" : line.substr(4)) + "\n";
  }
  EXPECT_EQ(Brivet({BracketPath()}).output + "\n", shown);
}

TEST_F(BrivetTest, RefusesWhatIsNoFile) {
  ExpectRefused(Brivet({"missing.stp"}), 13,
                "missing.stp: expected a file that can be read, found: No such file or directory");
  ExpectRefused(Brivet({""}), 13, ": expected a file that can be read, found: No such file or directory");
  ExpectRefused(Brivet({"."}), 14, ".: expected a file that can be read, found: Is a directory");
  ExpectRefused(Brivet({"a\nb\x1B"}), 13, "a?b?: expected a file that can be read, found: No such file or directory");
}

// Messages pass the library's channels, which format twice and cut at 1023 bytes.
TEST_F(BrivetTest, TellsNamesAndContentsAsTheyStand) {
  ExpectRefused(Brivet({"100%s%%d %n.stp"}), 13,
                "100%s%%d %n.stp: expected a file that can be read, found: No such file or directory");
  ExpectRefused(Brivet({"m\xFC.stp"}), 13,
                "m\xFC.stp: expected a file that can be read, found: No such file or directory");
  Write("50%%.stp", "ISO-10303-21;HEADER;<100%s%%>");
  ExpectRefused(Brivet({"50%%.stp"}), 21, "50%%.stp:1: expected an entity of the header or ENDSEC, found <100%s%%>");
  Write("zero.stp", std::string("<a\0b>", 5));
  ExpectRefused(Brivet({"zero.stp"}), 21, "zero.stp:1: expected ISO-10303-21, found <a?b>");
}

// The end of the name and the reason are seen.
TEST_F(BrivetTest, ShortensALongName) {
  std::string const path = std::string(2000, '/') + "missing.stp";
  ExpectRefused(Brivet({path}), 13,
                "..." + std::string(589, '/') +
                    "missing.stp: expected a file that can be read, found: "
                    "No such file or directory");
  ExpectRefused(Brivet({std::string(100000, 'a')}), 14,
                "..." + std::string(600, 'a') + ": expected a file that can be read, found: File name too long");
}

TEST_F(BrivetTest, RefusesWhatIsNoStepFile) {
  std::string const washer = WASHER;
  auto const cutBehind = [&washer](std::string const& text) {
    return washer.substr(0, washer.find(text) + text.size());
  };
  struct Row {
    std::string bytes;
    char const* error;
  };
  Row const rows[] = {
      {"", "1: expected ISO-10303-21, found the end of the file"},
      {"solid cube\n", "1: expected ISO-10303-21, found solid"},
      {std::string("\x89PNG\r\n\x1A\n\0\0", 10), "1: expected ISO-10303-21, found byte 0x89"},
      {std::string(100000, '\0'), "1: expected ISO-10303-21, found byte 0x00"},
      {cutBehind("C:\\\\pa"), "5: expected ' at the end of the string that begins here, found the end of the file"},
      {cutBehind("a wash"), "3: expected */ at the end of the comment that begins here, found the end of the file"},
      {cutBehind("FILE_NAME"), "5: expected ( behind FILE_NAME, found the end of the file"},
      {cutBehind("FILE_SCHEMA"), "7: expected ( behind FILE_SCHEMA, found the end of the file"},
      {cutBehind("30EC\n"), "10: expected ' at the end of the string that begins here, found the end of the file"},
      {cutBehind("#20=(A()"), "12: expected an entity name, found the end of the file"},
      {cutBehind("#1204=C('')"), "13: expected ; behind #1204, found the end of the file"},
      {cutBehind("*/\nENDSEC;\n"), "15: expected DATA or END-ISO-10303-21, found the end of the file"},
      {cutBehind("END-ISO-10303-21"), "15: expected ; behind END-ISO-10303-21, found the end of the file"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.error);
    Write("part.stp", row.bytes);
    ExpectRefused(Brivet({"part.stp"}), 21, std::string("part.stp:") + row.error);
  }
}

TEST_F(BrivetTest, TellsWhenTheOutputCannotBeWritten) {
  Write("washer.stp", WASHER);
  for (char const* command :
       {"\"$b\" washer.stp >/dev/full", "\"$b\" --help >/dev/full", "\"$b\" --version >/dev/full"}) {
    SCOPED_TRACE(command);
    ExpectRefused(Shell(command), 15, "standard output: expected a place to write to, found: No space left on device");
  }
  ExpectRefused(Shell("\"$b\" washer.stp >&-"), 15,
                "standard output: expected a place to write to, found: Bad file descriptor");
}

// The system takes half a page, and refuses the rest only when it is asked again.
TEST_F(BrivetTest, TakesHalfAPageForNoSuccess) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "the limit would cut the figures of the coverage too";
#endif
  ChildResult const result = Shell("trap '' XFSZ; ulimit -f 1; \"$b\" --help >page");
  std::string const page = FileText(folder + "/page");
  written.push_back("page");
  EXPECT_GT(page.size(), 0U);
  EXPECT_LT(page.size(), Brivet({"--help"}).output.size());
  ExpectRefused(result, 15, "standard output: expected a place to write to, found: File too large");
}

TEST_F(BrivetTest, TeachesItsUse) {
  for (char const* option : {"--help", "-help", "-h", "--he"}) {
    ChildResult const result = Brivet({option});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, StartsWith("brivet FILE\n"));
    EXPECT_THAT(result.output, HasSubstr("Exit status: 0 when all is well."));
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
      {{}, "expected one file, found 0 arguments"},
      {{"a.stp", "b.stp"}, "expected one file, found 2 arguments"},
      {{"--"}, "expected one file, found 0 arguments"},
      {{"--help", "a.stp"}, "expected one file, found 2 arguments"},
      {{"--verbose"}, "unknown option --verbose: see brivet --help, or put -- in front of a file of this name"},
      {{"part.stp", "-100%%"}, "unknown option -100%%: see brivet --help, or put -- in front of a file of this name"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.reason);
    ChildResult const result = Brivet(row.words);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, std::string("brivet: ") + row.reason + "\nusage: brivet FILE | --help | --version\n");
  }
}
