#include "detail/VRELBoxOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

#include "DoubleBits.h"
#include "VRELBox2D.h"
#include "VRELBox3D.h"
#include "VirtualSlot.h"

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct Plane {
  using Box = VRELBox2D;
  using Point = VRELPoint2D;
  using Morph = VRELMorph2D;
  using Affine = VRELAffine2D;
  static constexpr int axes = 2;
};
struct Space {
  using Box = VRELBox3D;
  using Point = VRELPoint3D;
  using Morph = VRELMorph3D;
  using Affine = VRELAffine3D;
  static constexpr int axes = 3;
};

template <class Dimension>
class VRELBoxOfTest : public testing::Test {
 protected:
  using TheBox = typename Dimension::Box;
  using ThePoint = typename Dimension::Point;
  using TheCoordinates = std::array<double, static_cast<std::size_t>(Dimension::axes)>;

  // Returns a point with the first two or three of these coordinates.
  static ThePoint At(double x, double y, double z) {
    double const coordinates[] = {x, y, z};
    ThePoint point;
    for (int i = 0; i < Dimension::axes; ++i) point[i] = coordinates[i];
    return point;
  }
  static TheCoordinates CoordinatesOf(ThePoint const& point) {
    TheCoordinates coordinates;
    std::copy_n(point.GetCoordinates(), Dimension::axes, coordinates.begin());
    return coordinates;
  }
  static void ExpectBox(TheBox const& box, ThePoint const& low, ThePoint const& high) {
    EXPECT_EQ(CoordinatesOf(box.low()), CoordinatesOf(low));
    EXPECT_EQ(CoordinatesOf(box.high()), CoordinatesOf(high));
  }
  static TheBox UnitBox() { return TheBox(At(0, 0, 0), At(1, 1, 1)); }
};

using Dimensions = testing::Types<Plane, Space>;
struct NameOfDimension {
  template <class Dimension>
  static std::string GetName(int) {
    return std::to_string(Dimension::axes) + "D";
  }
};
TYPED_TEST_SUITE(VRELBoxOfTest, Dimensions, NameOfDimension);

TYPED_TEST(VRELBoxOfTest, VirtualSlots) {
  using Box = typename TestFixture::TheBox;
  using Point = typename TestFixture::ThePoint;
  EXPECT_EQ(SlotOf(&VRELBox::Reset), 0U);
  EXPECT_EQ(SlotOf(&VRELBox::expand), 1U);
  EXPECT_EQ(SlotOf(&VRELBox::GetDimension), 2U);
  EXPECT_EQ(SlotOf(&Box::Reset), 0U);
  EXPECT_EQ(SlotOf(&Box::expand), 1U);
  EXPECT_EQ(SlotOf(&Box::GetDimension), 2U);
  EXPECT_EQ(SlotOf(&Box::Set), 5U);
  EXPECT_EQ(SlotOf(static_cast<bool (Box::*)(Point const&)>(&Box::ExtendTo)), 6U);
  EXPECT_EQ(SlotOf(static_cast<bool (Box::*)(Box const&)>(&Box::ExtendTo)), 7U);
  EXPECT_EQ(SlotOf(&Box::low), 8U);
  EXPECT_EQ(SlotOf(&Box::high), 9U);
  EXPECT_EQ(SlotOf(&Box::diagonal), 10U);
  EXPECT_EQ(SlotOf(&Box::apply), 11U);
  EXPECT_EQ(SlotOf(&Box::isContained), 12U);
  EXPECT_EQ(SlotOf(&Box::isEqual), 13U);
}

TYPED_TEST(VRELBoxOfTest, HasDomainForEachAxis) {
  using Box = typename TestFixture::TheBox;
  EXPECT_TRUE(std::is_abstract_v<VRELBox>);
  EXPECT_FALSE(std::has_virtual_destructor_v<VRELBox>);
  EXPECT_TRUE((std::is_base_of_v<VRELBox, Box>));
  EXPECT_TRUE(std::has_virtual_destructor_v<Box>);
  EXPECT_EQ(sizeof(Box), sizeof(void*) + TypeParam::axes * sizeof(Gk_Domain));
  Box box;
  VRELBox const& base = box;
  EXPECT_EQ(base.GetDimension(), TypeParam::axes);
}

TYPED_TEST(VRELBoxOfTest, CornersInAnyOrder) {
  using Box = typename TestFixture::TheBox;
  this->ExpectBox(Box(this->At(2, 0, -1), this->At(0, 2, 5)), this->At(0, 0, -1), this->At(2, 2, 5));
  Box box;
  EXPECT_EQ(box.Set(this->At(2, 0, 5), this->At(0, 2, -1)), VREL_S_OK);
  this->ExpectBox(box, this->At(0, 0, -1), this->At(2, 2, 5));
  // The previous corners have no effect.
  EXPECT_EQ(box.Set(this->At(1, 1, 1), this->At(1, 1, 1)), VREL_S_OK);
  this->ExpectBox(box, this->At(1, 1, 1), this->At(1, 1, 1));
}

TYPED_TEST(VRELBoxOfTest, EmptyBoxBecomesFirstPoint) {
  using Box = typename TestFixture::TheBox;
  Box made;
  Box reset = this->UnitBox();
  VRELBox& base = reset;
  base.Reset();
  for (Box* box : {&made, &reset}) {
    this->ExpectBox(*box, this->At(0, 0, 0), this->At(0, 0, 0));
    EXPECT_TRUE(box->ExtendTo(this->At(1, 2, 3)));
    this->ExpectBox(*box, this->At(1, 2, 3), this->At(1, 2, 3));
    EXPECT_FALSE(box->ExtendTo(this->At(1, 2, 3)));
  }
}

TYPED_TEST(VRELBoxOfTest, ExtendToUsesTolerance) {
  auto box = this->UnitBox();
  EXPECT_FALSE(box.ExtendTo(this->At(0.5, 0.5, 0.5)));
  EXPECT_FALSE(box.ExtendTo(this->At(1 + 1e-11, -1e-11, 1 + 1e-11)));
  this->ExpectBox(box, this->At(0, 0, 0), this->At(1, 1, 1));
  // A change on a single axis is reported, on the first and on the last one.
  EXPECT_TRUE(box.ExtendTo(this->At(2, 0.5, 0.5)));
  this->ExpectBox(box, this->At(0, 0, 0), this->At(2, 1, 1));
  EXPECT_TRUE(box.ExtendTo(this->At(0.5, -3, 0.5)));
  this->ExpectBox(box, this->At(0, -3, 0), this->At(2, 1, 1));
  EXPECT_TRUE(box.ExtendTo(this->At(-1, 5, 9)));
  this->ExpectBox(box, this->At(-1, -3, 0), this->At(2, 5, 9));
}

TYPED_TEST(VRELBoxOfTest, ExtendToEqualsDomains) {
  std::mt19937 random(808);
  // Few different numbers, so that many are equal to an end or next to it.
  double const numbers[] = {-1, -1e-10, -1e-11, 0, -0.0, 1e-11, 1e-10, 2e-10, 1, 1 + 1e-11, infinity, notANumber};
  auto const number = [&] { return numbers[random() % std::size(numbers)]; };
  for (int round = 0; round < 3000; ++round) {
    typename TestFixture::TheBox box;
    Gk_Domain model[TypeParam::axes];
    for (int step = 0; step < 5; ++step) {
      auto const point = this->At(number(), number(), number());
      bool changed = false;
      for (int i = 0; i < TypeParam::axes; ++i) changed = model[i].extend(point.GetCoordinates()[i]) || changed;
      ASSERT_EQ(box.ExtendTo(point), changed);
      for (int i = 0; i < TypeParam::axes; ++i) {
        ASSERT_EQ(Bits(box.low().GetCoordinates()[i]), Bits(model[i].low()));
        ASSERT_EQ(Bits(box.high().GetCoordinates()[i]), Bits(model[i].high()));
      }
    }
  }
}

TYPED_TEST(VRELBoxOfTest, ExtendToBox) {
  using Box = typename TestFixture::TheBox;
  auto box = this->UnitBox();
  EXPECT_FALSE(box.ExtendTo(Box(this->At(0.25, 0.25, 0.25), this->At(1, 1, 1))));
  EXPECT_FALSE(box.ExtendTo(box));
  EXPECT_TRUE(box.ExtendTo(Box(this->At(0.5, 0.5, 0.5), this->At(2, 2, 2))));
  this->ExpectBox(box, this->At(0, 0, 0), this->At(2, 2, 2));
  EXPECT_TRUE(box.ExtendTo(Box(this->At(-1, -1, -1), this->At(1, 1, 1))));
  this->ExpectBox(box, this->At(-1, -1, -1), this->At(2, 2, 2));
  EXPECT_TRUE(box.ExtendTo(Box(this->At(-5, -5, -5), this->At(5, 5, 5))));
  this->ExpectBox(box, this->At(-5, -5, -5), this->At(5, 5, 5));
  Box empty;
  EXPECT_TRUE(empty.ExtendTo(box));
  this->ExpectBox(empty, this->At(-5, -5, -5), this->At(5, 5, 5));
}

TYPED_TEST(VRELBoxOfTest, ExtendToBoxUsesHighCornerFirst) {
  using Box = typename TestFixture::TheBox;
  // The low corner is then within the tolerance of the box.
  Box empty;
  EXPECT_TRUE(empty.ExtendTo(Box(this->At(0, 0, 0), this->At(5e-11, 5e-11, 5e-11))));
  this->ExpectBox(empty, this->At(5e-11, 5e-11, 5e-11), this->At(5e-11, 5e-11, 5e-11));
}

TYPED_TEST(VRELBoxOfTest, ExtendToEmptyBoxAddsOrigin) {
  using Box = typename TestFixture::TheBox;
  Box box(this->At(1, 1, 1), this->At(2, 2, 2));
  EXPECT_TRUE(box.ExtendTo(Box()));
  this->ExpectBox(box, this->At(0, 0, 0), this->At(2, 2, 2));
}

TYPED_TEST(VRELBoxOfTest, ExpandMovesAllSides) {
  using Box = typename TestFixture::TheBox;
  auto box = this->UnitBox();
  VRELBox& base = box;
  EXPECT_TRUE(base.expand(0.5));
  this->ExpectBox(box, this->At(-0.5, -0.5, -0.5), this->At(1.5, 1.5, 1.5));
  EXPECT_TRUE(box.expand(-0.25));
  this->ExpectBox(box, this->At(-0.25, -0.25, -0.25), this->At(1.25, 1.25, 1.25));
  Box empty;
  EXPECT_TRUE(empty.expand(1));
  EXPECT_TRUE(empty.isEqual(Box()));
  this->ExpectBox(empty, this->At(0, 0, 0), this->At(0, 0, 0));
}

TYPED_TEST(VRELBoxOfTest, IsContainedUsesTolerance) {
  using Box = typename TestFixture::TheBox;
  auto const box = this->UnitBox();
  EXPECT_TRUE(box.isContained(box));
  EXPECT_TRUE(box.isContained(Box(this->At(0.25, 0, 1), this->At(0.5, 0, 1))));
  EXPECT_TRUE(box.isContained(Box(this->At(-5e-11, 0, 0), this->At(1, 1 + 5e-11, 1))));
  for (int axis = 0; axis < TypeParam::axes; ++axis) {
    auto corner = this->At(1, 1, 1);
    corner[axis] = 1 + 1e-9;
    EXPECT_FALSE(box.isContained(Box(this->At(0, 0, 0), corner)));
    corner[axis] = -1e-9;
    EXPECT_FALSE(box.isContained(Box(corner, this->At(1, 1, 1))));
  }
  // Each axis of an empty box is unbounded.
  EXPECT_TRUE(Box().isContained(box));
  EXPECT_TRUE(box.isContained(Box()));
  EXPECT_FALSE(Box(this->At(1, 1, 1), this->At(2, 2, 2)).isContained(Box()));
}

TYPED_TEST(VRELBoxOfTest, IsEqualUsesTolerance) {
  using Box = typename TestFixture::TheBox;
  auto const box = this->UnitBox();
  EXPECT_TRUE(box.isEqual(box));
  EXPECT_TRUE(box.isEqual(Box(this->At(5e-11, 5e-11, 5e-11), this->At(1, 1, 1 - 5e-11))));
  for (int axis = 0; axis < TypeParam::axes; ++axis) {
    auto corner = this->At(1, 1, 1);
    corner[axis] = 1 + 1e-9;
    EXPECT_FALSE(box.isEqual(Box(this->At(0, 0, 0), corner)));
    corner[axis] = 1e-9;
    auto low = this->At(0, 0, 0);
    low[axis] = 1e-9;
    EXPECT_FALSE(box.isEqual(Box(low, this->At(1, 1, 1))));
  }
  Box point(this->At(0, 0, 0), this->At(0, 0, 0));
  EXPECT_FALSE(point.isEqual(Box()));
  EXPECT_FALSE(Box().isEqual(point));
  EXPECT_TRUE(Box().isEqual(Box()));
}

TYPED_TEST(VRELBoxOfTest, CornersAreNewPoints) {
  auto const box = this->UnitBox();
  auto corner = box.high();
  corner[0] = 99;
  this->ExpectBox(box, this->At(0, 0, 0), this->At(1, 1, 1));
}

TYPED_TEST(VRELBoxOfTest, CopiesAreIndependent) {
  auto box = this->UnitBox();
  auto const copy = box;
  box.Reset();
  this->ExpectBox(copy, this->At(0, 0, 0), this->At(1, 1, 1));
  box = copy;
  EXPECT_TRUE(box.isEqual(copy));
}

TYPED_TEST(VRELBoxOfTest, DeleteThroughOwnType) {
  struct Counting : TestFixture::TheBox {
    explicit Counting(int& deletions) : count(deletions) {}
    ~Counting() override { ++count; }
    int& count;
  };
  int deletions = 0;
  typename TestFixture::TheBox* const box = new Counting(deletions);
  delete box;
  EXPECT_EQ(deletions, 1);
}

TYPED_TEST(VRELBoxOfTest, NaNIsHarmless) {
  using Box = typename TestFixture::TheBox;
  auto box = this->UnitBox();
  EXPECT_TRUE(box.ExtendTo(this->At(notANumber, 0.5, 0.5)));
  this->ExpectBox(box, this->At(0, 0, 0), this->At(1, 1, 1));
  EXPECT_TRUE(box.ExtendTo(this->At(infinity, -infinity, 0.5)));
  EXPECT_EQ(box.high()[0], infinity);
  EXPECT_EQ(box.low()[1], -infinity);
  EXPECT_EQ(box.diagonal(), infinity);
  EXPECT_EQ(box.Set(this->At(notANumber, 1, 1), this->At(0, 0, 0)), VREL_S_OK);
  EXPECT_TRUE(std::isnan(box.low()[0]) || std::isnan(box.high()[0]));
  EXPECT_TRUE(std::isnan(box.diagonal()));
  EXPECT_FALSE(box.isEqual(box));
  EXPECT_FALSE(box.isContained(box));
  double const denormal = std::numeric_limits<double>::denorm_min();
  Box small(this->At(0, 0, 0), this->At(denormal, denormal, denormal));
  EXPECT_EQ(small.high()[0], denormal);
  EXPECT_FALSE(small.ExtendTo(this->At(-denormal, 0, 0)));
}

TYPED_TEST(VRELBoxOfTest, ApplyToEmptyTransformsOrigin) {
  typename TestFixture::TheBox box;
  box.apply(typename TypeParam::Morph(this->At(3, 4, 5)));
  this->ExpectBox(box, this->At(3, 4, 5), this->At(3, 4, 5));
  EXPECT_FALSE(box.ExtendTo(this->At(3, 4, 5)));
}

TYPED_TEST(VRELBoxOfTest, ApplyShiftsAndScales) {
  using Box = typename TestFixture::TheBox;
  Box box(this->At(1, 2, 3), this->At(4, 6, 8));
  box.apply(typename TypeParam::Morph());
  this->ExpectBox(box, this->At(1, 2, 3), this->At(4, 6, 8));
  box.apply(typename TypeParam::Morph(this->At(10, 20, 30)));
  this->ExpectBox(box, this->At(11, 22, 33), this->At(14, 26, 38));
  box.apply(typename TypeParam::Morph(2.0));
  this->ExpectBox(box, this->At(22, 44, 66), this->At(28, 52, 76));
  // A negative scale swaps the corners.
  box.apply(typename TypeParam::Morph(-1.0));
  this->ExpectBox(box, this->At(-28, -52, -76), this->At(-22, -44, -66));
}

TYPED_TEST(VRELBoxOfTest, ApplyBoundsImagesOfCorners) {
  using Box = typename TestFixture::TheBox;
  using Coordinates = typename TestFixture::TheCoordinates;
  constexpr auto axes = static_cast<std::size_t>(TypeParam::axes);
  std::mt19937 random(806);
  std::uniform_real_distribution<double> number(-10, 10);
  for (int round = 0; round < 2000; ++round) {
    auto const a = this->At(number(random), number(random), number(random));
    auto const b = this->At(number(random), number(random), number(random));
    typename TypeParam::Affine affine;
    double matrix[3][3];
    for (int i = 0; i < TypeParam::axes; ++i) {
      for (int j = 0; j < TypeParam::axes; ++j) affine.SetElement(i, j, matrix[i][j] = number(random));
    }
    auto const shift = this->At(number(random), number(random), number(random));
    double const scale = number(random);
    Box box(a, b);
    Coordinates const low = this->CoordinatesOf(box.low());
    Coordinates const high = this->CoordinatesOf(box.high());
    box.apply(typename TypeParam::Morph(affine, shift, scale));
    // p' = s (A p) + t for the two corners, from the definition.
    for (std::size_t i = 0; i < axes; ++i) {
      double images[2] = {0.0, 0.0};
      for (std::size_t j = 0; j < axes; ++j) {
        images[0] += matrix[i][j] * low[j];
        images[1] += matrix[i][j] * high[j];
      }
      for (double& image : images) image = scale * image + shift.GetCoordinates()[i];
      ASSERT_NEAR(box.low().GetCoordinates()[i], std::fmin(images[0], images[1]), 1e-9);
      ASSERT_NEAR(box.high().GetCoordinates()[i], std::fmax(images[0], images[1]), 1e-9);
    }
  }
}

TYPED_TEST(VRELBoxOfTest, ExtendToBoundsPoints) {
  using Box = typename TestFixture::TheBox;
  constexpr auto axes = static_cast<std::size_t>(TypeParam::axes);
  std::mt19937 random(807);
  std::uniform_real_distribution<double> number(-10, 10);
  for (int round = 0; round < 300; ++round) {
    Box box;
    Box halves[2];
    typename TestFixture::TheCoordinates low;
    typename TestFixture::TheCoordinates high;
    low.fill(infinity);
    high.fill(-infinity);
    for (int step = 0; step < 30; ++step) {
      auto const point = this->At(number(random), number(random), number(random));
      bool grows = false;
      for (std::size_t i = 0; i < axes; ++i) {
        double const v = point.GetCoordinates()[i];
        grows = grows || v < low[i] || v > high[i];
        low[i] = std::fmin(low[i], v);
        high[i] = std::fmax(high[i], v);
      }
      ASSERT_EQ(box.ExtendTo(point), grows);
      ASSERT_EQ(this->CoordinatesOf(box.low()), low);
      ASSERT_EQ(this->CoordinatesOf(box.high()), high);
      ASSERT_TRUE(box.isContained(Box(point, point)));
      halves[step % 2].ExtendTo(point);
    }
    // Two boxes of half the points each combine to the same box.
    ASSERT_TRUE(box.isContained(halves[0]) && box.isContained(halves[1]));
    halves[0].ExtendTo(halves[1]);
    ASSERT_TRUE(halves[0].isEqual(box));
    ASSERT_TRUE(Box(box.high(), box.low()).isEqual(box));
    double squares = 0;
    for (std::size_t i = 0; i < axes; ++i) squares += (high[i] - low[i]) * (high[i] - low[i]);
    ASSERT_DOUBLE_EQ(box.diagonal(), std::sqrt(squares));
    ASSERT_DOUBLE_EQ(box.diagonal(), box.low().DistanceTo(box.high()));
  }
}

TYPED_TEST(VRELBoxOfTest, ExtendToArrayEqualsExtendToEach) {
  using Box = typename TestFixture::TheBox;
  // Points within the tolerance of a side do not move it, so that the result depends on the order.
  decltype(this->At(0, 0, 0)) const points[] = {
      this->At(0, 0, 0),          this->At(1, 1, 1),  this->At(1 + 5e-11, 1, 1),  this->At(1 + 2e-10, 0.5, 0.5),
      this->At(notANumber, 0, 0), this->At(0, -3, 0), this->At(0.5, 0, infinity), this->At(0.5, 0.5, 0.5)};
  for (std::size_t count = 0; count <= 8; ++count) {
    SCOPED_TRACE(count);
    Box one;
    bool changed = false;
    for (std::size_t i = 0; i < count; ++i) changed = one.ExtendTo(points[i]) || changed;
    Box all;
    EXPECT_EQ(all.ExtendTo(points, count), changed);
    this->ExpectBox(all, one.low(), one.high());
  }
  Box box = this->UnitBox();
  EXPECT_FALSE(box.ExtendTo(nullptr, 3));
  EXPECT_FALSE(box.ExtendTo(points, 1));
}

}  // namespace
