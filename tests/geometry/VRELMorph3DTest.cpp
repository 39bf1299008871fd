#include "VRELMorph3D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "Coordinates.h"
#include "Gk_Def.h"
#include "PollsAbort.h"
#include "VRELAssemblyComponentTransform.h"

namespace {

using Values = std::vector<double>;

VRELPoint3D const& Z() {
  static VRELPoint3D const axis(0.0, 0.0, 1.0);
  return axis;
}

TEST(VRELMorph3DTest, SetScaleKeepsTranslation) {
  VRELMorph3D morph(VRELPoint3D(3.0, 4.0, 5.0));
  morph.setScale(2.0);
  EXPECT_EQ(Coordinates(morph.translation()), (Values{3.0, 4.0, 5.0}));
  EXPECT_EQ(morph.scaleFactor(), 2.0);
  EXPECT_TRUE(morph.isScale());
  morph.setScale(0.5 + 1e-11);
  EXPECT_FALSE(morph.isScale());
}

TEST(VRELMorph3DTest, FixScaleFactorScalesTranslation) {
  VRELMorph3D morph(VRELPoint3D(3.0, 4.0, 5.0));
  morph.setScale(2.0);
  morph.FixScaleFactor();
  EXPECT_EQ(Coordinates(morph.translation()), (Values{6.0, 8.0, 10.0}));
  EXPECT_EQ(morph.scaleFactor(), 1.0);
  EXPECT_FALSE(morph.isScale());
  EXPECT_TRUE(morph.isTranslation());
}

TEST(VRELMorph3DTest, FixScaleFactorTestsFlag) {
  VRELMorph3D morph(VRELPoint3D(3.0, 4.0, 5.0));
  morph.setScale(1.0 + 5e-11);
  morph.FixScaleFactor();
  EXPECT_EQ(Coordinates(morph.translation()), (Values{3.0, 4.0, 5.0}));
  EXPECT_EQ(morph.scaleFactor(), 1.0 + 5e-11);
}

TEST(VRELMorph3DTest, FixScaleFactorKeepsTranslationFlag) {
  VRELMorph3D morph(VRELPoint3D(5e-7, 0.0, 0.0));
  morph.setScale(1000.0);
  morph.FixScaleFactor();
  EXPECT_EQ(morph.translation()[0], 5e-4);
  EXPECT_FALSE(morph.isTranslation());
}

TEST(VRELMorph3DTest, RotationIsRightHanded) {
  struct {
    VRELPoint3D axis;
    VRELPoint3D from;
    Values to;
  } const rows[] = {
      {{0.0, 0.0, 5.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}},
      {{2.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}},
      {{0.0, 3.0, 0.0}, {0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}},
      {{0.0, 0.0, -1.0}, {1.0, 0.0, 0.0}, {0.0, -1.0, 0.0}},
  };
  for (auto const& [axis, from, to] : rows) {
    SCOPED_TRACE(testing::PrintToString(Coordinates(axis)));
    VRELMorph3D const turn(axis, VRELPIBY2);
    EXPECT_TRUE(turn.isAffine());
    EXPECT_FALSE(turn.isScale());
    EXPECT_FALSE(turn.isTranslation());
    VRELPoint3D p(from);
    p.Transform(turn, false);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(p[i], to[static_cast<std::size_t>(i)], 1e-15);
  }
}

// v cos a + (u x v) sin a + u (u . v) (1 - cos a)
TEST(VRELMorph3DTest, RotationEqualsRodriguesFormula) {
  std::mt19937 random(85);
  std::uniform_real_distribution<double> uniform(-5.0, 5.0);
  auto const any = [&] { return VRELPoint3D(uniform(random), uniform(random), uniform(random)); };
  for (int round = 0; round < 1000; ++round) {
    VRELPoint3D const axis = any();
    double const angle = uniform(random);
    VRELPoint3D const v = any();
    double const length = std::sqrt(axis[0] * axis[0] + axis[1] * axis[1] + axis[2] * axis[2]);
    double const u[] = {axis[0] / length, axis[1] / length, axis[2] / length};
    double const along = u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
    VRELPoint3D p(v);
    p.Transform(VRELMorph3D(axis, angle), false);
    for (int i = 0; i < 3; ++i) {
      int const j = (i + 1) % 3;
      int const k = (i + 2) % 3;
      double const expected = v[i] * std::cos(angle) + (u[j] * v[k] - u[k] * v[j]) * std::sin(angle) +
                              u[i] * along * (1.0 - std::cos(angle));
      ASSERT_NEAR(p[i], expected, 1e-13);
    }
  }
}

TEST(VRELMorph3DTest, InverseOfRotationIsTranspose) {
  VRELAffine3D const affine = VRELMorph3D(VRELPoint3D(1.0, 2.0, 3.0), 0.7).affine();
  VRELAffine3D inverse;
  VRELAffine3D transposed;
  affine.GetInverse(inverse);
  affine.GetTranspose(transposed);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) EXPECT_NEAR(inverse.GetElement(i, j), transposed.GetElement(i, j), 1e-10);
  }
}

TEST(VRELMorph3DTest, RotationByZeroIsIdentity) {
  EXPECT_TRUE(VRELMorph3D(VRELPoint3D(1.0, 2.0, 3.0), 0.0).isIdentity());
}

TEST(VRELMorph3DTest, ZeroAxisSetsCosineOnDiagonal) {
  VRELMorph3D const turn(VRELPoint3D(), VRELPI);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) EXPECT_EQ(turn.affine().GetElement(i, j), i == j ? -1.0 : 0.0);
  }
  EXPECT_TRUE(std::isnan(VRELMorph3D(Z(), infinity).affine().GetElement(0, 0)));
}

TEST(VRELMorph3DTest, PlacementNeedsFixMorphFlags) {
  double const values[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  VRELMorph3D morph(VRELAssemblyComponentTransform(values, 2.0));
  EXPECT_TRUE(morph.isIdentity());
  EXPECT_EQ(morph.scaleFactor(), 2.0);
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      EXPECT_EQ(morph.affine().GetElement(row, column), values[3 * column + row]);
    }
  }
  EXPECT_EQ(Coordinates(morph.translation()), (Values{10.0, 11.0, 12.0}));
  VRELPoint3D p(1.0, 1.0, 1.0);
  p.Transform(morph, false);
  EXPECT_EQ(Coordinates(p), (Values{1.0, 1.0, 1.0}));
  morph.fixMorphFlags();
  EXPECT_FALSE(morph.isIdentity());
  p.Transform(morph, false);
  EXPECT_EQ(Coordinates(p), (Values{34.0, 41.0, 48.0}));  // 2 * 12 + 10, 2 * 15 + 11, 2 * 18 + 12
}

TEST(VRELMorph3DTest, UnfixedPlacementKeepsTranslation) {
  double const values[] = {0, 1, 0, -1, 0, 0, 0, 0, 1, 10, 11, 12};
  VRELMorph3D const placement(VRELAssemblyComponentTransform(values, 2.0));
  VRELMorph3D const shift(VRELPoint3D(1.0, 2.0, 3.0));
  VRELMorph3D const product = shift.multiply(placement);
  EXPECT_EQ(Coordinates(product.translation()), (Values{1.0, 2.0, 3.0}));
  EXPECT_EQ(product.scaleFactor(), 2.0);
  EXPECT_TRUE(product.isScale());
  EXPECT_TRUE(product.isAffine());
  EXPECT_EQ(product.affine().GetElement(1, 0), 1.0);
}

TEST(VRELMorph3DTest, MultiplyAppliesThisFirst) {
  VRELMorph3D const turn(Z(), VRELPIBY2);
  VRELMorph3D const shift(VRELPoint3D(1.0, 0.0, 0.0));
  VRELPoint3D p(3.0, 4.0, 5.0);
  p.Transform(turn.multiply(shift), false);
  EXPECT_NEAR(p[0], -3.0, 1e-14);
  EXPECT_NEAR(p[1], 3.0, 1e-14);
  EXPECT_EQ(p[2], 5.0);
}

TEST(VRELMorph3DTest, ProductOfTranslations) {
  VRELPoint3D const t1(1.0, 2.0, 3.0);
  VRELPoint3D const t2(10.0, 20.0, 30.0);
  VRELMorph3D const first(t1);
  VRELMorph3D const second(t2);
  EXPECT_EQ(Coordinates(first.multiply(second).translation()), (Values{11.0, 22.0, 33.0}));
  EXPECT_EQ(Coordinates(second.multiply(first).translation()), (Values{11.0, 22.0, 33.0}));
  VRELMorph3D twice(t1);
  twice.setScale(2.0);
  VRELMorph3D out;
  twice.Multiply(second, out);
  EXPECT_EQ(Coordinates(out.translation()), (Values{11.0, 22.0, 33.0}));
  EXPECT_EQ(out.scaleFactor(), 2.0);
  second.Multiply(twice, out);
  EXPECT_EQ(Coordinates(out.translation()), (Values{21.0, 42.0, 63.0}));
}

TEST(VRELMorph3DTest, ProductCanReplaceFactor) {
  VRELMorph3D turn(VRELPoint3D(1.0, 2.0, 3.0), 0.7);
  turn.setScale(2.0);
  VRELMorph3D const other(VRELMorph3D(Z(), 0.2).affine(), VRELPoint3D(1.0, 7.0, 5.0), 3.0);
  VRELMorph3D const expected = turn.multiply(other);
  VRELMorph3D inPlace(turn);
  inPlace.Multiply(other, inPlace);
  EXPECT_TRUE(inPlace.isEqual(expected));
  inPlace = other;
  turn.Multiply(inPlace, inPlace);
  EXPECT_TRUE(inPlace.isEqual(expected));
}

// Compares with applying both morphs to the point.
TEST(VRELMorph3DTest, ProductEqualsSuccession) {
  std::mt19937 random(86);
  std::uniform_real_distribution<double> uniform(-3.0, 3.0);
  auto const anyPoint = [&] { return VRELPoint3D(uniform(random), uniform(random), uniform(random)); };
  auto const any = [&] {
    return VRELMorph3D(VRELMorph3D(anyPoint(), uniform(random)).affine(), anyPoint(), uniform(random));
  };
  auto const image = [](VRELMorph3D const& m, Values const& p) {
    Values q;
    for (int i = 0; i < 3; ++i) {
      double rotated = 0.0;
      for (int j = 0; j < 3; ++j) rotated += m.affine().GetElement(i, j) * p[static_cast<std::size_t>(j)];
      q.push_back(m.scaleFactor() * rotated + m.translation()[i]);
    }
    return q;
  };
  for (int round = 0; round < 1000; ++round) {
    VRELMorph3D const a = any();
    VRELMorph3D const b = any();
    VRELPoint3D p = anyPoint();
    Values const expected = image(b, image(a, Coordinates(p)));
    VRELPoint3D back(p);
    p.Transform(a.multiply(b), false);
    for (int i = 0; i < 3; ++i) ASSERT_NEAR(p[i], expected[static_cast<std::size_t>(i)], 1e-12);
    if (std::fabs(a.scaleFactor()) < 0.01) continue;
    VRELPoint3D const start(back);
    back.Transform(a, false);
    back.Transform(a.inverse(), false);
    ASSERT_TRUE(back.IsWithinTolerance(start, 1e-11));
    ASSERT_TRUE(a.multiply(a.inverse()).isEqual(VRELMorph3D()));
  }
}

TEST(VRELMorph3DTest, TransformOfThreeDoubles) {
  VRELMorph3D morph(VRELPoint3D(10.0, 20.0, 30.0));
  morph.setScale(2.0);
  double x = 1.0;
  double y = 2.0;
  double z = 3.0;
  Transform(x, y, z, morph, false);
  EXPECT_EQ((Values{x, y, z}), (Values{12.0, 24.0, 36.0}));
  Transform(x, y, z, morph, true);
  EXPECT_EQ((Values{x, y, z}), (Values{24.0, 48.0, 72.0}));
}

TEST(VRELMorph3DTest, TransformDoesNotPollAbort) {
  VRELMorph3D const turn(Z(), 0.5);
  VRELPoint3D p(1.0, 2.0, 3.0);
  EXPECT_FALSE(PollsAbort([&] { p.Transform(turn, false); }));
}

}  // namespace
