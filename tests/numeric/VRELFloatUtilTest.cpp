#include "VRELFloatUtil.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "DoubleBits.h"
#include "TurkishLocale.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Reading {
  double value;
  std::size_t taken;
};

Reading Read(std::string const& text) {
  char* end = nullptr;
  double const value = VRELFloatUtil::vrelstrtod(text.c_str(), &end);
  return {value, static_cast<std::size_t>(end - text.c_str())};
}

TEST(VRELFloatUtilTest, CheckSign) {
  auto const sign = [](char const* text) {
    return VRELFloatUtil::checkSign(reinterpret_cast<unsigned char const*>(text));
  };
  EXPECT_EQ(sign(nullptr), 1);
  EXPECT_EQ(sign("+"), 1);
  EXPECT_EQ(sign("-"), -1);
  EXPECT_EQ(sign("-5"), -1);
  EXPECT_EQ(sign("5"), 0);
  EXPECT_EQ(sign(""), 0);
  EXPECT_EQ(sign(" -"), 0);
  EXPECT_EQ(sign("\xE9"), 0);
}

TEST(VRELFloatUtilTest, NullIsZeroAndKeepsEnd) {
  char other = 'x';
  char* end = &other;
  EXPECT_EQ(VRELFloatUtil::vrelstrtod(nullptr, &end), 0.0);
  EXPECT_EQ(end, &other);
}

TEST(VRELFloatUtilTest, NullEndIsAllowed) {
  EXPECT_EQ(VRELFloatUtil::vrelstrtod("12", nullptr), 12.0);
  EXPECT_EQ(VRELFloatUtil::vrelstrtod("abc", nullptr), 0.0);
  EXPECT_EQ(VRELFloatUtil::vrelstrtod(nullptr, nullptr), 0.0);
}

TEST(VRELFloatUtilTest, VrelatofReturnsZero) {
  EXPECT_EQ(Bits(VRELFloatUtil::vrelatof("2.5")), 0u);
  EXPECT_EQ(Bits(VRELFloatUtil::vrelatof("-2.5")), 0u);
  EXPECT_EQ(Bits(VRELFloatUtil::vrelatof(nullptr)), 0u);
}

TEST(VRELFloatUtilTest, DecimalMarkIgnoresLocale) {
  ChildResult const child = RunInTurkishLocale([] {
    bool const right = std::strtod("1,5", nullptr) == 1.5 && VRELFloatUtil::vrelstrtod("1.5", nullptr) == 1.5 &&
                       VRELFloatUtil::vrelstrtod("1,5", nullptr) == 1.0;
    return right ? 0 : 1;
  });
  if (child.exitStatus == noTurkishLocale) GTEST_SKIP() << "no locale";
  EXPECT_EQ(child.exitStatus, 0);
}

struct Row {
  std::string text;
  double value;
  std::size_t taken;
};

void ExpectReadings(std::initializer_list<Row> rows) {
  for (Row const& row : rows) {
    SCOPED_TRACE("\"" + row.text + "\"");
    Reading const reading = Read(row.text);
    EXPECT_EQ(Bits(reading.value), Bits(row.value)) << reading.value << " for " << row.value;
    EXPECT_EQ(reading.taken, row.taken);
  }
}

TEST(VRELFloatUtilTest, ReadsNumbers) {
  ExpectReadings({
      {"1.5e3", 1500.0, 5},
      {"1.5E3", 1500.0, 5},
      {"1.5d3", 1500.0, 5},
      {"1.5D3", 1500.0, 5},
      {"1e+5", 1e5, 4},
      {"5e-1", 0.5, 4},
      {"123.456", 123.456, 7},
      {"0.000123", 0.000123, 8},
      {"+.5e1", 5.0, 5},
      {"25.4", 25.4, 4},
      {"-1.0E-010", -1e-10, 9},
      {"0", 0.0, 1},
      {"-0", -0.0, 2},
      {"7.", 7.0, 2},
      {"1.E-07", 1e-7, 6},
  });
}

TEST(VRELFloatUtilTest, BeginsAtWhiteSpaceSignDigitOrPoint) {
  ExpectReadings({
      {"  -.5", -0.5, 5},
      {"\t\n\v\f\r7", 7.0, 6},
      {"", 0.0, 0},
      {"abc", 0.0, 0},
      {"e5", 0.0, 0},
      {"#5", 0.0, 0},
      {"\x85"
       "7",
       0.0, 0},
      {"\xA0"
       "7",
       0.0, 0},
      // After white space one punctuation byte counts as a plus sign.
      {" #5", 5.0, 3},
      {" ~5", 5.0, 3},
      {" @5", 5.0, 3},
      {" `5", 5.0, 3},
      {" +5", 5.0, 3},
      {" -5", -5.0, 3},
      {" +-5", 0.0, 2},
      {" ##5", 0.0, 2},
      {" abc", 0.0, 1},
      {"- 5", -0.0, 1},
      {"+", 0.0, 1},
      {"-", -0.0, 1},
      {".", 0.0, 1},
      {"   ", 0.0, 3},
  });
}

TEST(VRELFloatUtilTest, StopsAfterNumber) {
  ExpectReadings({
      {"1.2.3", 1.2, 3},
      {".5.", 0.5, 2},
      {"1e", 1.0, 2},
      {"1e+", 1.0, 3},
      {"12abc", 12.0, 2},
      {"1e2e3", 100.0, 3},
      {"1e2.5", 100.0, 3},
      {".e5", 0.0, 1},
      {"-e5", -0.0, 1},
      {"5-3", 5.0, 1},
      {"5\xE9", 5.0, 1},
      {std::string("5\0"
                   "6",
                   3),
       5.0, 1},
      {"14.0,", 14.0, 4},
      {"2.5)", 2.5, 3},
  });
}

TEST(VRELFloatUtilTest, ExponentSignMayBeAnywhere) {
  ExpectReadings({
      {"1e5-3", 0x1.ea6608e29b24dp-177, 5},  // 1e-53
      {"1e1+2", 1e12, 5},
      {"1e+-5", 1.0, 3},
      {"1e-5-", 1e-5, 4},
      {"1e5+", 1e5, 4},
  });
}

// Values of an independent implementation of the steps in another language.
TEST(VRELFloatUtilTest, RoundsByDocumentedOperations) {
  ExpectReadings({
      {"0.70710678118654757", 0x1.6a09e667f3bcdp-1, 19},
      {"3.141592653589793", 0x1.921fb54442d18p+1, 17},
      {"0.30479999999999996", 0x1.381d7dbf487fdp-2, 19},  // strtod returns one unit less
      {"6.02214076e23", 0x1.fe185ca57c517p+78, 13},
      {"1.6e-35", 0x1.54484932d2e72p-116, 7},
      {"1e22", 1e22, 4},
      {"1e308", 0x1.1ccf385ebc8a3p+1023, 5},
      {"1e-308", 0x0.730d67819e8d1p-1022, 6},
      {"12e-309", 0x0.8a1015cebe42ep-1022, 7},
      {"2.2250738585072014e-308", 0x0.ffffffffffffdp-1022, 23},
      {std::string(100, '1'), 0x1.0417d76bd1f8dp+329, 100},
  });
}

TEST(VRELFloatUtilTest, MantissaStopsAtTwoToThe53) {
  ExpectReadings({
      {"9007199254740991", 9007199254740991.0, 16},
      {"9007199254740992", 9007199254740992.0, 16},
      // 2^53 + 1 is rounded to 2^53. At exactly 2^53 further digits are dropped and not counted.
      {"9007199254740993", 9007199254740992.0, 16},
      {"90071992547409931", 9007199254740992.0, 17},
      {"9007199254740992123", 9007199254740992.0, 19},
      {"9007199254740992.5", 9007199254740992.0, 18},
      // Above, they are counted before the point ...
      {"12345678901234567890", 0x1.56a95319d63e1p+63, 20},
      {"99999999999999999999999999999999", 1e32, 32},
      // ... and not after it.
      {"0.12345678912345678912345678912345678", 0x1.f9add37c1215ep-4, 37},
  });
}

TEST(VRELFloatUtilTest, DroppedDigitsShareExponent) {
  ExpectReadings({
      // Three digits are dropped, and the digit of the exponent is dropped and counted: 4.
      {"12345678901234567890e5", 0x1.ac53a7e04bcdap+66, 22},
      // Thirteen are dropped, and two of the exponent: -15.
      {"123456789012345678901234567890e-10", 0x1.8b0fcd32f707ap+3, 34},
      // After a point the digits of the exponent count again: five are dropped, 52 in total.
      {"1234567890123456789012.5e2", 0x1.2512b51abfb43p+226, 26},
  });
}

TEST(VRELFloatUtilTest, FarExponents) {
  ExpectReadings({
      {"1e-400", 0.0, 6},
      {"-1e-400", 0.0, 7},  // a plain zero
      {"1e-309", 1e-309, 6},
      {"1e-310", 0.0, 6},
      {"4.9406564584124654e-324", 0.0, 23},
      {"1e309", infinity, 5},
      {"1.7976931348623157e308", infinity, 22},
      {"1e441", infinity, 5},
      {"1e442", infinity, 5},
      {"1e999999999999", infinity, 14},
      {"-1e99999999999999999999999999999999999999", -infinity, 41},
      {"1e-99999999999999999999999999999999999999", 0.0, 41},
      {"1e2147483648", infinity, 12},
      {"1e4294967296", infinity, 12},
      {"1e18446744073709551616", infinity, 22},
      {"0e-500", 0.0, 6},
      {"0e441", 0.0, 5},
      // The number of digits keeps a small number above the limit.
      {"0." + std::string(320, '0') + "1", 0x0.00000000000cap-1022, 323},
      {"0." + std::string(400, '0') + "5e390", 0x1.b7cdfd9d7bdbbp-35, 407},
  });
}

// 5^442 is infinite, and zero times infinity is NaN.
TEST(VRELFloatUtilTest, ZeroWithHugeExponentIsNaN) {
  for (char const* text : {"0e442", "0e500", "0e999999999999"}) {
    EXPECT_TRUE(std::isnan(VRELFloatUtil::vrelstrtod(text, nullptr))) << text;
  }
}

// The documented steps, without fast paths.
Reading ReadSlowly(std::string const& string) {
  char const* const text = string.c_str();
  double const limit = 9007199254740992.0;
  std::int64_t const far = 1'000'000'000'000;
  std::string const space = " \t\n\v\f\r";
  std::string const punctuation = "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
  std::string const digitBytes = "0123456789";
  auto const isIn = [](std::string const& set, char c) { return set.find(c) != std::string::npos; };
  if (text[0] == '\0' || !isIn(space + digitBytes + "+-.", text[0])) return {0.0, 0};
  std::size_t i = 0;
  while (isIn(space, text[i])) ++i;
  int sign = 1;
  if (isIn(punctuation, text[i])) {
    if (text[i] == '-') sign = -1;
    if (text[i] != '.') ++i;
  }
  double x = 0.0;
  std::int64_t e = 0;
  std::int64_t f = 0;
  std::int64_t d = 0;
  bool point = false;
  bool inExponent = false;
  bool hasSign = false;
  bool negative = false;
  bool digitSeen = false;
  bool stopped = false;
  while (text[i] != '\0' && !stopped) {
    char const c = text[i];
    if (isIn(digitBytes, c)) {
      digitSeen = true;
      if (x > limit && !point) {
        e += 1;
      } else if (!inExponent) {
        d += 1;
        if (x < limit) {
          x = x * 10;
          x = x + (c - '0');
          if (point) f -= 1;
        }
      } else {
        e = e * 10 + (c - '0');
        if (e > far) e = far;
      }
    } else if (c == '.') {
      stopped = point || inExponent;
      point = true;
    } else if (isIn("eEdD", c)) {
      stopped = inExponent || !digitSeen;
      inExponent = true;
    } else if (c == '+' || c == '-') {
      stopped = !inExponent || hasSign;
      if (!stopped) negative = c == '-';
      hasSign = true;
    } else {
      stopped = true;
    }
    if (!stopped) ++i;
  }
  std::int64_t const total = (negative ? -e : e) + f;
  if (total + d < -308) return {0.0, i};
  double power = 1.0;
  double base = 5.0;
  for (std::int64_t n = total < 0 ? -total : total; n != 0; n /= 2) {
    if (n % 2 == 1) power = power * base;
    base = base * base;
  }
  x = total < 0 ? x / power : x * power;
  int const shift = total > 20000 ? 20000 : total < -20000 ? -20000 : static_cast<int>(total);
  return {std::ldexp(x, shift) * sign, i};
}

void ExpectSameReading(std::string const& text) {
  Reading const fast = Read(text);
  Reading const slow = ReadSlowly(text);
  if (std::isnan(slow.value)) {
    EXPECT_TRUE(std::isnan(fast.value)) << text;
  } else {
    EXPECT_EQ(Bits(fast.value), Bits(slow.value)) << text << ": " << fast.value << " for " << slow.value;
  }
  EXPECT_EQ(fast.taken, slow.taken) << text;
}

class Texts {
 public:
  std::string Digits(int most) {
    std::string digits;
    for (int n = Below(most + 1); n > 0; --n) digits += static_cast<char>('0' + Below(10));
    return digits;
  }

  std::string Number() {
    std::string text = OneOf({"", "", "-", "+", " ", "  -", " #"});
    text += Digits(OneIn(8) ? 100 : 19);
    if (!OneIn(4)) text += "." + Digits(OneIn(8) ? 100 : 19);
    if (OneIn(2)) text += OneOf({"e", "E", "d", "D"}) + OneOf({"", "-", "+"}) + Digits(OneIn(8) ? 30 : 3);
    return text + OneOf({"", "", ",", ")", "."});
  }

  std::string Noise() {
    std::string const bytes = "0123456789012345678999.+-eEdD #x\xE9\t";
    std::string text;
    for (int n = Below(40); n > 0; --n) text += bytes[static_cast<std::size_t>(Below(static_cast<int>(bytes.size())))];
    return text;
  }

 private:
  int Below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
  bool OneIn(int n) { return Below(n) == 0; }
  std::string OneOf(std::vector<std::string> const& choices) {
    return choices[static_cast<std::size_t>(Below(static_cast<int>(choices.size())))];
  }

  std::mt19937 random{20240817};
};

TEST(VRELFloatUtilTest, EqualsModelOnRandomNumbers) {
  Texts texts;
  for (int i = 0; i < 200000 && !HasFailure(); ++i) ExpectSameReading(texts.Number());
}

TEST(VRELFloatUtilTest, EqualsModelOnRandomBytes) {
  Texts texts;
  for (int i = 0; i < 200000 && !HasFailure(); ++i) ExpectSameReading(texts.Noise());
}

TEST(VRELFloatUtilTest, EqualsModelOnEveryExponent) {
  for (int e = -800; e <= 800; ++e) {
    for (char const* mantissa : {"1", "9.87654321", "0.00012345678901234567", "8888888888888888888.5"}) {
      ExpectSameReading(mantissa + ("e" + std::to_string(e)));
    }
  }
}

TEST(VRELFloatUtilTest, EqualsModelAroundMantissaLimit) {
  for (std::uint64_t n = 9007199254740970; n <= 9007199254741010; ++n) {
    for (char const* tail : {"", "0", "7", "77.7", ".7", ".77e3", "e1", "123e-4"}) {
      ExpectSameReading(std::to_string(n) + tail);
      ExpectSameReading("0." + std::to_string(n) + tail);
      ExpectSameReading(std::to_string(n / 10) + tail);
    }
  }
}

TEST(VRELFloatUtilTest, EveryFirstAndSecondByte) {
  for (int first = 0; first < 256; ++first) {
    for (char const* head : {"", " ", "5", "5e", "-"}) {
      ExpectSameReading(head + std::string(1, static_cast<char>(first)) + "25");
    }
  }
}

}  // namespace
