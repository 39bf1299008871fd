#include "VRELAssemblyComponentTransform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>

namespace {

using Matrix = std::array<double, 12>;

constexpr Matrix identity = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
constexpr Matrix counting = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
// Maps x to y, y to z and z to x, and translates.
constexpr Matrix turn = {0, 1, 0, 0, 0, 1, 1, 0, 0, 10, 20, 30};

VRELAssemblyComponentTransform Make(Matrix const& matrix, double scale = 1.0) {
  return {matrix.data(), scale};
}

Matrix MatrixOf(VRELAssemblyComponentTransform const& transform) {
  Matrix matrix = {};
  EXPECT_EQ(transform.Get(matrix.data()), VREL_S_OK);
  return matrix;
}

double ScaleOf(VRELAssemblyComponentTransform const& transform) {
  double scale = -1.0;
  EXPECT_EQ(transform.GetScale(scale), VREL_S_OK);
  return scale;
}

double DeterminantOf(VRELAssemblyComponentTransform const& transform) {
  double determinant = -77.0;
  EXPECT_EQ(transform.GetDeterminant(determinant), VREL_S_OK);
  return determinant;
}

TEST(VRELAssemblyComponentTransformTest, HasVirtualDestructorAndFields) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELAssemblyComponentTransform>);
  // The virtual table, twelve doubles, the determinant, the scale and five flags.
  EXPECT_EQ(sizeof(VRELAssemblyComponentTransform), 128U);
}

TEST(VRELAssemblyComponentTransformTest, DefaultIsIdentity) {
  VRELAssemblyComponentTransform const transform;
  EXPECT_EQ(MatrixOf(transform), identity);
  EXPECT_EQ(ScaleOf(transform), 1.0);
  EXPECT_TRUE(transform.IsValid());
  EXPECT_FALSE(transform.IsMirrorTransform());
  EXPECT_TRUE(transform.IsIdentityTransform());
  EXPECT_EQ(DeterminantOf(transform), 1.0);
}

TEST(VRELAssemblyComponentTransformTest, ConstructorReadsMatrixAndScale) {
  VRELAssemblyComponentTransform const transform = Make(counting, 2.5);
  EXPECT_EQ(MatrixOf(transform), counting);
  EXPECT_EQ(ScaleOf(transform), 2.5);
}

TEST(VRELAssemblyComponentTransformTest, NullMatrixIsIdentity) {
  VRELAssemblyComponentTransform const transform(nullptr, 2.5);
  EXPECT_EQ(MatrixOf(transform), identity);
  EXPECT_EQ(ScaleOf(transform), 1.0);
  EXPECT_TRUE(transform.IsIdentityTransform());
}

TEST(VRELAssemblyComponentTransformTest, CopyAndAssignment) {
  VRELAssemblyComponentTransform source = Make(turn, 3.0);
  EXPECT_TRUE(source.IsValid());
  VRELAssemblyComponentTransform copy(source);
  VRELAssemblyComponentTransform assigned;
  EXPECT_TRUE(assigned.IsIdentityTransform());
  assigned = source;
  source.Set(identity.data());
  for (VRELAssemblyComponentTransform const* each : {&copy, &assigned}) {
    EXPECT_EQ(MatrixOf(*each), turn);
    EXPECT_EQ(ScaleOf(*each), 3.0);
    EXPECT_FALSE(each->IsIdentityTransform());
    EXPECT_EQ(DeterminantOf(*each), 1.0);
  }
  EXPECT_TRUE(source.IsIdentityTransform());
}

TEST(VRELAssemblyComponentTransformTest, PartsRoundTrip) {
  VRELAssemblyComponentTransform transform;
  EXPECT_EQ(transform.Set(counting.data()), VREL_S_OK);

  std::array<double, 10> rotation;
  rotation.fill(-1.0);
  EXPECT_EQ(transform.GetRotation(rotation.data()), VREL_S_OK);
  EXPECT_EQ(rotation, (std::array<double, 10>{1, 2, 3, 4, 5, 6, 7, 8, 9, -1}));
  std::array<double, 4> translation;
  translation.fill(-1.0);
  EXPECT_EQ(transform.GetTranslation(translation.data()), VREL_S_OK);
  EXPECT_EQ(translation, (std::array<double, 4>{10, 11, 12, -1}));

  double const otherRotation[] = {21, 22, 23, 24, 25, 26, 27, 28, 29};
  EXPECT_EQ(transform.SetRotation(otherRotation), VREL_S_OK);
  EXPECT_EQ(MatrixOf(transform), (Matrix{21, 22, 23, 24, 25, 26, 27, 28, 29, 10, 11, 12}));
  double const otherTranslation[] = {31, 32, 33};
  EXPECT_EQ(transform.SetTranslation(otherTranslation), VREL_S_OK);
  EXPECT_EQ(MatrixOf(transform), (Matrix{21, 22, 23, 24, 25, 26, 27, 28, 29, 31, 32, 33}));

  EXPECT_EQ(transform.SetScale(4.0), VREL_S_OK);
  EXPECT_EQ(ScaleOf(transform), 4.0);
}

TEST(VRELAssemblyComponentTransformTest, NullChangesNothing) {
  VRELAssemblyComponentTransform transform = Make(counting, 2.0);
  double determinant = DeterminantOf(transform);
  EXPECT_EQ(transform.Get(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.Set(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.GetRotation(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.SetRotation(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.GetTranslation(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.SetTranslation(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.Get4x4ByColumn(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.Get4x4ByRow(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.Set4x4ByColumn(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.Set3x4ByRow(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.ApplyRotation(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(transform.ApplyTransform(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(MatrixOf(transform), counting);
  EXPECT_EQ(ScaleOf(transform), 2.0);
  EXPECT_EQ(DeterminantOf(transform), determinant);
}

TEST(VRELAssemblyComponentTransformTest, WritesSixteenFloats) {
  VRELAssemblyComponentTransform const transform = Make(counting, 9.0);
  std::array<float, 17> floats;
  floats.fill(-1.0F);
  EXPECT_EQ(transform.Get4x4ByColumn(floats.data()), VREL_S_OK);
  EXPECT_EQ(floats, (std::array<float, 17>{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 1, -1}));
  floats.fill(-1.0F);
  EXPECT_EQ(transform.Get4x4ByRow(floats.data()), VREL_S_OK);
  EXPECT_EQ(floats, (std::array<float, 17>{1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12, 0, 0, 0, 1, -1}));
}

TEST(VRELAssemblyComponentTransformTest, WritesTranslation) {
  VRELAssemblyComponentTransform transform;
  double const shift[] = {1, 2, 3};
  transform.SetTranslation(shift);
  std::array<float, 16> floats = {};
  transform.Get4x4ByRow(floats.data());
  EXPECT_EQ(floats, (std::array<float, 16>{1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1}));
  transform.Get4x4ByColumn(floats.data());
  EXPECT_EQ(floats, (std::array<float, 16>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
}

TEST(VRELAssemblyComponentTransformTest, WritingRoundsToFloat) {
  Matrix third = identity;
  third[1] = 1.0 / 3.0;
  std::array<float, 16> floats = {};
  Make(third).Get4x4ByColumn(floats.data());
  EXPECT_EQ(floats[1], 0.333333343F);
  Make(third).Get4x4ByRow(floats.data());
  EXPECT_EQ(floats[4], 0.333333343F);
}

TEST(VRELAssemblyComponentTransformTest, ReadsFloatsByColumn) {
  float const in[] = {1, 2, 3, 91, 4, 5, 6, 92, 7, 8, 9, 93, 10, 11, 12, 94};
  VRELAssemblyComponentTransform transform;
  EXPECT_EQ(transform.Set4x4ByColumn(in), VREL_S_OK);
  EXPECT_EQ(MatrixOf(transform), counting);
  std::array<float, 16> back = {};
  transform.Get4x4ByColumn(back.data());
  EXPECT_EQ(back, (std::array<float, 16>{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 1}));
}

TEST(VRELAssemblyComponentTransformTest, ReadsTwelveFloatsByRow) {
  float const in[] = {1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12};
  VRELAssemblyComponentTransform transform;
  EXPECT_EQ(transform.Set3x4ByRow(in), VREL_S_OK);
  EXPECT_EQ(MatrixOf(transform), counting);
}

TEST(VRELAssemblyComponentTransformTest, ReadsFloatsUnchanged) {
  float in[16] = {};
  in[1] = 0.1F;
  VRELAssemblyComponentTransform transform;
  transform.Set4x4ByColumn(in);
  EXPECT_EQ(MatrixOf(transform)[1], 0.100000001490116119384765625);
  transform.Set3x4ByRow(in);
  EXPECT_EQ(MatrixOf(transform)[3], 0.100000001490116119384765625);
}

TEST(VRELAssemblyComponentTransformTest, DeterminantOfLinearPart) {
  // Rows 2 7 1, 3 -1 4, 5 6 -8: 2 (8 - 24) - 7 (-24 - 20) + 1 (18 + 5) = 299.
  EXPECT_EQ(DeterminantOf(Make({2, 3, 5, 7, -1, 6, 1, 4, -8, 100, 200, 300}, 3.0)), 299.0);
}

TEST(VRELAssemblyComponentTransformTest, ChangesResetFlags) {
  VRELAssemblyComponentTransform transform;
  Matrix const zero = {};
  float const mirrorByColumn[16] = {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  float const twiceByRow[12] = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0};
  EXPECT_TRUE(transform.IsIdentityTransform());

  transform.Set(zero.data());
  EXPECT_FALSE(transform.IsValid());
  EXPECT_EQ(DeterminantOf(transform), 0.0);

  transform.SetRotation(identity.data());
  EXPECT_TRUE(transform.IsValid());
  EXPECT_TRUE(transform.IsIdentityTransform());
  EXPECT_EQ(DeterminantOf(transform), 1.0);

  transform.SetTranslation(counting.data());
  EXPECT_FALSE(transform.IsIdentityTransform());

  transform.Set4x4ByColumn(mirrorByColumn);
  EXPECT_TRUE(transform.IsMirrorTransform());
  EXPECT_EQ(DeterminantOf(transform), -1.0);

  transform.Set3x4ByRow(twiceByRow);
  EXPECT_FALSE(transform.IsMirrorTransform());
  EXPECT_EQ(DeterminantOf(transform), 8.0);
}

TEST(VRELAssemblyComponentTransformTest, DetectsKind) {
  struct {
    char const* name;
    int index;
    double value;
    bool valid;
    bool mirror;
    bool identity;
  } const rows[] = {
      {"m0 of 1", 0, 1.0, true, false, true},
      {"m0 of -1", 0, -1.0, true, true, false},
      {"m0 of 0", 0, 0.0, false, false, false},
      {"m0 of -0", 0, -0.0, false, false, false},
      {"m0 a little more", 0, 1.0 + 0.9e-6, true, false, true},
      {"m0 a little less", 0, 1.0 - 0.9e-6, true, false, true},
      {"m0 more", 0, 1.0 + 1.1e-6, true, false, false},
      {"m0 less", 0, 1.0 - 1.1e-6, true, false, false},
      {"m4 more", 4, 1.0 + 1.1e-6, true, false, false},
      {"m8 more", 8, 1.0 + 1.1e-6, true, false, false},
      {"m1 just at the tolerance", 1, 1e-6, true, false, false},
      {"m1 below it", 1, 0.999e-6, true, false, true},
      {"m1 below it on the other side", 1, -0.999e-6, true, false, true},
      {"m2", 2, -1e-5, true, false, false},
      {"m3", 3, 1e-5, true, false, false},
      {"m5", 5, 1e-5, true, false, false},
      {"m6", 6, 1e-5, true, false, false},
      {"m7", 7, 1e-5, true, false, false},
      {"m9", 9, 1e-5, true, false, false},
      {"m10", 10, -1e-5, true, false, false},
      {"m11", 11, 1e-5, true, false, false},
      {"m9 below the tolerance", 9, 1e-7, true, false, true},
      {"m4 not a number", 4, std::numeric_limits<double>::quiet_NaN(), true, false, false},
      {"m10 not a number", 10, std::numeric_limits<double>::quiet_NaN(), true, false, false},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    Matrix matrix = identity;
    matrix[static_cast<std::size_t>(row.index)] = row.value;
    EXPECT_EQ(Make(matrix).IsValid(), row.valid);
    EXPECT_EQ(Make(matrix).IsMirrorTransform(), row.mirror);
    EXPECT_EQ(Make(matrix).IsIdentityTransform(), row.identity);
  }
}

TEST(VRELAssemblyComponentTransformTest, ZeroMatrixIsInvalid) {
  VRELAssemblyComponentTransform const transform = Make(Matrix{});
  EXPECT_FALSE(transform.IsValid());
  EXPECT_FALSE(transform.IsMirrorTransform());
  EXPECT_FALSE(transform.IsIdentityTransform());
}

TEST(VRELAssemblyComponentTransformTest, TransformsPoints) {
  VRELAssemblyComponentTransform const transform = Make(turn, 100.0);
  float point[] = {1.0F, 2.0F, 3.0F, -1.0F};
  EXPECT_EQ(transform.ApplyTransform(point), VREL_S_OK);
  EXPECT_EQ(point[0], 13.0F);
  EXPECT_EQ(point[1], 21.0F);
  EXPECT_EQ(point[2], 32.0F);
  EXPECT_EQ(point[3], -1.0F);
  float vector[] = {1.0F, 2.0F, 3.0F, -1.0F};
  EXPECT_EQ(transform.ApplyRotation(vector), VREL_S_OK);
  EXPECT_EQ(vector[0], 3.0F);
  EXPECT_EQ(vector[1], 1.0F);
  EXPECT_EQ(vector[2], 2.0F);
  EXPECT_EQ(vector[3], -1.0F);
}

TEST(VRELAssemblyComponentTransformTest, TransformsPointsInDoubles) {
  // In floats 16777216 + 1 is 16777216 again.
  float point[] = {16777216.0F, 1.0F, -16777216.0F};
  Make({1, 0, 0, 1, 1, 0, 1, 0, 1, 0, 0, 0}).ApplyTransform(point);
  EXPECT_EQ(point[0], 1.0F);
}

TEST(VRELAssemblyComponentTransformTest, NearIdentityKeepsPoints) {
  Matrix almost = identity;
  almost[9] = 1e-7;
  float const tiny[] = {1e-20F, std::numeric_limits<float>::denorm_min(), -0.0F};
  float point[3];
  std::copy_n(tiny, 3, point);
  EXPECT_EQ(Make(almost).ApplyTransform(point), VREL_S_OK);
  EXPECT_EQ(Make(almost).ApplyRotation(point), VREL_S_OK);
  EXPECT_EQ(std::memcmp(point, tiny, sizeof(point)), 0);

  Matrix shifted = identity;
  shifted[9] = 1e-5;
  EXPECT_EQ(Make(shifted).ApplyTransform(point), VREL_S_OK);
  EXPECT_EQ(point[0], 1e-5F);
}

TEST(VRELAssemblyComponentTransformTest, ScaleIsNotApplied) {
  VRELAssemblyComponentTransform transform;
  transform.SetScale(2.0);
  EXPECT_TRUE(transform.IsIdentityTransform());
  EXPECT_EQ(DeterminantOf(transform), 1.0);
  float point[] = {1.0F, 2.0F, 3.0F};
  transform.ApplyTransform(point);
  EXPECT_EQ(point[0], 1.0F);
  EXPECT_EQ(point[1], 2.0F);
  EXPECT_EQ(point[2], 3.0F);
}

TEST(VRELAssemblyComponentTransformTest, ProductAppliesRightFirst) {
  VRELAssemblyComponentTransform const twice = Make({2, 0, 0, 0, 2, 0, 0, 0, 2, 1, 1, 1}, 5.0);
  VRELAssemblyComponentTransform const rotated = Make(turn, 7.0);
  EXPECT_EQ(MatrixOf(twice * rotated), (Matrix{0, 2, 0, 0, 0, 2, 2, 0, 0, 21, 41, 61}));
  EXPECT_EQ(MatrixOf(rotated * twice), (Matrix{0, 2, 0, 0, 0, 2, 2, 0, 0, 11, 21, 31}));
  EXPECT_EQ(ScaleOf(twice * rotated), 1.0);
}

TEST(VRELAssemblyComponentTransformTest, ProductWithIdentityHasScaleOne) {
  VRELAssemblyComponentTransform const one;
  EXPECT_EQ(MatrixOf(Make(counting, 3.0) * one), counting);
  EXPECT_EQ(MatrixOf(one * Make(counting, 3.0)), counting);
  EXPECT_EQ(ScaleOf(Make(counting, 3.0) * one), 1.0);
}

// Independent model: full 4 by 4 matrices, element [row][column].
struct Model {
  double at[4][4] = {};

  explicit Model(Matrix const& matrix) {
    for (int c = 0; c < 4; ++c) {
      for (int r = 0; r < 3; ++r) at[r][c] = matrix[static_cast<std::size_t>(3 * c + r)];
    }
    at[3][3] = 1.0;
  }

  double Sarrus() const {
    double sum = 0.0;
    for (int c = 0; c < 3; ++c) {
      sum += at[0][c] * at[1][(c + 1) % 3] * at[2][(c + 2) % 3] - at[2][c] * at[1][(c + 1) % 3] * at[0][(c + 2) % 3];
    }
    return sum;
  }
};

TEST(VRELAssemblyComponentTransformTest, EqualsFullMatrices) {
  std::mt19937 random(20);
  // Small integers: all results are exact.
  std::uniform_int_distribution<int> number(-40, 40);
  for (int round = 0; round < 2000; ++round) {
    Matrix a;
    Matrix b;
    for (double& each : a) each = number(random);
    for (double& each : b) each = number(random);
    Model const left(a);
    Model const right(b);
    VRELAssemblyComponentTransform const product = Make(a) * Make(b);
    Matrix const got = MatrixOf(product);
    for (int c = 0; c < 4; ++c) {
      for (int r = 0; r < 3; ++r) {
        double sum = 0.0;
        for (int k = 0; k < 4; ++k) sum += left.at[r][k] * right.at[k][c];
        ASSERT_EQ(got[static_cast<std::size_t>(3 * c + r)], sum) << round << " " << r << " " << c;
      }
    }
    ASSERT_EQ(DeterminantOf(Make(a)), left.Sarrus());
    ASSERT_EQ(DeterminantOf(product), left.Sarrus() * right.Sarrus());
    ASSERT_EQ(Make(a).IsMirrorTransform(), left.Sarrus() < 0.0);

    float point[] = {static_cast<float>(number(random)), static_cast<float>(number(random)), 1.0F};
    float moved[] = {point[0], point[1], point[2]};
    Make(a).ApplyTransform(moved);
    for (int r = 0; r < 3; ++r) {
      double const wanted =
          left.at[r][0] * point[0] + left.at[r][1] * point[1] + left.at[r][2] * point[2] + left.at[r][3];
      ASSERT_EQ(moved[r], static_cast<float>(wanted));
    }
  }
}

}  // namespace
