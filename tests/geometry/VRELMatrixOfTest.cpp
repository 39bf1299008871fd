// The grids are classes that a client can declare without their headers.
class VRELMatrixOfdouble;
class VRELMatrixOfVRELPoint3D;
class VRELMatrixOfVRELWeightPoint3D;
int RowCount(VRELMatrixOfdouble const& grid);

#include "detail/VRELMatrixOf.h"

#include <gtest/gtest.h>

#include <climits>

#include "Coordinates.h"
#include "VRELMatrixOfVRELPoint3D.h"
#include "VRELMatrixOfVRELWeightPoint3D.h"
#include "VRELMatrixOfdouble.h"

int RowCount(VRELMatrixOfdouble const& grid) {
  return grid.uSize();
}

namespace {

using Values = std::vector<double>;

Values Elements(VRELMatrixOfdouble const& m) {
  Values elements;
  for (int u = 0; u < m.uSize(); ++u) {
    for (int v = 0; v < m.vSize(); ++v) elements.push_back(m.elem(u, v));
  }
  return elements;
}

double const sixValues[] = {1, 2, 3, 4, 5, 6};
double const nineValues[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};

TEST(VRELMatrixOfTest, DefaultIsEmpty) {
  VRELMatrixOfdouble const m;
  EXPECT_EQ(m.uSize(), 0);
  EXPECT_EQ(m.vSize(), 0);
}

TEST(VRELMatrixOfTest, ConstructorsFillElements) {
  VRELMatrixOfdouble const zeros(2, 3);
  EXPECT_EQ(zeros.uSize(), 2);
  EXPECT_EQ(zeros.vSize(), 3);
  EXPECT_EQ(Elements(zeros), Values(6, 0.0));
  EXPECT_EQ(Elements(VRELMatrixOfdouble(2, 2, 7.5)), Values(4, 7.5));
  VRELMatrixOfVRELPoint3D const points(1, 2);
  EXPECT_EQ(Coordinates(points.elem(0, 1)), Values(3, 0.0));
  VRELMatrixOfVRELWeightPoint3D const weighted(1, 2);
  EXPECT_EQ(Coordinates(weighted.elem(0, 1), 4), Values(4, 0.0));
  VRELMatrixOfVRELPoint3D const filled(2, 2, VRELPoint3D(1.0, 2.0, 3.0));
  EXPECT_EQ(Coordinates(filled.elem(1, 1)), (Values{1, 2, 3}));
}

TEST(VRELMatrixOfTest, CopiesValuesRowByRow) {
  VRELMatrixOfdouble const m(sixValues, 2, 3);
  EXPECT_EQ(m.elem(0, 2), 3.0);
  EXPECT_EQ(m.elem(1, 0), 4.0);
  EXPECT_EQ(Elements(m), Values(sixValues, sixValues + 6));
  EXPECT_EQ(Elements(VRELMatrixOfdouble(static_cast<double const*>(nullptr), 1, 2)), Values(2, 0.0));
}

TEST(VRELMatrixOfTest, NegativeSizeIsZero) {
  VRELMatrixOfdouble const m(-2, 3);
  EXPECT_EQ(m.uSize(), 0);
  EXPECT_EQ(m.vSize(), 3);
  VRELMatrixOfdouble const both(INT_MIN, INT_MIN, 1.0);
  EXPECT_EQ(both.uSize(), 0);
  EXPECT_EQ(both.vSize(), 0);
}

TEST(VRELMatrixOfTest, TooManyElementsThrow) {
  EXPECT_THROW(VRELMatrixOfdouble(65536, 65536), VRELAllocException);
  EXPECT_THROW(VRELMatrixOfdouble(INT_MAX, INT_MAX), VRELAllocException);
  EXPECT_THROW(VRELMatrixOfdouble(2, 2).subset(INT_MAX, 0, INT_MIN, 0), VRELAllocException);
}

TEST(VRELMatrixOfTest, ElementsAreReferences) {
  VRELMatrixOfdouble m(2, 3);
  m.elem(1, 2) = 9.0;
  EXPECT_EQ(Elements(m), (Values{0, 0, 0, 0, 0, 9}));
  VRELMatrixOfdouble const& constant = m;
  EXPECT_EQ(&constant.elem(1, 2), &m.elem(1, 2));
}

TEST(VRELMatrixOfTest, CopiesShareValues) {
  VRELMatrixOfdouble m(sixValues, 2, 3);
  VRELMatrixOfdouble const copied(m);
  VRELMatrixOfdouble assigned;
  EXPECT_EQ(&(assigned = m), &assigned);
  m.elem(0, 0) = 50.0;
  EXPECT_EQ(copied.elem(0, 0), 50.0);
  EXPECT_EQ(assigned.elem(0, 0), 50.0);
  EXPECT_EQ(assigned.uSize(), 2);
  EXPECT_EQ(assigned.vSize(), 3);
}

TEST(VRELMatrixOfTest, CopyIsDeep) {
  VRELMatrixOfdouble m(sixValues, 2, 3);
  VRELMatrixOfdouble const deep = m.copy();
  m.elem(0, 0) = 50.0;
  EXPECT_EQ(Elements(deep), Values(sixValues, sixValues + 6));
  EXPECT_EQ(deep.uSize(), 2);
  EXPECT_EQ(deep.vSize(), 3);
}

TEST(VRELMatrixOfTest, SquareTransposeIsShared) {
  VRELMatrixOfdouble m(nineValues, 3, 3);
  VRELMatrixOfdouble const shared(m);
  EXPECT_EQ(&m.transpose(), &m);
  EXPECT_EQ(Elements(m), (Values{1, 4, 7, 2, 5, 8, 3, 6, 9}));
  EXPECT_EQ(Elements(shared), (Values{1, 4, 7, 2, 5, 8, 3, 6, 9}));
}

TEST(VRELMatrixOfTest, OtherTransposeIsNotShared) {
  VRELMatrixOfdouble m(sixValues, 2, 3);
  VRELMatrixOfdouble const shared(m);
  EXPECT_EQ(&m.transpose(), &m);
  EXPECT_EQ(m.uSize(), 3);
  EXPECT_EQ(m.vSize(), 2);
  EXPECT_EQ(m.elem(2, 1), 6.0);
  EXPECT_EQ(Elements(m), (Values{1, 4, 2, 5, 3, 6}));
  EXPECT_EQ(Elements(shared), Values(sixValues, sixValues + 6));
}

TEST(VRELMatrixOfTest, TransposeOfPoints) {
  VRELMatrixOfVRELWeightPoint3D m(2, 2);
  m.elem(0, 1) = VRELWeightPoint3D(VRELPoint3D(1.0, 2.0, 3.0), 4.0, false);
  m.transpose();
  EXPECT_EQ(Coordinates(m.elem(1, 0), 4), (Values{1, 2, 3, 4}));
  EXPECT_EQ(Coordinates(m.elem(0, 1), 4), Values(4, 0.0));
}

TEST(VRELMatrixOfTest, SubsetOriginIsFirstAndLastArgument) {
  VRELMatrixOfdouble const m(nineValues, 3, 3);
  VRELMatrixOfdouble const row = m.subset(1, 2, 1, 0);
  EXPECT_EQ(row.uSize(), 1);
  EXPECT_EQ(row.vSize(), 3);
  EXPECT_EQ(Elements(row), (Values{4, 5, 6}));
  VRELMatrixOfdouble const part = m.subset(1, 2, 0, 1);
  EXPECT_EQ(part.uSize(), 2);
  EXPECT_EQ(part.vSize(), 2);
  EXPECT_EQ(Elements(part), (Values{5, 6, 8, 9}));
}

TEST(VRELMatrixOfTest, SubsetIsZeroOutsideGrid) {
  VRELMatrixOfdouble const m(nineValues, 3, 3);
  // Rows 2 and 3, columns -1 to 1.
  EXPECT_EQ(Elements(m.subset(2, 1, 1, -1)), (Values{0, 7, 8, 0, 0, 0}));
  EXPECT_EQ(Elements(m.subset(-1, 1, -1, 0)), (Values{0, 0}));
  EXPECT_EQ(Elements(m.subset(0, INT_MAX, 0, INT_MAX)), (Values{0}));
  VRELMatrixOfdouble const none = m.subset(0, 0, 2, 2);
  EXPECT_EQ(none.uSize(), 0);
  EXPECT_EQ(none.vSize(), 0);
}

TEST(VRELMatrixOfTest, IteratesRowByRow) {
  VRELMatrixOfdouble m(sixValues, 2, 3);
  VRELMatrixOfdouble const& constant = m;
  EXPECT_EQ(Values(constant.begin(), constant.end()), Values(sixValues, sixValues + 6));
  for (double& value : m) value *= 2.0;
  EXPECT_EQ(m.elem(1, 2), 12.0);
  VRELMatrixOfdouble const none;
  EXPECT_EQ(none.begin(), none.end());
}

TEST(VRELMatrixOfTest, CanBeForwardDeclared) {
  VRELMatrixOfdouble const m(sixValues, 2, 3);
  EXPECT_EQ(RowCount(m), 2);
}

}  // namespace
