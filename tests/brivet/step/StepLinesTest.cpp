#include "StepLines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "StepFixture.h"

namespace {

// Returns the lines that the messages about dangling references name, one for each of `instances` instances in turn.
std::vector<std::string> LinesOf(std::string const& data) {
  ReadDocument document(DocumentText(data));
  std::vector<std::string> lines;
  for (std::string const& message : document.Messages()) {
    std::size_t const begin = message.find("part.stp:") + 9;
    lines.push_back(message.substr(begin, message.find(':', begin) - begin));
  }
  return lines;
}

long FirstLine() {
  std::string const text = DocumentText("@");
  return static_cast<long>(std::count(text.begin(), text.begin() + static_cast<long>(text.find('@')), '\n')) + 1;
}

}  // namespace

// Only the fourth instance of each line end refers to nothing.
TEST(StepLinesTest, CountsEachKindOfLineEnd) {
  long const first = FirstLine();
  EXPECT_EQ(LinesOf("#1=A();\n#2=A();\r\n#3=A();\r#4=A(#9);\n"), std::vector<std::string>{std::to_string(first + 3)});
  EXPECT_EQ(LinesOf("#1=A(\n\n);\r\r\n\n\r#4=A(\n#9);\n"), std::vector<std::string>{std::to_string(first + 7)});
}

// Instances with references to nothing, with blank lines between that fill several blocks.
TEST(StepLinesTest, FindsLinesFarApart) {
  std::string data;
  std::vector<std::string> expected;
  long line = FirstLine();
  for (int i = 1; i <= 300; ++i) {
    bool const isDangling = i % 37 == 0;
    if (isDangling && expected.size() < 8) expected.push_back(std::to_string(line));
    data += "#" + std::to_string(i) + "=A(" + (isDangling ? "#9999" : "'x'") + ");";
    std::size_t const blanks = i % 50 == 3 ? 4095 : static_cast<std::size_t>(i % 3);
    for (std::size_t k = 0; k < blanks; ++k) data += "\r\n";
    data += "\n";
    line += static_cast<long>(blanks) + 1;
  }
  EXPECT_EQ(LinesOf(data), expected);
}

// A message about a duplicate names the line of the first instance, which is before that of the message before.
TEST(StepLinesTest, AnswersInAnyOrder) {
  std::string data;
  std::vector<long> lines;
  long line = FirstLine();
  for (int i = 0; i < 200; ++i) {
    data += "#" + std::to_string(i % 195 + 1) + "=A();" + std::string(1 + static_cast<std::size_t>(i % 5), '\n');
    lines.push_back(line);
    line += 1 + i % 5;
  }
  ReadDocument document(DocumentText(data));
  std::vector<std::string> const messages = document.Messages();
  ASSERT_GE(messages.size(), 5U);
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_NE(messages[i].find("part.stp:" + std::to_string(lines[195 + i]) + ": error: duplicate instance #" +
                               std::to_string(i + 1) + ", first defined in line " + std::to_string(lines[i])),
              std::string::npos)
        << messages[i];
  }
}

// Strings have the lines in which they begin, whether or not the instances are in the usual form.
TEST(StepLinesTest, DescribedStringsHaveLines) {
  class Collector : public DocumentVisitor {
   public:
    void String(Text const& text) override { lines.push_back(text.line); }
    std::vector<long> lines;
  };
  std::string const gap(3000, '\n');
  ReadDocument document(DocumentText("#1=A('a',\n'b');\r\n\r\n#2=A(\r'c');#3=A('\\X\\E9','d'\n);\n#4=A('e');" + gap +
                                     "#5=A('f');/*\n*/#6=A('g');\n"));
  Collector collector;
  Progress progress;
  EXPECT_EQ(document->Describe(collector, progress, false), VREL_S_OK);
  long const first = FirstLine();
  EXPECT_EQ(collector.lines, (std::vector<long>{first, first + 1, first + 4, first + 4, first + 4, first + 6,
                                                first + 3006, first + 3007}));
}
