#include "StepScanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "InputError.h"
#include "StepFixture.h"

namespace {

struct Expected {
  StepScanner::Kind kind;
  long line;
  std::string text;
};

void ExpectTokens(std::string const& document, std::vector<Expected> const& expected) {
  SCOPED_TRACE(document);
  BytesInFile file(document);
  StepScanner scanner(file.Buffer());
  for (Expected const& each : expected) {
    StepScanner::Token const& token = scanner.Next();
    EXPECT_EQ(token.kind, each.kind) << each.text;
    EXPECT_EQ(token.line, each.line) << each.text;
    EXPECT_EQ(token.text, each.text);
  }
  EXPECT_EQ(scanner.Next().kind, StepScanner::End);
  EXPECT_EQ(scanner.Next().kind, StepScanner::End);
}

std::string ScanError(std::string const& document) {
  BytesInFile file(document);
  StepScanner scanner(file.Buffer());
  try {
    while (scanner.Next().kind != StepScanner::End) {
    }
  } catch (InputError const& error) {
    return std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.text;
  }
  return "";
}

constexpr auto kWord = StepScanner::Keyword;
constexpr auto kString = StepScanner::String;
constexpr auto kNumber = StepScanner::Number;
constexpr auto kOther = StepScanner::Other;

}  // namespace

TEST(StepScannerTest, ReadsKinds) {
  ExpectTokens("#12=A_B(1,-2.5E+3,.T.,$,*,\"0F3\",'x');", {{StepScanner::Instance, 1, "#12"},
                                                           {kOther, 1, "="},
                                                           {kWord, 1, "A_B"},
                                                           {kOther, 1, "("},
                                                           {kNumber, 1, "1"},
                                                           {kOther, 1, ","},
                                                           {kNumber, 1, "-2.5E+3"},
                                                           {kOther, 1, ","},
                                                           {StepScanner::Enumeration, 1, ".T."},
                                                           {kOther, 1, ","},
                                                           {kOther, 1, "$"},
                                                           {kOther, 1, ","},
                                                           {kOther, 1, "*"},
                                                           {kOther, 1, ","},
                                                           {StepScanner::Binary, 1, "\"0F3\""},
                                                           {kOther, 1, ","},
                                                           {kString, 1, "x"},
                                                           {kOther, 1, ")"},
                                                           {kOther, 1, ";"}});
  ExpectTokens("ISO-10303-21 END-ISO-10303-21 !MINE &SCOPE <http://a/b#c>",
               {{kWord, 1, "ISO-10303-21"},
                {kWord, 1, "END-ISO-10303-21"},
                {kWord, 1, "!MINE"},
                {kWord, 1, "&SCOPE"},
                {StepScanner::Resource, 1, "<http://a/b#c>"}});
}

TEST(StepScannerTest, ReadsNumbers) {
  for (char const* number : {"0", "+7", "1.", "0.E+000", "-1.5e-7", ".5", "1E5", "5.-"}) {
    SCOPED_TRACE(number);
    std::string const text(number);
    bool const whole = text.back() != '-';
    std::vector<Expected> expected{{kNumber, 1, whole ? text : "5."}};
    if (!whole) expected.push_back({kOther, 1, "-"});
    ExpectTokens(text, expected);
  }
}

TEST(StepScannerTest, IncompleteTokenIsOther) {
  for (char const* piece : {"#", "!", "&", ".", ".T", "+", "-", "+.", "1E", "-2.5E+", "{", "/", "\\", "\xC3"}) {
    ExpectTokens(piece, {{kOther, 1, piece}});
  }
  ExpectTokens("# 1", {{kOther, 1, "#"}, {kNumber, 1, "1"}});
  ExpectTokens(std::string("\0", 1), {{kOther, 1, std::string("\0", 1)}});
}

TEST(StepScannerTest, BinaryEndsAtNoDigit) {
  ExpectTokens("\"0\nfF3 \"1", {{StepScanner::Binary, 1, "\"0fF3\""}, {kNumber, 2, "1"}});
  ExpectTokens("\"01G\";", {{kOther, 1, "\"01"}, {kWord, 1, "G"}, {kOther, 1, "\""}, {kOther, 1, ";"}});
  ExpectTokens(std::string("\"0\0", 3), {{kOther, 1, "\"0"}, {kOther, 1, std::string("\0", 1)}});
}

TEST(StepScannerTest, ReducesApostrophes) {
  ExpectTokens("'it''s'", {{kString, 1, "it's"}});
  ExpectTokens("''", {{kString, 1, ""}});
  ExpectTokens("''''", {{kString, 1, "'"}});
  ExpectTokens("'a\r\nb\nc\rd' 'e'", {{kString, 1, "abcd"}, {kString, 4, "e"}});
  ExpectTokens("'a'\n'b'", {{kString, 1, "a"}, {kString, 2, "b"}});
  ExpectTokens(
      "'a\tb\x1B\x7F"
      "c'",
      {{kString, 1, "a\tbc"}});
  ExpectTokens("'\\S\\| \\\\ \xE9'", {{kString, 1, "\\S\\| \\\\ \xE9"}});
}

TEST(StepScannerTest, SeparatesCommentsAndStrings) {
  ExpectTokens("'/* text */'/* it's ' none */'b'", {{kString, 1, "/* text */"}, {kString, 1, "b"}});
  ExpectTokens("A/*\n*//***/B /* * / ** */C/**/", {{kWord, 1, "A"}, {kWord, 2, "B"}, {kWord, 2, "C"}});
  ExpectTokens("/ * */", {{kOther, 1, "/"}, {kOther, 1, "*"}, {kOther, 1, "*"}, {kOther, 1, "/"}});
  // Comments are not nested.
  ExpectTokens("/* /* */ A", {{kWord, 1, "A"}});
}

TEST(StepScannerTest, CountsLines) {
  ExpectTokens("A\nB\r\nC\rD\n\nE\r\rF\n\rG", {{kWord, 1, "A"},
                                               {kWord, 2, "B"},
                                               {kWord, 3, "C"},
                                               {kWord, 4, "D"},
                                               {kWord, 6, "E"},
                                               {kWord, 8, "F"},
                                               {kWord, 10, "G"}});
}

TEST(StepScannerTest, SkipsByteOrderMark) {
  ExpectTokens("\xEF\xBB\xBF A", {{kWord, 1, "A"}});
  ExpectTokens("A \xEF", {{kWord, 1, "A"}, {kOther, 1, "\xEF"}});
}

TEST(StepScannerTest, DigitsSkipsZeros) {
  for (auto const& [text, digits] :
       {std::pair("#0", "0"), std::pair("#000", "0"), std::pair("#007", "7"), std::pair("#637540710", "637540710"),
        std::pair("#0099999999999999999999999", "99999999999999999999999")}) {
    BytesInFile file(text);
    StepScanner scanner(file.Buffer());
    ASSERT_EQ(scanner.Next().kind, StepScanner::Instance);
    EXPECT_EQ(scanner.Current().Digits(), digits);
  }
}

TEST(StepScannerTest, DescribeCutsLongTokens) {
  std::string const word(1000, 'A');
  ExpectTokens(word + ";", {{kWord, 1, word}, {kOther, 1, ";"}});
  ExpectTokens("'" + word + "'", {{kString, 1, word}});
  BytesInFile file(word);
  StepScanner scanner(file.Buffer());
  EXPECT_EQ(scanner.Next().Describe(), "'" + std::string(60, 'A') + "...'");
}

TEST(StepScannerTest, RefusesTokenOver16MiB) {
  std::string const most(std::size_t(16) * 1024 * 1024, 'a');
  for (auto const& [opening, closing] : {std::pair("'", "'"), std::pair("\"", "\""), std::pair("", " ")}) {
    bool const isString = *opening == '\'';
    BytesInFile file("\n" + std::string(opening) + most + (isString ? "a" : "aa") + closing + "B");
    StepScanner scanner(file.Buffer());
    try {
      scanner.Next();
      ADD_FAILURE() << "no error";
    } catch (InputError const& error) {
      EXPECT_EQ(error.line, 2);
      EXPECT_EQ(error.column, 1);
      EXPECT_EQ(error.text, "expected a value of at most 16 MiB, found a longer one");
    }
    EXPECT_EQ(scanner.Next().text, "B");
  }
  BytesInFile file("'" + most + "'");
  EXPECT_EQ(StepScanner(file.Buffer()).Next().text.size(), most.size());
}

TEST(StepScannerTest, SeekReturnsToToken) {
  BytesInFile file("A\n 'b' #12\nC");
  StepScanner scanner(file.Buffer());
  scanner.Next();
  StepScanner::Token const text = scanner.Next();
  EXPECT_EQ(text.begin, 3U);
  scanner.Next();
  StepScanner::Token const last = scanner.Next();
  EXPECT_EQ(last.begin, 11U);
  EXPECT_EQ(scanner.Offset(), 12U);
  scanner.Seek({text.begin, text.line});
  EXPECT_EQ(scanner.Next().text, "b");
  EXPECT_EQ(scanner.Current().line, 2);
  EXPECT_EQ(scanner.Next().text, "#12");
  EXPECT_EQ(scanner.Next().line, 3);
}

TEST(StepScannerTest, SkipToCountsLines) {
  BytesInFile file("A\r\n\n 'b'\rC" + std::string(2000, '\n') + "D");
  StepScanner scanner(file.Buffer());
  EXPECT_FALSE(scanner.SkipTo(5));  // before the first token
  scanner.Seek({0, 7});
  EXPECT_TRUE(scanner.SkipTo(5));
  EXPECT_EQ(scanner.Line(), 9);
  EXPECT_EQ(scanner.Next().text, "b");
  EXPECT_FALSE(scanner.SkipTo(0));
  EXPECT_TRUE(scanner.SkipTo(9));
  EXPECT_EQ(scanner.Next().text, "C");
  EXPECT_EQ(scanner.Current().line, 10);
  EXPECT_FALSE(scanner.SkipTo(2010));  // too far
  EXPECT_EQ(scanner.Offset(), 10U);
  scanner.Seek({2000, 2000});
  EXPECT_TRUE(scanner.SkipTo(2010));
  EXPECT_EQ(scanner.Next().text, "D");
  EXPECT_EQ(scanner.Current().line, 2010);
  EXPECT_FALSE(scanner.SkipTo(2012));  // after the end
  scanner.Seek({0, 0});
  EXPECT_FALSE(scanner.SkipTo(5));  // the line is unknown
}

// The file was truncated meanwhile.
TEST(StepScannerTest, SeekAfterEndIsEnd) {
  BytesInFile file("A B");
  StepScanner scanner(file.Buffer());
  scanner.Next();
  scanner.Seek({100, 7});
  EXPECT_EQ(scanner.Next().kind, StepScanner::End);
  EXPECT_EQ(scanner.Current().line, 7);
}

TEST(StepScannerTest, LongUnterminatedStringFailsOnce) {
  BytesInFile file("'" + std::string(StepScanner::kTextLimit + 1, 'a'));
  StepScanner scanner(file.Buffer());
  EXPECT_THROW(scanner.Next(), InputError);
  EXPECT_EQ(scanner.Next().kind, StepScanner::End);
}

TEST(StepScannerTest, NextReferenceStopsAtSemicolon) {
  BytesInFile file("A('#1;''#2',/* #3; */#4,\"05\",(#0006)/#!,#7);#8=B(#9);");
  StepScanner scanner(file.Buffer());
  std::string found;
  for (int instance = 0; instance < 3; ++instance) {
    while (scanner.NextReference()) found += std::string(scanner.Current().Digits()) + " ";
    found += "; ";
  }
  EXPECT_EQ(found, "4 6 7 ; 8 9 ; ; ");
  EXPECT_EQ(scanner.Current().kind, StepScanner::End);
}

TEST(StepScannerTest, NextReferenceCountsLines) {
  BytesInFile file("A('\n',\n#4,/*\n*/#5)");
  StepScanner scanner(file.Buffer());
  ASSERT_TRUE(scanner.NextReference());
  EXPECT_EQ(scanner.Current().line, 3);
  ASSERT_TRUE(scanner.NextReference());
  EXPECT_EQ(scanner.Current().line, 4);
}

TEST(StepScannerTest, DescribesTokens) {
  struct Row {
    std::string text;
    std::string name;
  };
  Row const rows[] = {{"", "end of file"},
                      {"'a'", "string"},
                      {"\"0\"", "binary"},
                      {"#12", "'#12'"},
                      {"@12", "'@12'"},
                      {"WORD", "'WORD'"},
                      {"{", "'{'"},
                      {"<http://a/b>", "'<http://a/b>'"},
                      {"<http:\n\x7F//b>", "'<http:\?\?//b>'"},
                      {"<\xE9>", "'<?>'"},
                      {"<" + std::string(100, 'a') + ">", "'<" + std::string(59, 'a') + "...'"},
                      {"." + std::string(100, 'T'), "'." + std::string(59, 'T') + "...'"},
                      {"\x01", "byte 0x01"},
                      {"\xE9", "byte 0xE9"}};
  for (Row const& row : rows) {
    BytesInFile file(row.text);
    StepScanner scanner(file.Buffer());
    EXPECT_EQ(scanner.Next().Describe(), row.name);
  }
}

TEST(StepScannerTest, RefusesUnterminatedTokens) {
  EXPECT_EQ(ScanError("A\n'b\nc"), "2:1: expected \"'\" at the end of the string, found end of file");
  EXPECT_EQ(ScanError(" 'a''"), "1:2: expected \"'\" at the end of the string, found end of file");
  EXPECT_EQ(ScanError("A\n\n /*\n * "), "3:2: expected '*/' at the end of the comment, found end of file");
  EXPECT_EQ(ScanError("/*/"), "1:1: expected '*/' at the end of the comment, found end of file");
  EXPECT_EQ(ScanError("\"0F"), "1:1: expected '\"' at the end of the binary, found end of file");
  EXPECT_EQ(ScanError("\"\n"), "1:1: expected '\"' at the end of the binary, found end of file");
  EXPECT_EQ(ScanError("<a"), "1:1: expected '>' at the end of the resource, found end of file");
  EXPECT_EQ(ScanError("<a;\nb>"), "1:1: expected '>' at the end of the resource, found end of line");
}

// A missing apostrophe must not join instances.
TEST(StepScannerTest, StringEndsBeforeInstance) {
  std::string const error = "1:1: expected \"'\" at the end of the string, found another instance";
  for (char const* text :
       {"'a;\n#1=", "'a; \t\r\n \n #12 = 'b'", "';\r#1=", "'\n#1=;;\n\n#1=", "';\n#1;\n#2=", "';\n;\n#2="}) {
    EXPECT_EQ(ScanError(text), error) << text;
  }
  for (char const* text :
       {"'a\n#1='", "'a;#1='", "';x\n#1='", "';\nx#1='", "';\n#='", "';\n#1 x='", "';\n#1\n='", "';\n#1'"}) {
    EXPECT_EQ(ScanError(text), "") << text;
  }
}

TEST(StepScannerTest, ReadsNames) {
  ExpectTokens("@12,#PI @PI_2 #P1;_A", {{StepScanner::Name, 1, "@12"},
                                        {kOther, 1, ","},
                                        {StepScanner::Name, 1, "#PI"},
                                        {StepScanner::Name, 1, "@PI_2"},
                                        {StepScanner::Name, 1, "#P1"},
                                        {kOther, 1, ";"},
                                        {kWord, 1, "_A"}});
  ExpectTokens("@ 1", {{kOther, 1, "@"}, {kNumber, 1, "1"}});
}

TEST(StepScannerTest, KeepsNulOfString) {
  BytesInFile file(std::string("'a\0b' 'c'", 9));
  StepScanner scanner(file.Buffer());
  EXPECT_EQ(scanner.Next().text, std::string("a\0b", 3));
  EXPECT_TRUE(scanner.Current().hasNul);
  EXPECT_FALSE(scanner.Next().hasNul);
}

TEST(StepScannerTest, CountsColumns) {
  BytesInFile file(
      "\xEF\xBB\xBF"
      "A 'b\nc' D\r\n\tE");
  StepScanner scanner(file.Buffer());
  std::string columns;
  while (scanner.Next().kind != StepScanner::End) columns += std::to_string(scanner.Column()) + " ";
  EXPECT_EQ(columns, "1 3 4 2 ");
  // After a return to a token the begin of its line is searched for.
  scanner.Seek({11, 2});
  EXPECT_EQ(scanner.Next().text, "D");
  EXPECT_EQ(scanner.Column(), 4);
  scanner.Seek({3, 1});
  scanner.Next();
  EXPECT_EQ(scanner.Column(), 4);
  BytesInFile longLine(std::string(5000, ' ') + "A");
  StepScanner other(longLine.Buffer());
  other.Seek({5000, 1});
  other.Next();
  EXPECT_EQ(other.Column(), 0);
}

TEST(StepScannerTest, ReadsLinesBeforeEnd) {
  BytesInFile file("SIGNATURE;\nMIIB/ENDSEC+\n ab/*==\nENDSEC;A");
  StepScanner scanner(file.Buffer());
  scanner.Next();
  scanner.Next();
  EXPECT_EQ(scanner.ReadLinesBeforeEnd(), "MIIB/ENDSEC+\n ab/*==\n");
  EXPECT_EQ(scanner.Next().text, "ENDSEC");
  EXPECT_EQ(scanner.Current().line, 4);
  EXPECT_EQ(scanner.ReadLinesBeforeEnd(), ";A\n");
  EXPECT_EQ(scanner.Next().kind, StepScanner::End);
  BytesInFile otherEnds(" \r\na\r\rb\r\n\nENDSEC");
  StepScanner other(otherEnds.Buffer());
  EXPECT_EQ(other.ReadLinesBeforeEnd(), "a\n\nb\n\n");
  EXPECT_EQ(other.Next().line, 6);
}

// Windows end at 262144 bytes: here within each of the tokens in turn.
TEST(StepScannerTest, TokensCrossWindows) {
  std::string const text = "'a''b' WORD_1 -12.5E+3 .T. /* * */ #77\r\n\"0F\" <x:y>;\r\r\nEND";
  for (std::size_t shift = 0; shift <= text.size(); ++shift) {
    ExpectTokens(std::string(262144 - shift, ' ') + text, {{kString, 1, "a'b"},
                                                           {kWord, 1, "WORD_1"},
                                                           {kNumber, 1, "-12.5E+3"},
                                                           {StepScanner::Enumeration, 1, ".T."},
                                                           {StepScanner::Instance, 1, "#77"},
                                                           {StepScanner::Binary, 2, "\"0F\""},
                                                           {StepScanner::Resource, 2, "<x:y>"},
                                                           {kOther, 2, ";"},
                                                           {kWord, 4, "END"}});
  }
}
