#include "VREL4x4Matrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>

#include "Coordinates.h"
#include "GaussJordan.h"
#include "Gk_Def.h"

namespace {

using FloatValues = std::vector<float>;

FloatValues Elements(VREL4x4Matrix const& m) {
  return FloatValues(m.GetElements(), m.GetElements() + 16);
}

float FloatFromBits(std::uint32_t bits) {
  float value = 0.0F;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// Returns a matrix with exactly this determinant.
VREL4x4Matrix OfDeterminant(float determinant) {
  return VREL4x4Matrix(VRELVectorf(determinant, 0.0F, 0.0F), VRELVectorJf, VRELVectorKf, VRELNullVectorf);
}

FloatValues const identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

TEST(VREL4x4MatrixTest, HasOnlyVirtualDestructor) {
  static_assert(std::has_virtual_destructor_v<VREL4x4Matrix>);
  static_assert(sizeof(VREL4x4Matrix) == sizeof(void*) + 18 * sizeof(float));
}

TEST(VREL4x4MatrixTest, DefaultIsIdentity) {
  VREL4x4Matrix const m;
  EXPECT_EQ(Elements(m), identity);
  EXPECT_EQ(m.GetDeterminant(), 1.0F);
  EXPECT_EQ(m.GetScaling(), 1.0F);
  EXPECT_TRUE(m.IsIdentity());
  EXPECT_TRUE(VREL4x4MatrixI.IsIdentity());
  EXPECT_EQ(VREL4x4MatrixI.GetDeterminant(), 1.0F);
  EXPECT_EQ(VREL4x4MatrixI.GetScaling(), 1.0F);
}

TEST(VREL4x4MatrixTest, SixteenFloatsLeaveCacheZero) {
  FloatValues const values{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  VREL4x4Matrix const m(values.data());
  EXPECT_EQ(Elements(m), values);
  EXPECT_EQ(m.GetDeterminant(), 0.0F);
  EXPECT_EQ(m.GetScaling(), 0.0F);
  VREL4x4Matrix const none(static_cast<float const*>(nullptr));
  EXPECT_TRUE(none.IsIdentity());
  EXPECT_EQ(none.GetDeterminant(), 1.0F);
}

TEST(VREL4x4MatrixTest, TranslationAndScale) {
  VREL4x4Matrix const m(VRELVectorf(1.0F, 2.0F, 3.0F), 2.0F);
  EXPECT_EQ(Elements(m), (FloatValues{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1, 2, 3, 1}));
  EXPECT_EQ(m.GetScaling(), 2.0F);
  EXPECT_EQ(m.GetDeterminant(), 8.0F);
  EXPECT_EQ(Floats(m * VRELPointf(1.0F, 0.0F, 0.0F)), (FloatValues{3.0F, 2.0F, 3.0F}));
  // The scaling is stored and not computed, so that it keeps its sign.
  EXPECT_EQ(VREL4x4Matrix(VRELNullVectorf, -2.0F).GetScaling(), -2.0F);
  EXPECT_EQ(VREL4x4Matrix(VRELNullVectorf, -2.0F).GetDeterminant(), -8.0F);
  EXPECT_EQ(VREL4x4Matrix(VRELNullVectorf, std::numeric_limits<float>::infinity()).GetElements()[1], 0.0F);
}

TEST(VREL4x4MatrixTest, RowsAndTranslation) {
  FloatValues const expected{2, 0, 0, 0, 0, 0, 3, 0, 0, -4, 0, 0, 5, 6, 7, 1};
  float const row0[] = {2, 0, 0};
  float const row1[] = {0, 0, 3};
  float const row2[] = {0, -4, 0};
  float const* rows[] = {row0, row1, row2};
  VRELVectorf const t(5.0F, 6.0F, 7.0F);
  VREL4x4Matrix const fromFloats(rows, t);
  VREL4x4Matrix const fromVectors(VRELVectorf{row0}, VRELVectorf{row1}, VRELVectorf{row2}, t);
  for (VREL4x4Matrix const* m : {&fromFloats, &fromVectors}) {
    EXPECT_EQ(Elements(*m), expected);
    EXPECT_EQ(m->GetDeterminant(), 24.0F);
    EXPECT_EQ(m->GetScaling(), 2.88449914F);  // the cube root of 24
  }
}

TEST(VREL4x4MatrixTest, NullRowIsIdentityRow) {
  VRELVectorf const t(5.0F, 6.0F, 7.0F);
  float const row1[] = {0, 0, 3};
  float const* rows[] = {nullptr, row1, nullptr};
  EXPECT_EQ(Elements(VREL4x4Matrix(rows, t)), (FloatValues{1, 0, 0, 0, 0, 0, 3, 0, 0, 0, 1, 0, 5, 6, 7, 1}));
  EXPECT_EQ(Elements(VREL4x4Matrix(static_cast<float const**>(nullptr), t)),
            (FloatValues{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}));
}

TEST(VREL4x4MatrixTest, ComponentsRoundTrip) {
  FloatValues const noise(16, 9.0F);
  VREL4x4Matrix m(noise.data());
  m.SetComponents(VRELVectorf(0.0F, 2.0F, 0.0F), VRELVectorf(2.0F, 0.0F, 0.0F), VRELVectorf(0.0F, 0.0F, 2.0F),
                  VRELPointf(5.0F, 6.0F, 7.0F));
  EXPECT_EQ(Elements(m), (FloatValues{0, 2, 0, 0, 2, 0, 0, 0, 0, 0, 2, 0, 5, 6, 7, 1}));
  EXPECT_EQ(m.GetDeterminant(), -8.0F);
  EXPECT_EQ(m.GetScaling(), 2.0F);
  VRELVectorf rows[3];
  VRELPointf point;
  m.GetComponents(rows[0], rows[1], rows[2], point);
  EXPECT_EQ(Floats(rows[0]), (FloatValues{0, 2, 0}));
  EXPECT_EQ(Floats(rows[1]), (FloatValues{2, 0, 0}));
  EXPECT_EQ(Floats(rows[2]), (FloatValues{0, 0, 2}));
  EXPECT_EQ(Floats(point), (FloatValues{5, 6, 7}));
}

TEST(VREL4x4MatrixTest, DirectionsRoundTrip) {
  FloatValues const noise(16, 9.0F);
  VREL4x4Matrix m(noise.data());
  m.SetComponents(VRELDirectionf(0.0F, 7.0F, 0.0F), VRELDirectionf(1.0F, 0.0F, 0.0F), VRELDirectionf(0.0F, 0.0F, 1.0F),
                  VRELPointf(5.0F, 6.0F, 7.0F));
  EXPECT_EQ(Elements(m), (FloatValues{0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}));
  EXPECT_EQ(m.GetDeterminant(), -1.0F);
  EXPECT_EQ(m.GetScaling(), 1.0F);
  m.SetScaling(4.0F);
  VRELDirectionf rows[3];
  VRELPointf point;
  m.GetComponents(rows[0], rows[1], rows[2], point);
  EXPECT_EQ(Floats(rows[0]), (FloatValues{0, 1, 0}));
  EXPECT_EQ(Floats(rows[1]), (FloatValues{1, 0, 0}));
  EXPECT_EQ(Floats(rows[2]), (FloatValues{0, 0, 1}));
  EXPECT_EQ(Floats(point), (FloatValues{5, 6, 7}));
}

TEST(VREL4x4MatrixTest, SetTranslationIgnoresFloat) {
  VREL4x4Matrix m(VRELNullVectorf, 2.0F);
  m.SetTranslation(VRELVectorf(5.0F, 6.0F, 7.0F), 1000.0F);
  EXPECT_EQ(Elements(m), (FloatValues{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 5, 6, 7, 1}));
  EXPECT_EQ(m.GetDeterminant(), 8.0F);
  EXPECT_EQ(m.GetScaling(), 2.0F);
  VRELVectorf t;
  m.GetTranslation(t);
  EXPECT_EQ(Floats(t), (FloatValues{5, 6, 7}));
}

TEST(VREL4x4MatrixTest, SetScalingMultipliesUpperPart) {
  VREL4x4Matrix m(VRELVectorf(5.0F, 6.0F, 7.0F), 2.0F);
  m.SetScaling(-3.0F);
  EXPECT_EQ(Elements(m), (FloatValues{-6, 0, 0, 0, 0, -6, 0, 0, 0, 0, -6, 0, 5, 6, 7, 1}));
  EXPECT_EQ(m.GetDeterminant(), -216.0F);
  EXPECT_EQ(m.GetScaling(), 6.0F);
}

TEST(VREL4x4MatrixTest, DeterminantOfUpperPart) {
  float const values[] = {2, 3, 5, 99, 7, 11, 13, 99, 17, 19, 23, 99, 99, 99, 99, 99};
  VREL4x4Matrix m(values);
  m.ComputeDeterminant();
  EXPECT_EQ(m.GetDeterminant(), -78.0F);
}

// The determinant is 1 + 1e8 - 1e8, which is 0 in floats, by its first row and by its first column.
float const cancelling[] = {1, 1, 1, 0, -1e8F, 1, 0, 0, 1e8F, 0, 1, 0, 0, 0, 0, 1};

TEST(VREL4x4MatrixTest, DeterminantRoundsToFloat) {
  VREL4x4Matrix m(cancelling);
  m.ComputeDeterminant();
  EXPECT_EQ(m.GetDeterminant(), 0.0F);
}

TEST(VREL4x4MatrixTest, ThirdColumnRoundsToFloat) {
  float out[4] = {9, 9, 9, 9};
  VREL4x4Matrix(cancelling).ComputeInverseTransposeThirdColumnNormalized(out);
  EXPECT_EQ(FloatValues(out, out + 4), (FloatValues{0, 0, 0, 1}));
}

TEST(VREL4x4MatrixTest, ImagesRoundToFloat) {
  // 1e8 + 1 is 1e8 in floats.
  float const values[] = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0.5F, 0, 0, 1};
  EXPECT_EQ((VREL4x4Matrix(values) * VRELPointf(1e8F, 1.0F, -1e8F)).X(), 0.5F);
  EXPECT_EQ((VREL4x4Matrix(values) * VRELVectorf(1e8F, 1.0F, -1e8F)).X(), 0.0F);
}

TEST(VREL4x4MatrixTest, ScalingIsOneNearUnitDeterminant) {
  for (std::uint32_t sign : {0U, 0x80000000U}) {
    for (std::uint32_t bits : {0x3F7FFFEFU, 0x3F800000U, 0x3F800004U, 0x3F800008U}) {
      float const determinant = FloatFromBits(bits | sign);
      VREL4x4Matrix const m = OfDeterminant(determinant);
      ASSERT_EQ(m.GetDeterminant(), determinant);
      EXPECT_EQ(m.GetScaling(), 1.0F) << determinant;
    }
    // The next float to each side is out of the range.
    EXPECT_LT(OfDeterminant(FloatFromBits(0x3F7FFFEEU | sign)).GetScaling(), 1.0F);
    EXPECT_GT(OfDeterminant(FloatFromBits(0x3F800009U | sign)).GetScaling(), 1.0F);
  }
}

TEST(VREL4x4MatrixTest, ScalingIsCubeRootOfMagnitude) {
  EXPECT_EQ(OfDeterminant(8.0F).GetScaling(), 2.0F);
  EXPECT_EQ(OfDeterminant(-8.0F).GetScaling(), 2.0F);
  EXPECT_EQ(OfDeterminant(0.0F).GetScaling(), 0.0F);
  EXPECT_TRUE(std::isnan(OfDeterminant(std::nanf("")).GetScaling()));
  EXPECT_TRUE(std::isinf(OfDeterminant(1e20F).GetScaling()) || OfDeterminant(1e20F).GetScaling() > 4.6e6F);
}

TEST(VREL4x4MatrixTest, EqualityIgnoresCache) {
  VREL4x4Matrix const m(VRELVectorf(5.0F, 6.0F, 7.0F), 2.0F);
  VREL4x4Matrix const bare(m.GetElements());
  EXPECT_TRUE(m == bare);
  EXPECT_FALSE(m != bare);
  for (std::size_t i = 0; i < 16; ++i) {
    FloatValues values = Elements(m);
    values[i] = std::nextafterf(values[i], 100.0F);
    EXPECT_FALSE(m == VREL4x4Matrix(values.data())) << i;
    values = identity;
    values[i] = std::nextafterf(values[i], 100.0F);
    EXPECT_FALSE(VREL4x4Matrix(values.data()).IsIdentity()) << i;
  }
  FloatValues const unknown(16, std::nanf(""));
  EXPECT_FALSE(VREL4x4Matrix(unknown.data()) == VREL4x4Matrix(unknown.data()));
}

TEST(VREL4x4MatrixTest, AssignmentCopiesCache) {
  VREL4x4Matrix m;
  m = VREL4x4Matrix(VRELVectorf(5.0F, 6.0F, 7.0F), 2.0F);
  EXPECT_EQ(m.GetDeterminant(), 8.0F);
  EXPECT_EQ(m.GetScaling(), 2.0F);
  EXPECT_EQ(m.GetElements()[12], 5.0F);
}

TEST(VREL4x4MatrixTest, ProductUsesAllElements) {
  float const a[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  float const b[] = {1, 0, 0, 1, 0, 2, 0, 0, 0, 0, 3, 0, 1, 0, 0, 4};
  FloatValues const expected{5, 4, 9, 17, 13, 12, 21, 37, 21, 20, 33, 57, 29, 28, 45, 77};
  EXPECT_EQ(Elements(VREL4x4Matrix(a) * VREL4x4Matrix(b)), expected);
  VREL4x4Matrix inPlace(a);
  EXPECT_EQ(&(inPlace *= VREL4x4Matrix(b)), &inPlace);
  EXPECT_EQ(Elements(inPlace), expected);
  VREL4x4Matrix square(b);
  square *= square;
  EXPECT_EQ(Elements(square), (FloatValues{2, 0, 0, 5, 0, 4, 0, 0, 0, 0, 9, 0, 5, 0, 0, 17}));
}

TEST(VREL4x4MatrixTest, ProductMultipliesCache) {
  VREL4x4Matrix m(VRELNullVectorf, 2.0F);
  VREL4x4Matrix const n(VRELNullVectorf, -3.0F);
  EXPECT_EQ((m * n).GetDeterminant(), -216.0F);
  EXPECT_EQ((m * n).GetScaling(), -6.0F);
  m *= n;
  EXPECT_EQ(m.GetDeterminant(), -216.0F);
  EXPECT_EQ(m.GetScaling(), -6.0F);
}

TEST(VREL4x4MatrixTest, ProductRoundsToFloat) {
  // 1e8 + 1 is 1e8 in floats, and so is each sum from left to right.
  float const a[] = {1e8F, 1, -1e8F, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  float const b[] = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0.5F, 0, 0, 0};
  EXPECT_EQ((VREL4x4Matrix(a) * VREL4x4Matrix(b)).GetElements()[0], 0.5F);
}

TEST(VREL4x4MatrixTest, ProductAppliesLeftFirst) {
  VREL4x4Matrix turn;
  turn.SetComponents(VRELVectorJf, -VRELVectorIf, VRELVectorKf, VRELPointOf);
  VREL4x4Matrix const shift(VRELVectorf(10.0F, 0.0F, 0.0F), 1.0F);
  EXPECT_EQ(Floats((turn * shift) * VRELPointf(1.0F, 2.0F, 3.0F)), (FloatValues{8, 1, 3}));
  EXPECT_EQ(Floats((shift * turn) * VRELPointf(1.0F, 2.0F, 3.0F)), (FloatValues{-2, 11, 3}));
}

TEST(VREL4x4MatrixTest, ImagesOfPointsVectorsAndDirections) {
  float const values[] = {1, 2, 3, 99, 4, 5, 6, 99, 7, 8, 10, 99, 100, 200, 300, 99};
  VREL4x4Matrix const m(values);
  EXPECT_EQ(Floats(m * VRELPointf(1.0F, -1.0F, 2.0F)), (FloatValues{111, 213, 317}));
  EXPECT_EQ(Floats(m * VRELVectorf(1.0F, -1.0F, 2.0F)), (FloatValues{11, 13, 17}));
  VREL4x4Matrix const twice(VRELVectorf(5.0F, 6.0F, 7.0F), 2.0F);
  VRELDirectionf const image = twice * VRELDirectionf(0.0F, 0.0F, 1.0F);
  EXPECT_EQ(Floats(image), (FloatValues{0, 0, 1}));
}

MatrixRows UpperRows(VREL4x4Matrix const& m) {
  MatrixRows rows(4, std::vector<double>(4, 0.0));
  for (std::size_t i = 0; i < 4; ++i) {
    for (std::size_t j = 0; j < 3; ++j) rows[i][j] = static_cast<double>(m.GetElements()[4 * i + j]);
  }
  rows[3][3] = 1.0;
  return rows;
}

TEST(VREL4x4MatrixTest, InverseEqualsElimination) {
  std::mt19937 random(87);
  std::uniform_real_distribution<float> uniform(-1.0F, 1.0F);
  auto const any = [&](float x, float y, float z) {
    return VRELVectorf(uniform(random) + x, uniform(random) + y, uniform(random) + z);
  };
  for (int round = 0; round < 1000; ++round) {
    VREL4x4Matrix const m(any(3, 0, 0), any(0, 3, 0), any(0, 0, 3), any(0, 0, 0) * 10.0F);
    VREL4x4Matrix inverse;
    m.GetInvertedMatrix(inverse);
    MatrixRows const expected = GaussJordanInverse(UpperRows(m));
    for (std::size_t i = 0; i < 16; ++i) {
      ASSERT_NEAR(inverse.GetElements()[i], expected[i / 4][i % 4], 2e-5) << i;
    }
    ASSERT_NEAR(inverse.GetDeterminant() * m.GetDeterminant(), 1.0F, 1e-5F);
    ASSERT_NEAR(inverse.GetScaling() * m.GetScaling(), 1.0F, 1e-5F);
    VRELPointf const p(1.0F, 2.0F, 3.0F);
    ASSERT_LT(p.DistanceTo(inverse * (m * p)), 2e-5F);
  }
}

TEST(VREL4x4MatrixTest, InverseIgnoresFourthColumn) {
  float const values[] = {2, 0, 0, 7, 0, 4, 0, 8, 0, 0, 8, 9, 10, 20, 40, 5};
  VREL4x4Matrix m(values);
  m.ComputeDeterminant();
  FloatValues const noise(16, 9.0F);
  VREL4x4Matrix out(noise.data());
  m.GetInvertedMatrix(out);
  EXPECT_EQ(Elements(out), (FloatValues{0.5F, 0, 0, 0, 0, 0.25F, 0, 0, 0, 0, 0.125F, 0, -5, -5, -5, 1}));
  EXPECT_EQ(out.GetDeterminant(), 0.015625F);
  EXPECT_EQ(out.GetScaling(), 0.25F);
  m.GetInvertedMatrix(m);
  EXPECT_TRUE(m == out);
}

TEST(VREL4x4MatrixTest, InverseUsesCachedDeterminant) {
  VREL4x4Matrix const twice(VRELNullVectorf, 2.0F);
  VREL4x4Matrix out;
  // Its cached determinant is 0.
  VREL4x4Matrix(twice.GetElements()).GetInvertedMatrix(out);
  EXPECT_TRUE(out.IsIdentity());
  VREL4x4Matrix const small = OfDeterminant(1e-16F);
  small.GetInvertedMatrix(out);
  EXPECT_TRUE(out.IsIdentity());
  OfDeterminant(-1e-16F).GetInvertedMatrix(out);
  EXPECT_TRUE(out.IsIdentity());
  OfDeterminant(std::nanf("")).GetInvertedMatrix(out);
  EXPECT_TRUE(out.IsIdentity());
  // The limit is compared as a double: the float nearest to 1e-15 is above it.
  ASSERT_GT(static_cast<double>(1e-15F), 1e-15);
  OfDeterminant(1e-15F).GetInvertedMatrix(out);
  EXPECT_FALSE(out.IsIdentity());
}

// Seen from the tip of the direction, y rotates to x.
TEST(VREL4x4MatrixTest, RotationIsLeftHanded) {
  VREL4x4Matrix m(FloatValues(16, 9.0F).data());
  float const quarter = static_cast<float>(VRELPIBY2);
  struct {
    VRELDirectionf direction;
    VRELPointf from;
    FloatValues to;
  } const rows[] = {
      {{0, 0, 1}, {0, 1, 5}, {1, 0, 5}},
      {{0, 0, -1}, {1, 0, 5}, {0, 1, 5}},
      {{1, 0, 0}, {5, 0, 1}, {5, 1, 0}},
      {{0, 1, 0}, {1, 5, 0}, {0, 5, 1}},
  };
  for (auto const& [direction, from, to] : rows) {
    SCOPED_TRACE(testing::PrintToString(Floats(direction)));
    m.SetRotation(direction, VRELPointOf, quarter);
    VRELPointf const image = m * from;
    EXPECT_NEAR(image.X(), to[0], 1e-6F);
    EXPECT_NEAR(image.Y(), to[1], 1e-6F);
    EXPECT_NEAR(image.Z(), to[2], 1e-6F);
    EXPECT_EQ(m.GetScaling(), 1.0F);
    EXPECT_NEAR(m.GetDeterminant(), 1.0F, 1e-6F);
    EXPECT_EQ(m.GetElements()[15], 1.0F);
  }
}

// Rodrigues' rotation formula with the negated angle.
TEST(VREL4x4MatrixTest, RotationEqualsRodriguesFormula) {
  std::mt19937 random(88);
  std::uniform_real_distribution<float> uniform(-3.0F, 3.0F);
  auto const any = [&] { return VRELVectorf(uniform(random), uniform(random), uniform(random)); };
  for (int round = 0; round < 1000; ++round) {
    VRELDirectionf const direction(any());
    VRELPointf const center = VRELPointOf + any();
    VRELPointf const point = VRELPointOf + any();
    float const angle = uniform(random);
    VREL4x4Matrix m;
    m.SetRotation(direction, center, angle);
    VRELPointf const image = m * point;
    double const u[] = {direction.X(), direction.Y(), direction.Z()};
    VRELVectorf const difference = point - center;
    double const v[] = {difference.X(), difference.Y(), difference.Z()};
    double const c = std::cos(-static_cast<double>(angle));
    double const s = std::sin(-static_cast<double>(angle));
    double const along = u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
    FloatValues const base = Floats(center);
    FloatValues const actual = Floats(image);
    for (std::size_t i = 0; i < 3; ++i) {
      std::size_t const j = (i + 1) % 3;
      std::size_t const k = (i + 2) % 3;
      double const rotated = v[i] * c + (u[j] * v[k] - u[k] * v[j]) * s + u[i] * along * (1.0 - c);
      ASSERT_NEAR(actual[i], base[i] + rotated, 2e-5);
    }
  }
}

TEST(VREL4x4MatrixTest, AxisLengthIsAngle) {
  VRELVectorf const axis(0.0F, 0.0F, static_cast<float>(VRELPIBY2));
  VRELPointf const point(1.0F, 0.0F, 0.0F);
  VREL4x4Matrix expected;
  expected.SetRotation(VRELDirectionf(axis), point, axis.Norm());
  EXPECT_TRUE(VREL4x4Matrix(axis, point, 1.0F) == expected);
  VREL4x4Matrix const scaled(axis, point, 2.0F);
  expected.SetScaling(2.0F);
  EXPECT_TRUE(scaled == expected);
  EXPECT_EQ(scaled.GetScaling(), expected.GetScaling());
  EXPECT_NEAR(scaled.GetDeterminant(), 8.0F, 1e-5F);
}

TEST(VREL4x4MatrixTest, ZeroAxisSetsThirdColumnOfLastRow) {
  for (float length : {0.0F, 1e-16F}) {
    VREL4x4Matrix const m(VRELVectorf(length, 0.0F, 0.0F), VRELPointf(1.0F, 2.0F, 3.0F), 3.0F);
    EXPECT_EQ(Elements(m), (FloatValues{3, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3, 0, 0, 0, 1, 0}));
    EXPECT_EQ(m.GetScaling(), 3.0F);
    EXPECT_EQ(m.GetDeterminant(), 27.0F);
  }
}

// An axis that is too short to be normalized becomes the X axis.
TEST(VREL4x4MatrixTest, ShortAxisRotatesAboutX) {
  VREL4x4Matrix expected;
  expected.SetRotation(VRELDirectionf(1.0F, 0.0F, 0.0F), VRELPointOf, 1e-9F);
  EXPECT_TRUE(VREL4x4Matrix(VRELVectorf(0.0F, 0.0F, 1e-9F), VRELPointOf, 1.0F) == expected);
  VRELVectorf const t(10.0F, 20.0F, 30.0F);
  expected *= VREL4x4Matrix(t, 1.0F);
  EXPECT_TRUE(VREL4x4Matrix(t, VRELVectorf(0.0F, 0.0F, 1e-9F), VRELPointOf, 1.0F) == expected);
}

TEST(VREL4x4MatrixTest, RotationAndTranslation) {
  VRELVectorf const axis(0.0F, 0.0F, static_cast<float>(VRELPIBY2));
  VRELVectorf const t(10.0F, 20.0F, 30.0F);
  VREL4x4Matrix expected;
  expected.SetRotation(VRELDirectionf(axis), VRELPointf(1.0F, 0.0F, 0.0F), axis.Norm());
  expected *= VREL4x4Matrix(t, 1.0F);
  EXPECT_TRUE(VREL4x4Matrix(t, axis, VRELPointf(1.0F, 0.0F, 0.0F), 1.0F) == expected);
  VREL4x4Matrix const scaled(t, axis, VRELPointf(1.0F, 0.0F, 0.0F), 2.0F);
  VRELVectorf moved;
  scaled.GetTranslation(moved);
  EXPECT_NEAR(moved.X(), 11.0F, 1e-5F);  // the scale does not apply to the translation
  EXPECT_NEAR(moved.Y(), 21.0F, 1e-5F);
  EXPECT_EQ(moved.Z(), 30.0F);
  EXPECT_NEAR(scaled.GetScaling(), 2.0F, 1e-6F);
  // A zero axis sets no element.
  EXPECT_EQ(Elements(VREL4x4Matrix(t, VRELNullVectorf, VRELPointOf, 2.0F)), FloatValues(16, 0.0F));
  EXPECT_EQ(Elements(VREL4x4Matrix(t, VRELNullVectorf, VRELPointOf, 1.0F)), FloatValues(16, 0.0F));
}

TEST(VREL4x4MatrixTest, ThirdColumnOfTransposedInverse) {
  std::mt19937 random(89);
  std::uniform_real_distribution<float> uniform(-1.0F, 1.0F);
  for (int round = 0; round < 1000; ++round) {
    FloatValues values;
    MatrixRows rows(4, std::vector<double>(4, 0.0));
    for (std::size_t i = 0; i < 16; ++i) {
      values.push_back(uniform(random) + (i % 5 == 0 ? 3.0F : 0.0F));
      rows[i / 4][i % 4] = static_cast<double>(values.back());
    }
    if (round % 2 == 1) {
      for (std::size_t j = 0; j < 4; ++j) {
        values[j] = -values[j];
        rows[0][j] = -rows[0][j];
      }
    }
    std::vector<double> const column = GaussJordanInverse(rows)[2];
    double const length = std::sqrt(column[0] * column[0] + column[1] * column[1] + column[2] * column[2]);
    float out[5] = {0, 0, 0, 0, 99};
    VREL4x4Matrix(values.data()).ComputeInverseTransposeThirdColumnNormalized(out);
    for (std::size_t i = 0; i < 4; ++i) ASSERT_NEAR(out[i], column[i] / length, 1e-5) << i;
    ASSERT_EQ(out[4], 99.0F);
  }
}

TEST(VREL4x4MatrixTest, SingularThirdColumnIsLastAxis) {
  float out[4] = {9, 9, 9, 9};
  VREL4x4Matrix(FloatValues(16, 0.0F).data()).ComputeInverseTransposeThirdColumnNormalized(out);
  EXPECT_EQ(FloatValues(out, out + 4), (FloatValues{0, 0, 0, 1}));
  // Its third row is the last axis, so that all cofactors of the third column but the last are 0.
  float const values[] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0};
  float again[4] = {9, 9, 9, 9};
  VREL4x4Matrix(values).ComputeInverseTransposeThirdColumnNormalized(again);
  EXPECT_EQ(FloatValues(again, again + 4), (FloatValues{0, 0, 0, 1}));
  VREL4x4Matrix().ComputeInverseTransposeThirdColumnNormalized(nullptr);
}

}  // namespace
