#include "CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

#include "Formats.h"

namespace {

CommandLine Parse(std::vector<std::string> words) {
  words.insert(words.begin(), "brivet");
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  return CommandLine::Parse(static_cast<int>(words.size()), arguments.data());
}

}  // namespace

TEST(CommandLineTest, ParsesInput) {
  struct Row {
    std::vector<std::string> words;
    char const* file;
  };
  Row const rows[] = {{{"a.stp"}, "a.stp"},       {{""}, ""},           {{"-"}, "-"},      {{"--", "-"}, "-"},
                      {{"--", "-help"}, "-help"}, {{"--", "--"}, "--"}, {{"a", "--"}, "a"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.file);
    CommandLine const line = Parse(row.words);
    EXPECT_EQ(line.action, CommandLine::Translate);
    EXPECT_EQ(line.input, row.file);
  }
}

TEST(CommandLineTest, AcceptsAbbreviations) {
  for (char const* word : {"-help", "--help", "-h", "--h", "-he", "--hel"}) {
    EXPECT_EQ(Parse({word}).action, CommandLine::Help) << word;
  }
  for (char const* word : {"-version", "--version", "-v", "--v", "-vers", "--versio"}) {
    EXPECT_EQ(Parse({word}).action, CommandLine::Version) << word;
  }
}

TEST(CommandLineTest, RefusesUnknownOption) {
  for (char const* word :
       {"-x", "-hx", "-optionsx", "-setx", "-xh", "--helpme", "-versions", "---help", "-H", "-=x", "--=", "-x=y"}) {
    for (std::vector<std::string> const& words : {std::vector<std::string>{word}, {"a.stp", word}, {word, "-h"}}) {
      CommandLine const line = Parse(words);
      EXPECT_EQ(line.action, CommandLine::Refuse) << word;
      EXPECT_EQ(line.problem, std::string("unknown option '") + word + "'");
      EXPECT_EQ(line.hint, "to use a file of this name, put -- before it");
    }
  }
}

TEST(CommandLineTest, RefusesWrongNumberOfFiles) {
  struct Row {
    std::vector<std::string> words;
    char const* problem;
  };
  constexpr char kMissing[] = "missing INPUT";
  Row const rows[] = {{{}, kMissing},
                      {{"--"}, kMissing},
                      {{"-quiet"}, kMissing},
                      {{"-list"}, kMissing},
                      {{"-set", "a=1"}, kMissing},
                      {{"a", "--", "-b", "-c"}, "extra argument '-c'"},
                      {{"a", "b", "-o", "c"}, "extra argument 'b'"},
                      {{"a", "b", "-list"}, "extra argument 'b'"},
                      {{"a", ""}, "the name of OUTPUT is empty"},
                      {{"a", "-o", ""}, "the name of OUTPUT is empty"},
                      {{"a", "-list", "-o", "b"}, "option -list writes no OUTPUT"},
                      {{"-h", "a", "b"}, "option -help takes no file"},
                      {{"-formats", "a"}, "option -formats takes no file"},
                      {{"-settings", "a", "b"}, "option -settings takes one PATTERN"},
                      {{"-jobs", "2", "a"}, "option -jobs requires -outdir"},
                      {{"-outdir", "d"}, kMissing},
                      {{"-outdir=", "a"}, "the name of the folder for -outdir is empty"},
                      {{"-outdir", "d", "a", "-o", "b"}, "options -outdir and -o exclude each other"},
                      {{"-outdir", "d", "a", "-list"}, "option -list writes no OUTPUT"},
                      {{"-list", "a", "-report", "-"}, "options -list and -report - both write to standard output"},
                      {{"a", "-", "-report", "-"}, "OUTPUT and -report are both standard output"},
                      {{"-h", "-o", "a"}, "option -help takes no file"},
                      {{"-h", "-v"}, "options -help and -version exclude each other"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    CommandLine const line = Parse(row.words);
    EXPECT_EQ(line.action, CommandLine::Refuse);
    EXPECT_EQ(line.problem, row.problem);
  }
  EXPECT_EQ(CommandLine::Parse(0, nullptr).action, CommandLine::Refuse);
}

TEST(CommandLineTest, DeterminesFormatAndOutput) {
  struct Row {
    std::vector<std::string> words;
    char const* format;
    char const* output;
  };
  Row const rows[] = {
      {{"a.stp"}, "html", "a.html"},
      {{"../parts/a.b.STEP"}, "html", "a.b.html"},
      {{"/parts/a"}, "html", "a.html"},
      {{".stp"}, "html", ".stp.html"},
      {{"-"}, "html", "stdin.html"},
      {{"/dev/stdin", "-w", "step"}, "step", "stdin.stp"},
      {{"a.stp", "-write", "text"}, "text", "a.txt"},
      {{"a.stp", "--write=text"}, "text", "a.txt"},
      {{"a.stp", "-w=text"}, "text", "a.txt"},
      {{"a.stp", "-write", "step"}, "step", "a.stp"},
      {{"a.stp", "-write", "html"}, "html", "a.html"},
      {{"a.stp", "b.txt"}, "text", "b.txt"},
      {{"a.stp", "-o", "b.txt"}, "text", "b.txt"},
      {{"-o=b.txt", "a.stp"}, "text", "b.txt"},
      {{"-o", "-", "a.stp", "-w", "text"}, "text", "-"},
      {{"a.stp", "x.html/b.TEXT"}, "text", "x.html/b.TEXT"},
      {{"a.stp", "b.step"}, "step", "b.step"},
      {{"a.stp", "b.p21"}, "step", "b.p21"},
      {{"a.stp", "b.htm"}, "html", "b.htm"},
      {{"a.stp", "b"}, "html", "b"},
      {{"a.stp", "-"}, "html", "-"},
      {{"a.stp", "b.html.gz"}, "html", "b.html.gz"},
      {{"a.stp", "b.STP.GZ"}, "step", "b.STP.GZ"},
      {{"a.stp.gz"}, "html", "a.html"},
      {{"x.y/a.stpZ"}, "html", "a.html"},
      {{"a.stp", "b.doc", "-write", "html"}, "html", "b.doc"},
      {{"a.stp", "b.txt", "-write", "step"}, "step", "b.txt"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    CommandLine const line = Parse(row.words);
    ASSERT_EQ(line.action, CommandLine::Translate);
    EXPECT_STREQ(line.Target().name, row.format);
    EXPECT_EQ(line.OutputPath(), row.output);
  }
}

TEST(CommandLineTest, ParsesFlags) {
  CommandLine const plain = Parse({"a.stp"});
  EXPECT_FALSE(plain.showsProgress);
  EXPECT_FALSE(plain.isQuiet);
  EXPECT_TRUE(plain.isSynchronized);
  EXPECT_TRUE(Parse({"-progress", "a.stp"}).showsProgress);
  EXPECT_TRUE(Parse({"a.stp", "--quiet"}).isQuiet);
  EXPECT_FALSE(Parse({"a.stp", "-nosync"}).isSynchronized);
  CommandLine const listing = Parse({"-l", "-q", "a.stp"});
  EXPECT_EQ(listing.action, CommandLine::List);
  EXPECT_TRUE(listing.isQuiet);
  CommandLine const wrong = Parse({"-quiet", "-nothing"});
  EXPECT_EQ(wrong.action, CommandLine::Refuse);
  EXPECT_TRUE(wrong.isQuiet);
}

TEST(CommandLineTest, ParsesOptionsOfRuns) {
  CommandLine const plain = Parse({"a.stp"});
  EXPECT_FALSE(plain.isStrict || plain.isForced || plain.isVerbose || plain.isWorker);
  EXPECT_TRUE(plain.hasLogs);
  EXPECT_EQ(plain.report, "");
  EXPECT_EQ(plain.temporarySpace, 17179869184);
  CommandLine const line = Parse({"-strict", "-force", "-verbose", "-nolog", "-report", "r.json", "-logdir", "logs",
                                  "-tempspace", "500M", "a.stp"});
  EXPECT_TRUE(line.isStrict && line.isForced && line.isVerbose);
  EXPECT_FALSE(line.hasLogs);
  EXPECT_EQ(line.report, "r.json");
  EXPECT_EQ(line.logFolder, "logs");
  EXPECT_EQ(line.temporarySpace, 524288000);
  EXPECT_EQ(Parse({"-report", "-", "a.stp"}).report, "-");
}

TEST(CommandLineTest, ParsesSeveralInputs) {
  CommandLine const line = Parse({"-outdir", "d", "a.stp", "-jobs", "4", "b.stp", "--", "-c"});
  EXPECT_EQ(line.action, CommandLine::TranslateAll);
  EXPECT_EQ(line.inputs, (std::vector<std::string>{"a.stp", "b.stp", "-c"}));
  EXPECT_EQ(line.outputFolder, "d");
  EXPECT_EQ(line.jobs, 4);
  EXPECT_EQ(Parse({"-outdir=d", "a.stp"}).jobs, 0);
}

TEST(CommandLineTest, ParsesLists) {
  EXPECT_EQ(Parse({"-formats"}).action, CommandLine::ListFormats);
  EXPECT_EQ(Parse({"-settings"}).action, CommandLine::ListSettings);
  EXPECT_EQ(Parse({"-help", "step"}).action, CommandLine::Help);
  EXPECT_EQ(Parse({"-help", "step"}).format, "step");
  EXPECT_EQ(Parse({"-settings", "Step*"}).pattern, "Step*");
}

TEST(CommandLineTest, ParsesSizes) {
  struct Row {
    char const* text;
    long size;  // 0 if it is refused
  };
  Row const rows[] = {{"1", 1},
                      {"4096", 4096},
                      {"1K", 1024},
                      {"3m", 3145728},
                      {"2G", 2147483648},
                      {"1T", 1099511627776},
                      {"4194304T", 1L << 62U},
                      {"4194305T", 0},
                      {"999999999999999999T", 0},
                      {"9999999999999999999", 0},
                      {"", 0},
                      {"0", 0},
                      {"K", 0},
                      {"1KB", 0},
                      {"1X", 0},
                      {"-1", 0},
                      {"1.5G", 0},
                      {" 1", 0}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    long size = 0;
    EXPECT_EQ(ParseSize(row.text, size), row.size != 0);
    EXPECT_EQ(size, row.size);
  }
}

TEST(CommandLineTest, CollectsOptionSourcesInOrder) {
  CommandLine const line =
      Parse({"-set", "a=1", "--options", "b.cfg", "c.stp", "-s", "a=", "--se", "d = e=f ", "-op", ""});
  EXPECT_EQ(line.action, CommandLine::Refuse);  // an empty value
  CommandLine const good = Parse({"-set", "a=1", "--options", "b.cfg", "c.stp", "-s", "a=\"\"", "--se", "d = e=f ",
                                  "-op", "", "-set", "a=1", "--set=g=h=i"});
  EXPECT_EQ(good.action, CommandLine::Translate);
  EXPECT_EQ(good.input, "c.stp");
  std::vector<std::string> words;
  for (OptionSource const& source : good.sources) words.push_back(source.Words());
  EXPECT_EQ(words, (std::vector<std::string>{"-set a=1", "-options b.cfg", "-set a=\"\"", "-set d = e=f ", "-options ",
                                             "-set a=1", "-set g=h=i"}));
  EXPECT_TRUE(Parse({"c.stp"}).sources.empty());
}

TEST(CommandLineTest, HelpAllowsOtherOptions) {
  EXPECT_EQ(Parse({"-set", "a=1", "-h"}).action, CommandLine::Help);
  EXPECT_EQ(Parse({"-v", "-options", "b.cfg"}).action, CommandLine::Version);
}

TEST(CommandLineTest, WordsAfterDashesAreFiles) {
  EXPECT_EQ(Parse({"--", "-set"}).input, "-set");
  EXPECT_EQ(Parse({"-set", "a=1", "--", "-options"}).input, "-options");
}

TEST(CommandLineTest, RefusesInvalidArguments) {
  struct Row {
    std::vector<std::string> words;
    char const* problem;
    char const* hint;
  };
  constexpr char kFile[] = "option -options requires an argument: FILE";
  constexpr char kSetting[] = "option -set requires an argument: NAME=VALUE";
  constexpr char kExample[] = "for example: -set Healing=On";
  constexpr char kEmpty[] = "write \"\" for an empty string";
  Row const rows[] = {
      {{"a.stp", "-options"}, kFile, ""},
      {{"-op"}, kFile, ""},
      {{"-options", "-set", "a=1", "a.stp"}, kFile, "to use a file of the name '-set', put ./ before it"},
      {{"-options", "-"}, kFile, "to use a file of the name '-', put ./ before it"},
      {{"-o"}, "option -o requires an argument: FILE", ""},
      {{"-set"}, kSetting, ""},
      {{"-set", "-a=1", "a.stp"}, kSetting, ""},
      {{"-set", "a.stp"}, "invalid argument 'a.stp' for -set: no '=' in it", kExample},
      {{"-set", "a:b", "a.stp"}, "invalid argument 'a:b' for -set: no '=' in it", kExample},
      {{"-set", "", "a.stp"}, "invalid argument '' for -set: no '=' in it", kExample},
      {{"-set", "=b", "a.stp"}, "invalid argument '=b' for -set: no name before '='", kExample},
      {{"-set", " =b", "a.stp"}, "invalid argument ' =b' for -set: no name before '='", kExample},
      {{"-set", "a..b=c", "a.stp"}, "invalid argument 'a..b=c' for -set: the name has an empty part between dots", ""},
      {{"-set", "a.=c", "a.stp"}, "invalid argument 'a.=c' for -set: the name has an empty part between dots", ""},
      {{"-set", "a=", "a.stp"}, "invalid argument 'a=' for -set: no value after '='", kEmpty},
      {{"-set", "a= ", "a.stp"}, "invalid argument 'a= ' for -set: no value after '='", kEmpty},
      {{"a.stp", "-write", "pdf"},
       "unknown format 'pdf' for -write",
       "the formats are glb, html, json, obj, stl, svg, text, step"},
      {{"a.stp", "--write="},
       "unknown format '' for -write",
       "the formats are glb, html, json, obj, stl, svg, text, step"},
      {{"a.stp", "b.doc"},
       "no format has the extension of OUTPUT 'b.doc'",
       "use one of .glb, .html, .htm, .json, .obj, .stl, .svg, .txt, .text, .stp, .step, .p21, or -write FORMAT"},
      {{"a.stp", "b.gz"},
       "no format has the extension of OUTPUT 'b.gz'",
       "use one of .glb, .html, .htm, .json, .obj, .stl, .svg, .txt, .text, .stp, .step, .p21, or -write FORMAT"},
      {{"a", "b", "c"}, "extra argument 'c'", "to translate several files, use -outdir DIR"},
      {{"-jobs", "0", "-outdir", "d", "a"}, "invalid argument '0' for -jobs: not a number from 1 to 1024", ""},
      {{"-jobs=1025", "-outdir", "d", "a"}, "invalid argument '1025' for -jobs: not a number from 1 to 1024", ""},
      {{"-jobs=x", "-outdir", "d", "a"}, "invalid argument 'x' for -jobs: not a number from 1 to 1024", ""},
      {{"-tempspace=x", "a"}, "invalid argument 'x' for -tempspace: not a size", "for example: -tempspace 500M"},
      {{"-report=", "a"}, "the name for -report is empty", ""},
      {{"-logdir=", "a"}, "the name for -logdir is empty", ""},
      {{"a.stp", "-write"}, "option -write requires an argument: FORMAT", ""},
      {{"a.stp", "-quiet=1"}, "option takes no argument: '-quiet=1'", "to use a file of this name, put -- before it"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    CommandLine const line = Parse(row.words);
    EXPECT_EQ(line.action, CommandLine::Refuse);
    EXPECT_EQ(line.problem, row.problem);
    EXPECT_EQ(line.hint, row.hint);
    EXPECT_TRUE(line.sources.empty());
    EXPECT_EQ(line.input, "");
    EXPECT_TRUE(line.inputs.empty());
  }
}
