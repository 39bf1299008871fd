#include "VRELRGBColor.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

#include "StreamText.h"
#include "VRELStreamFormatter.h"
#include "VirtualSlot.h"

namespace {

using Floats = std::array<float, 4>;
using Numbers = std::array<unsigned int, 4>;

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

Floats FloatsOf(VRELRGBColor const& color) {
  Floats floats = {};
  EXPECT_EQ(color.GetRGBA(floats.data()), VREL_S_OK);
  return floats;
}

Numbers NumbersOf(VRELRGBColor const& color) {
  Numbers numbers = {};
  EXPECT_EQ(color.GetRGBA(numbers.data()), VREL_S_OK);
  return numbers;
}

std::string Shown(VRELRGBColor const& color) {
  return TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter formatter(stream);
    formatter << color;
  });
}

TEST(VRELRGBColorTest, HasFieldsAndNoVirtualDestructor) {
  EXPECT_TRUE(std::is_polymorphic_v<VRELRGBColor>);
  EXPECT_FALSE(std::has_virtual_destructor_v<VRELRGBColor>);
  // The virtual table, four floats and a flag.
  EXPECT_EQ(sizeof(VRELRGBColor), 32U);
}

TEST(VRELRGBColorTest, VirtualSlots) {
  using Color = VRELRGBColor;
  EXPECT_EQ(SlotOf(&Color::IsValid), 0U);
  EXPECT_EQ(SlotOf(&Color::SetRGB), 1U);
  EXPECT_EQ(SlotOf(static_cast<VRINResult (Color::*)(unsigned int*)>(&Color::SetRGBA)), 2U);
  EXPECT_EQ(SlotOf(static_cast<VRINResult (Color::*)(float*)>(&Color::SetRGBA)), 3U);
  EXPECT_EQ(SlotOf(static_cast<VRINResult (Color::*)(float&, float&, float&, float&) const>(&Color::GetRGBA)), 4U);
  EXPECT_EQ(SlotOf(static_cast<VRINResult (Color::*)(unsigned int*) const>(&Color::GetRGBA)), 5U);
  EXPECT_EQ(SlotOf(&Color::GetRGB), 6U);
  EXPECT_EQ(SlotOf(static_cast<VRINResult (Color::*)(float*) const>(&Color::GetRGBA)), 7U);
}

TEST(VRELRGBColorTest, DefaultIsInvalid) {
  VRELRGBColor color;
  EXPECT_FALSE(color.IsValid());
  EXPECT_EQ(FloatsOf(color), (Floats{0, 0, 0, 0}));
  color.SetValidity();
  EXPECT_TRUE(color.IsValid());
}

TEST(VRELRGBColorTest, IntegersAreDividedBy255) {
  VRELRGBColor const color(255U, 0U, 51U, 255U);
  EXPECT_TRUE(color.IsValid());
  EXPECT_EQ(FloatsOf(color), (Floats{1.0F, 0.0F, 0.2F, 1.0F}));
  EXPECT_EQ(NumbersOf(VRELRGBColor(255U, 0U, 0U, 255U)), (Numbers{255, 0, 0, 255}));
}

TEST(VRELRGBColorTest, IntegersRoundTrip) {
  for (unsigned int number = 0; number <= 255; ++number) {
    VRELRGBColor const color(number, number, number, number);
    EXPECT_TRUE(color.IsValid());
    EXPECT_EQ(NumbersOf(color), (Numbers{number, number, number, number}));
  }
}

TEST(VRELRGBColorTest, IntegersAreTruncated) {
  EXPECT_EQ(NumbersOf(VRELRGBColor(0.999F, 0.5F, 0.0039F, 0.1F)), (Numbers{254, 127, 0, 25}));
  // 257 / 255 is rounded down to a float. Multiplied in floats it would be 257 again, in doubles it stays below.
  EXPECT_EQ(NumbersOf(VRELRGBColor(257U, 0U, 0U, 0U))[0], 256U);
}

TEST(VRELRGBColorTest, OutOfRangeIsKeptAndInvalid) {
  Floats const tooMuch[] = {
      {1.5F, 0, 0, 0},      {0, 1.5F, 0, 0},       {0, 0, 1.5F, 0},
      {0, 0, 0, 1.5F},      {-0.1F, 0, 0, 0},      {0, -0.1F, 0, 0},
      {0, 0, -0.1F, 0},     {0, 0, 0, -0.1F},      {infinity, 0, 0, 0},
      {0, -infinity, 0, 0}, {1.0000001F, 0, 0, 0}, {0, 0, -std::numeric_limits<float>::denorm_min(), 0}};
  for (Floats const& each : tooMuch) {
    VRELRGBColor const color(each[0], each[1], each[2], each[3]);
    EXPECT_FALSE(color.IsValid());
    EXPECT_EQ(FloatsOf(color), each);
  }
  EXPECT_FALSE(VRELRGBColor(300U, 0U, 0U, 0U).IsValid());
  EXPECT_EQ(NumbersOf(VRELRGBColor(300U, 0U, 0U, 0U))[0], 300U);
}

TEST(VRELRGBColorTest, RangeIsInclusive) {
  EXPECT_TRUE(VRELRGBColor(0.0F, 1.0F, 0.0F, 1.0F).IsValid());
  EXPECT_TRUE(VRELRGBColor(-0.0F, 1.0F, std::numeric_limits<float>::denorm_min(), 0.5F).IsValid());
}

TEST(VRELRGBColorTest, NaNIsInvalid) {
  for (int at = 0; at < 4; ++at) {
    Floats floats = {};
    floats[static_cast<std::size_t>(at)] = notANumber;
    EXPECT_FALSE(VRELRGBColor(floats[0], floats[1], floats[2], floats[3]).IsValid());
  }
}

TEST(VRELRGBColorTest, IntegersAreClamped) {
  VRELRGBColor const color(notANumber, -2.0F, infinity, 3e38F);
  EXPECT_EQ(NumbersOf(color), (Numbers{0, 0, 4294967295U, 4294967295U}));
  EXPECT_EQ(NumbersOf(VRELRGBColor(-infinity, -0.0F, std::numeric_limits<float>::denorm_min(), 1e6F)),
            (Numbers{0, 0, 0, 255000000U}));
  EXPECT_EQ(NumbersOf(VRELRGBColor(4294967295U, 0U, 0U, 0U))[0], 4294967040U);
}

TEST(VRELRGBColorTest, SetRGBAcceptsFourValues) {
  VRELRGBColor color(2.0F, 0.0F, 0.0F, 0.0F);
  EXPECT_EQ(color.SetRGB(0, 255, 51, 102), VREL_S_OK);
  EXPECT_TRUE(color.IsValid());
  EXPECT_EQ(FloatsOf(color), (Floats{0.0F, 1.0F, 0.2F, 0.4F}));
  color.SetRGB(0, 0, 0, 256);
  EXPECT_FALSE(color.IsValid());
}

TEST(VRELRGBColorTest, ArraysRoundTrip) {
  VRELRGBColor color;
  Numbers numbers = {255, 51, 0, 102};
  EXPECT_EQ(color.SetRGBA(numbers.data()), VREL_S_OK);
  EXPECT_TRUE(color.IsValid());
  EXPECT_EQ(FloatsOf(color), (Floats{1.0F, 0.2F, 0.0F, 0.4F}));
  Floats floats = {0.25F, 0.5F, 0.75F, 2.0F};
  EXPECT_EQ(color.SetRGBA(floats.data()), VREL_S_OK);
  EXPECT_FALSE(color.IsValid());
  EXPECT_EQ(FloatsOf(color), floats);
  Floats out = {9, 9, 9, 9};
  EXPECT_EQ(color.GetRGB(out.data()), VREL_S_OK);
  EXPECT_EQ(out, (Floats{0.25F, 0.5F, 0.75F, 9.0F}));
  float red = 0;
  float green = 0;
  float blue = 0;
  float alpha = 0;
  EXPECT_EQ(color.GetRGBA(red, green, blue, alpha), VREL_S_OK);
  EXPECT_EQ((Floats{red, green, blue, alpha}), floats);
}

TEST(VRELRGBColorTest, NullArraysChangeNothing) {
  VRELRGBColor color(0.5F, 0.25F, 0.125F, 1.0F);
  EXPECT_EQ(color.SetRGBA(static_cast<unsigned int*>(nullptr)), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(color.SetRGBA(static_cast<float*>(nullptr)), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(color.GetRGBA(static_cast<unsigned int*>(nullptr)), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(color.GetRGBA(static_cast<float*>(nullptr)), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(color.GetRGB(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(FloatsOf(color), (Floats{0.5F, 0.25F, 0.125F, 1.0F}));
  EXPECT_TRUE(color.IsValid());
}

TEST(VRELRGBColorTest, CopyKeepsFlag) {
  VRELRGBColor const black(0.0F, 0.0F, 0.0F, 0.0F);
  VRELRGBColor color(0.5F, 2.0F, 0.0F, 0.0F);
  VRELRGBColor const copy(color);
  EXPECT_FALSE(copy.IsValid());
  EXPECT_EQ(FloatsOf(copy), (Floats{0.5F, 2.0F, 0.0F, 0.0F}));
  EXPECT_EQ(&(color = black), &color);
  EXPECT_TRUE(color.IsValid());
  EXPECT_EQ(FloatsOf(color), (Floats{0, 0, 0, 0}));
  // All components in range, and not valid: the flag itself is copied.
  color = VRELRGBColor();
  EXPECT_FALSE(color.IsValid());
}

TEST(VRELRGBColorTest, EqualityUsesTolerance) {
  for (int at = 0; at < 4; ++at) {
    SCOPED_TRACE(at);
    auto const with = [at](float value) {
      Floats floats = {0.5F, 0.5F, 0.5F, 0.5F};
      floats[static_cast<std::size_t>(at)] = value;
      return VRELRGBColor(floats[0], floats[1], floats[2], floats[3]);
    };
    for (float sign : {1.0F, -1.0F}) {
      EXPECT_TRUE(with(0.5F) == with(0.5F + sign * 0.00005F));
      EXPECT_FALSE(with(0.5F) != with(0.5F + sign * 0.00005F));
      EXPECT_FALSE(with(0.5F) == with(0.5F + sign * 0.0002F));
      EXPECT_TRUE(with(0.5F) != with(0.5F + sign * 0.0002F));
    }
    // The float nearest to 0.0001 is below it, and the next float above.
    EXPECT_TRUE(with(0.0F) == with(0.0001F));
    EXPECT_FALSE(with(0.0F) != with(0.0001F));
    float const next = std::nextafter(0.0001F, 1.0F);
    EXPECT_FALSE(with(0.0F) == with(next));
    EXPECT_TRUE(with(0.0F) != with(next));
  }
}

TEST(VRELRGBColorTest, ValidAndInvalidAreEqualAndDifferent) {
  VRELRGBColor const invalid;
  VRELRGBColor const valid(0.0F, 0.0F, 0.0F, 0.0F);
  EXPECT_TRUE(invalid == valid);
  EXPECT_TRUE(invalid != valid);
  EXPECT_TRUE(invalid == invalid);
  EXPECT_FALSE(invalid != invalid);
}

TEST(VRELRGBColorTest, NaNIsNeitherEqualNorDifferent) {
  VRELRGBColor const color(notANumber, 0.0F, 0.0F, 0.0F);
  EXPECT_FALSE(color == color);
  EXPECT_FALSE(color != color);
}

TEST(VRELRGBColorTest, HashOfTruncatedWeightedSum) {
  EXPECT_EQ(VRELRGBColor().hashCode(), 0U);
  EXPECT_EQ(VRELRGBColor(1.0F, 0.0F, 0.0F, 0.0F).hashCode(), 0x23744B91U);  // of 1
  EXPECT_EQ(VRELRGBColor(1.0F, 0.0F, 0.0F, 1.0F).hashCode(), 0x72D21D35U);  // of 18
  EXPECT_EQ(VRELRGBColor(0.0F, 1.0F, 1.0F, 0.0F).hashCode(), 0x3BEC4E6EU);  // of 20
  EXPECT_EQ(VRELRGBColor(1.0F, 1.0F, 1.0F, 1.0F).hashCode(), 0x4346796FU);  // of 38
  EXPECT_EQ(VRELRGBColor(0.99F, 0.0F, 0.0F, 0.0F).hashCode(), 0U);          // truncated to 0
  // A number that does not fit into an int is taken as INT_MIN.
  for (float each : {notANumber, infinity, -infinity, 3e38F}) {
    EXPECT_EQ(VRELRGBColor(each, 0.0F, 0.0F, 0.0F).hashCode(), 0x5CE4DCE4U);
  }
}

TEST(VRELRGBColorTest, WritesTwoDigitsAndNonzeroAlpha) {
  EXPECT_EQ(Shown(VRELRGBColor(255U, 0U, 0U, 0U)), "Color[1.00;0.00;0.00]");
  EXPECT_EQ(Shown(VRELRGBColor(0.125F, 0.256F, 0.5F, 0.25F)), "Color[0.12;0.26;0.50;0.25]");
  EXPECT_EQ(Shown(VRELRGBColor(0.0F, 0.0F, 0.0F, -1.0F)), "Color[0.00;0.00;0.00;-1.00]");
  EXPECT_EQ(Shown(VRELRGBColor(0.0F, 0.0F, 0.0F, 0.001F)), "Color[0.00;0.00;0.00;0.00]");
  EXPECT_EQ(Shown(VRELRGBColor(0.0F, 0.0F, 0.0F, -0.0F)), "Color[0.00;0.00;0.00]");
}

TEST(VRELRGBColorTest, WritingResetsPrecisionFlag) {
  VRELRGBColor const red(255U, 0U, 0U, 0U);
  EXPECT_EQ(TextOf([&](VRELOutputStream* stream) {
              VRELStreamFormatter formatter(stream);
              formatter.setDoubleFormat("%.1f", false, 3);
              VRELStreamFormatter& returned = formatter << red;
              EXPECT_EQ(&returned, &formatter);
              formatter << 0.25;
            }),
            "Color[1.00;0.00;0.00]0.2");
  EXPECT_EQ(TextOf([&](VRELOutputStream* stream) {
              VRELStreamFormatter formatter(stream);
              char const* const withPrecision = "%.*f";
              formatter.setDoubleFormat(withPrecision, true, 1);
              formatter << red;
              // The format is unchanged; the flag is off, and 10 is the precision set here.
              EXPECT_EQ(formatter.setDoubleFormat("%.*f", true, 10), withPrecision);
              formatter << 0.5;
            }),
            "Color[1.00;0.00;0.00]0.5000000000");
}

TEST(VRELRGBColorTest, ConversionsKeepEquality) {
  std::mt19937 random(1003);
  std::uniform_real_distribution<float> component(-0.25F, 1.25F);
  for (int round = 0; round < 2000; ++round) {
    Floats floats = {component(random), component(random), component(random), component(random)};
    VRELRGBColor const color(floats[0], floats[1], floats[2], floats[3]);
    bool inRange = true;
    for (float each : floats) inRange = inRange && each >= 0.0F && each <= 1.0F;
    ASSERT_EQ(color.IsValid(), inRange);
    VRELRGBColor again;
    again.SetRGBA(floats.data());
    ASSERT_TRUE(again == color);
    ASSERT_FALSE(again != color);
    ASSERT_EQ(again.hashCode(), color.hashCode());
    Numbers const numbers = NumbersOf(color);
    for (std::size_t i = 0; i < 4; ++i) {
      double const model = floats[i] > 0.0F ? std::floor(static_cast<double>(floats[i]) * 255.0) : 0.0;
      ASSERT_EQ(numbers[i], static_cast<unsigned int>(model));
    }
  }
}

}  // namespace
