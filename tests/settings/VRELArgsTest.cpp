#include "VRELArgs.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Text = std::optional<std::string>;
using Texts = std::vector<Text>;

// Strings as a C vector, each in memory of exactly its size, so that a sanitizer detects overruns. A missing string is
// null.
class TextVector {
 public:
  TextVector(Texts const& texts) : pointers(new char*[texts.size()]), count(static_cast<int>(texts.size())) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      pointers[i] = nullptr;
      if (!texts[i]) continue;
      blocks.emplace_back(new char[texts[i]->size() + 1]);
      pointers[i] = std::strcpy(blocks.back().get(), texts[i]->c_str());
    }
  }
  TextVector(std::initializer_list<Text> texts) : TextVector(Texts(texts)) {}

  char** Get() { return pointers.get(); }
  char* operator[](int index) const { return pointers[static_cast<std::size_t>(index)]; }
  int Count() const { return count; }

 private:
  std::unique_ptr<char*[]> pointers;
  std::vector<std::unique_ptr<char[]>> blocks;
  int count;
};

// Position that a call which leaves it unchanged reports.
constexpr int kUnchanged = 77;

// Calls GetNextOption until it returns false twice in a row, and lists the positions.
std::vector<int> OptionsOf(VRELArgs& args, TextVector& table) {
  std::vector<int> found;
  for (int misses = 0; misses < 2;) {
    int index = kUnchanged;
    bool const hit = args.GetNextOption(table.Count(), table.Get(), &index);
    EXPECT_EQ(hit, index >= 0 && index != kUnchanged);
    misses = hit ? 0 : misses + 1;
    found.push_back(index);
  }
  return found;
}

TEST(VRELArgsTest, Fields) {
  struct Fields {
    int lastIndex;
    char** arguments;
    int current;
    int lastOption;
    bool inGroup;
    char letter;
    int groupPosition;
  };
  EXPECT_EQ(sizeof(VRELArgs), sizeof(Fields));
  EXPECT_FALSE(std::is_polymorphic_v<VRELArgs>);
}

TEST(VRELArgsTest, GetNextArg) {
  TextVector line{"program", "a", "-b", "", "c"};
  VRELArgs args(line.Count(), line.Get());
  for (int i = 1; i <= 4; ++i) EXPECT_EQ(args.GetNextArg(), line[i]);
  EXPECT_EQ(args.GetNextArg(), nullptr);
  EXPECT_EQ(args.GetNextArg(), nullptr);
}

TEST(VRELArgsTest, AreThereOneMoreOptions) {
  TextVector line{"program", "-a", "b", "-c", "d"};
  VRELArgs args(line.Count(), line.Get());
  for (bool more : {true, true, true, false, false}) {
    EXPECT_EQ(args.AreThereOneMoreOptions(), more);
    args.GetNextArg();
  }
}

TEST(VRELArgsTest, NoMoreOptionsWithoutDash) {
  TextVector plain{"program", "a", "b"};
  EXPECT_FALSE(VRELArgs(plain.Count(), plain.Get()).AreThereOneMoreOptions());
  TextVector dashedName{"-program", "a"};
  EXPECT_FALSE(VRELArgs(dashedName.Count(), dashedName.Get()).AreThereOneMoreOptions());
  TextVector dashOnly{"program", "-"};
  EXPECT_TRUE(VRELArgs(dashOnly.Count(), dashOnly.Get()).AreThereOneMoreOptions());
}

TEST(VRELArgsTest, GetOptionArgument) {
  TextVector line{"program", "-f", "name", "", "-v", "-"};
  VRELArgs args(line.Count(), line.Get());
  char sentinel = 0;
  char* argument = &sentinel;
  // Nothing is consumed before an option.
  EXPECT_FALSE(args.GetOptionArgument(&argument));
  EXPECT_EQ(argument, &sentinel);
  EXPECT_EQ(args.GetNextArg(), line[1]);
  EXPECT_TRUE(args.GetOptionArgument(&argument));
  EXPECT_EQ(argument, line[2]);
  EXPECT_TRUE(args.GetOptionArgument(&argument));
  EXPECT_EQ(argument, line[3]);
  EXPECT_FALSE(args.GetOptionArgument(&argument));
  EXPECT_EQ(argument, line[3]);
  EXPECT_EQ(args.GetNextArg(), line[4]);
  // A single dash is an option.
  EXPECT_FALSE(args.GetOptionArgument(&argument));
  EXPECT_EQ(args.GetNextArg(), line[5]);
  // No argument follows.
  EXPECT_FALSE(args.GetOptionArgument(&argument));
  EXPECT_EQ(argument, line[3]);
}

TEST(VRELArgsTest, GetOptionArgumentToNull) {
  TextVector line{"program", "a"};
  VRELArgs args(line.Count(), line.Get());
  EXPECT_FALSE(args.GetOptionArgument(nullptr));
  EXPECT_EQ(args.GetNextArg(), line[1]);
}

TEST(VRELArgsTest, ShiftMovesOncePastEnd) {
  TextVector line{"program", "a", "-b"};
  TextVector table{"b"};
  VRELArgs args(line.Count(), line.Get());
  EXPECT_TRUE(args.Shift());
  EXPECT_TRUE(args.AreThereOneMoreOptions());
  EXPECT_TRUE(args.Shift());
  EXPECT_FALSE(args.Shift());
  EXPECT_FALSE(args.Shift());
  EXPECT_EQ(args.GetNextArg(), nullptr);
  EXPECT_FALSE(args.AreThereOneMoreOptions());
  char* argument = nullptr;
  EXPECT_FALSE(args.GetOptionArgument(&argument));
  EXPECT_FALSE(args.GetNextOption(1, table.Get(), nullptr));
}

TEST(VRELArgsTest, IsLetterAnOption) {
  struct Row {
    char letter;
    int position;
  };
  TextVector table{"ab", "", ":", "c::", "a:", "c", "a", "::", std::nullopt, "d:"};
  TextVector line{"program"};
  VRELArgs const args(line.Count(), line.Get());
  for (Row const& row : {Row{'a', 4}, Row{'b', -1}, Row{'c', 5}, Row{'d', 9}, Row{'\0', -1}, Row{'A', -1}}) {
    SCOPED_TRACE(row.letter);
    int index = kUnchanged;
    EXPECT_EQ(args.IsLetterAnOption(table.Count(), table.Get(), row.letter, &index), row.position >= 0);
    EXPECT_EQ(index, row.position);
  }
  // Without the trailing colon, ":" is empty and "::" is the letter ":".
  int index = kUnchanged;
  EXPECT_TRUE(args.IsLetterAnOption(table.Count(), table.Get(), ':', &index));
  EXPECT_EQ(index, 7);
  // Only the first `count` names are used.
  EXPECT_FALSE(args.IsLetterAnOption(4, table.Get(), 'a', &index));
  EXPECT_EQ(index, -1);
}

TEST(VRELArgsTest, IsAnOption) {
  struct Row {
    char const* argument;
    int position;
  };
  Row const rows[] = {
      {"-v", 1},  // The first name with this prefix, not the equal one.
      {"-fi", 0},
      {"-file", 0},
      {"-file:", 0},
      {"-file:x", -1},
      {"-verbose", 1},
      {"-verboses", 2},  // No name: a
                         // group.
      {"-xv", -1},       // Only the first letter is tested.
      {"-vx", 2},
      {"-", 0},
      {"--", -1},
      {"-V", -1},
      {"v", -1},
      {"", -1},
      {"file:", -1},
  };
  TextVector table{"file:", "verbose", "v"};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.argument);
    TextVector line{"program", row.argument};
    VRELArgs args(line.Count(), line.Get());
    int index = kUnchanged;
    EXPECT_EQ(args.IsAnOption(table.Count(), table.Get(), line[1], &index), row.position >= 0);
    EXPECT_EQ(index, row.position);
    VRELArgs fresh(line.Count(), line.Get());
    int found = kUnchanged;
    EXPECT_EQ(fresh.GetNextOption(table.Count(), table.Get(), &found), row.position >= 0);
    EXPECT_EQ(found, row.position);
  }
}

TEST(VRELArgsTest, SingleDashIsFirstName) {
  TextVector line{"program", "-"};
  VRELArgs args(line.Count(), line.Get());
  TextVector withNull{std::nullopt, "a"};
  int index = kUnchanged;
  EXPECT_TRUE(args.IsAnOption(2, withNull.Get(), line[1], &index));
  EXPECT_EQ(index, 1);
  TextVector withEmpty{"", "a"};
  EXPECT_TRUE(args.IsAnOption(2, withEmpty.Get(), line[1], &index));
  EXPECT_EQ(index, 0);
  EXPECT_FALSE(args.IsAnOption(0, withEmpty.Get(), line[1], &index));
  EXPECT_EQ(index, -1);
}

TEST(VRELArgsTest, GetNextOptionSkipsArguments) {
  TextVector line{"program", "in", "-verb", "-unknown", "out", "-f", "name", "rest"};
  TextVector table{"file:", "verbose"};
  VRELArgs args(line.Count(), line.Get());
  int index = kUnchanged;
  EXPECT_TRUE(args.GetNextOption(2, table.Get(), &index));
  EXPECT_EQ(index, 1);
  EXPECT_TRUE(args.GetNextOption(2, table.Get(), &index));
  EXPECT_EQ(index, 0);
  char* argument = nullptr;
  EXPECT_TRUE(args.GetOptionArgument(&argument));
  EXPECT_EQ(argument, line[6]);
  EXPECT_FALSE(args.GetNextOption(2, table.Get(), &index));
  EXPECT_EQ(index, -1);
  // The remaining argument is not consumed.
  EXPECT_EQ(args.GetNextArg(), line[7]);
}

TEST(VRELArgsTest, OptionWithoutArgument) {
  TextVector line{"program", "-f", "-v", "-f"};
  TextVector table{"file:", "verbose"};
  VRELArgs args(line.Count(), line.Get());
  char* argument = nullptr;
  for (int expected : {0, 1, 0}) {
    int index = kUnchanged;
    EXPECT_TRUE(args.GetNextOption(2, table.Get(), &index));
    EXPECT_EQ(index, expected);
    EXPECT_FALSE(args.GetOptionArgument(&argument));
  }
  EXPECT_EQ(argument, nullptr);
}

TEST(VRELArgsTest, GetNextOptionReadsGroups) {
  struct Row {
    char const* argument;
    std::vector<int> positions;
  };
  TextVector table{"a", "b", "c:"};
  Row const rows[] = {
      {"-ab", {0, 1, kUnchanged, kUnchanged}},
      {"-cab", {2, 0, 1, kUnchanged, kUnchanged}},
      {"-aa", {0, 0, kUnchanged, kUnchanged}},
      // A letter that is not in the table ends the call, not the group.
      {"-axb", {0, -1, 1, kUnchanged, kUnchanged}},
      {"-a-b", {0, -1, 1, kUnchanged, kUnchanged}},
      // The first letter decides whether it is a group at all.
      {"-xab", {-1, -1}},
      // These are names and not groups.
      {"-a", {0, kUnchanged, kUnchanged}},
      {"-c", {2, kUnchanged, kUnchanged}},
      {"-c:", {2, kUnchanged, kUnchanged}},
      // A colon is a letter of the group like any other.
      {"-a:", {0, -1, kUnchanged}},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.argument);
    TextVector line{"program", row.argument};
    VRELArgs args(line.Count(), line.Get());
    EXPECT_EQ(OptionsOf(args, table), row.positions);
  }
}

TEST(VRELArgsTest, GroupsFollowEachOther) {
  TextVector line{"program", "-ab", "x", "-ba", "-b"};
  TextVector table{"a", "b"};
  VRELArgs args(line.Count(), line.Get());
  EXPECT_EQ(OptionsOf(args, table), (std::vector<int>{0, 1, 1, 0, 1, kUnchanged, kUnchanged}));
}

TEST(VRELArgsTest, GroupUsesArgumentLastConsumed) {
  TextVector table{"a", "b", "c:"};
  {
    TextVector line{"program", "-ca", "xyb", "-a"};
    VRELArgs args(line.Count(), line.Get());
    int index = kUnchanged;
    EXPECT_TRUE(args.GetNextOption(3, table.Get(), &index));
    EXPECT_EQ(index, 2);
    char* argument = nullptr;
    EXPECT_TRUE(args.GetOptionArgument(&argument));
    EXPECT_TRUE(args.GetNextOption(3, table.Get(), &index));
    EXPECT_EQ(index, 1);
    EXPECT_EQ(OptionsOf(args, table), (std::vector<int>{0, kUnchanged, kUnchanged}));
  }
  {
    // The argument last consumed is too short, or absent: the group ends.
    TextVector line{"program", "-ca", "", "-ca"};
    VRELArgs args(line.Count(), line.Get());
    EXPECT_TRUE(args.GetNextOption(3, table.Get(), nullptr));
    EXPECT_EQ(args.GetNextArg(), line[2]);
    int index = kUnchanged;
    EXPECT_TRUE(args.GetNextOption(3, table.Get(), &index));
    EXPECT_EQ(index, 2);
    EXPECT_FALSE(args.Shift());
    EXPECT_FALSE(args.GetNextOption(3, table.Get(), &index));
    EXPECT_EQ(index, 2);
  }
}

TEST(VRELArgsTest, IsAnOptionStartsGroup) {
  TextVector line{"a b", "-c"};
  TextVector other{"-xy"};
  TextVector table{"x", "b", "c"};
  VRELArgs args(line.Count(), line.Get());
  int index = kUnchanged;
  EXPECT_TRUE(args.IsAnOption(3, table.Get(), other[0], &index));
  EXPECT_EQ(index, 0);
  // The group is read from the argument last consumed, which is the name of the program.
  EXPECT_EQ(OptionsOf(args, table), (std::vector<int>{1, 2, kUnchanged, kUnchanged}));
}

TEST(VRELArgsTest, MissingArguments) {
  TextVector table{"a"};
  for (int count : {0, -1, -2147483647 - 1, 1, 3}) {
    SCOPED_TRACE(count);
    VRELArgs args(count, nullptr);
    EXPECT_FALSE(args.AreThereOneMoreOptions());
    int index = kUnchanged;
    EXPECT_FALSE(args.GetNextOption(1, table.Get(), &index));
    EXPECT_EQ(index, kUnchanged);
    char* argument = nullptr;
    EXPECT_FALSE(args.GetOptionArgument(&argument));
    EXPECT_EQ(args.GetNextArg(), nullptr);
  }
  VRELArgs none(0, nullptr);
  EXPECT_FALSE(none.Shift());
}

TEST(VRELArgsTest, SkipsNullArguments) {
  TextVector line{"program", std::nullopt, "-a", std::nullopt};
  TextVector table{"a"};
  VRELArgs args(line.Count(), line.Get());
  EXPECT_TRUE(args.AreThereOneMoreOptions());
  char* argument = nullptr;
  EXPECT_FALSE(args.GetOptionArgument(&argument));
  int index = kUnchanged;
  EXPECT_TRUE(args.GetNextOption(1, table.Get(), &index));
  EXPECT_EQ(index, 0);
  EXPECT_FALSE(args.IsAnOption(1, table.Get(), nullptr, &index));
  EXPECT_EQ(index, -1);
  EXPECT_EQ(args.GetNextArg(), nullptr);
  EXPECT_FALSE(args.Shift());
}

TEST(VRELArgsTest, NullTable) {
  TextVector line{"program", "-a"};
  VRELArgs args(line.Count(), line.Get());
  int index = kUnchanged;
  EXPECT_FALSE(args.IsLetterAnOption(1, nullptr, 'a', &index));
  EXPECT_EQ(index, -1);
  EXPECT_FALSE(args.IsAnOption(1, nullptr, line[1], &index));
  EXPECT_FALSE(args.GetNextOption(-1, line.Get(), &index));
  EXPECT_FALSE(args.IsAnOption(1, nullptr, line[1], nullptr));
}

// Model of VRELArgs on lists of strings.
struct ArgsModel {
  Texts line;
  Texts table;
  std::size_t current = 0;
  bool inGroup = false;
  std::size_t place = 0;

  bool HasNext() const { return current + 1 < line.size(); }
  static bool IsDashed(Text const& text) { return text && !text->empty() && text->front() == '-'; }

  int Letter(char letter) const {
    for (std::size_t i = 0; i < table.size(); ++i) {
      if (!table[i]) continue;
      std::string name = *table[i];
      if (!name.empty() && name.back() == ':') name.pop_back();
      if (name == std::string(1, letter)) return static_cast<int>(i);
    }
    return -1;
  }

  int Option(Text const& argument) {
    if (!IsDashed(argument)) return -1;
    std::string const text = argument->substr(1);
    for (std::size_t i = 0; i < table.size(); ++i) {
      if (table[i] && table[i]->substr(0, text.size()) == text) return static_cast<int>(i);
    }
    int const position = text.empty() ? -1 : Letter(text[0]);
    if (position >= 0) {
      inGroup = true;
      place = 1;
    }
    return position;
  }

  int NextOption() {
    if (inGroup) {
      ++place;
      if (current < line.size() && line[current] && place < line[current]->size()) {
        return Letter((*line[current])[place]);
      }
      inGroup = false;
    }
    int position = kUnchanged;
    for (std::size_t i = current + 1; i < line.size(); ++i) {
      position = Option(line[i]);
      if (position < 0) continue;
      current = i;
      break;
    }
    return position;
  }

  Text Take() {
    if (!HasNext()) return std::nullopt;
    return line[++current];
  }

  Text OptionArgument() {
    return HasNext() && !IsDashed(line[current + 1]) && line[current + 1] ? Take() : std::nullopt;
  }

  bool Shift() {
    bool const one = HasNext();
    if (current < line.size()) ++current;
    return one;
  }

  bool More() const {
    for (std::size_t i = current + 1; i < line.size(); ++i) {
      if (IsDashed(line[i])) return true;
    }
    return false;
  }
};

Text TextOf(char const* text) {
  return text == nullptr ? Text() : Text(text);
}

TEST(VRELArgsTest, AgreesWithModel) {
  std::mt19937 random(20240611);
  auto const below = [&](unsigned int end) { return random() % end; };
  auto const anyText = [&](unsigned int dashes) -> Text {
    if (below(20) == 0) return std::nullopt;
    std::string text(below(10) < dashes ? "-" : "");
    for (std::size_t length = below(5); length > 0; --length) text += "abc:-"[below(5)];
    return text;
  };
  for (int run = 0; run < 20000; ++run) {
    ArgsModel model;
    model.line.emplace_back("program");
    for (std::size_t count = below(7); count > 0; --count) model.line.push_back(anyText(7));
    for (std::size_t count = below(6); count > 0; --count) model.table.push_back(anyText(0));
    TextVector line(model.line);
    TextVector table(model.table);
    VRELArgs args(line.Count(), line.Get());
    for (int step = 0; step < 20; ++step) {
      int index = kUnchanged;
      char* argument = nullptr;
      switch (below(12)) {
        case 0:
          ASSERT_EQ(TextOf(args.GetNextArg()), model.Take());
          break;
        case 1:
          ASSERT_EQ(args.Shift(), model.Shift());
          break;
        case 2:
        case 3: {
          Text const expected = model.OptionArgument();
          ASSERT_EQ(args.GetOptionArgument(&argument), expected.has_value());
          ASSERT_EQ(TextOf(argument), expected);
          break;
        }
        case 4: {
          std::size_t const place = below(static_cast<unsigned int>(line.Count()));
          args.IsAnOption(table.Count(), table.Get(), line[static_cast<int>(place)], &index);
          ASSERT_EQ(index, model.Option(model.line[place]));
          break;
        }
        default: {
          bool const hit = args.GetNextOption(table.Count(), table.Get(), &index);
          ASSERT_EQ(hit, index >= 0 && index != kUnchanged);
          ASSERT_EQ(index, model.NextOption());
        }
      }
      ASSERT_EQ(args.AreThereOneMoreOptions(), model.More()) << "run " << run << ", step " << step;
    }
  }
}

}  // namespace
