#include "VRINUnit.h"

#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <vector>

#include "PublicObject.h"
#include "VRINUnitImpl.h"

namespace {

int NumberOf(VRINUnit const& unit) {
  return static_cast<VRINUnitValue>(unit);
}

char const* TextOf(VRINUnit const& unit) {
  return static_cast<char const*>(unit);
}

struct UnitRow {
  int number;
  VRINUnitValue value;
  char const* text;
  std::vector<char const*> spellings;
};

std::vector<UnitRow> const& Rows() {
  static std::vector<UnitRow> const rows = {
      {0, VRINUnitUnknown, "unknown", {"unknown", "", "millimeters", "micron", "uinch", "yard", "model  unit", " mm"}},
      {1, VRINUnitModel, "model", {"model", "MODEL UNIT", "Model Unit"}},
      {2, VRINUnitNanometer, "nanometer", {"nanometer", "nm", "NM"}},
      {3, VRINUnitMicrometer, "micrometer", {"micrometer", "micr", "Micr"}},
      {4, VRINUnitMillimeter, "millimeter", {"millimeter", "mm", "MM", "MilliMeter"}},
      {5, VRINUnitCentimeter, "centimeter", {"centimeter", "cm"}},
      {6, VRINUnitDecimeter, "decimeter", {"decimeter", "deci"}},
      {7, VRINUnitMeter, "meter", {"meter", "m", "M"}},
      {8, VRINUnitInch, "inch", {"inch", "in", "IN"}},
      {9, VRINUnitFoot, "foot", {"foot", "ft"}},
      {10, VRINUnitMile, "mile", {"mile", "MILE"}},
      {11, VRINUnitKilometer, "kilometer", {"kilometer", "km", "KM"}},
      {12, VRINUnitMilliinch, "milliinch", {"milliinch", "MilliInch"}},
      {13, VRINUnitMicroinch, "microinch", {"microinch"}},
  };
  return rows;
}

TEST(VRINUnitTest, HasNumbersNamesAndSpellings) {
  for (UnitRow const& row : Rows()) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(static_cast<int>(row.value), row.number);
    VRINUnit const unit(row.value);
    EXPECT_TRUE(unit.IsValid());
    EXPECT_EQ(NumberOf(unit), row.number);
    EXPECT_STREQ(TextOf(unit), row.text);
    for (char const* const spelling : row.spellings) {
      VRINUnit const spelled(spelling);
      EXPECT_TRUE(spelled.IsValid());
      EXPECT_EQ(NumberOf(spelled), row.number) << spelling;
      EXPECT_STREQ(TextOf(spelled), row.text) << spelling;
    }
  }
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<VRINUnitValue>, int>));
}

TEST(VRINUnitTest, DefaultIsUnknown) {
  VRINUnit const unit;
  EXPECT_TRUE(unit.IsValid());
  EXPECT_EQ(NumberOf(unit), 0);
  EXPECT_STREQ(TextOf(unit), "unknown");
  EXPECT_EQ(NumberOf(VRINUnit(static_cast<char const*>(nullptr))), 0);
}

TEST(VRINUnitTest, NumberOutOfRangeHasNullName) {
  for (int const number : {14, -1, INT_MAX, INT_MIN}) {
    VRINUnit const unit(static_cast<VRINUnitValue>(number));
    EXPECT_TRUE(unit.IsValid());
    EXPECT_EQ(NumberOf(unit), number);
    EXPECT_EQ(TextOf(unit), nullptr);
  }
}

TEST(VRINUnitTest, InvalidHandleIsCapitalizedUnknown) {
  VRINUnit unit(VRINUnitMeter);
  unit.SetData(nullptr);
  EXPECT_STREQ(TextOf(unit), "Unknown");
  EXPECT_EQ(NumberOf(unit), 0);
}

TEST(VRINUnitTest, AssignmentShares) {
  VRINUnit target;
  {
    VRINUnit source("mm");
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(UseCount(source), 2);
    ImplOf<VRINUnitImpl>(source)->SetUnit(VRELUnitInch);
  }
  EXPECT_EQ(NumberOf(target), 8);
  VRINUnit const& same = target;
  target = same;
  EXPECT_EQ(UseCount(target), 1);
}

TEST(VRINUnitTest, NumbersObjectsConsecutively) {
  VRINUnit const first;
  VRINUnit const second("mm");
  int const last = VRINObjectImpl::_objectCounter;
  EXPECT_EQ(DiagnosticName(first), "VRINUnit[" + std::to_string(last - 1) + "]");
  EXPECT_EQ(DiagnosticName(second), "VRINUnit[" + std::to_string(last) + "]");
}

TEST(VRINUnitImplTest, GetsAndSetsUnit) {
  VRELUnit unit = VRELUnitFoot;
  VRINUnitImpl impl(unit);
  unit = VRELUnitMile;
  EXPECT_EQ(impl.GetUnit(unit), VREL_S_OK);
  EXPECT_EQ(unit, VRELUnitFoot);
  EXPECT_EQ(impl.SetUnit(VRELUnitMeter), VREL_S_OK);
  EXPECT_EQ(impl.GetUnit(unit), VREL_S_OK);
  EXPECT_EQ(unit, VRELUnitMeter);
}

}  // namespace
