#include "Gk_LinMap.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(Gk_LinMapTest, MapsBySlopeAndOffset) {
  Gk_LinMap const map(2.0, -3.0);
  EXPECT_EQ(map.slope(), 2.0);
  EXPECT_EQ(map.offset(), -3.0);
  EXPECT_FALSE(map.isNegate());
  EXPECT_FALSE(map.isIdentity());
  EXPECT_EQ(map.apply(5.0), 7.0);
  EXPECT_EQ(map.invert(7.0), 5.0);
}

TEST(Gk_LinMapTest, IdentityReturnsArgument) {
  Gk_LinMap const map(1.0 + 5e-11, 5e-11);
  EXPECT_TRUE(map.isIdentity());
  EXPECT_EQ(map.apply(1e6), 1e6);
  EXPECT_EQ(map.invert(1e6), 1e6);
  EXPECT_FALSE(Gk_LinMap(1.0 + 2e-10, 0.0).isIdentity());
  EXPECT_FALSE(Gk_LinMap(1.0, 2e-10).isIdentity());
  EXPECT_FALSE(Gk_LinMap(1.0, -2e-10).isIdentity());
}

TEST(Gk_LinMapTest, MinusOneNegates) {
  Gk_LinMap const map(-1.0 + 5e-11, 5e-11);
  EXPECT_TRUE(map.isNegate());
  EXPECT_FALSE(map.isIdentity());
  EXPECT_EQ(map.apply(3.0), -3.0);
  EXPECT_EQ(map.invert(3.0), -3.0);
}

TEST(Gk_LinMapTest, NegativeSlopeWithOffsetIsNotUnit) {
  Gk_LinMap const map(-1.0, 4.0);
  EXPECT_TRUE(map.isNegate());
  EXPECT_EQ(map.apply(3.0), 1.0);
  EXPECT_EQ(map.invert(1.0), 3.0);
}

TEST(Gk_LinMapTest, InverseOfFlatMapIsZero) {
  EXPECT_EQ(Gk_LinMap(0.0, 4.0).invert(7.0), 0.0);
  EXPECT_EQ(Gk_LinMap(-5e-11, 4.0).invert(7.0), 0.0);
  EXPECT_EQ(Gk_LinMap(0.5e-9, 0.0).invert(1e-9), 2.0);
}

TEST(Gk_LinMapTest, InverseUndoesApply) {
  Gk_LinMap const back = Gk_LinMap(4.0, 6.0).inverse();
  EXPECT_EQ(back.slope(), 0.25);
  EXPECT_EQ(back.offset(), -1.5);
  EXPECT_EQ(back.apply(14.0), 2.0);
}

TEST(Gk_LinMapTest, InverseOfZeroSlopeDividesByZero) {
  Gk_LinMap const back = Gk_LinMap(0.0, 6.0).inverse();
  EXPECT_TRUE(std::isinf(back.slope()));
  EXPECT_TRUE(std::isinf(back.offset()));
}

TEST(Gk_LinMapTest, ComposeBeforeRunsThisFirst) {
  Gk_LinMap map(2.0, 3.0);
  map.compose(Gk_LinMap(5.0, 7.0), true);
  EXPECT_EQ(map.slope(), 10.0);
  EXPECT_EQ(map.offset(), 22.0);  // 5 * 3 + 7
}

TEST(Gk_LinMapTest, ComposeAfterAppliesOtherFirst) {
  Gk_LinMap map(2.0, 3.0);
  map.compose(Gk_LinMap(5.0, 7.0), false);
  EXPECT_EQ(map.slope(), 10.0);
  EXPECT_EQ(map.offset(), 17.0);  // 2 * 7 + 3
}

TEST(Gk_LinMapTest, ComposeUsesOriginalMapForOffset) {
  // A unit map returns 7, although its slope is slightly above 1.
  Gk_LinMap map(1.0 + 5e-11, 0.0);
  map.compose(Gk_LinMap(5.0, 7.0), false);
  EXPECT_EQ(map.offset(), 7.0);
}

TEST(Gk_LinMapTest, ComposeWithIdentityChangesNothing) {
  Gk_LinMap map(2.0, 3.0);
  map.compose(Gk_LinMap(1.0 + 5e-11, 5e-11), true);
  EXPECT_EQ(map.slope(), 2.0);
  EXPECT_EQ(map.offset(), 3.0);
}

TEST(Gk_LinMapTest, ComposeClassifiesResult) {
  Gk_LinMap map(-1.0, 0.0);
  map.compose(Gk_LinMap(-1.0, 0.0), true);
  EXPECT_TRUE(map.isIdentity());
  EXPECT_FALSE(map.isNegate());
  map.compose(Gk_LinMap(-2.0, 0.0), true);
  EXPECT_TRUE(map.isNegate());
  EXPECT_EQ(map.apply(3.0), -6.0);
}

TEST(Gk_LinMapTest, EqualWithinTolerance) {
  Gk_LinMap const map(2.0, 3.0);
  EXPECT_TRUE(map == Gk_LinMap(2.0 + 5e-11, 3.0 - 5e-11));
  EXPECT_FALSE(map == Gk_LinMap(2.0 + 2e-10, 3.0));
  EXPECT_FALSE(map == Gk_LinMap(2.0, 3.0 + 2e-10));
  EXPECT_TRUE(map != Gk_LinMap(-2.0, 3.0));
}

}  // namespace
