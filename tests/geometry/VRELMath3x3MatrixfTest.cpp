#include "VRELMath3x3Matrixf.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <type_traits>

#include "Coordinates.h"
#include "GaussJordan.h"
#include "Gk_Def.h"

namespace {

using FloatValues = std::vector<float>;

FloatValues Coefficients(VRELMath3x3Matrixf const& m) {
  FloatValues c(9);
  m.GetCoef(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8]);
  return c;
}

VRELMath3x3Matrixf Make(FloatValues const& c) {
  return VRELMath3x3Matrixf(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8]);
}

VRELMath3x3Matrixf OfType(int type) {
  switch (type) {
    case 1:
      return VRELMath3x3Matrixf();
    case -1:
      return VRELMath3x3Matrixf(-1.0F);
    case 2:
      return VRELMath3x3Matrixf(3.0F);
    case -2:
      return VRELMath3x3Matrixf(-3.0F);
    default:
      return VRELMath3x3Matrixf(1.0F, 2.0F, 4.0F);
  }
}

TEST(VRELMath3x3MatrixfTest, IsNineFloatsAndType) {
  static_assert(sizeof(VRELMath3x3Matrixf) == 40);
  static_assert(std::is_trivially_copyable_v<VRELMath3x3Matrixf>);
  VRELMath3x3Matrixf const m;
  EXPECT_EQ(Coefficients(m), (FloatValues{1, 0, 0, 0, 1, 0, 0, 0, 1}));
  EXPECT_EQ(m.GetType(), 1);
}

TEST(VRELMath3x3MatrixfTest, ScalarDiagonal) {
  struct {
    float s;
    int type;
  } const rows[] = {{1.0F, 1}, {-1.0F, -1}, {2.0F, 2}, {0.5F, 2}, {-2.0F, -2}, {0.0F, 0}, {1e-20F, 2}, {-1e-20F, -2}};
  for (auto const& [s, type] : rows) {
    SCOPED_TRACE(s);
    VRELMath3x3Matrixf const m(s);
    EXPECT_EQ(Coefficients(m), (FloatValues{s, 0, 0, 0, s, 0, 0, 0, s}));
    EXPECT_EQ(m.GetType(), type);
    EXPECT_EQ(m.IsScaling(), type != 0);
    EXPECT_EQ(m.IsIsometry(), type == 1 || type == -1);
    EXPECT_EQ(VRELMath3x3Matrixf(s, s, s).GetType(), type);
  }
  EXPECT_EQ(VRELMath3x3Matrixf(std::nanf("")).GetType(), 0);
}

TEST(VRELMath3x3MatrixfTest, UnevenDiagonalHasTypeZero) {
  EXPECT_EQ(VRELMath3x3Matrixf(1.0F, 1.0F, 2.0F).GetType(), 0);
  EXPECT_EQ(VRELMath3x3Matrixf(1.0F, 2.0F, 1.0F).GetType(), 0);
  EXPECT_EQ(VRELMath3x3Matrixf(2.0F, 1.0F, 1.0F).GetType(), 0);
  // Also if the coefficients are those of another type.
  VRELMath3x3Matrixf m(1.0F, 1.0F, -1.0F);
  EXPECT_EQ(m.GetType(), 0);
  EXPECT_EQ(PELTMathComputeType(m), -1);
  EXPECT_EQ(m.GetType(), -1);
  EXPECT_EQ(Coefficients(VRELMath3x3Matrixf(1.0F, 2.0F, 3.0F)), (FloatValues{1, 0, 0, 0, 2, 0, 0, 0, 3}));
}

TEST(VRELMath3x3MatrixfTest, TypeOfCoefficients) {
  float const tiny = 1e-14F;
  struct {
    FloatValues coefficients;
    int type;
  } const rows[] = {
      {{0, -1, 0, 1, 0, 0, 0, 0, 1}, 1},
      {{0, 1, 0, 1, 0, 0, 0, 0, 1}, -1},
      {{1, 2, 3, 4, 5, 6, 7, 8, 9}, 0},
      {{1, 0, 0, 0, 1, 0, 0, 0, 2}, 0},
      {{0, 0, 0, 0, 0, 0, 0, 0, 0}, 0},
      // Scalar products of the columns equal to the tolerance pass, larger ones do not.
      {{1, tiny, 0, 0, 1, 0, 0, 0, 1}, 1},
      {{1, 2 * tiny, 0, 0, 1, 0, 0, 0, 1}, 0},
      {{1, 0, 2 * tiny, 0, 1, 0, 0, 0, 1}, 0},
      {{1, 0, 0, 0, 1, 2 * tiny, 0, 0, 1}, 0},
      // A length one unit in the last place from 1.
      {{1.00000012F, 0, 0, 0, 1, 0, 0, 0, 1}, 0},
      // A determinant below the tolerance.
      {{1e-5F, 0, 0, 0, 1e-5F, 0, 0, 0, 1e-5F}, 0},
  };
  for (auto const& [coefficients, type] : rows) {
    SCOPED_TRACE(testing::PrintToString(coefficients));
    EXPECT_EQ(Make(coefficients).GetType(), type);
  }
  EXPECT_EQ(Make(FloatValues(9, std::nanf(""))).GetType(), 0);
}

// 8 to the power of the float nearest to 1/3 differs from 2 by 4e-8, so that most scaled rotations get the type 0.
TEST(VRELMath3x3MatrixfTest, MostScaledRotationsHaveTypeZero) {
  EXPECT_EQ(Make({0, -2, 0, 2, 0, 0, 0, 0, 2}).GetType(), 0);
  EXPECT_EQ(Make({0, 2, 0, 2, 0, 0, 0, 0, 2}).GetType(), 0);
  // Here the rounding errors of determinant and exponent cancel.
  float const scaleWithType = 1.16684937F;
  EXPECT_EQ(Make({scaleWithType, 0, 0, 0, scaleWithType, 0, 0, 0, scaleWithType}).GetType(), 2);
  EXPECT_EQ(Make({0, -scaleWithType, 0, scaleWithType, 0, 0, 0, 0, scaleWithType}).GetType(), 2);
  EXPECT_EQ(Make({0, scaleWithType, 0, scaleWithType, 0, 0, 0, 0, scaleWithType}).GetType(), -2);
  EXPECT_EQ(Make({-scaleWithType, 0, 0, 0, -scaleWithType, 0, 0, 0, -scaleWithType}).GetType(), -2);
  EXPECT_EQ(Make({scaleWithType, 0, 0, 0, scaleWithType, 0, 0, 0, 1}).GetType(), 0);
}

TEST(VRELMath3x3MatrixfTest, ComputeTypeReplacesType) {
  // A type of 1 would give a determinant of 1 without computation.
  VRELMath3x3Matrixf m(VRELVectorf(1.0F, 2.0F, 3.0F), 0.7);
  ASSERT_EQ(m.GetType(), 1);
  PELTMathComputeType(m);
  EXPECT_EQ(m.GetType(), 0);
}

TEST(VRELMath3x3MatrixfTest, VectorsAreColumns) {
  VRELMath3x3Matrixf const m(VRELVectorf(1, 2, 3), VRELVectorf(4, 5, 6), VRELVectorf(7, 8, 9));
  EXPECT_EQ(Coefficients(m), (FloatValues{1, 4, 7, 2, 5, 8, 3, 6, 9}));
  EXPECT_EQ(m.GetType(), 0);
  EXPECT_EQ(VRELMath3x3Matrixf(VRELVectorJf, VRELVectorKf, VRELVectorIf).GetType(), 1);
}

TEST(VRELMath3x3MatrixfTest, OuterProduct) {
  VRELMath3x3Matrixf const m(VRELVectorf(1, 2, 3), VRELVectorf(5, 7, 11));
  EXPECT_EQ(Coefficients(m), (FloatValues{5, 7, 11, 10, 14, 22, 15, 21, 33}));
  EXPECT_EQ(m.GetType(), 0);
}

TEST(VRELMath3x3MatrixfTest, ReflectionNormalizes) {
  VRELMath3x3Matrixf const m{VRELVectorf(0.0F, 4.0F, 0.0F)};
  EXPECT_EQ(Coefficients(m), (FloatValues{1, 0, 0, 0, -1, 0, 0, 0, 1}));
  EXPECT_EQ(m.GetType(), -1);
  EXPECT_EQ(m.Determinant(), -1.0F);
  VRELVectorf const normal(1.0F, 2.0F, 2.0F);
  VRELMath3x3Matrixf const skew{normal};
  EXPECT_EQ(skew.GetType(), -1);
  EXPECT_EQ(skew.Determinant(), -1.0F);
  FloatValues const ofUnit = Coefficients(VRELMath3x3Matrixf{normal / 3.0F});
  FloatValues const expected{7, -4, -4, -4, 1, -8, -4, -8, 1};
  for (std::size_t i = 0; i < 9; ++i) {
    EXPECT_NEAR(Coefficients(skew)[i], expected[i] / 9.0F, 3e-7F);
    EXPECT_NEAR(ofUnit[i], expected[i] / 9.0F, 3e-7F);
  }
  // The zero vector is normalized to the X axis.
  EXPECT_EQ(Coefficients(VRELMath3x3Matrixf{VRELNullVectorf}), (FloatValues{-1, 0, 0, 0, 1, 0, 0, 0, 1}));
}

TEST(VRELMath3x3MatrixfTest, RotationEqualsRodriguesFormula) {
  std::mt19937 random(90);
  std::uniform_real_distribution<float> uniform(-3.0F, 3.0F);
  auto const any = [&] { return VRELVectorf(uniform(random), uniform(random), uniform(random)); };
  for (int round = 0; round < 1000; ++round) {
    VRELVectorf const axis = any();
    VRELVectorf const vector = any();
    double const angle = static_cast<double>(uniform(random));
    VRELMath3x3Matrixf const m(axis, angle);
    ASSERT_EQ(m.GetType(), 1);
    FloatValues const actual = Floats(m * vector);
    double const length =
        std::sqrt(double(axis.X()) * axis.X() + double(axis.Y()) * axis.Y() + double(axis.Z()) * axis.Z());
    double const u[] = {axis.X() / length, axis.Y() / length, axis.Z() / length};
    double const v[] = {vector.X(), vector.Y(), vector.Z()};
    double const along = u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
    for (std::size_t i = 0; i < 3; ++i) {
      std::size_t const j = (i + 1) % 3;
      std::size_t const k = (i + 2) % 3;
      double const expected = v[i] * std::cos(angle) + (u[j] * v[k] - u[k] * v[j]) * std::sin(angle) +
                              u[i] * along * (1.0 - std::cos(angle));
      ASSERT_NEAR(actual[i], expected, 3e-6);
    }
  }
  VRELMath3x3Matrixf const quarter(VRELVectorf(0.0F, 0.0F, 9.0F), VRELPIBY2);
  EXPECT_NEAR((quarter * VRELVectorIf).Y(), 1.0F, 1e-7F);
}

TEST(VRELMath3x3MatrixfTest, SettersComputeType) {
  VRELMath3x3Matrixf m;
  m.SetCoef(1, 2, 3, 4, 5, 6, 7, 8, 10);
  EXPECT_EQ(Coefficients(m), (FloatValues{1, 2, 3, 4, 5, 6, 7, 8, 10}));
  EXPECT_EQ(m.GetType(), 0);
  m.SetMatrix(VRELVectorJf, VRELVectorIf, VRELVectorKf);
  EXPECT_EQ(Coefficients(m), (FloatValues{0, 1, 0, 1, 0, 0, 0, 0, 1}));
  EXPECT_EQ(m.GetType(), -1);
  m.SetFirstColumn(VRELVectorf(0.0F, -1.0F, 0.0F));
  EXPECT_EQ(Coefficients(m), (FloatValues{0, 1, 0, -1, 0, 0, 0, 0, 1}));
  EXPECT_EQ(m.GetType(), 1);
  m.SetSecondColumn(VRELVectorf(-1.0F, 0.0F, 0.0F));
  EXPECT_EQ(Coefficients(m), (FloatValues{0, -1, 0, -1, 0, 0, 0, 0, 1}));
  EXPECT_EQ(m.GetType(), -1);
  m.SetThirdColumn(VRELVectorf(0.0F, 0.0F, 5.0F));
  EXPECT_EQ(Coefficients(m), (FloatValues{0, -1, 0, -1, 0, 0, 0, 0, 5}));
  EXPECT_EQ(m.GetType(), 0);
}

TEST(VRELMath3x3MatrixfTest, GetColumns) {
  VRELMath3x3Matrixf const m = Make({1, 2, 3, 4, 5, 6, 7, 8, 9});
  VRELVectorf column;
  m.GetFirstColumn(column);
  EXPECT_EQ(Floats(column), (FloatValues{1, 4, 7}));
  m.GetSecondColumn(column);
  EXPECT_EQ(Floats(column), (FloatValues{2, 5, 8}));
  m.GetThirdColumn(column);
  EXPECT_EQ(Floats(column), (FloatValues{3, 6, 9}));
}

TEST(VRELMath3x3MatrixfTest, DeterminantTraceAndNorm) {
  VRELMath3x3Matrixf const m = Make({2, 3, 5, 7, 11, 13, 17, 19, -23});
  EXPECT_EQ(m.Determinant(), -124.0F);
  EXPECT_EQ(m.Trace(), -10.0F);
  EXPECT_EQ(m.InfiniteNorm(), 23.0F);
  EXPECT_EQ(VRELMath3x3Matrixf().InfiniteNorm(), 1.0F);
  EXPECT_EQ(Make({1, 2, 3, 4, -5, 1, 2, 3, 4}).InfiniteNorm(), 5.0F);
  // The determinant of an isometry is its type, without computation.
  EXPECT_EQ(VRELMath3x3Matrixf(VRELVectorf(1.0F, 2.0F, 3.0F), 0.7).Determinant(), 1.0F);
  EXPECT_EQ(VRELMath3x3Matrixf(-2.0F).Determinant(), -8.0F);
}

TEST(VRELMath3x3MatrixfTest, DeterminantRoundsToFloat) {
  // 1 - 1e8 + 1e8, which is 0 in floats.
  VRELMath3x3Matrixf const m = Make({1, 1, 1, -1e8F, 1, 0, 1e8F, 0, 1});
  EXPECT_EQ(m.Determinant(), 0.0F);
  VRELMath3x3Matrixf out;
  EXPECT_FALSE(m.Inverse(out));
}

TEST(VRELMath3x3MatrixfTest, TransposeComputesType) {
  VRELMath3x3Matrixf const m = Make({1, 2, 3, 4, 5, 6, 7, 8, 9});
  FloatValues const expected{1, 4, 7, 2, 5, 8, 3, 6, 9};
  EXPECT_EQ(Coefficients(m.Transpose()), expected);
  VRELMath3x3Matrixf inPlace(m);
  inPlace.Transpose(inPlace);
  EXPECT_EQ(Coefficients(inPlace), expected);
  // The type is computed again, and is 0 for a rotation in floats.
  VRELMath3x3Matrixf const turn(VRELVectorf(1.0F, 2.0F, 3.0F), 0.7);
  EXPECT_EQ(turn.Transpose().GetType(), 0);
  EXPECT_EQ(VRELMath3x3Matrixf().Transpose().GetType(), 1);
}

TEST(VRELMath3x3MatrixfTest, InverseOfIsometryIsTranspose) {
  VRELMath3x3Matrixf const turn(VRELVectorf(1.0F, 2.0F, 3.0F), 0.7);
  VRELMath3x3Matrixf out;
  EXPECT_TRUE(turn.Inverse(out));
  EXPECT_EQ(Coefficients(out), Coefficients(turn.Transpose()));
  EXPECT_EQ(out.GetType(), 0);  // computed again
}

// The transpose of 4 times the identity has type 0 by its coefficients, and a positive multiple of that has type -2.
TEST(VRELMath3x3MatrixfTest, InverseOfScalingHasTypeOfMultiple) {
  EXPECT_EQ(VRELMath3x3Matrixf(4.0F).Inverse().GetType(), -2);
  EXPECT_EQ(VRELMath3x3Matrixf(-4.0F).Inverse().GetType(), -2);
  // Here the type of the transpose is 2.
  EXPECT_EQ(VRELMath3x3Matrixf(1.16684937F).Inverse().GetType(), 2);
  EXPECT_EQ(VRELMath3x3Matrixf(-1.16684937F).Inverse().GetType(), -2);
}

TEST(VRELMath3x3MatrixfTest, InverseOfScaledRotation) {
  for (float s : {4.0F, -4.0F}) {
    VRELMath3x3Matrixf out;
    EXPECT_TRUE(VRELMath3x3Matrixf(s).Inverse(out));
    FloatValues const c = Coefficients(out);
    for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(c[i], i % 4 == 0 ? 1.0F / s : 0.0F, 1e-6F);
    // The factor is 1/64 to the power of the float 2/3, and not of two thirds.
    EXPECT_EQ(c[0], s * static_cast<float>(std::pow(0.015625, 0.6666666865348816)));
    EXPECT_NE(c[0], 1.0F / s);
  }
}

TEST(VRELMath3x3MatrixfTest, InverseEqualsElimination) {
  std::mt19937 random(91);
  std::uniform_real_distribution<float> uniform(-1.0F, 1.0F);
  for (int round = 0; round < 1000; ++round) {
    FloatValues c;
    MatrixRows rows(3, std::vector<double>(3, 0.0));
    for (std::size_t i = 0; i < 9; ++i) {
      c.push_back(uniform(random) + (i % 4 == 0 ? 3.0F : 0.0F));
      rows[i / 3][i % 3] = static_cast<double>(c.back());
    }
    MatrixRows const expected = GaussJordanInverse(rows);
    VRELMath3x3Matrixf m = Make(c);
    ASSERT_TRUE(m.Inverse(m));
    FloatValues const actual = Coefficients(m);
    for (std::size_t i = 0; i < 9; ++i) ASSERT_NEAR(actual[i], expected[i / 3][i % 3], 5e-6);
  }
}

TEST(VRELMath3x3MatrixfTest, InverseOfSingularFails) {
  VRELMath3x3Matrixf const before = Make({1, 2, 3, 4, 5, 6, 7, 8, 10});
  float const unknown = std::nanf("");
  FloatValues const rows[] = {
      {0, 0, 0, 0, 0, 0, 0, 0, 0},
      {1, 2, 3, 4, 5, 6, 7, 8, 9},
      {1e-14F, 0, 0, 0, 1, 0, 0, 0, 1},
      {unknown, 0, 0, 0, 1, 0, 0, 0, 1},
  };
  for (FloatValues const& c : rows) {
    SCOPED_TRACE(testing::PrintToString(c));
    VRELMath3x3Matrixf out(before);
    EXPECT_FALSE(Make(c).Inverse(out));
    EXPECT_EQ(Coefficients(out), Coefficients(before));
    EXPECT_EQ(Coefficients(Make(c).Inverse()), Coefficients(VRELMath3x3Matrixf()));
  }
  EXPECT_EQ(Coefficients(Make({2e-14F, 0, 0, 0, 1, 0, 0, 0, 1}).Inverse()),
            (FloatValues{1.0F / 2e-14F, 0, 0, 0, 1, 0, 0, 0, 1}));
}

// A matrix of type 0 gets the type 2 or -2 from any factor but 1, -1 and 0.
TEST(VRELMath3x3MatrixfTest, TypeOfMultipleDependsOnSigns) {
  struct {
    float factor;
    int types[5];  // of the multiples of matrices of type -2, -1, 0, 1, 2
  } const rows[] = {
      {1.0F, {-2, -1, 0, 1, 2}},  {-1.0F, {2, 1, 0, -1, -2}}, {0.0F, {0, 0, 0, 0, 0}},    {5.0F, {-2, -2, -2, 2, 2}},
      {0.5F, {-2, -2, -2, 2, 2}}, {-5.0F, {2, 2, 2, -2, -2}}, {-0.5F, {2, 2, 2, -2, -2}},
  };
  for (auto const& [factor, types] : rows) {
    for (int type = -2; type <= 2; ++type) {
      SCOPED_TRACE(testing::Message() << factor << " times type " << type);
      VRELMath3x3Matrixf const m = OfType(type);
      ASSERT_EQ(m.GetType(), type);
      EXPECT_EQ((m * factor).GetType(), types[type + 2]);
      EXPECT_EQ((factor * m).GetType(), types[type + 2]);
      EXPECT_EQ((m / factor).GetType(), types[type + 2]);
    }
  }
  EXPECT_EQ((OfType(1) * std::nanf("")).GetType(), 0);
}

TEST(VRELMath3x3MatrixfTest, MultiplesOfCoefficients) {
  VRELMath3x3Matrixf const m = Make({1, 2, 3, 4, 5, 6, 7, 8, 10});
  EXPECT_EQ(Coefficients(m * 2.0F), (FloatValues{2, 4, 6, 8, 10, 12, 14, 16, 20}));
  EXPECT_EQ(Coefficients(2.0F * m), (FloatValues{2, 4, 6, 8, 10, 12, 14, 16, 20}));
  EXPECT_EQ(Coefficients(m / 2.0F), (FloatValues{0.5F, 1, 1.5F, 2, 2.5F, 3, 3.5F, 4, 5}));
  EXPECT_TRUE(std::isinf(Coefficients(m / 0.0F)[0]));
}

TEST(VRELMath3x3MatrixfTest, ProductMultipliesTypes) {
  for (int a = -2; a <= 2; ++a) {
    for (int b = -2; b <= 2; ++b) {
      int const expected = a * b == 4 ? 2 : a * b == -4 ? -2 : a * b;
      EXPECT_EQ((OfType(a) * OfType(b)).GetType(), expected) << a << ", " << b;
    }
  }
  VRELMath3x3Matrixf const m = Make({1, 2, 3, 4, 5, 6, 7, 8, 10});
  VRELMath3x3Matrixf const n = Make({0, 1, 0, 0, 0, 1, 2, 0, 0});
  EXPECT_EQ(Coefficients(m * n), (FloatValues{6, 1, 2, 12, 4, 5, 20, 7, 8}));
}

TEST(VRELMath3x3MatrixfTest, ProductWithColumnVector) {
  VRELMath3x3Matrixf const m = Make({1, 2, 3, 4, 5, 6, 7, 8, 10});
  EXPECT_EQ(Floats(m * VRELVectorf(1.0F, -1.0F, 2.0F)), (FloatValues{5, 11, 19}));
}

TEST(VRELMath3x3MatrixfTest, SumsComputeType) {
  VRELMath3x3Matrixf const m = Make({1, 2, 3, 4, 5, 6, 7, 8, 10});
  VRELMath3x3Matrixf const n = Make({0, 2, 3, 4, 4, 6, 7, 8, 9});
  EXPECT_EQ(Coefficients(m + n), (FloatValues{1, 4, 6, 8, 9, 12, 14, 16, 19}));
  EXPECT_EQ((m + n).GetType(), 0);
  EXPECT_EQ(Coefficients(m - n), (FloatValues{1, 0, 0, 0, 1, 0, 0, 0, 1}));
  EXPECT_EQ((m - n).GetType(), 1);
  EXPECT_EQ((VRELMath3x3Matrixf(3.0F) + VRELMath3x3Matrixf(-4.0F)).GetType(), -1);
}

TEST(VRELMath3x3MatrixfTest, PercentIsVectorProduct) {
  EXPECT_EQ(Floats(VRELVectorf(1, 2, 3) % VRELVectorf(4, 5, 7)), (FloatValues{-1, 5, -3}));
}

}  // namespace
