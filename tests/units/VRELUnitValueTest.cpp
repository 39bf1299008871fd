#include "VRELUnitValue.h"

#include <gtest/gtest.h>

#include "ChildProcess.h"

namespace {

VRELUnit Unit(int number) {
  return static_cast<VRELUnit>(number);
}

TEST(VRELUnitValueTest, DefaultRoles) {
  EXPECT_EQ(VRELUnitValue::GetReadUnit(), 0);
  EXPECT_EQ(VRELUnitValue::GetUnitWhenUnspecified(), 0);
  EXPECT_EQ(VRELUnitValue::GetApplicationUnit(), 1);
  EXPECT_EQ(VRELUnitValue::GetWriteUnit(), 1);
}

TEST(VRELUnitValueTest, RolesAreIndependentAndUnchecked) {
  ChildResult const child = RunInChild([] {
    VRELUnitValue::SetReadUnit(Unit(4));
    VRELUnitValue::SetUnitWhenUnspecified(Unit(5));
    VRELUnitValue::SetApplicationUnit(Unit(77));
    VRELUnitValue::SetWriteUnit(Unit(-3));
    bool const right = VRELUnitValue::GetReadUnit() == 4 && VRELUnitValue::GetUnitWhenUnspecified() == 5 &&
                       VRELUnitValue::GetApplicationUnit() == 77 && VRELUnitValue::GetWriteUnit() == -3;
    return right ? 0 : 1;
  });
  EXPECT_EQ(child.exitStatus, 0);
}

struct Row {
  wchar_t const* text;
  int unit;
};

TEST(VRELUnitValueTest, UnitsFromString) {
  for (Row const& row : {Row{L"UNKNOWN", 0},    Row{L"MODEL UNIT", 1}, Row{L"model", 1},
                         Row{L"NANOMETER", 2},  Row{L"nm", 2},         Row{L"MICROMETER", 3},
                         Row{L"micr", 3},       Row{L"MILLIMETER", 4}, Row{L"mm", 4},
                         Row{L"MM", 4},         Row{L"Mm", 4},         Row{L"CENTIMETER", 5},
                         Row{L"cm", 5},         Row{L"DECIMETER", 6},  Row{L"deci", 6},
                         Row{L"METER", 7},      Row{L"m", 7},          Row{L"M", 7},
                         Row{L"INCH", 8},       Row{L"in", 8},         Row{L"FOOT", 9},
                         Row{L"ft", 9},         Row{L"MILE", 10},      Row{L"mile", 10},
                         Row{L"KM", 11},        Row{L"km", 11},        Row{L"kilometer", 11},
                         Row{L"KILOMETER", 11}, Row{L"KiloMeter", 11}, Row{L"MILLIINCH", 12},
                         Row{L"MICROINCH", 13}, Row{L"microinch", 13}, Row{L"\u212Ailometer", 11},
                         Row{L"unknown", 0}}) {
    VRELUnit unit = Unit(99);
    EXPECT_EQ(VRELUnitValue::GetUnitFromString(unit, VRELString(row.text)), VREL_S_OK) << VRELString(row.text);
    EXPECT_EQ(unit, row.unit) << VRELString(row.text);
  }
}

TEST(VRELUnitValueTest, OtherStringFails) {
  for (wchar_t const* text : {L"yard", L"", L" mm", L"mm ", L"MODELUNIT", L"feet", L"micro", L"decimeters", L"k"}) {
    VRELUnit unit = Unit(99);
    EXPECT_EQ(VRELUnitValue::GetUnitFromString(unit, VRELString(text)), VREL_E_FAIL) << VRELString(text);
    EXPECT_EQ(unit, 99);
  }
}

TEST(VRELUnitValueTest, UnitsAsString) {
  for (Row const& row : {Row{L"UNKNOWN", 0}, Row{L"MODEL UNIT", 1}, Row{L"NANOMETER", 2}, Row{L"MICROMETER", 3},
                         Row{L"MILLIMETER", 4}, Row{L"CENTIMETER", 5}, Row{L"DECIMETER", 6}, Row{L"METER", 7},
                         Row{L"INCH", 8}, Row{L"FOOT", 9}, Row{L"MILE", 10}, Row{L"KM", 11}, Row{L"MILLIINCH", 12},
                         Row{L"MICROINCH", 13}, Row{L"before", 14}, Row{L"before", -1}}) {
    VRELString text(L"before");
    VRELUnitValue::GetUnitAsString(Unit(row.unit), text);
    EXPECT_TRUE(text.equals(VRELString(row.text))) << row.unit;
  }
}

}  // namespace
