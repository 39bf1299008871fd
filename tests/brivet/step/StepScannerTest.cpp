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
    return std::to_string(error.line) + ": " + error.text;
  }
  return "";
}

constexpr auto WORD = StepScanner::Keyword;
constexpr auto STRING = StepScanner::String;
constexpr auto NUMBER = StepScanner::Number;
constexpr auto OTHER = StepScanner::Other;

}  // namespace

TEST(StepScannerTest, TellsTheKindsApart) {
  ExpectTokens("#12=A_B(1,-2.5E+3,.T.,$,*,\"0F3\",'x');", {{StepScanner::Instance, 1, "#12"},
                                                           {OTHER, 1, "="},
                                                           {WORD, 1, "A_B"},
                                                           {OTHER, 1, "("},
                                                           {NUMBER, 1, "1"},
                                                           {OTHER, 1, ","},
                                                           {NUMBER, 1, "-2.5E+3"},
                                                           {OTHER, 1, ","},
                                                           {StepScanner::Enumeration, 1, ".T."},
                                                           {OTHER, 1, ","},
                                                           {OTHER, 1, "$"},
                                                           {OTHER, 1, ","},
                                                           {OTHER, 1, "*"},
                                                           {OTHER, 1, ","},
                                                           {StepScanner::Binary, 1, "\"0F3\""},
                                                           {OTHER, 1, ","},
                                                           {STRING, 1, "x"},
                                                           {OTHER, 1, ")"},
                                                           {OTHER, 1, ";"}});
  ExpectTokens("ISO-10303-21 END-ISO-10303-21 !MINE &SCOPE <http://a/b#c>",
               {{WORD, 1, "ISO-10303-21"},
                {WORD, 1, "END-ISO-10303-21"},
                {WORD, 1, "!MINE"},
                {WORD, 1, "&SCOPE"},
                {StepScanner::Resource, 1, "<http://a/b#c>"}});
}

TEST(StepScannerTest, ReadsNumbersAsRealFilesWriteThem) {
  for (char const* number : {"0", "+7", "1.", "0.E+000", "-1.5e-7", ".5", "1E5", "5.-"}) {
    SCOPED_TRACE(number);
    std::string const text(number);
    bool const whole = text.back() != '-';
    std::vector<Expected> expected{{NUMBER, 1, whole ? text : "5."}};
    if (!whole) expected.push_back({OTHER, 1, "-"});
    ExpectTokens(text, expected);
  }
}

TEST(StepScannerTest, GivesBrokenPiecesAsOther) {
  for (char const* piece : {"#", "!", "&", ".", ".T", "+", "-", "+.", "1E", "-2.5E+", "{", "/", "\\", "\xC3"}) {
    ExpectTokens(piece, {{OTHER, 1, piece}});
  }
  ExpectTokens("# 1", {{OTHER, 1, "#"}, {NUMBER, 1, "1"}});
  ExpectTokens(std::string("\0", 1), {{OTHER, 1, std::string("\0", 1)}});
}

TEST(StepScannerTest, EndsABinaryAtWhatIsNoDigit) {
  ExpectTokens("\"0\nfF3 \"1", {{StepScanner::Binary, 1, "\"0fF3\""}, {NUMBER, 2, "1"}});
  ExpectTokens("\"01G\";", {{OTHER, 1, "\"01"}, {WORD, 1, "G"}, {OTHER, 1, "\""}, {OTHER, 1, ";"}});
  ExpectTokens(std::string("\"0\0", 3), {{OTHER, 1, "\"0"}, {OTHER, 1, std::string("\0", 1)}});
}

TEST(StepScannerTest, ReducesApostrophesAndLeavesOutLineEnds) {
  ExpectTokens("'it''s'", {{STRING, 1, "it's"}});
  ExpectTokens("''", {{STRING, 1, ""}});
  ExpectTokens("''''", {{STRING, 1, "'"}});
  ExpectTokens("'a\r\nb\nc\rd' 'e'", {{STRING, 1, "abcd"}, {STRING, 4, "e"}});
  ExpectTokens("'a'\n'b'", {{STRING, 1, "a"}, {STRING, 2, "b"}});
  ExpectTokens(
      "'a\tb\x1B\x7F"
      "c'",
      {{STRING, 1, "a\tbc"}});
  ExpectTokens("'\\S\\| \\\\ \xE9'", {{STRING, 1, "\\S\\| \\\\ \xE9"}});
}

TEST(StepScannerTest, KeepsCommentsAndStringsApart) {
  ExpectTokens("'/* text */'/* it's ' none */'b'", {{STRING, 1, "/* text */"}, {STRING, 1, "b"}});
  ExpectTokens("A/*\n*//***/B /* * / ** */C/**/", {{WORD, 1, "A"}, {WORD, 2, "B"}, {WORD, 2, "C"}});
  ExpectTokens("/ * */", {{OTHER, 1, "/"}, {OTHER, 1, "*"}, {OTHER, 1, "*"}, {OTHER, 1, "/"}});
  // A comment does not hold another.
  ExpectTokens("/* /* */ A", {{WORD, 1, "A"}});
}

TEST(StepScannerTest, CountsLinesWhateverEndsThem) {
  ExpectTokens("A\nB\r\nC\rD\n\nE\r\rF\n\rG", {{WORD, 1, "A"},
                                               {WORD, 2, "B"},
                                               {WORD, 3, "C"},
                                               {WORD, 4, "D"},
                                               {WORD, 6, "E"},
                                               {WORD, 8, "F"},
                                               {WORD, 10, "G"}});
}

TEST(StepScannerTest, PassesOverAByteOrderMarkAtTheBegin) {
  ExpectTokens("\xEF\xBB\xBF A", {{WORD, 1, "A"}});
  ExpectTokens("A \xEF", {{WORD, 1, "A"}, {OTHER, 1, "\xEF"}});
}

TEST(StepScannerTest, TellsTheDigitsOfIds) {
  for (auto const& [text, digits] :
       {std::pair("#0", "0"), std::pair("#000", "0"), std::pair("#007", "7"), std::pair("#637540710", "637540710"),
        std::pair("#0099999999999999999999999", "99999999999999999999999")}) {
    BytesInFile file(text);
    StepScanner scanner(file.Buffer());
    ASSERT_EQ(scanner.Next().kind, StepScanner::Instance);
    EXPECT_EQ(scanner.Current().Digits(), digits);
  }
}

TEST(StepScannerTest, KeepsTokensWholeAndNamesThemInPart) {
  std::string const word(1000, 'A');
  ExpectTokens(word + ";", {{WORD, 1, word}, {OTHER, 1, ";"}});
  ExpectTokens("'" + word + "'", {{STRING, 1, word}});
  BytesInFile file(word);
  StepScanner scanner(file.Buffer());
  EXPECT_EQ(scanner.Next().Name(), std::string(60, 'A'));
}

TEST(StepScannerTest, RefusesATokenOfMoreThanSixteenMegabytesAndGoesOnBehindIt) {
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
      EXPECT_EQ(error.text, "expected a value of at most 16 MiB, found a longer one that begins here");
    }
    EXPECT_EQ(scanner.Next().text, "B");
  }
  BytesInFile file("'" + most + "'");
  EXPECT_EQ(StepScanner(file.Buffer()).Next().text.size(), most.size());
}

TEST(StepScannerTest, GoesBackToAToken) {
  BytesInFile file("A\n 'b' #12\nC");
  StepScanner scanner(file.Buffer());
  scanner.Next();
  StepScanner::Token const text = scanner.Next();
  EXPECT_EQ(text.begin, 3U);
  scanner.Next();
  StepScanner::Token const last = scanner.Next();
  EXPECT_EQ(last.begin, 11U);
  EXPECT_EQ(scanner.Offset(), 12U);
  scanner.Seek(text.begin, text.line);
  EXPECT_EQ(scanner.Next().text, "b");
  EXPECT_EQ(scanner.Current().line, 2);
  EXPECT_EQ(scanner.Next().text, "#12");
  EXPECT_EQ(scanner.Next().line, 3);
}

// The file has become shorter since the place was noted.
TEST(StepScannerTest, IsAtTheEndBehindTheEnd) {
  BytesInFile file("A B");
  StepScanner scanner(file.Buffer());
  scanner.Next();
  scanner.Seek(100, 7);
  EXPECT_EQ(scanner.Next().kind, StepScanner::End);
  EXPECT_EQ(scanner.Current().line, 7);
}

TEST(StepScannerTest, TellsOnceOfALongStringThatDoesNotEnd) {
  BytesInFile file("'" + std::string(StepScanner::TEXT_LIMIT + 1, 'a'));
  StepScanner scanner(file.Buffer());
  EXPECT_THROW(scanner.Next(), InputError);
  EXPECT_EQ(scanner.Next().kind, StepScanner::End);
}

TEST(StepScannerTest, FindsReferencesUpToTheSemicolon) {
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

TEST(StepScannerTest, TellsTheLinesOfReferences) {
  BytesInFile file("A('\n',\n#4,/*\n*/#5)");
  StepScanner scanner(file.Buffer());
  ASSERT_TRUE(scanner.NextReference());
  EXPECT_EQ(scanner.Current().line, 3);
  ASSERT_TRUE(scanner.NextReference());
  EXPECT_EQ(scanner.Current().line, 4);
}

TEST(StepScannerTest, NamesTokens) {
  struct Row {
    std::string text;
    std::string name;
  };
  Row const rows[] = {{"", "the end of the file"},
                      {"'a'", "a string"},
                      {"\"0\"", "a binary"},
                      {"#12", "#12"},
                      {"WORD", "WORD"},
                      {"{", "{"},
                      {"<http://a/b>", "<http://a/b>"},
                      {"<http:\n\x7F//b>", "<http:\?\?//b>"},
                      {"<\xE9>", "<?>"},
                      {"<" + std::string(100, 'a') + ">", "<" + std::string(59, 'a')},
                      {"." + std::string(100, 'T'), "." + std::string(59, 'T')},
                      {"\x01", "byte 0x01"},
                      {"\xE9", "byte 0xE9"}};
  for (Row const& row : rows) {
    BytesInFile file(row.text);
    StepScanner scanner(file.Buffer());
    EXPECT_EQ(scanner.Next().Name(), row.name);
  }
}

TEST(StepScannerTest, RefusesWhatBeginsAndDoesNotEnd) {
  char const* const rest = " that begins here, found the end of the file";
  EXPECT_EQ(ScanError("A\n'b\nc"), std::string("2: expected ' at the end of the string") + rest);
  EXPECT_EQ(ScanError("'a''"), std::string("1: expected ' at the end of the string") + rest);
  EXPECT_EQ(ScanError("A\n\n /*\n * "), std::string("3: expected */ at the end of the comment") + rest);
  EXPECT_EQ(ScanError("/*/"), std::string("1: expected */ at the end of the comment") + rest);
  EXPECT_EQ(ScanError("\"0F"), std::string("1: expected \" at the end of the binary") + rest);
  EXPECT_EQ(ScanError("\"\n"), std::string("1: expected \" at the end of the binary") + rest);
  EXPECT_EQ(ScanError("<a"), std::string("1: expected > at the end of the resource") + rest);
}
