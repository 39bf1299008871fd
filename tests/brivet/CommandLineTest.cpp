#include "CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

#include "Formats.h"

namespace {

CommandLine Read(std::vector<std::string> words) {
  words.insert(words.begin(), "brivet");
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  return CommandLine::Read(static_cast<int>(words.size()), arguments.data());
}

}  // namespace

TEST(CommandLineTest, TakesAFile) {
  struct Row {
    std::vector<std::string> words;
    char const* file;
  };
  Row const rows[] = {{{"a.stp"}, "a.stp"},       {{""}, ""},           {{"-"}, "-"},      {{"--", "-"}, "-"},
                      {{"--", "-help"}, "-help"}, {{"--", "--"}, "--"}, {{"a", "--"}, "a"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.file);
    CommandLine const line = Read(row.words);
    EXPECT_EQ(line.action, CommandLine::Translate);
    EXPECT_EQ(line.input, row.file);
  }
}

TEST(CommandLineTest, TakesAnOptionByAnyBeginningOfItsName) {
  for (char const* word : {"-help", "--help", "-h", "--h", "-he", "--hel"}) {
    EXPECT_EQ(Read({word}).action, CommandLine::Help) << word;
  }
  for (char const* word : {"-version", "--version", "-v", "--v", "-vers", "--versio"}) {
    EXPECT_EQ(Read({word}).action, CommandLine::Version) << word;
  }
}

TEST(CommandLineTest, RefusesAnUnknownOption) {
  for (char const* word :
       {"-x", "-hx", "-optionsx", "-setx", "--set=a=b", "-xh", "--helpme", "-versions", "---help", "-H", "--verbose"}) {
    for (std::vector<std::string> const& words : {std::vector<std::string>{word}, {"a.stp", word}, {word, "-h"}}) {
      CommandLine const line = Read(words);
      EXPECT_EQ(line.action, CommandLine::Refuse) << word;
      EXPECT_EQ(line.problem, std::string("unknown option ") + word);
      EXPECT_EQ(line.advice, "see brivet --help, or put -- in front of a file of this name");
    }
  }
}

TEST(CommandLineTest, RefusesAnythingButOneOrTwoFiles) {
  struct Row {
    std::vector<std::string> words;
    char const* problem;
  };
  constexpr char LONELY[] = "expected nothing but options beside -help or -version";
  Row const rows[] = {{{}, "expected INPUT and at most one OUTPUT, found 0 files"},
                      {{"--"}, "expected INPUT and at most one OUTPUT, found 0 files"},
                      {{"-quiet"}, "expected INPUT and at most one OUTPUT, found 0 files"},
                      {{"a", "--", "-b", "-c"}, "expected INPUT and at most one OUTPUT, found 3 files"},
                      {{"a", ""}, "expected a name for OUTPUT, found nothing"},
                      {{"-list"}, "expected one INPUT beside -list, found 0 files"},
                      {{"a", "b", "-list"}, "expected one INPUT beside -list, found 2 files"},
                      {{"-h", "a"}, LONELY},
                      {{"-h", "-v"}, LONELY}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.problem);
    CommandLine const line = Read(row.words);
    EXPECT_EQ(line.action, CommandLine::Refuse);
    EXPECT_EQ(line.problem, row.problem);
    EXPECT_EQ(line.advice, "");
  }
  EXPECT_EQ(CommandLine::Read(0, nullptr).action, CommandLine::Refuse);
}

TEST(CommandLineTest, TellsWhatToWriteAndWhere) {
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
      {{"a.stp", "-write", "step"}, "step", "a.stp"},
      {{"a.stp", "-write", "html"}, "html", "a.html"},
      {{"a.stp", "b.txt"}, "text", "b.txt"},
      {{"a.stp", "x.html/b.TEXT"}, "text", "x.html/b.TEXT"},
      {{"a.stp", "b.step"}, "step", "b.step"},
      {{"a.stp", "b.p21"}, "step", "b.p21"},
      {{"a.stp", "b.htm"}, "html", "b.htm"},
      {{"a.stp", "b.doc"}, "html", "b.doc"},
      {{"a.stp", "-"}, "html", "-"},
      {{"a.stp", "b.txt", "-write", "step"}, "step", "b.txt"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    CommandLine const line = Read(row.words);
    EXPECT_EQ(line.action, CommandLine::Translate);
    EXPECT_STREQ(line.Target().name, row.format);
    EXPECT_EQ(line.OutputPath(), row.output);
  }
}

TEST(CommandLineTest, TakesWhatTheRunShows) {
  CommandLine const plain = Read({"a.stp"});
  EXPECT_FALSE(plain.progress);
  EXPECT_FALSE(plain.quiet);
  EXPECT_TRUE(Read({"-progress", "a.stp"}).progress);
  EXPECT_TRUE(Read({"a.stp", "--quiet"}).quiet);
  CommandLine const listing = Read({"-l", "-q", "a.stp"});
  EXPECT_EQ(listing.action, CommandLine::List);
  EXPECT_TRUE(listing.quiet);
  // Who wants to hear nothing hears nothing of a wrong line either.
  CommandLine const wrong = Read({"-quiet", "-nothing"});
  EXPECT_EQ(wrong.action, CommandLine::Refuse);
  EXPECT_TRUE(wrong.quiet);
}

TEST(CommandLineTest, GathersOptionsInTheOrderOfTheLine) {
  CommandLine const line =
      Read({"-set", "a=1", "--options", "b.cfg", "c.stp", "-s", "a=", "--se", "d = e=f ", "-o", ""});
  EXPECT_EQ(line.action, CommandLine::Refuse);  // of the empty value
  CommandLine const good =
      Read({"-set", "a=1", "--options", "b.cfg", "c.stp", "-s", "a=\"\"", "--se", "d = e=f ", "-o", "", "-set", "a=1"});
  EXPECT_EQ(good.action, CommandLine::Translate);
  EXPECT_EQ(good.input, "c.stp");
  std::vector<std::string> words;
  for (OptionSource const& source : good.sources) words.push_back(source.Words());
  EXPECT_EQ(words, (std::vector<std::string>{"-set a=1", "-options b.cfg", "-set a=\"\"", "-set d = e=f ", "-options ",
                                             "-set a=1"}));
  EXPECT_TRUE(Read({"c.stp"}).sources.empty());
}

TEST(CommandLineTest, TakesOptionsBesideHelp) {
  EXPECT_EQ(Read({"-set", "a=1", "-h"}).action, CommandLine::Help);
  EXPECT_EQ(Read({"-v", "-options", "b.cfg"}).action, CommandLine::Version);
}

TEST(CommandLineTest, TakesWordsBehindTheDashesForFiles) {
  EXPECT_EQ(Read({"--", "-set"}).input, "-set");
  EXPECT_EQ(Read({"-set", "a=1", "--", "-options"}).input, "-options");
}

TEST(CommandLineTest, RefusesAWrongOption) {
  struct Row {
    std::vector<std::string> words;
    char const* problem;
    char const* advice;
  };
  Row const rows[] = {
      {{"a.stp", "-options"}, "expected FILE behind -options, found nothing", ""},
      {{"-o"}, "expected FILE behind -options, found nothing", ""},
      {{"-options", "-set", "a=1", "a.stp"},
       "expected FILE behind -options, found -set",
       "put ./ in front of a file of this name"},
      {{"-options", "-"}, "expected FILE behind -options, found -", "put ./ in front of a file of this name"},
      {{"-set"}, "expected NAME=VALUE behind -set, found nothing", ""},
      {{"-set", "-a=1", "a.stp"}, "expected NAME=VALUE behind -set, found -a=1", ""},
      {{"-set", "a.stp"}, "expected NAME=VALUE behind -set, found a.stp", "write -set Healing=On, for example"},
      {{"-set", "a:b", "a.stp"}, "expected NAME=VALUE behind -set, found a:b", "write -set Healing=On, for example"},
      {{"-set", "", "a.stp"}, "expected NAME=VALUE behind -set, found ", "write -set Healing=On, for example"},
      {{"-set", "=b", "a.stp"}, "expected a name in front of = behind -set, found =b", ""},
      {{"-set", " =b", "a.stp"}, "expected a name in front of = behind -set, found  =b", ""},
      {{"-set", "a..b=c", "a.stp"}, "expected a name with something between its dots behind -set, found a..b=c", ""},
      {{"-set", "a.=c", "a.stp"}, "expected a name with something between its dots behind -set, found a.=c", ""},
      {{"-set", "a=", "a.stp"}, "expected a value behind -set a=, found nothing", "write \"\" for an empty text"},
      {{"-set", "a= ", "a.stp"}, "expected a value behind -set a=, found nothing", "write \"\" for an empty text"},
      {{"-set", "a=1"}, "expected INPUT and at most one OUTPUT, found 0 files", ""},
      {{"a.stp", "-write", "pdf"}, "expected html, text or step behind -write, found pdf", ""},
      {{"a.stp", "-write"}, "expected html, text or step behind -write, found nothing", ""},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.problem);
    CommandLine const line = Read(row.words);
    EXPECT_EQ(line.action, CommandLine::Refuse);
    EXPECT_EQ(line.problem, row.problem);
    EXPECT_EQ(line.advice, row.advice);
    EXPECT_TRUE(line.sources.empty());
    EXPECT_EQ(line.input, "");
  }
}
