// Runs the program: its output, its messages and its exit status.
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

constexpr char kWasherListing[] =
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

TEST_F(BrivetTest, ListsFile) {
  Write("washer.stp", kWasher);
  for (char const* locale : {"C", "C.UTF-8", "no_SUCH.locale"}) {
    ChildResult const result = Brivet({"-list", "washer.stp"}, locale);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, kWasherListing) << locale;
    EXPECT_EQ(result.errors, "");
  }
}

TEST_F(BrivetTest, ReadsPipes) {
  for (char const* name : {"/dev/stdin", "-"}) {
    ChildResult const result = Brivet({"-list", name}, "C.UTF-8", kWasher);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, kWasherListing);
  }
}

TEST_F(BrivetTest, AcceptsFileNameWithDashes) {
  Write("--help", kWasher);
  ChildResult const result = Brivet({"-list", "--", "--help"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, kWasherListing);
}

TEST_F(BrivetTest, ReadsUtf8InAnyLocale) {
  auto const nameLine = [this](std::string const& name, char const* locale) {
    std::string document = kWasher;
    document.replace(document.find("washer.stp"), 10, name);
    Write("washer.stp", document);
    ChildResult const result = Brivet({"-list", "washer.stp"}, locale);
    EXPECT_EQ(result.exitStatus, 0);
    std::size_t const at = result.output.find("File Name ");
    return result.output.substr(at, result.output.find('\n', at) - at);
  };
  EXPECT_EQ(nameLine("m\xC3\xBCller", "C"), "File Name                : C:\\parts\\m\xC3\xBCller");
  // Neither UTF-8 nor in the encoding of the locale.
  EXPECT_EQ(nameLine("m\xFCller", "C.UTF-8"), "File Name                : C:\\parts\\m\xC3\xBCller");
}

TEST_F(BrivetTest, ReadsEncodingOfLocale) {
  ScratchDirectory const locales;
  RunProgram({"localedef", "-i", "de_DE", "-f", "ISO-8859-1", locales.Path("de_DE.ISO-8859-1")});
  // Without the source of the character map, localedef creates a locale of another encoding.
  ChildResult const made = RunInChildWithoutTeardown([&] {
    setenv("LOCPATH", locales.Path().c_str(), 1);
    bool const isUsable = std::setlocale(LC_ALL, "de_DE.ISO-8859-1") != nullptr;
    return isUsable && std::string(nl_langinfo(CODESET)) == "ISO-8859-1" ? 0 : 1;
  });
  if (made.exitStatus != 0) GTEST_SKIP() << "cannot create a locale of ISO 8859-1: install the package locales";
  std::string document = kWasher;
  document.replace(document.find("washer.stp"), 10, "m\xFCller");
  ProgramOptions options;
  options.directory = folder.Path();
  options.environment = {"LOCPATH=" + locales.Path(), "LC_ALL=de_DE.ISO-8859-1"};
  options.input = document;
  ChildResult const result = RunProgram({BRIVET_PROGRAM, "-list", "/dev/stdin"}, options);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, HasSubstr("File Name                : C:\\parts\\m\xC3\xBCller\n"));
}

TEST_F(BrivetTest, WritesDecimalPointInAnyLocale) {
  ScratchDirectory const locales;
  RunProgram({"localedef", "-i", "de_DE", "-f", "UTF-8", locales.Path("de_DE.UTF-8")});
  ChildResult const made = RunInChildWithoutTeardown([&] {
    setenv("LOCPATH", locales.Path().c_str(), 1);
    bool const isUsable = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    return isUsable && std::string(nl_langinfo(RADIXCHAR)) == "," ? 0 : 1;
  });
  if (made.exitStatus != 0) GTEST_SKIP() << "cannot create a locale with a decimal comma: install the package locales";
  ProgramOptions options;
  options.directory = folder.Path();
  options.environment = {"LOCPATH=" + locales.Path(), "LC_ALL=de_DE.UTF-8"};
  std::string const assembly = VREL_SOURCE_DIR "/examples/assembly.stp";
  ChildResult const result = RunProgram({BRIVET_PROGRAM, "-summary", assembly}, options);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, HasSubstr("\nextent            120 x 90 x 73.4 millimetre\n"));
  ASSERT_EQ(RunProgram({BRIVET_PROGRAM, assembly, "page.html"}, options).exitStatus, 0);
  EXPECT_THAT(folder.Read("page.html"), HasSubstr("<dd>120 &#215; 90 &#215; 73.4 millimetre</dd>"));
}

TEST_F(BrivetTest, ListsExampleDocument) {
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

TEST_F(BrivetTest, ListingsEqualManual) {
  auto const shownAfter = [](std::string const& command) {
    std::string shown;
    std::istringstream documentation(FileText(VREL_SOURCE_DIR "/docs/brivet.md"));
    std::string line;
    while (line != "    $ " + command && std::getline(documentation, line)) {
    }
    while (std::getline(documentation, line) && (line.empty() || line.rfind("    ", 0) == 0)) {
      shown += (line.empty() ? "" : line.substr(4)) + "\n";
    }
    return shown;
  };
  EXPECT_EQ(Brivet({"-list", BracketPath()}).output + "\n", shownAfter("brivet -list examples/bracket.stp"));
  EXPECT_EQ(Brivet({"-summary", VREL_SOURCE_DIR "/examples/assembly.stp"}).output + "\n",
            shownAfter("brivet -summary examples/assembly.stp"));
  EXPECT_EQ(Brivet({"-settings", "*FileLine*"}).output + "\n", shownAfter("brivet -settings '*FileLine*'"));
}

TEST_F(BrivetTest, ReportsUnreadableInput) {
  ExpectRefused(Brivet({"-list", "missing.stp"}), 13, "cannot open 'missing.stp': No such file or directory");
  ExpectRefused(Brivet({""}), 13, "cannot open '': No such file or directory");
  ExpectRefused(Brivet({"."}), 14, "cannot read '.': Is a directory");
}

// Messages pass the library's channels, which format twice and cut at 1023 bytes.
TEST_F(BrivetTest, ShowsNamesUnchanged) {
  ExpectRefused(Brivet({"100%s%%d %n.stp"}), 13, "cannot open '100%s%%d %n.stp': No such file or directory");
  ExpectRefused(Brivet({"m\xFC.stp"}), 13, "cannot open 'm\xFC.stp': No such file or directory");
}

TEST_F(BrivetTest, ShortensLongNames) {
  std::string const path = std::string(2000, '/') + "missing.stp";
  ExpectRefused(Brivet({path}), 13,
                "cannot open '..." + std::string(589, '/') + "missing.stp': No such file or directory");
  ExpectRefused(Brivet({std::string(100000, 'a')}), 14,
                "cannot open '..." + std::string(600, 'a') + "': File name too long");
}

TEST_F(BrivetTest, RefusesOtherFiles) {
  std::string const washer = kWasher;
  struct Row {
    std::string bytes;
    int line;
  };
  Row const rows[] = {
      {"solid cube\n", 1},           {std::string("\x89PNG\r\n\x1A\n\0\0", 10), 1},   {std::string(100000, '\0'), 1},
      {std::string("<a\0b>", 5), 1}, {washer.substr(0, washer.find("washer */")), 3},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.bytes.substr(0, 20));
    Write("part.stp", row.bytes);
    for (std::vector<std::string> const& words : {std::vector<std::string>{"part.stp"}, {"-list", "part.stp"}}) {
      ChildResult const result = Brivet(words);
      EXPECT_EQ(result.exitStatus, 21);
      EXPECT_EQ(result.output, "");
      EXPECT_THAT(result.errors, HasSubstr("part.stp:" + std::to_string(row.line) + ":"));
    }
    EXPECT_FALSE(folder.Has("part.html"));
  }
}

TEST_F(BrivetTest, ReportsEmptyFile) {
  std::string const hint = "\nhint: the input must be an ISO 10303-21 (STEP) clear text file\n";
  Write("part.stp", "");
  for (std::vector<std::string> const& words :
       {std::vector<std::string>{"part.stp"}, {"-list", "part.stp"}, {"-summary", "part.stp"}}) {
    ChildResult const result = Brivet(words);
    EXPECT_EQ(result.exitStatus, 21);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "part.stp: error: the file is empty" + hint);
  }
  EXPECT_FALSE(folder.Has("part.html"));
  Write("part.stp", "\r\n \n");
  EXPECT_EQ(Brivet({"part.stp"}).errors, "part.stp: error: the file contains nothing but white space" + hint);
}

// Warns about each fault; a document without any instance left is an error.
TEST_F(BrivetTest, ReadsDamagedFiles) {
  std::string const washer = kWasher;
  auto const cutAfter = [&washer](std::string const& text) {
    return washer.substr(0, washer.find(text) + text.size());
  };
  struct Row {
    std::string bytes;
    int status;
    std::string instances;            // as listed; empty for none
    std::vector<std::string> errors;  // parts of the lines on standard error, in order
  };
  std::string const nothing = "part.stp: no instance could be read";
  Row const rows[] = {
      {"ISO-10303-21;HEADER;<100%s%%>ENDSEC;END-ISO-10303-21;",
       21,
       "",
       {"<100%s%%>", "FILE_DESCRIPTION", "FILE_NAME", "FILE_SCHEMA", nothing}},
      {cutAfter("FILE_SCHEMA"), 21, "", {"part.stp:7:", "part.stp:7:", "FILE_SCHEMA", nothing}},
      {cutAfter("30EC\n"), 21, "", {"part.stp:10:", "part.stp:11:", nothing}},
      {cutAfter("#20=(A()"), 8, "1", {"part.stp:12:", "part.stp:12:"}},
      {cutAfter("#1204=C('')"), 8, "2", {"part.stp:13:", "part.stp:13:"}},
      {cutAfter("*/\nENDSEC;\n"), 8, "3", {"part.stp:15:"}},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.bytes);
    Write("part.stp", row.bytes);
    ChildResult const result = Brivet({"-list", "part.stp"});
    EXPECT_EQ(result.exitStatus, row.status);
    std::size_t at = 0;
    for (std::string const& part : row.errors) {
      at = result.errors.find(part, at);
      EXPECT_NE(at, result.errors.npos) << part << " is missing in " << result.errors;
    }
    if (row.instances.empty()) {
      EXPECT_EQ(result.output, "");
    } else {
      EXPECT_THAT(result.output, HasSubstr("\nentity instances           " + row.instances + "\n"));
    }
    EXPECT_EQ(Brivet({"part.stp"}).exitStatus, row.status);
    EXPECT_EQ(folder.Has("part.html"), row.status != 21);
  }
}

TEST_F(BrivetTest, ReportsUnwritableStandardOutput) {
  Write("washer.stp", kWasher);
  for (char const* command :
       {"\"$b\" -list washer.stp >/dev/full", "\"$b\" --help >/dev/full", "\"$b\" --version >/dev/full"}) {
    SCOPED_TRACE(command);
    ExpectRefused(Shell(command), 15, "cannot write to standard output: No space left on device");
  }
  ExpectRefused(Shell("\"$b\" -list washer.stp >&-"), 15, "cannot write to standard output: Bad file descriptor");
  // No file of the run gets the descriptor of a closed stream.
  EXPECT_EQ(Shell("\"$b\" -list -set Healig=1 washer.stp <&- >&- 2>&-").exitStatus, 15);
  EXPECT_EQ(Shell("\"$b\" -list -set Healig=1 washer.stp 2>&-").output, kWasherListing);
  EXPECT_THAT(Log(), StartsWith("Product              : STEP reader\nApplication "));
  EXPECT_THAT(Log(), testing::EndsWith("----\nProduct Completed Successfully\n"));
}

// write accepts a part of the text and fails only when it is called again.
TEST_F(BrivetTest, PartialHelpTextIsFailure) {
#ifdef VREL_COVERAGE
  GTEST_SKIP() << "the limit would cut the coverage data as well";
#endif
  ChildResult const result = Shell("ulimit -f 1; \"$b\" --help >page");
  std::string const page = folder.Read("page");
  EXPECT_GT(page.size(), 0U);
  EXPECT_LT(page.size(), Brivet({"--help"}).output.size());
  ExpectRefused(result, 15, "cannot write to standard output: File too large");
}

TEST_F(BrivetTest, PrintsHelp) {
  for (char const* option : {"--help", "-help", "-h", "--he"}) {
    ChildResult const result = Brivet({option});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, StartsWith("usage: brivet [options] INPUT [OUTPUT]\n"));
    EXPECT_THAT(result.output, HasSubstr("Exit status: 0 success;"));
    EXPECT_THAT(result.output,
                HasSubstr("counts by type; write no\n                         OUTPUT, only the log brivet_read.log\n"));
    EXPECT_EQ(result.errors, "");
  }
  for (char const* option : {"--version", "-version", "-v", "-vers"}) {
    ChildResult const result = Brivet({option});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, testing::MatchesRegex("brivet [0-9]+\\.[0-9]+\\.[0-9]+\n"));
  }
}

TEST_F(BrivetTest, RefusesInvalidCommandLine) {
  struct Row {
    std::vector<std::string> words;
    std::string error;
  };
  std::string const hint = "\nhint: to use a file of this name, put -- before it";
  Row const rows[] = {
      {{}, "missing INPUT"},
      {{"a.stp", "b.stp", "c.stp"}, "extra argument 'c.stp'\nhint: to translate several files, use -outdir DIR"},
      {{"a.stp", "-write", "pdf"},
       "unknown format 'pdf' for -write\nhint: the formats are glb, html, json, obj, stl, svg, text, step"},
      {{"-set", "a=", "a.stp"},
       "invalid argument 'a=' for -set: no value after '='\n"
       "hint: write \"\" for an empty string"},
      {{"--nothing"}, "unknown option '--nothing'" + hint},
      {{"part.stp", "-100%%\n"}, "unknown option '-100%%<U+000A>'" + hint}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.error);
    ChildResult const result = Brivet(row.words);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_FALSE(folder.Has("brivet_read.log"));
    EXPECT_EQ(result.errors, "brivet: " + row.error +
                                 "\nusage: brivet [options] INPUT [OUTPUT]\n       brivet [options] -outdir DIR "
                                 "INPUT...\nTry 'brivet -help' for more "
                                 "information.\n");
  }
}

TEST_F(BrivetTest, WritesLog) {
  Write("washer.stp", kWasher);
  Write("base.cfg", "# for all parts\n\nConvertAttributes = On\n*.*.Reader.ConvertAttributes: off\n");
  ChildResult const result =
      Brivet({"-options", "base.cfg", "-list", "washer.stp", "-set", "Stp.*.Reader.ConvertAttributes=a=b c"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, kWasherListing);
  EXPECT_EQ(result.errors,
            "brivet: warning: -set Stp.*.Reader.ConvertAttributes=a=b c: unknown option "
            "'Stp.*.Reader.ConvertAttributes'; did you mean 'Step.*.Reader.ConvertAttributes', "
            "'Step.*.Reader.ConvertEdgeAttributes' or 'Step.*.ConvertAttributes'?\n");
  EXPECT_EQ(Log(), FileText(VREL_SOURCE_DIR "/tests/brivet/washer_list_log.txt"));
}

TEST_F(BrivetTest, LogsFailure) {
  Write("brivet_read.log", "the log of another run, which was longer" + std::string(10000, 'x'));
  ExpectRefused(Brivet({"-list", "missing.stp"}), 13, "cannot open 'missing.stp': No such file or directory");
  EXPECT_EQ(Log(),
            "Product              : STEP reader\n"
            "Application          : brivet VERSION\n"
            "Input File           : missing.stp\n"
            "--------------------- Options Set by User ------------------\n"
            "Options : 0 set, 0 unknown\n"
            "------------------------------------------------------------\n"
            "Error : cannot open 'missing.stp': No such file or directory\n"
            "Finish Time : TIME\n"
            "\n"
            "--------------------------------------------------------------------------------\n"
            "Translation Result : File Not Found\n"
            "--------------------------------------------------------------------------------\n"
            "--------------------------------------------------------------------------------\n"
            "Product Failed with code 16777229 (File Not Found)\n");
  Write("part.stp", DocumentText("#1=A()\n"));
  EXPECT_EQ(Brivet({"-list", "part.stp"}).exitStatus, 21);
  EXPECT_THAT(Log(), HasSubstr("\nError : part.stp: no instance could be read\n"
                               "--------------------------------------------------------------------------------\n"
                               "Entity Reading Result : Invalid file\n"));
  ExpectRefused(Shell("\"$b\" ../nothing/../brivet.stp >/dev/full; exit $?"), 13,
                "cannot open '../nothing/../brivet.stp': No such file or directory");
}

TEST_F(BrivetTest, LogLevelIsThatOfEnvironment) {
  Write("washer.stp", kWasher);
  EXPECT_EQ(Shell("VRELLogLevel=NONE \"$b\" -list -set Healig=1 washer.stp").exitStatus, 0);
  EXPECT_EQ(Log(), "");
  EXPECT_EQ(Shell("VRELLogLevel=ERROR \"$b\" -set Healig=1 missing.stp").exitStatus, 13);
  EXPECT_EQ(Log(), "Error : cannot open 'missing.stp': No such file or directory\n");
}

TEST_F(BrivetTest, LogsUnwritableStandardOutput) {
  Write("washer.stp", kWasher);
  EXPECT_EQ(Shell("\"$b\" -list washer.stp >/dev/full").exitStatus, 15);
  EXPECT_THAT(Log(), HasSubstr("Error : cannot write to standard output: No space left on device\n"
                               "Finish Time : TIME\n"));
  EXPECT_THAT(Log(), testing::EndsWith("Product Failed with code 16777231 (File Save Error)\n"));
}

TEST_F(BrivetTest, ContinuesWithoutLog) {
  if (std::string const reason = WhyNotUnprivileged(); !reason.empty()) GTEST_SKIP() << reason;
  Write("washer.stp", kWasher);
  std::string const warning = "brivet: warning: cannot write the log 'brivet_read.log': ";
  ChildResult const full = Shell("ln -s /dev/full brivet_read.log; \"$b\" -list washer.stp");
  EXPECT_EQ(full.exitStatus, 0);
  EXPECT_EQ(full.output, kWasherListing);
  EXPECT_EQ(full.errors, warning + "it is a symbolic link\n");
  ChildResult const missing = Brivet({"-list", "missing.stp"});
  EXPECT_EQ(missing.exitStatus, 13);
  EXPECT_EQ(missing.errors,
            warning + "it is a symbolic link\n" + "brivet: cannot open 'missing.stp': No such file or directory\n");
  Shell("rm brivet_read.log; chmod 555 .");
  RunUnprivileged([&] {
    ChildResult const closed = Brivet({"-list", "washer.stp"});
    EXPECT_EQ(closed.exitStatus, 0);
    EXPECT_EQ(closed.output, kWasherListing);
    EXPECT_EQ(closed.errors, warning + "Permission denied\n");
  });
  EXPECT_FALSE(folder.Has("brivet_read.log"));
}

TEST_F(BrivetTest, LogDoesNotOverwriteInput) {
  Write("brivet_read.log", kWasher);
  ChildResult const result = Brivet({"-list", "brivet_read.log"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, kWasherListing);
  EXPECT_THAT(result.errors, HasSubstr("it is a file of this run"));
  EXPECT_EQ(folder.Read("brivet_read.log"), kWasher);
  Write("washer.stp", kWasher);
  Write("brivet_read.log", "Healing=On\n");
  EXPECT_EQ(Brivet({"-options", "brivet_read.log", "-list", "washer.stp"}).exitStatus, 0);
  EXPECT_EQ(folder.Read("brivet_read.log"), "Healing=On\n");
  Shell("\"$b\" -list washer.stp >brivet_read.log");
  EXPECT_EQ(folder.Read("brivet_read.log"), kWasherListing);
  Shell("\"$b\" -list missing.stp 2>brivet_read.log");
  EXPECT_THAT(folder.Read("brivet_read.log"),
              testing::MatchesRegex(
                  "brivet: warning: cannot write the log [^\n]*\nbrivet: cannot open 'missing.stp': [^\n]*\n"));
}

// Reports all errors before anything is read or written.
TEST_F(BrivetTest, RefusesInvalidOptionsFiles) {
  Write("washer.stp", kWasher);
  Write("brivet_read.log", "log of an earlier run");
  struct Row {
    std::string bytes;
    std::string errors;
  };
  std::string const message = ": error: Incorrect syntax: line ";
  Row const rows[] = {
      {"Healing\n", "base.cfg:1" + message + "1:Healing *** \"key=value\" expected\n"},
      {"Healing=\n", "base.cfg:1" + message + "1:Healing= *** \"key=value\" expected\n"},
      {"=On", "base.cfg:1" + message + "1:=On *** \"key=value\" expected\n"},
      {"Healing=On\n[Step\n", "base.cfg:2" + message + "2:[Step *** \"[section name]' expected.\n"},
      {"Healing=On\n\n a%sb%% \n[\n\x1B=\n", "base.cfg:3" + message + "3:a%sb%% *** \"key=value\" expected\n" +
                                                 "base.cfg:4" + message + "4:[ *** \"[section name]' expected.\n" +
                                                 "base.cfg:5" + message + "5:<U+001B>= *** \"key=value\" expected\n"},
      {"Healing=" + std::string(1020, 'x'), "base.cfg:1: error: line is longer than 1023 bytes\nbase.cfg:1" + message +
                                                "2:xxxxx *** \"key=value\" expected\n"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.bytes);
    Write("base.cfg", row.bytes);
    ChildResult const result = Brivet({"-options", "base.cfg", "-set", "Healing=On", "washer.stp"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, row.errors);
  }
  Write("base.cfg", "x");
  Write("more.cfg", "y");
  ChildResult const several =
      Brivet({"-options", "base.cfg", "-options", "none.cfg", "-options", "more.cfg", "missing.stp"});
  EXPECT_EQ(several.exitStatus, 1);
  EXPECT_EQ(several.errors, "base.cfg:1" + message + "1:x *** \"key=value\" expected\n" +
                                "brivet: cannot open 'none.cfg': No such file or directory\n" + "more.cfg:1" + message +
                                "1:y *** \"key=value\" expected\n");
  ExpectRefused(Brivet({"-options", "none.cfg", "washer.stp"}), 13,
                "cannot open 'none.cfg': No such file or directory");
  ExpectRefused(Brivet({"-options", ".", "washer.stp"}), 14, "cannot read '.': Is a directory");
  ExpectRefused(Brivet({"-options", "/dev/zero", "washer.stp"}), 21,
                "cannot read '/dev/zero': larger than the limit for options files of 1048576 bytes");
  EXPECT_EQ(folder.Read("brivet_read.log"), "log of an earlier run");
}

TEST_F(BrivetTest, WarnsAboutUnknownOptions) {
  Write("washer.stp", kWasher);
  Write("base.cfg", "\nSewTolerence=1\nHealing=On\n\nFoo=1\n");
  ChildResult const result =
      Brivet({"-set", "Healig=1", "-options", "base.cfg", "-list", "washer.stp", "-set", "Healig=2"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, kWasherListing);
  std::string const warnings[] = {
      "-set Healig=1: unknown option 'Healig'; did you mean 'Healing'?",
      "base.cfg:2: warning: unknown option 'SewTolerence'; did you mean 'SewTolerance'?",
      "base.cfg:5: warning: unknown option 'Foo'",
      "-set Healig=2: unknown option 'Healig'; did you mean 'Healing'?",
  };
  std::string errors;
  std::string logged;
  for (std::string const& warning : warnings) {
    errors += (warning[0] == '-' ? "brivet: warning: " : "") + warning + "\n";
    logged += "Warning : " + warning + "\n";
  }
  EXPECT_EQ(result.errors, errors);
  EXPECT_THAT(Log(), HasSubstr("\nMessage : -set Healig=1\nMessage : -options base.cfg\nMessage : -set Healig=2\n"));
  EXPECT_THAT(Log(), HasSubstr("\n" + logged + "Options : 5 set, 4 unknown\n"));
  // Unknown options are stored; the last value of a name counts.
  for (char const* line : {"\nMessage : Healig = 2\n", "\nMessage : Foo = 1\n", "\nMessage : Healing = true\n"}) {
    EXPECT_THAT(Log(), HasSubstr(line));
  }
  EXPECT_THAT(Log(), Not(HasSubstr("Healig = 1")));
}

TEST_F(BrivetTest, ReadsOptionsFromPipe) {
  Write("washer.stp", kWasher);
  ChildResult const result =
      Brivet({"-options", "/dev/stdin", "-list", "washer.stp"}, "C.UTF-8", "Healing=On\nHealig=On\n");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "/dev/stdin:2: warning: unknown option 'Healig'; did you mean 'Healing'?\n");
  EXPECT_THAT(Log(), HasSubstr("\nMessage : Healing = true\n"));
}

TEST_F(BrivetTest, PrintsSummary) {
  ChildResult const result = Brivet({"-summary", BracketPath()});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "file              bracket.stp\n"
            "application       AP214\n"
            "system            brivet examples\n"
            "date              2026-11-20T09:30:00\n"
            "instances         232\n"
            "unit              millimetre and DEGREE\n"
            "extent            60 x 40 x 50 millimetre\n"
            "contents          1 product, 1 solid, 10 faces\n"
            "Winkel f\xC3\xBCr Tr\xC3\xA4ger \xE3\x83\x96\xE3\x83\xA9\xE3\x82\xB1\xE3\x83\x83\xE3\x83\x88\n");
  ExpectRefused(Brivet({"-summary", "missing.stp"}), 13, "cannot open 'missing.stp': No such file or directory");
}
