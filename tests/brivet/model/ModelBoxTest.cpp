#include "ModelBox.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(ModelBoxTest, ExtendIgnoresUnusableNumbers) {
  ModelBox box;
  for (double const bad : {NAN, static_cast<double>(INFINITY), 1e308, -1e308}) {
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

TEST(ModelBoxTest, AsBoxKeepsEmptiness) {
  EXPECT_EQ(ModelBox().AsBox3D().IsEmpty(), VRELBox3D().IsEmpty());
  ModelBox box;
  double const a[3] = {1, 2, 3};
  box.Extend(a);
  EXPECT_FALSE(box.AsBox3D().IsEmpty());
}
