#include "Gk_Func.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Gk_FuncTest, SquareIsComputedInDoubles) {
  EXPECT_EQ(VRELSquare(-1.5), 2.25);
  EXPECT_EQ(VRELSquare(1e200), std::numeric_limits<double>::infinity());
  // The square of a float outside the range of float.
  EXPECT_EQ(VRELSquare(16777213.0F), 281474876047369.0);
}

TEST(Gk_FuncTest, EqualIncludesTolerance) {
  EXPECT_TRUE(Gk_Func::equal(1.0, 1.5, 0.5));
  EXPECT_TRUE(Gk_Func::equal(1.5, 1.0, 0.5));
  EXPECT_FALSE(Gk_Func::equal(1.0, 1.5, 0.4999));
  EXPECT_TRUE(Gk_Func::equal(2.0, 2.0, 0.0));
  EXPECT_TRUE(Gk_Func::equal(1.0f, 1.5f, 0.5f));
  EXPECT_FALSE(Gk_Func::equal(1.5f, 1.0f, 0.25f));
}

TEST(Gk_FuncTest, FloatsAreComparedAsFloats) {
  // As floats the difference is 2^24; as doubles it would be one more.
  EXPECT_TRUE(Gk_Func::equal(16777216.0f, -1.0f, 16777216.0f));
}

TEST(Gk_FuncTest, NaNEqualsNothing) {
  EXPECT_FALSE(Gk_Func::equal(notANumber, 1.0, 10.0));
  EXPECT_FALSE(Gk_Func::equal(1.0, notANumber, 10.0));
  EXPECT_FALSE(Gk_Func::equal(notANumber, notANumber, 10.0));
  EXPECT_FALSE(Gk_Func::equal(1.0, 1.0, notANumber));
  EXPECT_FALSE(Gk_Func::equal(std::numeric_limits<float>::quiet_NaN(), 1.0f, 10.0f));
}

TEST(Gk_FuncTest, Lesseq) {
  EXPECT_TRUE(Gk_Func::lesseq(1.0, 2.0, 0.0));
  EXPECT_TRUE(Gk_Func::lesseq(2.0, 2.0, 0.0));
  EXPECT_TRUE(Gk_Func::lesseq(2.5, 2.0, 0.5));
  EXPECT_FALSE(Gk_Func::lesseq(2.625, 2.0, 0.5));
  EXPECT_FALSE(Gk_Func::lesseq(notANumber, 2.0, 0.5));
}

TEST(Gk_FuncTest, IsEven) {
  EXPECT_TRUE(Gk_Func::isEven(0));
  EXPECT_TRUE(Gk_Func::isEven(-2));
  EXPECT_FALSE(Gk_Func::isEven(7));
  EXPECT_FALSE(Gk_Func::isEven(-1));
  EXPECT_TRUE(Gk_Func::isEven(std::numeric_limits<int>::min()));
}

TEST(Gk_FuncTest, Abs) {
  EXPECT_EQ(Gk_Func::abs(-5), 5);
  EXPECT_EQ(Gk_Func::abs(5), 5);
  EXPECT_EQ(Gk_Func::abs(0), 0);
  EXPECT_EQ(Gk_Func::abs(std::numeric_limits<int>::min()), std::numeric_limits<int>::min());
  EXPECT_EQ(Gk_Func::abs(-2.5), 2.5);
  EXPECT_EQ(Gk_Func::abs(2.5), 2.5);
  EXPECT_FALSE(std::signbit(Gk_Func::abs(-0.0)));
}

TEST(Gk_FuncTest, NotInRangeIsBelowBothOthers) {
  EXPECT_TRUE(Gk_Func::notInRange(2, 1, 3));
  EXPECT_TRUE(Gk_Func::notInRange(3, 1, 2));
  EXPECT_FALSE(Gk_Func::notInRange(1, 2, 3));
  EXPECT_FALSE(Gk_Func::notInRange(1, 4, 3));  // above both
  EXPECT_FALSE(Gk_Func::notInRange(1, 1, 3));
  EXPECT_FALSE(Gk_Func::notInRange(3, 1, 1));
}

TEST(Gk_FuncTest, BinCoeff) {
  struct Row {
    int n;
    int k;
    double expected;
  };
  // All intermediate quotients and products are exact.
  for (Row const& row : {Row{0, 0, 1}, Row{5, 0, 1}, Row{5, 5, 1}, Row{5, 1, 5}, Row{5, 4, 5}, Row{5, 2, 10},
                         Row{5, 3, 10}, Row{6, 3, 20}, Row{8, 4, 70}, Row{2, 3, 0}, Row{0, 1, 0}, Row{-1, 0, 0},
                         Row{5, -1, 0}, Row{-3, -5, 0}, Row{1000000, 1, 1000000}}) {
    EXPECT_EQ(Gk_Func::binCoeff(row.n, row.k), row.expected) << row.n << " over " << row.k;
  }
  EXPECT_NEAR(Gk_Func::binCoeff(7, 3), 35.0, 1e-12);
  EXPECT_NEAR(Gk_Func::binCoeff(52, 5), 2598960.0, 1e-6);
}

TEST(Gk_FuncTest, BinCoeffRoundsEachProduct) {
  // 7/3 * 1, then 6/2 *, then 5/1 *, rounded at each step.
  double const first = 7.0 / 3.0;
  EXPECT_EQ(Gk_Func::binCoeff(7, 3), 5.0 * (3.0 * first));
}

// With k factors the results would differ in the last digit, and the last row would take minutes.
TEST(Gk_FuncTest, BinCoeffUsesSmallerOfKAndRest) {
  EXPECT_EQ(Gk_Func::binCoeff(8, 7), 8.0);
  EXPECT_EQ(Gk_Func::binCoeff(10, 8), 45.0);
  EXPECT_EQ(Gk_Func::binCoeff(2000000000, 1999999999), 2000000000.0);
}

TEST(Gk_FuncTest, BinCoeffOfHugeNumbersEnds) {
  EXPECT_EQ(Gk_Func::binCoeff(2147483647, 1000000000), infinity);
  EXPECT_EQ(Gk_Func::binCoeff(2147483647, std::numeric_limits<int>::min()), 0.0);
}

TEST(Gk_FuncTest, ProjectConvexRatio) {
  // 2 * 0.5 / (4 - 2 * 0.5)
  EXPECT_EQ(Gk_Func::projectConvexRatio(0.5, 2.0, 4.0), 1.0 / 3.0);
  EXPECT_EQ(Gk_Func::projectConvexRatio(0.25, 3.0, 1.0), 0.5);
  EXPECT_EQ(Gk_Func::projectConvexRatio(2.0, 1.0, 1.0), 2.0);
  EXPECT_EQ(Gk_Func::projectConvexRatio(0.0, 2.0, 4.0), 0.0);
  EXPECT_EQ(Gk_Func::projectConvexRatio(1.0, 2.0, 4.0), 1.0);
  // Values within 1e-10 of the ends are returned unchanged.
  EXPECT_EQ(Gk_Func::projectConvexRatio(5e-11, 2.0, 4.0), 5e-11);
  EXPECT_EQ(Gk_Func::projectConvexRatio(-5e-11, 2.0, 4.0), -5e-11);
  EXPECT_EQ(Gk_Func::projectConvexRatio(1.0 + 5e-11, 2.0, 4.0), 1.0 + 5e-11);
  EXPECT_NE(Gk_Func::projectConvexRatio(2e-10, 2.0, 4.0), 2e-10);
}

TEST(Gk_FuncTest, Compare) {
  struct Row {
    char const* s;
    char const* t;
    char stop;
    bool expected;
  };
  for (Row const& row :
       {Row{"abc:x", "abc:y", ':', true}, Row{"abc", "abc", ':', true}, Row{"abc", "abd", ':', false},
        Row{"abc", "ab", ':', false}, Row{"ab", "abc", ':', false}, Row{"", "", ':', true}, Row{"", "a", ':', false},
        Row{"ab:", "ab", ':', true}, Row{"ab", "ab:", ':', true},
        // A stop byte in one string is sufficient.
        Row{":x", "abc", ':', true}, Row{"abc", "a:c", ':', true}, Row{"xb:", "ab:", ':', false},
        // With the terminator as stop byte, the shorter string decides.
        Row{"ab", "abc", '\0', true}, Row{"abc", "", '\0', true}, Row{"abd", "abc", '\0', false},
        Row{nullptr, "a", ':', false}, Row{"a", nullptr, ':', false}, Row{nullptr, nullptr, ':', false}}) {
    SCOPED_TRACE(testing::Message() << (row.s ? row.s : "null") << " and " << (row.t ? row.t : "null"));
    EXPECT_EQ(Gk_Func::compare(row.s, row.t, row.stop), row.expected);
  }
}

TEST(Gk_FuncTest, Round) {
  EXPECT_EQ(Gk_Func::round(2.3, 0.25), 2.25);
  EXPECT_EQ(Gk_Func::round(2.375, 0.25), 2.5);
  EXPECT_EQ(Gk_Func::round(-2.3, 0.25), -2.25);
  EXPECT_EQ(Gk_Func::round(-2.375, 0.25), -2.25);  // halves round up
  EXPECT_EQ(Gk_Func::round(7.0, 0.5), 7.0);
  EXPECT_EQ(Gk_Func::round(0.5, 1.0), 1.0);
  // Only the fraction is rounded: 3 + 0, not 4.
  EXPECT_EQ(Gk_Func::round(3.75, 2.0), 3.0);
}

TEST(Gk_FuncTest, Atan2IsBetweenZeroAndTwoPi) {
  EXPECT_EQ(Gk_Func::atan2(-1, 0), 4.71238898038469);
  EXPECT_EQ(Gk_Func::atan2(1, 0), 1.5707963267948966);
  EXPECT_EQ(Gk_Func::atan2(0, 1), 0.0);
  EXPECT_EQ(Gk_Func::atan2(0, -1), 3.141592653589793);
  EXPECT_EQ(Gk_Func::atan2(-0.0, -1), 3.141592653589793);
  EXPECT_EQ(Gk_Func::atan2(5e-11, 1), 0.0);
  EXPECT_EQ(Gk_Func::atan2(-5e-11, 1), 0.0);
  EXPECT_FALSE(std::signbit(Gk_Func::atan2(-0.0, 1)));
  EXPECT_NEAR(Gk_Func::atan2(-2e-10, 1), 6.283185307179586, 1e-9);
  EXPECT_TRUE(std::isnan(Gk_Func::atan2(notANumber, 1)));
}

}  // namespace
