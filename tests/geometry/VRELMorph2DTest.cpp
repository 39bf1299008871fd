#include "VRELMorph2D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "Coordinates.h"
#include "Gk_Def.h"
#include "PollsAbort.h"

namespace {

using Values = std::vector<double>;

VRELAffine2D Rotation(double angle) {
  VRELAffine2D affine;
  double const rows[2][2] = {{std::cos(angle), -std::sin(angle)}, {std::sin(angle), std::cos(angle)}};
  for (int i = 0; i < 2; ++i) affine.SetRow(i, rows[i]);
  return affine;
}

TEST(VRELMorph2DTest, RotationHasNoEffect) {
  VRELMorph2D const morph(VRELPoint2D(1.0, 0.0), 0.5);
  for (int i = 0; i < 2; ++i) {
    for (int j = 0; j < 2; ++j) EXPECT_EQ(morph.affine().GetElement(i, j), 0.0);
  }
  EXPECT_EQ(Coordinates(morph.translation()), (Values{0.0, 0.0}));
  EXPECT_TRUE(morph.isIdentity());
  VRELPoint2D p(1.0, 2.0);
  p.Transform(morph, false);
  EXPECT_EQ(Coordinates(p), (Values{1.0, 2.0}));
  EXPECT_TRUE(PollsAbort([] { VRELMorph2D const unfinished(VRELPoint2D(1.0, 0.0), 0.5); }));
}

TEST(VRELMorph2DTest, SetScaleScalesTranslation) {
  VRELMorph2D morph(VRELPoint2D(3.0, 4.0));
  morph.setScale(2.0);
  EXPECT_EQ(Coordinates(morph.translation()), (Values{6.0, 8.0}));
  EXPECT_EQ(morph.scaleFactor(), 2.0);
  EXPECT_TRUE(morph.isScale());
  morph.setScale(0.5);
  EXPECT_EQ(Coordinates(morph.translation()), (Values{3.0, 4.0}));
  EXPECT_FALSE(morph.isScale());
}

TEST(VRELMorph2DTest, MultiplyAppliesOtherFirst) {
  VRELMorph2D const turn(Rotation(VRELPIBY2), VRELPoint2D(10.0, 0.0), 2.0);
  VRELMorph2D const shift(VRELPoint2D(1.0, 0.0));
  VRELPoint2D p(3.0, 4.0);
  p.Transform(turn.multiply(shift), false);
  EXPECT_NEAR(p[0], 2.0, 1e-14);
  EXPECT_NEAR(p[1], 8.0, 1e-14);
}

TEST(VRELMorph2DTest, ProductOfTranslations) {
  VRELPoint2D const t1(1.0, 2.0);
  VRELPoint2D const t2(10.0, 20.0);
  VRELMorph2D const first(t1);
  VRELMorph2D const second(t2);
  EXPECT_EQ(Coordinates(first.multiply(second).translation()), (Values{11.0, 22.0}));
  EXPECT_EQ(Coordinates(second.multiply(first).translation()), (Values{11.0, 22.0}));
  VRELMorph2D scaled(t1);
  scaled.setScale(2.0);  // scales the translation: 2, 4
  VRELAffine2D identity;
  identity.MakeIdentity();
  VRELMorph2D const twice(identity, t1, 2.0);
  VRELMorph2D out;
  twice.Multiply(second, out);
  EXPECT_EQ(Coordinates(out.translation()), (Values{21.0, 42.0}));
  EXPECT_EQ(out.scaleFactor(), 2.0);
  EXPECT_TRUE(out.isScale());
  EXPECT_EQ(Coordinates(scaled.multiply(second).translation()), (Values{22.0, 44.0}));
}

TEST(VRELMorph2DTest, ProductOfMatrices) {
  VRELAffine2D a;
  VRELAffine2D b;
  double const rowsA[2][2] = {{1, 2}, {3, 4}};
  double const rowsB[2][2] = {{5, 6}, {7, 8}};
  for (int i = 0; i < 2; ++i) {
    a.SetRow(i, rowsA[i]);
    b.SetRow(i, rowsB[i]);
  }
  VRELMorph2D const product = VRELMorph2D(a, VRELPoint2D(), 3.0).multiply(VRELMorph2D(b, VRELPoint2D(), 5.0));
  EXPECT_EQ(product.scaleFactor(), 15.0);
  EXPECT_EQ(product.affine().GetElement(0, 0), 19.0);
  EXPECT_EQ(product.affine().GetElement(0, 1), 22.0);
  EXPECT_EQ(product.affine().GetElement(1, 0), 43.0);
  EXPECT_EQ(product.affine().GetElement(1, 1), 50.0);
}

TEST(VRELMorph2DTest, ProductCanReplaceFactor) {
  VRELMorph2D const turn(Rotation(0.5), VRELPoint2D(10.0, 0.0), 2.0);
  VRELMorph2D const other(Rotation(-0.2), VRELPoint2D(1.0, 7.0), 3.0);
  VRELMorph2D const expected = turn.multiply(other);
  VRELMorph2D inPlace(turn);
  inPlace.Multiply(other, inPlace);
  EXPECT_TRUE(inPlace.isEqual(expected));
  inPlace = other;
  turn.Multiply(inPlace, inPlace);
  EXPECT_TRUE(inPlace.isEqual(expected));
}

// Compares with applying both morphs to the point.
TEST(VRELMorph2DTest, ProductEqualsSuccession) {
  std::mt19937 random(84);
  std::uniform_real_distribution<double> uniform(-3.0, 3.0);
  auto const any = [&] {
    return VRELMorph2D(Rotation(uniform(random)), VRELPoint2D(uniform(random), uniform(random)), uniform(random));
  };
  auto const image = [](VRELMorph2D const& m, Values const& p) {
    Values q;
    for (int i = 0; i < 2; ++i) {
      double const rotated = m.affine().GetElement(i, 0) * p[0] + m.affine().GetElement(i, 1) * p[1];
      q.push_back(m.scaleFactor() * rotated + m.translation()[i]);
    }
    return q;
  };
  for (int round = 0; round < 1000; ++round) {
    VRELMorph2D const a = any();
    VRELMorph2D const b = any();
    VRELPoint2D p(uniform(random), uniform(random));
    Values const expected = image(a, image(b, Coordinates(p)));
    VRELPoint2D back(p);
    p.Transform(a.multiply(b), false);
    ASSERT_NEAR(p[0], expected[0], 1e-12);
    ASSERT_NEAR(p[1], expected[1], 1e-12);
    if (std::fabs(a.scaleFactor()) < 0.01) continue;
    VRELPoint2D const start(back);
    back.Transform(a, false);
    back.Transform(a.inverse(), false);
    ASSERT_TRUE(back.IsWithinTolerance(start, 1e-11));
    ASSERT_TRUE(a.multiply(a.inverse()).isEqual(VRELMorph2D()));
  }
}

}  // namespace
