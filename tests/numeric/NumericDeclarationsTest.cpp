// Declarations, field offsets and sizes of the numeric classes, which clients compile against.
#include <gtest/gtest.h>

#include <type_traits>

#include "Declaration.h"
#include "Gk_Def.h"
#include "Gk_Func.h"
#include "Gk_LinMap.h"
#include "VRELDate.h"
#include "VRELFloatUtil.h"
#include "VRELLocalNumericLocaleOverride.h"

namespace {

using Func = Gk_Func;
static_assert(IsDeclared<bool (*)(double, double, double)>(&Func::equal));
static_assert(IsDeclared<bool (*)(float, float, float)>(&Func::equal));
static_assert(IsDeclared<bool (*)(double, double, double)>(&Func::lesseq));
static_assert(IsDeclared<bool (*)(int)>(&Func::isEven));
static_assert(IsDeclared<int (*)(int)>(&Func::abs));
static_assert(IsDeclared<double (*)(double)>(&Func::abs));
static_assert(IsDeclared<bool (*)(int, int, int)>(&Func::notInRange));
static_assert(IsDeclared<double (*)(int, int)>(&Func::binCoeff));
static_assert(IsDeclared<double (*)(double, double, double)>(&Func::projectConvexRatio));
static_assert(IsDeclared<bool (*)(char const*, char const*, char)>(&Func::compare));
static_assert(IsDeclared<double (*)(double, double)>(&Func::round));
static_assert(IsDeclared<double (*)(double, double)>(&Func::atan2));

using Map = Gk_LinMap;
static_assert(std::is_constructible_v<Map, double, double>);
static_assert(IsDeclared<double (Map::*)() const>(&Map::slope));
static_assert(IsDeclared<bool (Map::*)() const>(&Map::isNegate));
static_assert(IsDeclared<bool (Map::*)() const>(&Map::isIdentity));
static_assert(IsDeclared<double (Map::*)(double) const>(&Map::apply));
static_assert(IsDeclared<double (Map::*)(double) const>(&Map::invert));
static_assert(IsDeclared<Map (Map::*)() const>(&Map::inverse));
static_assert(IsDeclared<Map& (Map::*)(Map const&, bool)>(&Map::compose));
static_assert(IsDeclared<bool (Map::*)(Map const&) const>(&Map::operator==));
static_assert(!std::is_polymorphic_v<Map> && sizeof(Map) == 24);

static_assert(IsDeclared<int (*)(unsigned char const*)>(&VRELFloatUtil::checkSign));
static_assert(IsDeclared<double (*)(char const*, char**)>(&VRELFloatUtil::vrelstrtod));
static_assert(IsDeclared<double (*)(char const*)>(&VRELFloatUtil::vrelatof));

using Text = VRELString;
static_assert(IsDeclared<VRINResult (*)(Text const&, Text const&, Text const&, Text&)>(&VRELDate::FormatDate));
static_assert(IsDeclared<VRINResult (*)(long, Text&)>(&VRELDate::FormatDate));
static_assert(IsDeclared<VRINResult (*)(int, Text&)>(&VRELDate::GetMonthStr));

using Override = VRELLocalNumericLocaleOverride;
static_assert(IsDeclared<Text (Override::*)()>(&Override::InitializeNumericLocale));
static_assert(IsDeclared<VRINResult (Override::*)()>(&Override::SaveCurrentNumericLocale));
static_assert(IsDeclared<VRINResult (Override::*)()>(&Override::RestoreNumericLocale));
static_assert(sizeof(Override) == sizeof(Text));

static_assert(std::is_same_v<decltype(Gk_Def::FuzzKnot), double const>);
static_assert(std::is_same_v<decltype(Gk_Def::FuzzPos), double const>);
static_assert(std::is_same_v<decltype(Gk_Def::FuzzSnap), double const>);
static_assert(std::is_same_v<decltype(Gk_Def::VRELPI), double const>);
static_assert(std::is_same_v<decltype(VRELINV2PI), double const>);

TEST(NumericDeclarationsTest, LinMapFieldsKeepOffsets) {
  Map const map(-1.0, 0.0);
  EXPECT_EQ(FieldAt<double>(map, 0), -1.0);
  EXPECT_EQ(FieldAt<double>(map, 8), 0.0);
  EXPECT_EQ(FieldAt<char>(map, 16), 1);
  EXPECT_EQ(FieldAt<char>(map, 17), 1);
  Map const other(2.0, 3.0);
  EXPECT_EQ(FieldAt<double>(other, 8), 3.0);
  EXPECT_EQ(FieldAt<char>(other, 16), 0);
  EXPECT_EQ(FieldAt<char>(other, 17), 0);
}

TEST(NumericDeclarationsTest, LocaleOverrideHoldsSavedName) {
  Override const numericLocale;
  EXPECT_GT(reinterpret_cast<Text const*>(&numericLocale)->length(), 0);
}

}  // namespace
