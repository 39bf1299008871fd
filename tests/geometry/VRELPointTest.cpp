#include "VRELPoint.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <string>

#include "Coordinates.h"
#include "PollsAbort.h"
#include "StreamText.h"
#include "VRELMorph3D.h"
#include "VRELPoint2D.h"
#include "VRELPoint2DHandle.h"
#include "VRELPoint3D.h"
#include "VRELPoint3DHandle.h"
#include "VRELPointHandle.h"
#include "VRELStreamFormatter.h"
#include "VRELWeightPoint3D.h"
#include "VirtualSlot.h"

namespace {

using Values = std::vector<double>;

TEST(VRELPointTest, ConstructorZeroesCoordinates) {
  for (int dimension : {2, 3}) {
    VRELPoint const point(dimension);
    EXPECT_EQ(point.GetDimension(), dimension);
    EXPECT_EQ(Coordinates(point), Values(static_cast<std::size_t>(dimension), 0.0));
    EXPECT_EQ(point.GetReferenceCount(), 0U);
  }
}

TEST(VRELPointTest, DimensionIsClamped) {
  EXPECT_EQ(VRELPoint(INT_MIN).GetDimension(), 2);
  EXPECT_EQ(VRELPoint(1).GetDimension(), 2);
  EXPECT_EQ(VRELPoint(4).GetDimension(), 3);
  EXPECT_EQ(VRELPoint(INT_MAX).GetDimension(), 3);
}

TEST(VRELPointTest, IndexIsClamped) {
  VRELPoint3D p(1.0, 2.0, 3.0);
  VRELPoint3D const& constant = p;
  VRELPoint2D flat(1.0, 2.0);
  VRELPoint2D const& constantFlat = flat;
  for (int i : {INT_MIN, -1, 0}) {
    EXPECT_EQ(constant[i], 1.0);
    EXPECT_EQ(&p[i], &p[0]);
    EXPECT_EQ(constantFlat[i], 1.0);
  }
  for (int i : {2, 3, 5, INT_MAX}) {
    EXPECT_EQ(constant[i], 3.0);
    EXPECT_EQ(&p[i], &p[2]);
    EXPECT_EQ(constantFlat[i], 2.0);
    EXPECT_EQ(&flat[i], &flat[1]);
  }
  p[1] = 7.0;
  EXPECT_EQ(Coordinates(p), (Values{1.0, 7.0, 3.0}));
}

TEST(VRELPointTest, VirtualSlots) {
  double& (VRELPoint::*const change)(int) = &VRELPoint::operator[];
  double (VRELPoint::*const read)(int) const = &VRELPoint::operator[];
  EXPECT_EQ(SlotOf(change), 5U);
  EXPECT_EQ(SlotOf(read), 6U);
  EXPECT_EQ(SlotOf(&VRELPoint::Length), 7U);
  EXPECT_EQ(SlotOf(&VRELPoint::Negate), 8U);
  EXPECT_EQ(SlotOf(&VRELPoint::Multiply), 9U);
  EXPECT_EQ(SlotOf(&VRELPoint::Divide), 10U);
  EXPECT_EQ(SlotOf(&VRELPoint::Substract), 11U);
  EXPECT_EQ(SlotOf(&VRELPoint::Add), 12U);
  EXPECT_EQ(SlotOf(&VRELPoint::CopyIn), 13U);
  EXPECT_EQ(SlotOf(&VRELPoint::Dump), 14U);
}

TEST(VRELPointTest, AssignmentReadsByIndexOperator) {
  VRELPoint target(3);
  target = VRELPoint3D(1.0, 2.0, 3.0);
  EXPECT_EQ(Coordinates(target), (Values{1.0, 2.0, 3.0}));
  // A 2D point has no z; its y is used.
  EXPECT_EQ(&(target = VRELPoint2D(4.0, 5.0)), &target);
  EXPECT_EQ(Coordinates(target), (Values{4.0, 5.0, 5.0}));
  EXPECT_EQ(target.GetDimension(), 3);
  VRELPoint flat(2);
  flat = VRELPoint3D(1.0, 2.0, 3.0);
  EXPECT_EQ(Coordinates(flat), (Values{1.0, 2.0}));
  EXPECT_EQ(flat.GetDimension(), 2);
}

TEST(VRELPointTest, AssignmentZeroesReferenceCount) {
  auto* const shared = new VRELPoint3D(1.0, 2.0, 3.0);
  VRELPoint3DHandle const first(shared);
  VRELPoint3DHandle second(first);
  EXPECT_EQ(shared->GetReferenceCount(), 2U);
  *shared = VRELPoint3D(4.0, 5.0, 6.0);
  EXPECT_EQ(shared->GetReferenceCount(), 0U);
  shared->RaiseReference();
  VRELPoint& base = *shared;
  base = VRELPoint3D(7.0, 8.0, 9.0);
  EXPECT_EQ(shared->GetReferenceCount(), 0U);
  shared->RaiseReference();
  shared->RaiseReference();
}

TEST(VRELPointTest, CopyHasReferenceCountZero) {
  VRELPoint3D p(1.0, 2.0, 3.0);
  p.RaiseReference();
  VRELPoint const copy(p);
  EXPECT_EQ(copy.GetReferenceCount(), 0U);
  EXPECT_EQ(Coordinates(copy), (Values{1.0, 2.0, 3.0}));
}

TEST(VRELPointTest, LengthIsEuclideanNorm) {
  EXPECT_EQ(VRELPoint3D(2.0, -3.0, 6.0).Length(), 7.0);
  EXPECT_EQ(VRELPoint2D(3.0, -4.0).Length(), 5.0);
  EXPECT_EQ(VRELPoint(3).Length(), 0.0);
  EXPECT_EQ(VRELPoint3D(-infinity, 0.0, 0.0).Length(), infinity);
  EXPECT_TRUE(std::isnan(VRELPoint3D(1.0, notANumber, 0.0).Length()));
  // The squares underflow.
  EXPECT_EQ(VRELPoint3D(1e-200, 0.0, 0.0).Length(), 0.0);
}

TEST(VRELPointTest, ArithmeticThroughBase) {
  VRELPoint3D p(1.0, 2.0, 3.0);
  VRELPoint& base = p;
  base.Add(VRELPoint3D(10.0, 20.0, 30.0));
  EXPECT_EQ(Coordinates(p), (Values{11.0, 22.0, 33.0}));
  base.Substract(VRELPoint3D(1.0, 1.0, 1.0));
  EXPECT_EQ(Coordinates(p), (Values{10.0, 21.0, 32.0}));
  base.Multiply(0.5);
  EXPECT_EQ(Coordinates(p), (Values{5.0, 10.5, 16.0}));
  base.Divide(0.25);
  EXPECT_EQ(Coordinates(p), (Values{20.0, 42.0, 64.0}));
  base.Negate();
  EXPECT_EQ(Coordinates(p), (Values{-20.0, -42.0, -64.0}));
  base.Substract(base);
  EXPECT_EQ(Coordinates(p), (Values{0.0, 0.0, 0.0}));
}

TEST(VRELPointTest, DivideByZeroDoesNothing) {
  VRELPoint2D p(1.0, 2.0);
  p.Divide(0.0);
  EXPECT_EQ(Coordinates(p), (Values{1.0, 2.0}));
  p.Divide(-0.0);
  EXPECT_EQ(Coordinates(p), (Values{1.0, 2.0}));
  p.Divide(5e-324);
  EXPECT_EQ(Coordinates(p), (Values{infinity, infinity}));
}

TEST(VRELPointTest, NegateCallsVirtualMultiply) {
  class Counting : public VRELPoint3D {
   public:
    void Multiply(double factor) override { seen = factor; }
    double seen = 0.0;
  };
  Counting point;
  point.Negate();
  EXPECT_EQ(point.seen, -1.0);
}

TEST(VRELPointTest, CopyInCopiesCoordinates) {
  VRELPoint3D target;
  VRELPoint3D(1.0, 2.0, 3.0).CopyIn(target);
  EXPECT_EQ(Coordinates(target), (Values{1.0, 2.0, 3.0}));
  VRELPoint2D flat;
  VRELPoint2D(4.0, 5.0).CopyIn(flat);
  EXPECT_EQ(Coordinates(flat), (Values{4.0, 5.0}));
}

TEST(VRELPointTest, OtherDimensionRepeatsLastCoordinate) {
  VRELPoint3D p(1.0, 1.0, 1.0);
  p.Add(VRELPoint2D(10.0, 20.0));
  EXPECT_EQ(Coordinates(p), (Values{11.0, 21.0, 21.0}));
  p.Substract(VRELPoint2D(1.0, 2.0));
  EXPECT_EQ(Coordinates(p), (Values{10.0, 19.0, 19.0}));
  VRELPoint2D flat(1.0, 2.0);
  flat.Add(VRELPoint3D(1.0, 1.0, 100.0));
  EXPECT_EQ(Coordinates(flat), (Values{2.0, 3.0}));
  EXPECT_EQ(VRELPoint2D(0.0, 0.0).DistanceTo(VRELPoint3D(3.0, 4.0, 12.0)), 5.0);
  EXPECT_EQ(VRELPoint3D(0.0, 0.0, 0.0).DistanceTo(VRELPoint2D(1.0, 2.0)), 3.0);
  VRELPoint2D target;
  VRELPoint3D(7.0, 8.0, 9.0).CopyIn(target);
  EXPECT_EQ(Coordinates(target), (Values{7.0, 8.0}));
  VRELPoint3D wide(0.0, 0.0, 6.0);
  VRELPoint2D(7.0, 8.0).CopyIn(wide);
  EXPECT_EQ(Coordinates(wide), (Values{7.0, 8.0, 6.0}));
}

TEST(VRELPointTest, DistanceIsEuclidean) {
  EXPECT_EQ(VRELPoint3D(1.0, 2.0, 3.0).DistanceTo(VRELPoint3D(3.0, -1.0, 9.0)), 7.0);
  EXPECT_EQ(VRELPoint2D(1.0, 2.0).DistanceTo(VRELPoint2D(4.0, 6.0)), 5.0);
}

TEST(VRELPointTest, ToleranceIsInclusive) {
  VRELPoint3D const p(1.0, 2.0, 3.0);
  for (int i = 0; i < 3; ++i) {
    VRELPoint3D other(p);
    other[i] += 0.5;
    EXPECT_TRUE(p.IsWithinTolerance(other, 0.5));
    EXPECT_TRUE(p.IsWithinTolerance(other, -0.5));
    EXPECT_FALSE(p.IsWithinTolerance(other, 0.4375));
    other[i] -= 1.0;
    EXPECT_TRUE(p.IsWithinTolerance(other, 0.5));
    EXPECT_FALSE(p.IsWithinTolerance(other, -0.4375));
  }
}

TEST(VRELPointTest, ToleranceForEachCoordinate) {
  VRELPoint3D const p(1.0, 2.0, 3.0);
  VRELPoint3D const other(1.5, 1.75, 3.125);
  EXPECT_TRUE(p.IsWithinTolerance(other, VRELPoint3D(0.5, -0.25, 0.125)));
  EXPECT_FALSE(p.IsWithinTolerance(other, VRELPoint3D(0.4375, 0.25, 0.125)));
  EXPECT_FALSE(p.IsWithinTolerance(other, VRELPoint3D(0.5, 0.1875, 0.125)));
  EXPECT_FALSE(p.IsWithinTolerance(other, VRELPoint3D(0.5, 0.25, 0.0625)));
  EXPECT_TRUE(VRELPoint2D(1.0, 2.0).IsWithinTolerance(VRELPoint2D(1.5, 2.0), VRELPoint2D(0.5, 0.0)));
}

TEST(VRELPointTest, NaNIsWithinTolerance) {
  VRELPoint3D const p(notANumber, 2.0, 3.0);
  EXPECT_TRUE(p.IsWithinTolerance(VRELPoint3D(1.0, 2.0, 3.0), 0.0));
  EXPECT_FALSE(p.IsWithinTolerance(VRELPoint3D(1.0, 2.0, 4.0), 0.0));
  EXPECT_TRUE(VRELPoint3D().IsWithinTolerance(VRELPoint3D(5.0, 0.0, 0.0), notANumber));
}

TEST(VRELPointTest, CheckedOperationsPollAbort) {
  VRELPoint3D p(1.0, 2.0, 3.0);
  VRELPoint3D const q(4.0, 5.0, 6.0);
  EXPECT_TRUE(PollsAbort([&] { p.Add(q); }));
  EXPECT_TRUE(PollsAbort([&] { p.Substract(q); }));
  EXPECT_TRUE(PollsAbort([&] { q.CopyIn(p); }));
  EXPECT_TRUE(PollsAbort([&] { p.DistanceTo(q); }));
  EXPECT_TRUE(PollsAbort([&] { p.IsWithinTolerance(q, 1.0); }));
  EXPECT_TRUE(PollsAbort([&] { p.IsWithinTolerance(q, q); }));
  EXPECT_EQ(Coordinates(p), (Values{1.0, 2.0, 3.0}));
}

TEST(VRELPointTest, UncheckedOperationsDoNotPoll) {
  VRELPoint3D p(1.0, 2.0, 3.0);
  EXPECT_FALSE(PollsAbort([&] {
    p = VRELPoint3D(2.0, 4.0, 6.0);
    p += p;
    p -= VRELPoint3D(1.0, 1.0, 1.0);
    p *= 2.0;
    p /= 2.0;
    p.Shift(p);
    p.Negate();
    p.Multiply(2.0);
    p.Divide(2.0);
    p = p.Normalize().Orthogonalize();
    static_cast<VRELPoint&>(p) = VRELPoint(2);
  }));
}

TEST(VRELPointTest, DumpWritesNumbersAndSpaces) {
  auto const dumped = [](VRELPoint const& point) {
    return TextOf([&](VRELOutputStream* stream) {
      VRELStreamFormatter formatter(stream);
      EXPECT_EQ(&(formatter << point), &formatter);
    });
  };
  EXPECT_EQ(dumped(VRELPoint3D(1.0, -2.5, 3.0)), "1.000000 -2.500000 3.000000 ");
  EXPECT_EQ(dumped(VRELPoint2D(1.0, 2.0)), "1.000000 2.000000 ");
  EXPECT_EQ(dumped(VRELWeightPoint3D(VRELPoint3D(1.0, 2.0, 3.0), 0.5, false)), "1.000000 2.000000 3.000000 0.500000 ");
}

TEST(VRELPointTest, DumpUsesSpaceOfFormatter) {
  std::string const text = TextOf([](VRELOutputStream* stream) {
    VRELStreamFormatter formatter(stream);
    formatter.space() = new VRELStreamFormatter::VRELStreamFormatterObject("|");
    VRELPoint2D(1.0, 2.0).Dump(formatter);
  });
  EXPECT_EQ(text, "1.000000|2.000000|");
}

TEST(VRELPointTest, HandlesCountReferences) {
  class Watched : public VRELPoint3D {
   public:
    explicit Watched(bool& flag) : gone(flag) {}
    ~Watched() override { gone = true; }

   private:
    bool& gone;
  };
  bool isGone = false;
  {
    VRELPoint3DHandle handle(new Watched(isGone));
    VRELPointHandle const base(handle.operator->());
    EXPECT_EQ(handle->GetReferenceCount(), 2U);
    (*handle)[2] = 9.0;
    EXPECT_EQ(base->Length(), 9.0);
    VRELPoint3DHandle const other(handle);
    EXPECT_TRUE(handle == other);
    EXPECT_FALSE(handle < other);
    EXPECT_EQ(&(handle = VRELPoint3DHandle()), &handle);
    EXPECT_FALSE(handle.IsValid());
    EXPECT_FALSE(isGone);
  }
  EXPECT_TRUE(isGone);
  VRELPoint2DHandle const flat(new VRELPoint2D(3.0, 4.0));
  EXPECT_EQ(flat->Length(), 5.0);
  VRELPoint2D* const pointer = flat;
  EXPECT_EQ((*pointer)[1], 4.0);
  EXPECT_FALSE(VRELPointHandle().IsValid());
}

TEST(VRELPointTest, CopyFromCopiesCoordinatesOfAnyKind) {
  VRELPointHandle handle(new VRELPoint3D(1.0, 2.0, 3.0));
  handle->CopyFrom(VRELPoint2D(5.0, 6.0));
  EXPECT_EQ(Coordinates(*handle), (Values{5.0, 6.0, 6.0}));
  EXPECT_EQ(handle->GetReferenceCount(), 1U);

  VRELPointHandle weighted(new VRELWeightPoint3D(7.0));
  weighted->CopyFrom(VRELPoint3D(1.0, 2.0, 3.0));
  EXPECT_EQ(Coordinates(*weighted, 4), (Values{1.0, 2.0, 3.0, 7.0}));
  weighted->CopyFrom(VRELWeightPoint3D(VRELPoint3D(4.0, 5.0, 6.0), 2.0, false));
  EXPECT_EQ(Coordinates(*weighted, 4), (Values{4.0, 5.0, 6.0, 2.0}));
  EXPECT_EQ(weighted->GetReferenceCount(), 1U);
}

TEST(VRELPointTest, IteratesOverCoordinates) {
  VRELPoint2D const flat(3.0, 4.0);
  EXPECT_EQ(Values(flat.begin(), flat.end()), (Values{3.0, 4.0}));
  double sum = 0.0;
  for (double coordinate : VRELWeightPoint3D(VRELPoint3D(1.0, 2.0, 4.0), 9.0, false)) sum += coordinate;
  EXPECT_EQ(sum, 7.0);
}

}  // namespace
