// Tests what VRELMorph2D and VRELMorph3D have in common.
#include "VRELMorph.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <type_traits>

#include "Coordinates.h"
#include "PollsAbort.h"
#include "StreamText.h"
#include "VRELMorph2D.h"
#include "VRELMorph3D.h"
#include "VRELStreamFormatter.h"
#include "VirtualSlot.h"

namespace {

using Values = std::vector<double>;

struct Flat {
  using Morph = VRELMorph2D;
  using Affine = VRELAffine2D;
  using Point = VRELPoint2D;
  static Point Make(double x, double y, double /*z*/) { return Point(x, y); }
};
struct Solid {
  using Morph = VRELMorph3D;
  using Affine = VRELAffine3D;
  using Point = VRELPoint3D;
  static Point Make(double x, double y, double z) { return Point(x, y, z); }
};

template <class Kind>
class VRELMorphTest : public testing::Test {
 protected:
  using Morph = typename Kind::Morph;
  using Affine = typename Kind::Affine;
  using Point = typename Kind::Point;

  static Affine Identity() {
    Affine affine;
    affine.MakeIdentity();
    return affine;
  }
  // A rotation by 90 degrees about the third axis.
  static Affine RightAngle() {
    Affine affine = Identity();
    affine.SetElement(0, 0, 0.0);
    affine.SetElement(1, 1, 0.0);
    affine.SetElement(0, 1, -1.0);
    affine.SetElement(1, 0, 1.0);
    return affine;
  }
  static Values Image(Morph const& morph, Point point, bool noTranslation = false) {
    point.Transform(morph, noTranslation);
    return Coordinates(point);
  }
  static Values First(double x, double y, double z) { return Coordinates(Kind::Make(x, y, z)); }
};
using Kinds = testing::Types<Flat, Solid>;
TYPED_TEST_SUITE(VRELMorphTest, Kinds, );

TYPED_TEST(VRELMorphTest, VirtualSlots) {
  static_assert(std::is_base_of_v<VRELMorph, typename TypeParam::Morph>);
  static_assert(std::is_abstract_v<VRELMorph>);
  static_assert(!std::has_virtual_destructor_v<VRELMorph>);
  EXPECT_EQ(SlotOf(&VRELMorph::setScale), 0U);
  EXPECT_EQ(SlotOf(&VRELMorph::Inverse), 1U);
  EXPECT_EQ(SlotOf(&VRELMorph::Multiply), 2U);
  EXPECT_EQ(SlotOf(&VRELMorph::isEqual), 3U);
  EXPECT_EQ(SlotOf(&VRELMorph::GetTranslation), 4U);
  EXPECT_EQ(SlotOf(&VRELMorph::GetAffine), 5U);
}

TYPED_TEST(VRELMorphTest, DefaultIsIdentity) {
  typename TypeParam::Morph const morph;
  EXPECT_EQ(morph.scaleFactor(), 1.0);
  EXPECT_TRUE(morph.affine() == this->Identity());
  EXPECT_EQ(Coordinates(morph.translation()), this->First(0.0, 0.0, 0.0));
  EXPECT_FALSE(morph.isScale());
  EXPECT_FALSE(morph.isAffine());
  EXPECT_FALSE(morph.isTranslation());
  EXPECT_TRUE(morph.isIdentity());
  EXPECT_FALSE(morph.isMirror());
}

TYPED_TEST(VRELMorphTest, ScaleOnly) {
  typename TypeParam::Morph const morph(3.0);
  EXPECT_EQ(morph.scaleFactor(), 3.0);
  EXPECT_TRUE(morph.isScale());
  EXPECT_FALSE(morph.isAffine());
  EXPECT_FALSE(morph.isTranslation());
  EXPECT_FALSE(morph.isIdentity());
  EXPECT_EQ(this->Image(morph, TypeParam::Make(1.0, 2.0, 3.0)), this->First(3.0, 6.0, 9.0));
  EXPECT_TRUE(typename TypeParam::Morph(1.0).isIdentity());
}

TYPED_TEST(VRELMorphTest, TranslationOnly) {
  typename TypeParam::Morph const morph(TypeParam::Make(10.0, 20.0, 30.0));
  EXPECT_FALSE(morph.isScale());
  EXPECT_FALSE(morph.isAffine());
  EXPECT_TRUE(morph.isTranslation());
  EXPECT_EQ(this->Image(morph, TypeParam::Make(1.0, 2.0, 3.0)), this->First(11.0, 22.0, 33.0));
  EXPECT_EQ(this->Image(morph, TypeParam::Make(1.0, 2.0, 3.0), true), this->First(1.0, 2.0, 3.0));
}

TYPED_TEST(VRELMorphTest, ShortTranslationHasNoEffect) {
  typename TypeParam::Morph const none(TypeParam::Make(5e-7, 0.0, 0.0));
  EXPECT_FALSE(none.isTranslation());
  EXPECT_EQ(this->Image(none, TypeParam::Make(1.0, 2.0, 3.0)), this->First(1.0, 2.0, 3.0));
  EXPECT_EQ(none.translation()[0], 5e-7);
  EXPECT_FALSE(typename TypeParam::Morph(TypeParam::Make(1e-6, 0.0, 0.0)).isTranslation());
  EXPECT_TRUE(typename TypeParam::Morph(TypeParam::Make(2e-6, 0.0, 0.0)).isTranslation());
  EXPECT_TRUE(typename TypeParam::Morph(TypeParam::Make(notANumber, 0.0, 0.0)).isTranslation());
  // Not added if another part has an effect, either.
  typename TypeParam::Morph const doubled(this->Identity(), TypeParam::Make(5e-7, 0.0, 0.0), 2.0);
  EXPECT_EQ(this->Image(doubled, TypeParam::Make(1.0, 2.0, 3.0)), this->First(2.0, 4.0, 6.0));
}

TYPED_TEST(VRELMorphTest, AllPartsHaveEffect) {
  typename TypeParam::Morph const morph(this->RightAngle(), TypeParam::Make(10.0, 20.0, 30.0), 3.0);
  EXPECT_TRUE(morph.isScale());
  EXPECT_TRUE(morph.isAffine());
  EXPECT_TRUE(morph.isTranslation());
  EXPECT_EQ(this->Image(morph, TypeParam::Make(1.0, 2.0, 4.0)), this->First(4.0, 23.0, 42.0));
  EXPECT_EQ(this->Image(morph, TypeParam::Make(1.0, 2.0, 4.0), true), this->First(-6.0, 3.0, 12.0));
}

TYPED_TEST(VRELMorphTest, CopyKeepsFlags) {
  typename TypeParam::Morph morph(this->RightAngle(), TypeParam::Make(10.0, 20.0, 30.0), 1.0 + 1e-12);
  morph.setScale(1.0);
  ASSERT_FALSE(morph.isScale());
  typename TypeParam::Morph const copy(morph);
  EXPECT_FALSE(copy.isScale());
  EXPECT_TRUE(copy.isAffine());
  EXPECT_TRUE(copy.isTranslation());
  EXPECT_TRUE(copy.isEqual(morph));
  typename TypeParam::Morph assigned;
  assigned = morph;
  EXPECT_TRUE(assigned.isAffine());
  EXPECT_TRUE(assigned.isEqual(morph));
}

TYPED_TEST(VRELMorphTest, FixMorphFlagsComparesScaleExactly) {
  typename TypeParam::Morph morph(1.0 + 1e-12);
  EXPECT_TRUE(morph.isScale());
  morph.setScale(1.0);
  EXPECT_FALSE(morph.isScale());
  EXPECT_EQ(morph.scaleFactor(), 1.0 + 1e-12);
  morph.fixMorphFlags();
  EXPECT_TRUE(morph.isScale());
}

TYPED_TEST(VRELMorphTest, FixMorphFlagsUsesIsIdentity) {
  typename TypeParam::Affine almost = this->Identity();
  if (almost.GetDimension() == 3) {
    almost.SetElement(0, 1, 0.5);
    almost.SetElement(0, 2, -0.5);
  } else {
    almost.SetElement(0, 1, 5e-11);
  }
  typename TypeParam::Morph const morph(almost, typename TypeParam::Point(), 1.0);
  EXPECT_TRUE(morph.isIdentity());
  EXPECT_EQ(this->Image(morph, TypeParam::Make(1.0, 2.0, 4.0)), this->First(1.0, 2.0, 4.0));
}

TYPED_TEST(VRELMorphTest, SetToIdentity) {
  typename TypeParam::Morph morph(this->RightAngle(), TypeParam::Make(10.0, 20.0, 30.0), 3.0);
  morph.SetToIdentity();
  EXPECT_TRUE(morph.isIdentity());
  EXPECT_TRUE(morph.isEqual(typename TypeParam::Morph()));
}

TYPED_TEST(VRELMorphTest, AccessorsReturnMembers) {
  typename TypeParam::Morph const morph(this->RightAngle(), TypeParam::Make(10.0, 20.0, 30.0), 3.0);
  VRELMorph const& base = morph;
  EXPECT_EQ(&base.GetTranslation(), &morph.translation());
  EXPECT_EQ(&base.GetAffine(), &morph.affine());
  EXPECT_EQ(Coordinates(base.GetTranslation()), this->First(10.0, 20.0, 30.0));
  EXPECT_TRUE(base.GetAffine() == this->RightAngle());
}

TYPED_TEST(VRELMorphTest, IsMirrorTestsDeterminant) {
  typename TypeParam::Affine affine = this->Identity();
  affine.SetElement(0, 0, -1.0);
  typename TypeParam::Morph const mirror(affine, typename TypeParam::Point(), 1.0);
  EXPECT_TRUE(mirror.isMirror());
  EXPECT_FALSE(typename TypeParam::Morph(-1.0).isMirror());
  EXPECT_FALSE(typename TypeParam::Morph(typename TypeParam::Affine(), typename TypeParam::Point(), 1.0).isMirror());
  EXPECT_TRUE(PollsAbort([&] { (void)mirror.isMirror(); }));
}

TYPED_TEST(VRELMorphTest, InverseUndoes) {
  typename TypeParam::Morph const morph(this->RightAngle(), TypeParam::Make(10.0, 20.0, 30.0), 4.0);
  auto const back = morph.inverse();
  static_assert(std::is_same_v<decltype(back), typename TypeParam::Morph const>);
  EXPECT_EQ(back.scaleFactor(), 0.25);
  EXPECT_EQ(Coordinates(back.translation()), this->First(-5.0, 2.5, -7.5));
  EXPECT_EQ(back.affine().GetElement(0, 1), 1.0);
  EXPECT_EQ(back.affine().GetElement(1, 0), -1.0);
  EXPECT_EQ(this->Image(back, TypeParam::Make(2.0, 24.0, 46.0)), this->First(1.0, 2.0, 4.0));
  EXPECT_TRUE(morph.multiply(back).isIdentity());
  EXPECT_TRUE(back.multiply(morph).isIdentity());
}

TYPED_TEST(VRELMorphTest, InverseOfScaledTranslation) {
  typename TypeParam::Morph const morph(this->Identity(), TypeParam::Make(2.0, 4.0, 6.0), 2.0);
  typename TypeParam::Morph out;
  morph.Inverse(out);
  EXPECT_EQ(out.scaleFactor(), 0.5);
  EXPECT_EQ(Coordinates(out.translation()), this->First(-1.0, -2.0, -3.0));
  EXPECT_TRUE(out.isScale());
  EXPECT_FALSE(out.isAffine());
  EXPECT_TRUE(out.isTranslation());
}

TYPED_TEST(VRELMorphTest, InverseTransposesMatrix) {
  typename TypeParam::Affine affine = this->Identity();
  affine.SetElement(0, 1, 5.0);
  typename TypeParam::Morph const sheared(affine, typename TypeParam::Point(), 1.0);
  auto const back = sheared.inverse();
  EXPECT_EQ(back.affine().GetElement(1, 0), 5.0);
  EXPECT_EQ(back.affine().GetElement(0, 1), 0.0);
}

TYPED_TEST(VRELMorphTest, NewMorphsUseVirtualOperations) {
// The order of the slots leaves the base class without a virtual destructor.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
  class Own final : public TypeParam::Morph {
   public:
    void Inverse(VRELMorph& out) const override { out.setScale(5.0); }
    void Multiply(VRELMorph const& /*other*/, VRELMorph& out) const override { out.setScale(7.0); }
  };
#pragma GCC diagnostic pop
  Own const morph;
  EXPECT_EQ(morph.inverse().scaleFactor(), 5.0);
  EXPECT_EQ(morph.multiply(morph).scaleFactor(), 7.0);
}

TYPED_TEST(VRELMorphTest, InverseInPlace) {
  typename TypeParam::Morph morph(this->RightAngle(), TypeParam::Make(10.0, 20.0, 30.0), 4.0);
  auto const expected = morph.inverse();
  morph.Inverse(morph);
  EXPECT_TRUE(morph.isEqual(expected));
}

TYPED_TEST(VRELMorphTest, InverseOfZeroScaleIsInfinite) {
  typename TypeParam::Morph const morph(this->Identity(), TypeParam::Make(2.0, -4.0, 6.0), 0.0);
  auto const back = morph.inverse();
  EXPECT_EQ(back.scaleFactor(), infinity);
  // The NaN results from infinity times the zeros in the matrix.
  for (double coordinate : Coordinates(back.translation())) EXPECT_FALSE(std::isfinite(coordinate));
}

TYPED_TEST(VRELMorphTest, IsEqualUsesTolerances) {
  auto const point = TypeParam::Make(10.0, 20.0, 30.0);
  typename TypeParam::Morph const morph(this->RightAngle(), point, 2.0);
  EXPECT_TRUE(morph.isEqual(morph));
  EXPECT_TRUE(morph.isEqual(typename TypeParam::Morph(this->RightAngle(), point, 2.0 + 5e-11)));
  EXPECT_FALSE(morph.isEqual(typename TypeParam::Morph(this->RightAngle(), point, 2.0 + 2e-10)));
  EXPECT_TRUE(
      morph.isEqual(typename TypeParam::Morph(this->RightAngle(), TypeParam::Make(10.0, 20.0 + 5e-7, 30.0), 2.0)));
  EXPECT_FALSE(
      morph.isEqual(typename TypeParam::Morph(this->RightAngle(), TypeParam::Make(10.0, 20.0 + 2e-6, 30.0), 2.0)));
  typename TypeParam::Affine affine = this->RightAngle();
  affine.SetElement(0, 0, 5e-7);
  EXPECT_TRUE(morph.isEqual(typename TypeParam::Morph(affine, point, 2.0)));
  affine.SetElement(0, 0, 2e-6);
  EXPECT_FALSE(morph.isEqual(typename TypeParam::Morph(affine, point, 2.0)));
}

TYPED_TEST(VRELMorphTest, OtherDimensionIsUnchanged) {
  using Other = std::conditional_t<std::is_same_v<TypeParam, Flat>, VRELMorph3D, VRELMorph2D>;
  typename TypeParam::Morph morph(3.0);
  Other other(5.0);
  morph.Inverse(other);
  EXPECT_EQ(other.scaleFactor(), 5.0);
  morph.Multiply(morph, other);
  EXPECT_EQ(other.scaleFactor(), 5.0);
  typename TypeParam::Morph out(7.0);
  morph.Multiply(other, out);
  EXPECT_EQ(out.scaleFactor(), 7.0);
  EXPECT_FALSE(morph.isEqual(Other(3.0)));
}

TYPED_TEST(VRELMorphTest, WritesBlock) {
  typename TypeParam::Morph const morph(TypeParam::Make(1.0, 2.0, 3.0));
  std::string const text = TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter formatter(stream);
    EXPECT_EQ(&(formatter << morph << formatter.margin() << "end"), &formatter);
  });
  bool const isFlat = std::is_same_v<TypeParam, Flat>;
  std::string const rows = isFlat ? "    1.000000\t0.000000\t\n    0.000000\t1.000000\t\n"
                                  : "    1.000000\t0.000000\t0.000000\t\n    0.000000\t1.000000\t0.000000\t\n"
                                    "    0.000000\t0.000000\t1.000000\t\n";
  std::string const point = isFlat ? "1.000000 2.000000 " : "1.000000 2.000000 3.000000 ";
  EXPECT_EQ(text, "    { \n    Affine:\n" + rows + "    Translation: " + point + "\n    Scale: 1.000000\n    }\nend");
}

}  // namespace
