#include "VRELAffine.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>
#include <string>
#include <type_traits>

#include "Coordinates.h"
#include "PollsAbort.h"
#include "Raised.h"
#include "RecordingListener.h"
#include "StreamText.h"
#include "VRELAffine2D.h"
#include "VRELAffine3D.h"
#include "VRELPoint2D.h"
#include "VRELPoint3D.h"
#include "VRELStreamFormatter.h"

namespace {

using Values = std::vector<double>;

// Returns the used elements, row by row.
Values Elements(VRELAffine const& affine) {
  Values elements;
  for (int i = 0; i < affine.GetDimension(); ++i) {
    for (int j = 0; j < affine.GetDimension(); ++j) elements.push_back(affine.GetElement(i, j));
  }
  return elements;
}

template <class Affine>
Affine Make(Values const& rows) {
  Affine affine;
  for (int i = 0; i < affine.GetDimension(); ++i) affine.SetRow(i, rows.data() + i * affine.GetDimension());
  return affine;
}
VRELAffine2D Flat(Values const& rows) {
  return Make<VRELAffine2D>(rows);
}
VRELAffine3D Solid(Values const& rows) {
  return Make<VRELAffine3D>(rows);
}

char const outOfBound[] = "Array index is out of bound";

TEST(VRELAffineTest, DefaultIsZeroMatrix) {
  EXPECT_EQ(Elements(VRELAffine2D()), Values(4, 0.0));
  EXPECT_EQ(Elements(VRELAffine3D()), Values(9, 0.0));
  EXPECT_EQ(Elements(VRELAffine(2)), Values(4, 0.0));
  EXPECT_FALSE(VRELAffine3D().IsIdentity());
  EXPECT_FALSE(VRELAffine2D().IsIdentity());
}

TEST(VRELAffineTest, HasOnlyVirtualDestructor) {
  static_assert(std::has_virtual_destructor_v<VRELAffine>);
  static_assert(sizeof(VRELAffine) == sizeof(void*) + 8 + 9 * sizeof(double));
  static_assert(sizeof(VRELAffine2D) == sizeof(VRELAffine));
  static_assert(sizeof(VRELAffine3D) == sizeof(VRELAffine));
}

TEST(VRELAffineTest, InvalidDimensionsAreSafe) {
  EXPECT_EQ(VRELAffine(INT_MAX).GetDimension(), 3);
  VRELAffine none(-1);
  none.MakeIdentity();
  none.Transpose();
  EXPECT_EQ(none.Determinant(), 0.0);
  EXPECT_EQ(none.DeterminantOfCofactor(0, 0), 0.0);
  EXPECT_EQ(Raised([&] { none.GetElement(0, 0); }), outOfBound);
  VRELAffine one(1);
  one.SetElement(0, 0, 7.0);
  EXPECT_EQ(one.Determinant(), 7.0);
  EXPECT_EQ(one.DeterminantOfCofactor(0, 0), 0.0);
}

TEST(VRELAffineTest, CopyHasUsedElements) {
  VRELAffine2D const flat = Flat({1, 2, 3, 4});
  VRELAffine2D const copy(flat);
  EXPECT_EQ(Elements(copy), (Values{1, 2, 3, 4}));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(copy.GetElements()[i][2], 0.0);
    EXPECT_EQ(copy.GetElements()[2][i], 0.0);
  }
  VRELAffine3D const solid(Solid({1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(Elements(solid), (Values{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  VRELAffine3D assigned;
  EXPECT_EQ(&(assigned = solid), &assigned);
  EXPECT_EQ(Elements(assigned), Elements(solid));
}

TEST(VRELAffineTest, InitializeAndIdentity) {
  VRELAffine3D solid;
  solid.Initialize(4.0);
  EXPECT_EQ(Elements(solid), Values(9, 4.0));
  solid.MakeIdentity();
  EXPECT_EQ(Elements(solid), (Values{1, 0, 0, 0, 1, 0, 0, 0, 1}));
  VRELAffine2D flat;
  flat.Initialize(4.0);
  EXPECT_EQ(flat.GetElements()[0][2], 0.0);
  flat.MakeIdentity();
  EXPECT_EQ(Elements(flat), (Values{1, 0, 0, 1}));
}

TEST(VRELAffineTest, ElementOutOfRangeThrows) {
  VRELAffine3D solid;
  VRELAffine2D flat;
  int const outside[][2] = {{3, 0}, {0, 3}, {-1, 0}, {0, -1}, {INT_MAX, 0}, {0, INT_MIN}};
  for (auto const& [row, column] : outside) {
    SCOPED_TRACE(testing::Message() << row << ", " << column);
    EXPECT_EQ(Raised([&, r = row, c = column] { solid.GetElement(r, c); }), outOfBound);
    EXPECT_EQ(Raised([&, r = row, c = column] { solid.SetElement(r, c, 1.0); }), outOfBound);
    EXPECT_EQ(Raised([&, r = row, c = column] { flat.GetElement(r, c); }), outOfBound);
  }
  EXPECT_EQ(Raised([&] { flat.SetElement(2, 2, 1.0); }), outOfBound);
  EXPECT_EQ(Raised([&] { flat.GetElement(0, 2); }), outOfBound);
  EXPECT_EQ(Raised([&] { solid.SetElement(2, 2, 1.0); }), "(none)");
  EXPECT_EQ(solid.GetElement(2, 2), 1.0);
}

TEST(VRELAffineTest, ElementOutOfRangeSendsNoEvent) {
  RecordingListener const listener;
  VRELAffine3D solid;
  VRELAffine2D flat;
  EXPECT_EQ(Raised([&] { solid.GetElement(3, 0); }), outOfBound);
  EXPECT_EQ(Raised([&] { flat.SetElement(0, -1, 1.0); }), outOfBound);
  EXPECT_TRUE(listener.events.empty());
}

TEST(VRELAffineTest, RowsAndColumns) {
  VRELAffine3D solid;
  double row[] = {4.0, 5.0, 6.0};
  solid.SetRow(1, row);
  EXPECT_EQ(Elements(solid), (Values{0, 0, 0, 4, 5, 6, 0, 0, 0}));
  solid.SetColumn(2, row);
  EXPECT_EQ(Elements(solid), (Values{0, 0, 4, 4, 5, 5, 0, 0, 6}));
  double out[] = {0.0, 0.0, 0.0, 99.0};
  solid.GetRow(1, out);
  EXPECT_EQ(Values(out, out + 4), (Values{4, 5, 5, 99}));
  solid.GetColumn(2, out);
  EXPECT_EQ(Values(out, out + 4), (Values{4, 5, 6, 99}));
  VRELAffine2D flat = Flat({1, 2, 3, 4});
  flat.GetColumn(1, out);
  EXPECT_EQ(Values(out, out + 4), (Values{2, 4, 6, 99}));
}

TEST(VRELAffineTest, RowOrColumnOutOfRangeThrows) {
  VRELAffine3D solid;
  double values[] = {1.0, 2.0, 3.0};
  for (int index : {-1, 3}) {
    EXPECT_EQ(Raised([&] { solid.GetRow(index, values); }), outOfBound);
    EXPECT_EQ(Raised([&] { solid.GetColumn(index, values); }), outOfBound);
    EXPECT_EQ(Raised([&] { solid.SetRow(index, values); }), outOfBound);
    EXPECT_EQ(Raised([&] { solid.SetColumn(index, values); }), outOfBound);
    EXPECT_EQ(Raised([&] { solid.SetColumn(index, VRELPoint3D()); }), outOfBound);
  }
}

TEST(VRELAffineTest, NullIsIgnored) {
  VRELAffine3D solid = Solid({1, 2, 3, 4, 5, 6, 7, 8, 9});
  solid.GetRow(0, nullptr);
  solid.GetColumn(0, nullptr);
  solid.SetRow(0, nullptr);
  solid.SetColumn(0, nullptr);
  EXPECT_EQ(Elements(solid), (Values{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(VRELAffineTest, SetColumnFromPoint) {
  VRELAffine2D flat;
  flat.SetColumn(1, VRELPoint2D(5.0, 6.0));
  EXPECT_EQ(Elements(flat), (Values{0, 5, 0, 6}));
  VRELAffine3D solid;
  solid.SetColumn(0, VRELPoint3D(5.0, 6.0, 7.0));
  EXPECT_EQ(Elements(solid), (Values{5, 0, 0, 6, 0, 0, 7, 0, 0}));
}

TEST(VRELAffineTest, SetToCopies) {
  VRELAffine3D const source = Solid({1, 2, 3, 4, 5, 6, 7, 8, 9});
  VRELAffine3D target;
  EXPECT_EQ(&target.SetTo(source), &target);
  EXPECT_EQ(Elements(target), Elements(source));
  VRELAffine2D flat;
  flat.SetTo(source);
  EXPECT_EQ(Elements(flat), (Values{1, 2, 4, 5}));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(flat.GetElements()[i][2], 0.0);
    EXPECT_EQ(flat.GetElements()[2][i], 0.0);
  }
  target.SetTo(Flat({10, 20, 30, 40}));
  EXPECT_EQ(Elements(target), (Values{10, 20, 0, 30, 40, 0, 0, 0, 0}));
}

TEST(VRELAffineTest, MultiplyAndDivideByNumber) {
  VRELAffine2D flat = Flat({1, 2, 3, 4});
  EXPECT_EQ(&flat.Multiply(4.0), &flat);
  EXPECT_EQ(Elements(flat), (Values{4, 8, 12, 16}));
  EXPECT_EQ(&flat.Divide(8.0), &flat);
  EXPECT_EQ(Elements(flat), (Values{0.5, 1, 1.5, 2}));
}

TEST(VRELAffineTest, DivideMultipliesByReciprocal) {
  VRELAffine2D flat = Flat({49, 1, 1, 1});
  flat.Divide(49.0);
  EXPECT_EQ(flat.GetElement(0, 0), 49.0 * (1.0 / 49.0));
  EXPECT_NE(flat.GetElement(0, 0), 1.0);
}

TEST(VRELAffineTest, DivideByZeroIsInfinite) {
  VRELAffine2D flat = Flat({1, -2, 0, 4});
  flat.Divide(0.0);
  EXPECT_EQ(flat.GetElement(0, 0), infinity);
  EXPECT_EQ(flat.GetElement(0, 1), -infinity);
  EXPECT_TRUE(std::isnan(flat.GetElement(1, 0)));
}

TEST(VRELAffineTest, MultiplyComputesProduct) {
  VRELAffine2D out;
  Flat({1, 2, 3, 4}).Multiply(Flat({5, 6, 7, 8}), out);
  EXPECT_EQ(Elements(out), (Values{19, 22, 43, 50}));
  VRELAffine3D solid;
  Solid({1, 2, 3, 4, 5, 6, 7, 8, 9}).Multiply(Solid({0, 1, 0, 0, 0, 1, 1, 0, 0}), solid);
  EXPECT_EQ(Elements(solid), (Values{3, 1, 2, 6, 4, 5, 9, 7, 8}));
}

// Sums are accumulated in the output, so that an affine multiplied into itself reads elements already overwritten.
TEST(VRELAffineTest, MultiplyIntoFactorReadsResult) {
  VRELAffine2D flat = Flat({1, 2, 3, 4});
  flat.Multiply(Flat({1, 2, 3, 4}), flat);
  // (0, 0): 0, + 0 * 1, + 2 * 3 = 6. (0, 1): 0, + 6 * 2 = 12, + 12 * 4 = 60. The second row: 0, + 0, + 4 * 3 = 12;
  // 0, + 12 * 2 = 24, + 24 * 4 = 120.
  EXPECT_EQ(Elements(flat), (Values{6, 60, 12, 120}));
}

TEST(VRELAffineTest, MultiplyKeepsWithinSmallerMatrix) {
  VRELAffine2D out;
  Solid({1, 2, 3, 4, 5, 6, 7, 8, 9}).Multiply(Solid({1, 0, 0, 0, 1, 0, 0, 0, 1}), out);
  EXPECT_EQ(Elements(out), (Values{1, 2, 4, 5}));
  EXPECT_EQ(out.GetElements()[0][2], 0.0);
  EXPECT_EQ(out.GetElements()[2][2], 0.0);
}

TEST(VRELAffineTest, Transposes) {
  VRELAffine3D solid = Solid({1, 2, 3, 4, 5, 6, 7, 8, 9});
  VRELAffine3D out;
  solid.GetTranspose(out);
  EXPECT_EQ(Elements(out), (Values{1, 4, 7, 2, 5, 8, 3, 6, 9}));
  EXPECT_EQ(Elements(solid), (Values{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  solid.Transpose();
  EXPECT_EQ(Elements(solid), Elements(out));
  VRELAffine2D flat = Flat({1, 2, 3, 4});
  flat.Transpose();
  EXPECT_EQ(Elements(flat), (Values{1, 3, 2, 4}));
}

TEST(VRELAffineTest, Determinants) {
  EXPECT_EQ(Flat({1, 2, 3, 5}).Determinant(), -1.0);
  EXPECT_EQ(Solid({2, 3, 5, 7, 11, 13, 17, 19, 23}).Determinant(), -78.0);
  EXPECT_EQ(Solid({1, 2, 3, 4, 5, 6, 7, 8, 9}).Determinant(), 0.0);
  // Expansion along the first column: 1 + 1e17 - 1e17, which is 0 in doubles.
  EXPECT_EQ(Solid({1, 1, 1, -1e17, 1, 0, 1e17, 0, 1}).Determinant(), 0.0);
}

TEST(VRELAffineTest, Cofactor2DHasOppositeSign) {
  VRELAffine2D const flat = Flat({1, 2, 3, 4});
  EXPECT_EQ(flat.DeterminantOfCofactor(0, 0), -4.0);
  EXPECT_EQ(flat.DeterminantOfCofactor(0, 1), 3.0);
  EXPECT_EQ(flat.DeterminantOfCofactor(1, 0), 2.0);
  EXPECT_EQ(flat.DeterminantOfCofactor(1, 1), -1.0);
}

TEST(VRELAffineTest, Cofactor3D) {
  VRELAffine3D const solid = Solid({2, 3, 5, 7, 11, 13, 17, 19, 23});
  double const expected[3][3] = {{6, 60, -54}, {26, -39, 13}, {-16, 9, 1}};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) EXPECT_EQ(solid.DeterminantOfCofactor(i, j), expected[i][j]) << i << ", " << j;
  }
}

TEST(VRELAffineTest, CofactorIndexesWrap) {
  VRELAffine3D const solid = Solid({2, 3, 5, 7, 11, 13, 17, 19, 23});
  EXPECT_EQ(solid.DeterminantOfCofactor(-1, 4), 9.0);
  EXPECT_EQ(solid.DeterminantOfCofactor(INT_MAX, INT_MIN), solid.DeterminantOfCofactor(1, 1));
  EXPECT_EQ(Flat({1, 2, 3, 4}).DeterminantOfCofactor(-1, INT_MAX), -1.0);
}

TEST(VRELAffineTest, Inverse3D) {
  VRELAffine3D out;
  Solid({2, 0, 0, 0, 0, 4, 0, -8, 0}).GetInverse(out);
  EXPECT_EQ(Elements(out), (Values{0.5, 0, 0, 0, 0, -0.125, 0, 0.25, 0}));
  std::mt19937 random(83);
  std::uniform_real_distribution<double> uniform(-1.0, 1.0);
  for (int round = 0; round < 1000; ++round) {
    Values rows;
    for (int i = 0; i < 9; ++i) rows.push_back(uniform(random) + (i % 4 == 0 ? 3.0 : 0.0));
    VRELAffine3D const affine = Solid(rows);
    affine.GetInverse(out);
    VRELAffine3D product;
    affine.Multiply(out, product);
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) ASSERT_NEAR(product.GetElement(i, j), i == j ? 1.0 : 0.0, 1e-13);
    }
  }
}

TEST(VRELAffineTest, Inverse2DIsNegated) {
  VRELAffine2D out;
  Flat({1, 0, 0, 1}).GetInverse(out);
  EXPECT_EQ(Elements(out), (Values{-1, 0, 0, -1}));
  // The true inverse is (4, -2, -3, 1) / -2.
  Flat({1, 2, 3, 4}).GetInverse(out);
  EXPECT_EQ(Elements(out), (Values{2, -1, -1.5, 0.5}));
}

TEST(VRELAffineTest, InverseOfSingularIsNotFinite) {
  VRELAffine3D out;
  Solid({1, 2, 3, 4, 5, 6, 7, 8, 9}).GetInverse(out);
  for (double element : Elements(out)) EXPECT_FALSE(std::isfinite(element));
  VRELAffine2D flat;
  Solid({1, 0, 0, 0, 1, 0, 0, 0, 1}).GetInverse(flat);
  EXPECT_EQ(Elements(flat), (Values{1, 0, 0, 1}));
}

TEST(VRELAffineTest, EqualityUsesTolerance) {
  VRELAffine3D identity;
  identity.MakeIdentity();
  for (int i = 0; i < 9; ++i) {
    VRELAffine3D other(identity);
    other.SetElement(i / 3, i % 3, other.GetElement(i / 3, i % 3) + 1e-7);
    EXPECT_TRUE(identity == other) << i;
    other.SetElement(i / 3, i % 3, identity.GetElement(i / 3, i % 3) + 9.9e-7);
    EXPECT_TRUE(identity == other) << i;
    other.SetElement(i / 3, i % 3, identity.GetElement(i / 3, i % 3) - 1.01e-6);
    EXPECT_FALSE(identity == other) << i;
    EXPECT_TRUE(identity != other) << i;
    other.SetElement(i / 3, i % 3, notANumber);
    EXPECT_FALSE(identity == other) << i;
  }
  VRELAffine2D flat;
  flat.MakeIdentity();
  EXPECT_FALSE(flat == identity);
  EXPECT_FALSE(identity == flat);
}

TEST(VRELAffineTest, IsIdentityTestsDiagonalAndRowSums) {
  struct {
    Values rows;
    bool expected;
  } const solids[] = {
      {{1, 0, 0, 0, 1, 0, 0, 0, 1}, true},
      {{1, 0.5, -0.5, 0, 1, 0, 0, 0, 1}, true},
      {{1, 7, -7, -3, 1, 3, 1e6, -1e6, 1}, true},
      {{1, 0.5, 0, 0, 1, 0, 0, 0, 1}, false},
      {{1, 0, 0, 0, 1, 0, 0, 1e-9, 1}, false},
      {{1, 0, 0, 0, 1, 0, 0, 1.5e-10, 1}, false},
      {{1, 0, 0, 0, 1, 0, 0, 5e-11, 1}, true},
      {{1 + 5e-11, 0, 0, 0, 1, 0, 0, 0, 1}, true},
      {{1 + 2e-10, -2e-10, 0, 0, 1, 0, 0, 0, 1}, false},
      {{1 + 1e-7, 0, 0, 0, 1, 0, 0, 0, 1}, false},
      {{1, 0, 0, 0, notANumber, 0, 0, 0, 1}, false},
      {{1, infinity, -infinity, 0, 1, 0, 0, 0, 1}, false},
      {{0, 1, 0, 1, 0, 0, 0, 0, 1}, false},
  };
  for (auto const& [rows, expected] : solids) {
    SCOPED_TRACE(testing::PrintToString(rows));
    EXPECT_EQ(Solid(rows).IsIdentity(), expected);
  }
  EXPECT_TRUE(Flat({1, 0, 0, 1}).IsIdentity());
  EXPECT_FALSE(Flat({1, 0.5, 0, 1}).IsIdentity());
}

TEST(VRELAffineTest, GuardedOperationsPollAbort) {
  VRELAffine3D a;
  VRELAffine3D b;
  EXPECT_TRUE(PollsAbort([&] { a.SetTo(b); }));
  EXPECT_TRUE(PollsAbort([&] { a.Divide(1.0); }));
  EXPECT_TRUE(PollsAbort([&] { a.Determinant(); }));
  EXPECT_TRUE(PollsAbort([&] { a.DeterminantOfCofactor(0, 0); }));
  EXPECT_TRUE(PollsAbort([&] { a.GetTranspose(b); }));
  EXPECT_TRUE(PollsAbort([&] { a.GetInverse(b); }));
  EXPECT_FALSE(PollsAbort([&] {
    a = b;
    a.MakeIdentity();
    a.Multiply(2.0);
    a.Multiply(a, b);
    a.Transpose();
    (void)a.IsIdentity();
    (void)(a == b);
  }));
}

TEST(VRELAffineTest, WritesLineForEachRow) {
  std::string const text = TextOf([](VRELOutputStream* stream) {
    VRELStreamFormatter formatter(stream);
    formatter.margin()->incr();
    EXPECT_EQ(&(formatter << Flat({1, 2, 3, -4.5})), &formatter);
    formatter << Solid({1, 2, 3, 4, 5, 6, 7, 8, 9});
  });
  EXPECT_EQ(text,
            "    1.000000\t2.000000\t\n"
            "    3.000000\t-4.500000\t\n"
            "    1.000000\t2.000000\t3.000000\t\n"
            "    4.000000\t5.000000\t6.000000\t\n"
            "    7.000000\t8.000000\t9.000000\t\n");
}

}  // namespace
