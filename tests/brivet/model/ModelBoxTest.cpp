#include "ModelBox.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(ModelBoxTest, ExtendIgnoresUnusableNumbers) {
  ModelBox box;
  for (double const bad : {std::nan(""), HUGE_VAL, 1e308, -1e308}) {
    double const point[3] = {0, bad, 0};
    box.Extend(point);
  }
  EXPECT_TRUE(box.isEmpty);
  EXPECT_EQ(box.Diagonal(), 0);
  double const a[3] = {1, 2, 3};
  double const b[3] = {4, -2, 3};
  box.Extend(a);
  box.Extend(b);
  EXPECT_EQ(box.low[1], -2);
  EXPECT_EQ(box.high[0], 4);
  EXPECT_EQ(box.Diagonal(), 5);
  ModelBox const empty;
  box.Extend(empty);
  EXPECT_EQ(box.Diagonal(), 5);
}

TEST(ModelBoxTest, ContainsBoxesOnItsBoundary) {
  auto const boxOf = [](double low, double high) {
    ModelBox box;
    double const ends[2][3] = {{low, 0, 0}, {high, 1, 1}};
    for (double const* const end : ends) box.Extend(end);
    return box;
  };
  ModelBox const box = boxOf(0, 4);
  EXPECT_TRUE(box.Contains(boxOf(0, 4)));
  EXPECT_TRUE(box.Contains(boxOf(1, 2)));
  EXPECT_FALSE(box.Contains(boxOf(-1, 2)));
  EXPECT_FALSE(box.Contains(boxOf(1, 5)));
  EXPECT_FALSE(boxOf(1, 2).Contains(box));
  EXPECT_FALSE(box.Contains(ModelBox()));
  EXPECT_FALSE(ModelBox().Contains(box));
  EXPECT_FALSE(ModelBox().Contains(ModelBox()));
}
