#include "Gk_StringParser.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "Gk_ErrMgr.h"
#include "VRELAbortException.h"

namespace {

// Returns the index of the spill; -1 if there is none.
int spillIndex(Gk_StringParser const& parser, Gk_String const& text) {
  return parser.spill() == nullptr ? -1 : static_cast<int>(parser.spill() - static_cast<char*>(text));
}

TEST(Gk_StringParserTest, InitialSpillAndClean) {
  Gk_StringParser const parser(Gk_String("12"));
  EXPECT_EQ(parser.spill(), nullptr);
  EXPECT_FALSE(parser.clean());
}

TEST(Gk_StringParserTest, SharesBytes) {
  Gk_String text("12");
  Gk_StringParser parser(text);
  text[0] = '4';
  EXPECT_EQ(parser.intValue(), 42);
}

TEST(Gk_StringParserTest, ConvertsWideStringToAscii) {
  EXPECT_EQ(Gk_StringParser(VRELString(L"42")).intValue(), 42);
  EXPECT_TRUE(Gk_StringParser(VRELString(L"abc")).isString("abc"));
  EXPECT_TRUE(Gk_StringParser(VRELString()).isString(""));
  EXPECT_TRUE(Gk_StringParser(VRELString()).isInteger(0));
  EXPECT_FALSE(Gk_StringParser(VRELString(L"\u0664")).isInteger(0));
  EXPECT_EQ(Gk_StringParser("42").intValue(), 42);
}

TEST(Gk_StringParserTest, IsString) {
  Gk_StringParser const parser(Gk_String("abc"));
  EXPECT_TRUE(parser.isString("abc"));
  EXPECT_FALSE(parser.isString("ab"));
  EXPECT_FALSE(parser.isString("abcd"));
  EXPECT_FALSE(parser.isString("ABC"));
  EXPECT_FALSE(parser.isString(nullptr));
  EXPECT_TRUE(Gk_StringParser(Gk_String()).isString(""));
  EXPECT_TRUE(Gk_StringParser(Gk_String("abcd", 3)).isString("abc"));
}

TEST(Gk_StringParserTest, CountsDigits) {
  Gk_String const text("a123b");
  Gk_StringParser parser(text);
  EXPECT_EQ(parser.countDigits(1), 3);
  EXPECT_EQ(spillIndex(parser, text), 4);
  EXPECT_EQ(parser.countDigits(2), 2);
  EXPECT_EQ(parser.countDigits(0), 0);
  EXPECT_EQ(spillIndex(parser, text), 0);
  EXPECT_EQ(parser.countDigits(5), 0);
  EXPECT_EQ(spillIndex(parser, text), 5);  // the terminator
  EXPECT_EQ(Gk_StringParser("0123456789/").countDigits(0), 10);
  EXPECT_EQ(Gk_StringParser("9:").countDigits(0), 1);
}

TEST(Gk_StringParserTest, CountsHexDigits) {
  Gk_String const text("09afAFg");
  Gk_StringParser parser(text);
  EXPECT_EQ(parser.countHexDigits(0), 6);
  EXPECT_EQ(spillIndex(parser, text), 6);
  EXPECT_EQ(parser.countDigits(0), 2);
  EXPECT_EQ(spillIndex(parser, text), 2);
  EXPECT_EQ(Gk_StringParser("\xC1").countHexDigits(0), 0);
}

TEST(Gk_StringParserTest, CountToEndKeepsSpill) {
  Gk_String const text("a12", 3);
  Gk_StringParser parser(text);
  EXPECT_EQ(parser.countDigits(1), 2);
  EXPECT_EQ(parser.spill(), nullptr);
  EXPECT_EQ(parser.countDigits(0), 0);
  EXPECT_EQ(parser.countHexDigits(1), 2);
  EXPECT_EQ(spillIndex(parser, text), 0);
  Gk_StringParser allDigits(Gk_String("12", 2));
  EXPECT_EQ(allDigits.countDigits(0), 2);
  EXPECT_EQ(allDigits.spill(), nullptr);
}

TEST(Gk_StringParserTest, CountOutsideTextIsZero) {
  Gk_StringParser parser(Gk_String("12"));
  EXPECT_EQ(parser.countDigits(3), 0);
  EXPECT_EQ(parser.countDigits(INT_MAX), 0);
  EXPECT_EQ(parser.countDigits(-1), 0);
  EXPECT_EQ(parser.countHexDigits(INT_MIN), 0);
  EXPECT_EQ(parser.spill(), nullptr);
  EXPECT_EQ(Gk_StringParser(Gk_String()).countDigits(0), 0);
}

TEST(Gk_StringParserTest, ClassifiesNumbers) {
  struct {
    char const* text;
    bool isUnsigned;
    bool isInteger;
    bool isReal;
  } const rows[] = {
      {"0", true, true, true},        {"7", true, true, true},        {"1234567890123456789012", true, true, true},
      {"017", true, true, true},      {"08", true, true, true},       {"0x1F", true, true, false},
      {"0xff", true, true, false},    {"0X1F", false, false, false},  {"0x", true, true, false},
      {"0xg", false, false, false},   {"1x2", false, false, false},   {"00x1", false, false, false},
      {"", true, true, false},        {"-", false, true, false},      {"+", false, true, false},
      {"--1", false, false, false},   {"+-1", false, false, false},   {"-1", false, true, true},
      {"+1", false, true, true},      {"-0x1F", false, true, false},  {"12a", false, false, false},
      {" 1", false, false, false},    {"1 ", false, false, false},    {"1.5", false, false, true},
      {"5.", false, false, true},     {".5", false, false, true},     {".", false, false, false},
      {"-.", false, false, false},    {"-.5", false, false, true},    {"+5.", false, false, true},
      {"1.2.3", false, false, false}, {"1..2", false, false, false},  {"1e", false, false, true},
      {"1e+", false, false, true},    {"1E-5", false, false, true},   {"1e5", false, false, true},
      {"1e5.0", false, false, false}, {"1e0x1F", false, false, true}, {".e5", false, false, false},
      {".5e5", false, false, true},   {"5.e5", false, false, true},   {"1d5", false, false, false},
      {"e5", false, false, false},    {"abc", false, false, false},   {"1e+-", false, false, false},
      {"0.0", false, false, true},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text);
    Gk_StringParser parser{Gk_String(row.text)};
    EXPECT_EQ(parser.isUnsignedInteger(0), row.isUnsigned);
    EXPECT_EQ(parser.isInteger(0), row.isInteger);
    EXPECT_EQ(parser.isReal(0), row.isReal);
  }
}

TEST(Gk_StringParserTest, ClassifiesNumbersFromIndex) {
  Gk_StringParser parser(Gk_String("x=-1.5"));
  EXPECT_TRUE(parser.isReal(2));
  EXPECT_TRUE(parser.isReal(3));
  EXPECT_FALSE(parser.isInteger(2));
  EXPECT_TRUE(parser.isInteger(5));
  EXPECT_FALSE(parser.isReal(0));
  EXPECT_TRUE(parser.isUnsignedInteger(6));  // the terminator alone
  for (int from : {7, INT_MAX, -1, INT_MIN}) {
    SCOPED_TRACE(from);
    EXPECT_FALSE(parser.isUnsignedInteger(from));
    EXPECT_FALSE(parser.isInteger(from));
    EXPECT_FALSE(parser.isReal(from));
  }
}

TEST(Gk_StringParserTest, ClassifiesWithoutTerminator) {
  // The element after the digits counts as the terminator of an integer, even if it is another byte.
  EXPECT_TRUE(Gk_StringParser(Gk_String("12a", 3)).isInteger(0));
  EXPECT_FALSE(Gk_StringParser(Gk_String("12", 2)).isInteger(0));
  EXPECT_FALSE(Gk_StringParser(Gk_String("1.5", 3)).isReal(0));
  EXPECT_FALSE(Gk_StringParser(Gk_String("0x", 2)).isUnsignedInteger(0));
  EXPECT_FALSE(Gk_StringParser(Gk_String()).isInteger(0));
  EXPECT_FALSE(Gk_StringParser(Gk_String()).isReal(0));
}

TEST(Gk_StringParserTest, ReadsIntegers) {
  struct {
    char const* text;
    int value;
    unsigned int unsignedValue;
    int spill;
  } const rows[] = {
      {"0", 0, 0u, 1},
      {"42", 42, 42u, 2},
      {"017", 15, 15u, 3},
      {"08", 0, 0u, 1},
      {"0x1F", 31, 31u, 4},
      {"0X1f", 31, 31u, 4},
      {"  7", 7, 7u, 3},
      {"+7", 7, 7u, 2},
      {"-7", -7, 4294967289u, 2},
      {"-0x10", -16, 4294967280u, 5},
      {"12abc", 12, 12u, 2},
      {"abc", 0, 0u, 0},
      {"", 0, 0u, 0},
      {"2147483647", INT_MAX, 2147483647u, 10},
      {"2147483648", INT_MAX, 2147483648u, 10},
      {"-2147483648", INT_MIN, 2147483648u, 11},
      {"-2147483649", INT_MIN, 2147483647u, 11},
      {"4294967295", INT_MAX, 4294967295u, 10},
      {"4294967296", INT_MAX, 4294967295u, 10},
      {"-4294967295", INT_MIN, 1u, 11},
      {"-4294967296", INT_MIN, 4294967295u, 11},
      {"0xFFFFFFFFFFCF1FFF", INT_MAX, 4294967295u, 18},
      {"18446744073709551615", INT_MAX, 4294967295u, 20},
      {"-18446744073709551615", INT_MIN, 4294967295u, 21},
      {"\t\n -7", -7, 4294967289u, 5},
      {"99999999999999999999999", INT_MAX, 4294967295u, 23},
      {"-99999999999999999999999", INT_MIN, 4294967295u, 24},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text);
    Gk_String const text(row.text);
    Gk_StringParser parser(text);
    EXPECT_EQ(parser.intValue(), row.value);
    EXPECT_EQ(spillIndex(parser, text), row.spill);
    EXPECT_TRUE(parser.clean());
    Gk_StringParser unsignedParser(text);
    EXPECT_EQ(unsignedParser.uIntValue(), row.unsignedValue);
    EXPECT_EQ(spillIndex(unsignedParser, text), row.spill);
    EXPECT_TRUE(unsignedParser.clean());
  }
}

TEST(Gk_StringParserTest, ReadsReals) {
  struct {
    char const* text;
    double value;
    int spill;
  } const rows[] = {
      {"1.5", 1.5, 3},       {"1.5e3", 1500.0, 5}, {"1.5D3", 1500.0, 5}, {"  -.5", -0.5, 5}, {"5.", 5.0, 2},
      {"1e", 1.0, 2},        {"abc", 0.0, 0},      {"", 0.0, 0},         {"2.5abc", 2.5, 3}, {"1.2.3", 1.5, 5},
      {"1.25.5.5", 1.75, 6}, {"7..5", 7.5, 4},     {"1.5..", 1.5, 4},    {"12,5", 12.0, 2},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text);
    Gk_String const text(row.text);
    Gk_StringParser parser(text);
    EXPECT_EQ(parser.realValue(), row.value);
    EXPECT_EQ(spillIndex(parser, text), row.spill);
    EXPECT_TRUE(parser.clean());
  }
}

TEST(Gk_StringParserTest, ReadsWithoutTerminator) {
  Gk_String const text("12.25.5", 5);
  Gk_StringParser parser(text);
  EXPECT_EQ(parser.realValue(), 12.25);
  EXPECT_EQ(spillIndex(parser, text), 5);
  EXPECT_EQ(parser.intValue(), 12);
  EXPECT_EQ(spillIndex(parser, text), 2);
  EXPECT_EQ(parser.uIntValue(), 12u);
  Gk_String const twice("1.25.5x", 6);
  Gk_StringParser twiceParser(twice);
  EXPECT_EQ(twiceParser.realValue(), 1.75);
  EXPECT_EQ(spillIndex(twiceParser, twice), 6);
}

// The bytes of a shortened string are still in memory.
TEST(Gk_StringParserTest, ReadsNothingAfterBytes) {
  Gk_String text("12345");
  text.shrinkEnd(4);
  Gk_StringParser parser(text);
  EXPECT_EQ(parser.intValue(), 12);
  EXPECT_EQ(spillIndex(parser, text), 2);
  EXPECT_EQ(parser.uIntValue(), 12u);
  EXPECT_EQ(parser.realValue(), 12.0);
}

TEST(Gk_StringParserTest, StringWithoutElementsIsZero) {
  Gk_StringParser parser{Gk_String()};
  EXPECT_EQ(parser.realValue(), 0.0);
  EXPECT_EQ(parser.intValue(), 0);
  EXPECT_EQ(parser.uIntValue(), 0u);
  EXPECT_EQ(parser.spill(), nullptr);
  EXPECT_TRUE(parser.clean());
}

TEST(Gk_StringParserTest, RestAfterNumberPollsAbortFlag) {
  Gk_String const text("12x");
  Gk_StringParser parser(text);
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(parser.intValue(), VRELAbortException);
  EXPECT_FALSE(parser.clean());
  EXPECT_EQ(spillIndex(parser, text), 2);
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());

  Gk_ErrMgr::setAbort();
  EXPECT_THROW(parser.uIntValue(), VRELAbortException);
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(parser.realValue(), VRELAbortException);
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(parser.testSpill(), VRELAbortException);

  EXPECT_EQ(parser.intValue(), 12);
  EXPECT_TRUE(parser.clean());

  // An earlier successful conversion has no effect.
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(parser.testSpill(), VRELAbortException);
  EXPECT_FALSE(parser.clean());
}

TEST(Gk_StringParserTest, CompleteNumberPollsNothing) {
  Gk_ErrMgr::setAbort();
  EXPECT_EQ(Gk_StringParser("12").intValue(), 12);
  EXPECT_EQ(Gk_StringParser("12").uIntValue(), 12u);
  EXPECT_EQ(Gk_StringParser("1.5").realValue(), 1.5);
  EXPECT_EQ(Gk_StringParser("1.2.3").realValue(), 1.5);
  Gk_StringParser untouched("x");
  untouched.testSpill();
  EXPECT_TRUE(untouched.clean());
  // A conversion up to the end of a string without terminator.
  EXPECT_EQ(Gk_StringParser(Gk_String("123", 2)).intValue(), 12);
  EXPECT_TRUE(Gk_ErrMgr::shouldAbort());
  EXPECT_THROW(Gk_ErrMgr::checkAbort(), VRELAbortException);
}

TEST(Gk_StringParserTest, SpillOutsideTextIsIgnored) {
  Gk_String text("12x");
  Gk_StringParser parser(text);
  parser.countDigits(0);
  text.append(std::string(1000, 'y').c_str());  // moves the bytes
  Gk_ErrMgr::setAbort();
  parser.testSpill();
  EXPECT_TRUE(parser.clean());
  EXPECT_THROW(Gk_ErrMgr::checkAbort(), VRELAbortException);
}

}  // namespace
