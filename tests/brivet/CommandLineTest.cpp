#include "CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

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
    EXPECT_EQ(line.action, CommandLine::Summarise);
    EXPECT_EQ(line.file, row.file);
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
  for (char const* word : {"-x", "-hx", "-xh", "--helpme", "-versions", "---help", "-H", "--verbose"}) {
    for (std::vector<std::string> const& words : {std::vector<std::string>{word}, {"a.stp", word}, {word, "-h"}}) {
      CommandLine const line = Read(words);
      EXPECT_EQ(line.action, CommandLine::Refuse) << word;
      EXPECT_EQ(line.problem, std::string("unknown option ") + word);
      EXPECT_EQ(line.advice, "see brivet --help, or put -- in front of a file of this name");
    }
  }
}

TEST(CommandLineTest, RefusesAnythingButOneArgument) {
  struct Row {
    std::vector<std::string> words;
    char const* problem;
  };
  Row const rows[] = {{{}, "expected one file, found 0 arguments"},
                      {{"--"}, "expected one file, found 0 arguments"},
                      {{"a", "b"}, "expected one file, found 2 arguments"},
                      {{"-h", "a"}, "expected one file, found 2 arguments"},
                      {{"-h", "-v"}, "expected one file, found 2 arguments"},
                      {{"a", "--", "-b", "-c"}, "expected one file, found 3 arguments"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.problem);
    CommandLine const line = Read(row.words);
    EXPECT_EQ(line.action, CommandLine::Refuse);
    EXPECT_EQ(line.problem, row.problem);
    EXPECT_EQ(line.advice, "");
  }
  EXPECT_EQ(CommandLine::Read(0, nullptr).action, CommandLine::Refuse);
}
