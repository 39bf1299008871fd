#include "OptionsFile.h"

#include <gtest/gtest.h>

#include "FileError.h"
#include "ScratchDirectory.h"

namespace {

// Returns "LINE NAME=VALUE" for each entry.
std::string EntriesOf(std::string const& bytes) {
  OptionsFile const file = OptionsFile::Parse(bytes);
  EXPECT_TRUE(file.problems.empty());
  std::string text;
  for (OptionsFile::Entry const& entry : file.entries) {
    text += std::to_string(entry.line) + " " + entry.name.toUtf8() + "=" + entry.value.toUtf8() + "\n";
  }
  return text;
}

// Returns "LINE TEXT" for each problem.
std::string ProblemsOf(std::string const& bytes) {
  OptionsFile const file = OptionsFile::Parse(bytes);
  std::string text;
  for (OptionsFile::Problem const& problem : file.problems) {
    text += std::to_string(problem.line) + " " + problem.text + "\n";
  }
  EXPECT_TRUE(text.empty() || file.entries.empty());
  return text;
}

}  // namespace

TEST(OptionsFileTest, ParsesEntriesWithLines) {
  struct Row {
    std::string bytes;
    char const* entries;
  };
  Row const rows[] = {
      {"", ""},
      {"\n \t\n", ""},
      {"a=1", "1 a=1\n"},
      {"# c\n\n; d\n  a = 1 \r\n b : 2\na=3\n", "4 a=1\n5 b=2\n6 a=3\n"},
      {"a=b=c\na:b=c\na= b, c ,,d\n", "1 a=b=c\n2 a:b=c\n3 a=b, c ,,d\n"},
      {"*.*.Reader.X=\"On\"\n", "1 *.*.Reader.X=\"On\"\n"},
      {"a=1\n[s]\nb=2\n[]\nc=3\n[ \t]\nd=4\n[]]\ne=5\n", "1 a=1\n5 c=3\n7 d=4\n"},
      {"\xEF\xBB\xBF"
       "a=1\n",
       "1 a=1\n"},
      {std::string("a=1\0x\nb=2\n\0c\nd=3", 17), "1 a=1\n2 b=2\n4 d=3\n"},
      // The longest lines.
      {"\na=" + std::string(1021, 'x') + "\nb=1\n", nullptr},
      {"\na=" + std::string(1020, 'x') + "\nb=1\n", nullptr},
      {"\na=" + std::string(1021, 'x') + " \t\r\nb=1\n", nullptr},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.bytes);
    if (row.entries != nullptr) {
      EXPECT_EQ(EntriesOf(row.bytes), row.entries);
    } else {
      std::size_t const end = row.bytes.find_last_of('x') + 1;
      EXPECT_EQ(EntriesOf(row.bytes), "2 " + row.bytes.substr(1, end - 1) + "\n3 b=1\n");
    }
  }
}

TEST(OptionsFileTest, CountsKeysInSections) {
  OptionsFile const none = OptionsFile::Parse("a=1\n[s]\n[]\nb=2\n");
  EXPECT_EQ(none.keysInSections, 0U);
  EXPECT_EQ(none.firstLineInSections, 0U);
  OptionsFile const some = OptionsFile::Parse("a=1\n[s]\n\nb=2\n[]\nc=3\n[t]\nd=4\ne=5\n");
  EXPECT_EQ(some.keysInSections, 3U);
  EXPECT_EQ(some.firstLineInSections, 4U);
  EXPECT_EQ(some.entries.size(), 2U);
}

TEST(OptionsFileTest, ReportsAllProblems) {
  struct Row {
    std::string bytes;
    std::string problems;
  };
  std::string const message = "Incorrect syntax: line ";
  std::string const key = " *** \"key=value\" expected\n";
  std::string const section = " *** \"[section name]' expected.\n";
  std::string const overlong = " line is longer than 1023 bytes\n";
  Row const rows[] = {
      {"a", "1 " + message + "1:a" + key},
      {"a=", "1 " + message + "1:a=" + key},
      {" =a \n", "1 " + message + "1:=a" + key},
      {":", "1 " + message + "1::" + key},
      {"[a", "1 " + message + "1:[a" + section},
      {"a=1\n\nb\nc=2\n[d\n=e\n#\nf:", "3 " + message + "3:b" + key + "5 " + message + "5:[d" + section + "6 " +
                                           message + "6:=e" + key + "8 " + message + "8:f:" + key},
      // In a section.
      {"[s]\nb\n", "2 " + message + "2:b" + key},
      // Messages of VRELCfgFile count the pieces of a long line.
      {"a=" + std::string(1030, 'x') + "\nb\n",
       "1" + overlong + "1 " + message + "2:" + std::string(9, 'x') + key + "2 " + message + "3:b" + key},
      {"\n#" + std::string(3000, 'x') + "\n", "2" + overlong + "2 " + message + "3:" + std::string(1023, 'x') + key +
                                                  "2 " + message + "4:" + std::string(955, 'x') + key},
      // VRELCfgFile would split this line without an error.
      {"a=" + std::string(1021, 'x') + "b=1\n", "1" + overlong},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.bytes);
    EXPECT_EQ(ProblemsOf(row.bytes), row.problems);
  }
}

TEST(OptionsFileTest, ReadsFile) {
  ScratchDirectory const folder;
  OptionsFile const file = OptionsFile::Read(folder.Write("base.cfg", "\na=1\n"));
  ASSERT_EQ(file.entries.size(), 1U);
  EXPECT_EQ(file.entries[0].name.toUtf8(), "a");
  EXPECT_EQ(file.entries[0].line, 2U);
}

TEST(OptionsFileTest, ReportsUnreadableFiles) {
  ScratchDirectory const folder;
  auto const errorOf = [](std::string const& path) -> std::string {
    try {
      OptionsFile::Read(path);
    } catch (FileError const& error) {
      return std::to_string(error.result.GetReturnCode()) + " " + error.message;
    }
    return "";
  };
  EXPECT_EQ(errorOf(folder.Path("missing")),
            "13 cannot open '" + folder.Path("missing") + "': No such file or directory");
  EXPECT_EQ(errorOf(folder.Path()), "14 cannot read '" + folder.Path() + "': Is a directory");
  EXPECT_EQ(errorOf("/dev/zero"),
            "21 cannot read '/dev/zero': larger than the limit for options files of 1048576 bytes");
  std::string const whole = "#" + std::string(1022, 'x') + "\n";
  std::string bytes;
  while (bytes.size() < OptionsFile::kSizeLimit) bytes += whole;
  ASSERT_EQ(bytes.size(), OptionsFile::kSizeLimit);
  EXPECT_EQ(errorOf(folder.Write("full", bytes)), "");
  EXPECT_NE(errorOf(folder.Write("more", bytes + "\n")), "");
}
