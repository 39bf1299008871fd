#include "StepRecordText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "VRELFloatUtil.h"

namespace {

// Bytes with the padding that StepRecordText needs.
class Padded {
 public:
  explicit Padded(std::string const& text) : bytes(text + std::string(1 + StepRecordText::kPadding, '\0')) {}
  StepRecordText Record(char const* type = "A") const { return {bytes.data(), type}; }

 private:
  std::string const bytes;
};

bool ReadNumber(std::string const& text, double& number) {
  Padded const bytes("A(" + text + ")");
  return bytes.Record().Number(number);
}

// Returns the bits of a number, which distinguish the zeros.
std::uint64_t Bits(double number) {
  std::uint64_t bits;
  std::memcpy(&bits, &number, sizeof bits);
  return bits;
}

}  // namespace

TEST(StepRecordTextTest, ReadsValuesInOrder) {
  Padded const bytes("EDGE ('it''s', #12,\r\n $,*,.F.,(#1 , #2),\t(1.,-2),( ),-3.E1);");
  StepRecordText record = bytes.Record("EDGE");
  std::int64_t id = 0;
  EXPECT_TRUE(record.Skip());
  EXPECT_TRUE(record.Reference(id));
  EXPECT_EQ(id, 12);
  EXPECT_TRUE(record.AtUnset());
  EXPECT_TRUE(record.Skip());
  EXPECT_FALSE(record.AtUnset());
  EXPECT_TRUE(record.Skip());
  std::string_view name;
  EXPECT_TRUE(record.Enumeration(name));
  EXPECT_EQ(name, "F");
  std::vector<std::int64_t> ids;
  EXPECT_TRUE(record.References([&](std::int64_t each) {
    ids.push_back(each);
    return true;
  }));
  EXPECT_EQ(ids, (std::vector<std::int64_t>{1, 2}));
  std::vector<double> numbers;
  auto const add = [&](double each) {
    numbers.push_back(each);
    return true;
  };
  EXPECT_TRUE(record.Numbers(add));
  EXPECT_TRUE(record.Numbers(add));
  EXPECT_EQ(numbers, (std::vector<double>{1.0, -2.0}));
  double last = 0.0;
  EXPECT_TRUE(record.Number(last));
  EXPECT_EQ(last, -30.0);
  EXPECT_FALSE(record.Skip());
}

TEST(StepRecordTextTest, SkipsEachKind) {
  Padded const bytes(
      "A('',#1,.T.,.5,-1,+2.5E-3,$,*,'x',(),((1.,-2.E-1),(#3,$)), ( 'a)''(b' ,*,.UP., KEY_1(2)\r\n) ,'last',7)");
  StepRecordText record = bytes.Record();
  for (int i = 0; i < 13; ++i) EXPECT_TRUE(record.Skip()) << i;
  double number = 0.0;
  EXPECT_TRUE(record.Number(number));
  EXPECT_EQ(number, 7.0);
  EXPECT_FALSE(record.Skip());
}

TEST(StepRecordTextTest, ReadsTriples) {
  Padded const bytes("A((1.,-2.5,3),( 4.E1 ,5.),(6.),(1.,2.,3.,4.),(1.,2.,3.))");
  StepRecordText record = bytes.Record();
  double numbers[3] = {9.0, 9.0, 9.0};
  auto const expect = [&](double first, double second, double third) {
    EXPECT_EQ(numbers[0], first);
    EXPECT_EQ(numbers[1], second);
    EXPECT_EQ(numbers[2], third);
  };
  EXPECT_TRUE(record.Triple(numbers));
  expect(1.0, -2.5, 3.0);
  EXPECT_TRUE(record.Triple(numbers));
  expect(40.0, 5.0, 0.0);
  EXPECT_TRUE(record.Triple(numbers));
  expect(6.0, 0.0, 0.0);
  EXPECT_FALSE(record.Triple(numbers));
  EXPECT_FALSE(record.Triple(numbers));
  for (char const* const text : {"A(())", "A((#1))", "A((1.,))", "A((1.;", "A((1.,2.", "A(1.)", "A((1.)", "A((1.)x"}) {
    Padded const refused(text);
    EXPECT_FALSE(refused.Record().Triple(numbers)) << text;
  }
}

TEST(StepRecordTextTest, ReadsEnumerations) {
  Padded const bytes("A(.T., .F. ,.UNKNOWN.,.U.)");
  StepRecordText record = bytes.Record();
  for (char const* const expected : {"T", "F", "UNKNOWN", "U"}) {
    std::string_view name;
    EXPECT_TRUE(record.Enumeration(name));
    EXPECT_EQ(name, expected);
  }
  for (char const* const text : {"A(.T.x)", "A(.1.)", "A(.T", "A(..)"}) {
    Padded const refused(text);
    std::string_view name;
    EXPECT_FALSE(refused.Record().Enumeration(name)) << text;
  }
}

// After a refusal nothing can be read, although a value follows.
TEST(StepRecordTextTest, RefusesOtherForms) {
  for (char const* const text : {"A('\\X2\\00E9\\X0\\',1)",
                                 "A('\xC3\xA9',1)",
                                 "A('a\nb',1)",
                                 "A('a",
                                 "A(/* */1,1)",
                                 "A((1,'\\X\\E9'),1)",
                                 "A((1;),1)",
                                 "A((1,(2),1",
                                 "A((1,/* ) */2),1)",
                                 "A(\"0F\",1)",
                                 "A(B(1),1)",
                                 "A(#,1)",
                                 "A(#1234567890123456789,1)",
                                 "A(.T,1)",
                                 "A(.,1)",
                                 "A(-,1)",
                                 "A(1.5D3,1)",
                                 "A(1E,1)",
                                 "A(1 2,1)",
                                 "A(!U,1)",
                                 "A(@1,1)",
                                 "A(;1)",
                                 "A()",
                                 "A"}) {
    Padded const bytes(text);
    StepRecordText record = bytes.Record();
    EXPECT_FALSE(record.Skip()) << text;
    double number = 0.0;
    EXPECT_FALSE(record.Number(number)) << text;
  }
  Padded const lists("A((1.,#2),(#1,2),(1.,),(,1.),1.,(1.");
  for (int i = 0; i < 2; ++i) {
    StepRecordText record = lists.Record();
    EXPECT_FALSE(record.Numbers([](double) { return true; }));
    EXPECT_FALSE(record.References([](std::int64_t) { return true; }));
  }
  Padded const refused("A((1.,2.),3.)");
  StepRecordText record = refused.Record();
  EXPECT_FALSE(record.Numbers([](double) { return false; }));
  EXPECT_FALSE(record.Skip());
}

TEST(StepRecordTextTest, RefusesOtherTypes) {
  Padded const bytes("LINES(1)");
  EXPECT_FALSE(bytes.Record("LINE").Skip());
  EXPECT_FALSE(bytes.Record("PLANE").Skip());
  EXPECT_TRUE(bytes.Record("LINES").Skip());
  EXPECT_FALSE(StepRecordText(nullptr, "A").Skip());
  EXPECT_FALSE(StepRecordText().Skip());
}

// Halfway cases, mantissas about 2^53, powers about 10^22, and eight digits at once at each position.
TEST(StepRecordTextTest, NumbersAreNearest) {
  for (char const* const text : {"0.",
                                 "-0.",
                                 "0.E5",
                                 "1.",
                                 "-1.",
                                 "+1.",
                                 ".5",
                                 "0.1",
                                 "0.2",
                                 "0.3",
                                 "1234567.",
                                 "12345678.",
                                 "123456789.",
                                 "1234567812345678.",
                                 "0.1234567",
                                 "0.12345678",
                                 "0.123456789",
                                 "12345678.12345678",
                                 "1.7976931",
                                 "3.14159265358979",
                                 "9007199254740991.",
                                 "9007199254740992.",
                                 "900719925474099.1",
                                 "0.9007199254740991",
                                 "1E22",
                                 "1.E22",
                                 "123E20",
                                 "1E-22",
                                 "7.E-22",
                                 "8.5E-10",
                                 "4.35",
                                 "0.000001",
                                 "123456789012345E-22",
                                 "100000000000000000.",
                                 "5E-1",
                                 "00000000012.5"}) {
    double number = 1.0;
    ASSERT_TRUE(ReadNumber(text, number)) << text;
    EXPECT_EQ(Bits(number), Bits(std::strtod(text, nullptr))) << text;
    EXPECT_EQ(Bits(number), Bits(VRELFloatUtil::vrelstrtod(text, nullptr))) << text;
  }
}

// Numbers outside of the exact range have the value that the rest of the program gives them.
TEST(StepRecordTextTest, OtherNumbersAreThoseOfFloatUtil) {
  for (char const* const text :
       {"9007199254740993.", "12345678901234567890.", "0.12345678901234567", "-1.58749999999999947", "1E23", "1E-23",
        "6.02214076E23", "1.6E-35", "1E308", "1E309", "-1E400", "1E-308", "4.9E-324", "1E-400", "1E99999999999",
        "1E-99999999999", "99999999999999999999E-20"}) {
    double number = 1.0;
    ASSERT_TRUE(ReadNumber(text, number)) << text;
    EXPECT_EQ(Bits(number), Bits(VRELFloatUtil::vrelstrtod(text, nullptr))) << text;
  }
  double number = 0.0;
  EXPECT_TRUE(ReadNumber("1." + std::string(61, '3'), number));
  EXPECT_FALSE(ReadNumber("1." + std::string(62, '3'), number));
}

TEST(StepRecordTextTest, RandomNumbersAreThoseOfFloatUtil) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 20000; ++i) {
    double const value = std::ldexp(static_cast<double>(random() >> 11U), static_cast<int>(random() % 160) - 130);
    char text[64];
    std::snprintf(text, sizeof text, "%.*G", static_cast<int>(1 + random() % 17), i % 2 == 0 ? value : -value);
    double number = 0.0;
    ASSERT_TRUE(ReadNumber(text, number)) << text;
    ASSERT_EQ(Bits(number), Bits(VRELFloatUtil::vrelstrtod(text, nullptr))) << text;
  }
}
