#include "StepScanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TextSource.h"

namespace {

struct Expected {
  StepScanner::Kind kind;
  std::size_t line;
  std::string text;
};

void ExpectTokens(std::string const& document, std::vector<Expected> const& expected) {
  for (std::size_t const blockSize : {std::size_t{1}, std::size_t{3}, std::size_t{65536}}) {
    SCOPED_TRACE(document + " in blocks of " + std::to_string(blockSize));
    ByteSource source = TextSource(document, blockSize);
    StepScanner scanner(source);
    for (Expected const& each : expected) {
      StepScanner::Token const& token = scanner.Next();
      EXPECT_EQ(token.kind, each.kind) << each.text;
      EXPECT_EQ(token.line, each.line) << each.text;
      EXPECT_EQ(token.text, each.text);
    }
    EXPECT_EQ(scanner.Next().kind, StepScanner::End);
    EXPECT_EQ(scanner.Next().kind, StepScanner::End);
  }
}

std::string ScanError(std::string const& document) {
  ByteSource source = TextSource(document);
  StepScanner scanner(source);
  try {
    while (scanner.Next().kind != StepScanner::End) {
    }
  } catch (StepError const& error) {
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
  for (char const* piece : {"#", "!", "&", ".", ".T", "+", "-", "+.", "{", "/", "\\", "\xC3"}) {
    ExpectTokens(piece, {{OTHER, 1, piece}});
  }
  ExpectTokens("# 1", {{OTHER, 1, "#"}, {NUMBER, 1, "1"}});
  ExpectTokens(std::string("\0", 1), {{OTHER, 1, std::string("\0", 1)}});
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

TEST(StepScannerTest, BoundsIds) {
  struct Row {
    std::string text;
    std::uint64_t id;
    bool fits;
  };
  Row const rows[] = {{"#0", 0, true},
                      {"#637540710", 637540710, true},
                      {"#007", 7, true},
                      {"#18446744073709551615", 18446744073709551615U, true},
                      {"#18446744073709551616", 0, false},
                      {"#99999999999999999999999", 0, false}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    ByteSource source = TextSource(row.text);
    StepScanner scanner(source);
    EXPECT_EQ(scanner.Next().kind, StepScanner::Instance);
    EXPECT_EQ(scanner.Current().idFits, row.fits);
    if (row.fits) {
      EXPECT_EQ(scanner.Current().id, row.id);
    }
  }
}

TEST(StepScannerTest, KeepsLongTokensInPart) {
  ExpectTokens(std::string(1000, 'A') + ";", {{WORD, 1, std::string(StepScanner::TEXT_LIMIT, 'A')}, {OTHER, 1, ";"}});
  ExpectTokens("'" + std::string(1000, 'A') + "'", {{STRING, 1, std::string(1000, 'A')}});
}

TEST(StepScannerTest, NamesTokens) {
  struct Row {
    std::string text;
    char const* name;
  };
  Row const rows[] = {{"", "the end of the file"},
                      {"'a'", "a string"},
                      {"\"0\"", "a binary"},
                      {"#12", "#12"},
                      {"WORD", "WORD"},
                      {"{", "{"},
                      {"\x01", "byte 0x01"},
                      {"\xE9", "byte 0xE9"}};
  for (Row const& row : rows) {
    ByteSource source = TextSource(row.text);
    StepScanner scanner(source);
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
