#include "VRELUnit.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <type_traits>

#include "ChildProcess.h"
#include "DoubleBits.h"
#include "Gk_Unit.h"
#include "VRELUnitValue.h"

namespace {

static_assert(std::is_same_v<std::underlying_type_t<VRELUnit>, int>);
static_assert(std::is_convertible_v<VRELUnit, int>);

struct Row {
  int unit;
  char const* name;
  std::uint64_t bits;
};

Row const rows[] = {
    {2, "NANOMETER", 0x3E112E0BE826D695},  {3, "MICROMETER", 0x3EB0C6F7A0B5ED8D}, {4, "MILLIMETER", 0x3F50624DD2F1A9FC},
    {5, "CENTIMETER", 0x3F847AE147AE147B}, {6, "DECIMETER", 0x3FB999999999999A},  {7, "METER", 0x3FF0000000000000},
    {8, "INCH", 0x3F9A027525460AA6},       {9, "FOOT", 0x3FD381D7DBF487FC},       {10, "MILE", 0x409925604189374B},
    {11, "KM", 0x408F400000000000},        {12, "MILLIINCH", 0x3EFAA242B58735EA}, {13, "MICROINCH", 0x3E5B45E61A240E3F},
};

int const strangers[] = {-1, 14, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};

VRELUnit Unit(int number) {
  return static_cast<VRELUnit>(number);
}

TEST(VRELUnitTest, Enumerators) {
  EXPECT_EQ(VRELUnitUnknown, 0);
  EXPECT_EQ(VRELUnitModel, 1);
  EXPECT_EQ(VRELUnitNanometer, 2);
  EXPECT_EQ(VRELUnitMicrometer, 3);
  EXPECT_EQ(VRELUnitMillimeter, 4);
  EXPECT_EQ(VRELUnitCentimeter, 5);
  EXPECT_EQ(VRELUnitDecimeter, 6);
  EXPECT_EQ(VRELUnitMeter, 7);
  EXPECT_EQ(VRELUnitInch, 8);
  EXPECT_EQ(VRELUnitFoot, 9);
  EXPECT_EQ(VRELUnitMile, 10);
  EXPECT_EQ(VRELUnitKilometer, 11);
  EXPECT_EQ(VRELUnitMilliinch, 12);
  EXPECT_EQ(VRELUnitMicroinch, 13);
}

TEST(VRELUnitTest, NamesAndFactors) {
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    VRELString name;
    double factor = -1.0;
    EXPECT_EQ(GetUnitName(Unit(row.unit), name), VREL_S_OK);
    EXPECT_EQ(name.toUtf8(), row.name);
    EXPECT_EQ(GetUnitScaleFactor(Unit(row.unit), factor), VREL_S_OK);
    EXPECT_EQ(factor, FromBits(row.bits));
  }
}

TEST(VRELUnitTest, UnitsWithoutFactorFail) {
  VRELString name;
  double factor = -1.0;
  EXPECT_EQ(GetUnitName(Unit(0), name), VREL_E_ERROR);
  EXPECT_EQ(name.toUtf8(), "UNKNOWN");
  EXPECT_EQ(GetUnitName(Unit(1), name), VREL_E_ERROR);
  EXPECT_EQ(name.toUtf8(), "MODELUNIT");
  for (int unit : strangers) {
    name = VRELString(L"before");
    EXPECT_EQ(GetUnitName(Unit(unit), name), VREL_E_ERROR) << unit;
    EXPECT_EQ(name.toUtf8(), "before");
  }
  for (int unit : {0, 1, 14, -1}) {
    factor = -1.0;
    EXPECT_EQ(GetUnitScaleFactor(Unit(unit), factor), VREL_E_ERROR) << unit;
    EXPECT_EQ(factor, 0.0);
  }
}

TEST(VRELUnitTest, CheckUnit) {
  for (int unit = 0; unit <= 13; ++unit) EXPECT_EQ(CheckUnit(Unit(unit)), VREL_S_OK) << unit;
  for (int unit : strangers) EXPECT_EQ(CheckUnit(Unit(unit)), VREL_E_ERROR) << unit;
}

TEST(VRELUnitTest, GetVRELUnitFindsEachFactor) {
  for (Row const& row : rows) {
    VRELUnit unit = Unit(99);
    EXPECT_EQ(GetVRELUnit(FromBits(row.bits), unit), VREL_S_OK);
    EXPECT_EQ(unit, row.unit);
  }
}

TEST(VRELUnitTest, GetVRELUnitUsesDocumentedTolerances) {
  struct Case {
    double factor;
    int unit;
  };
  for (Case const& row : {Case{0.3048, 9},
                          Case{1.000005, 7},
                          Case{0.999995, 7},
                          Case{1.00002, 0},
                          Case{0.99998, 0},
                          Case{0.01000000001, 5},
                          Case{0.0100001, 0},
                          Case{1609.344, 10},
                          Case{1609.344005, 10},
                          Case{1609.34402, 0},
                          Case{1000.00000000005, 11},
                          Case{1000.000001, 0},
                          Case{0.001 + 9e-11, 4},
                          Case{0.001 + 1.1e-10, 0},
                          Case{0.9144, 0},
                          Case{1e-9 + 9e-11, 2},
                          Case{1e-9 - 9e-11, 2},
                          Case{1.2e-9, 0},
                          Case{1e-12, 0},
                          Case{2.54e-8 + 9e-11, 13},
                          Case{2.54e-5 + 9e-11, 12},
                          Case{0.0254 - 9e-11, 8},
                          Case{0.1 + 9e-11, 6},
                          Case{1e-6 - 9e-11, 3},
                          Case{std::numeric_limits<double>::infinity(), 0},
                          Case{std::numeric_limits<double>::quiet_NaN(), 0}}) {
    VRELUnit unit = Unit(99);
    EXPECT_EQ(GetVRELUnit(row.factor, unit), VREL_S_OK) << row.factor;
    EXPECT_EQ(unit, row.unit) << row.factor;
  }
}

TEST(VRELUnitTest, TolerancesOnBothSides) {
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    double const factor = FromBits(row.bits);
    double const tolerance = row.unit == 7 || row.unit == 10 ? 1e-5 : 1e-10;
    for (double side : {-1.0, 1.0}) {
      VRELUnit unit = Unit(99);
      EXPECT_EQ(GetVRELUnit(factor + side * 0.95 * tolerance, unit), VREL_S_OK);
      EXPECT_EQ(unit, row.unit);
      unit = Unit(99);
      EXPECT_EQ(GetVRELUnit(factor + side * 1.05 * tolerance, unit), VREL_S_OK);
      EXPECT_EQ(unit, 0);
    }
  }
}

TEST(VRELUnitTest, ToleranceIsExclusive) {
  // The difference between 1 and these numbers is exact: a difference of 1e-5 does not match.
  VRELUnit unit = Unit(99);
  double const inside = 1.0 + 0x1.4f8bp-17;   // below 1e-5
  double const outside = 1.0 + 0x1.4f8cp-17;  // above
  EXPECT_EQ(GetVRELUnit(inside, unit), VREL_S_OK);
  EXPECT_EQ(unit, 7);
  EXPECT_EQ(GetVRELUnit(outside, unit), VREL_S_OK);
  EXPECT_EQ(unit, 0);
}

TEST(VRELUnitTest, GetVRELUnitOfZeroFails) {
  for (double factor : {0.0, -0.0, -1.0, -1e-12, -std::numeric_limits<double>::infinity()}) {
    VRELUnit unit = Unit(99);
    EXPECT_EQ(GetVRELUnit(factor, unit), VREL_E_ERROR) << factor;
    EXPECT_EQ(unit, 99);
  }
}

TEST(VRELUnitTest, FromGkUnit) {
  struct Case {
    Gk_Unit const& from;
    int unit;
  };
  for (Case const& row :
       {Case{Gk_Unit::meter, 7}, Case{Gk_Unit::cm, 5}, Case{Gk_Unit::mm, 4}, Case{Gk_Unit::inch, 8},
        Case{Gk_Unit::foot, 9}, Case{Gk_Unit::yard, 0}, Case{Gk_Unit::mile, 10}, Case{Gk_Unit::mils, 12},
        Case{Gk_Unit::micr, 3}, Case{Gk_Unit::deci, 6}, Case{Gk_Unit::km, 11}, Case{Gk_Unit::uinch, 13}}) {
    VRELUnit unit = Unit(99);
    EXPECT_EQ(GetVRELUnitFromGkUnit(row.from, unit), VREL_S_OK);
    EXPECT_EQ(unit, row.unit);
  }
}

TEST(VRELUnitTest, FromUnsetGkUnitFails) {
  VRELUnit unit = Unit(99);
  EXPECT_EQ(GetVRELUnitFromGkUnit(Gk_Unit(), unit), VREL_E_ERROR);
  EXPECT_EQ(unit, 0);
}

TEST(VRELUnitTest, ToGkUnit) {
  for (Row const& row : rows) {
    Gk_Unit unit;
    EXPECT_EQ(GetGkUnitFromVRELUnit(Unit(row.unit), unit), VREL_S_OK);
    EXPECT_EQ(unit.getValue(), FromBits(row.bits) * 1000.0);
    EXPECT_TRUE(unit.getName() == row.name) << row.name;
  }
  Gk_Unit unit;
  GetGkUnitFromVRELUnit(VRELUnitMillimeter, unit);
  EXPECT_EQ(unit.getValue(), 1.0);
  EXPECT_TRUE(unit == Gk_Unit::mm);
}

TEST(VRELUnitTest, ToGkUnitWithoutFactorFails) {
  for (int number : {0, 1, 14, -1}) {
    Gk_Unit unit("before", 5.0);
    EXPECT_EQ(GetGkUnitFromVRELUnit(Unit(number), unit), VREL_E_ERROR) << number;
    EXPECT_EQ(unit.getValue(), 5.0);
    EXPECT_TRUE(unit.getName() == "before");
  }
}

// Both settings behave alike.
struct System {
  VRINResult (*get)(VRELUnit&);
  VRINResult (*setValue)(VRELUnit);
  VRINResult (*setVariable)(VRELUnit*);

  int Get() const {
    VRELUnit unit = Unit(99);
    EXPECT_EQ(get(unit), VREL_S_OK);
    return unit;
  }
};

System const systems[] = {{get_sending_system_unit, set_sending_system_unit, set_sending_system_unit},
                          {get_receiving_system_unit, set_receiving_system_unit, set_receiving_system_unit}};

// The settings belong to the process: each test runs in a child process that ends like a program.
template <class Body>
void InChild(Body body) {
  ChildResult const child = RunInChild([&] {
    body();
    return testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.output << child.errors;
}

TEST(VRELUnitSystemTest, DefaultIsModelUnit) {
  InChild([] {
    for (System const& system : systems) EXPECT_EQ(system.Get(), 1);
  });
}

TEST(VRELUnitSystemTest, SetByValue) {
  InChild([] {
    for (System const& system : systems) {
      for (int unit = 0; unit <= 13; ++unit) {
        EXPECT_EQ(system.setValue(Unit(unit)), VREL_S_OK);
        EXPECT_EQ(system.Get(), unit);
      }
    }
  });
}

TEST(VRELUnitSystemTest, UnitsAreIndependent) {
  InChild([] {
    set_sending_system_unit(VRELUnitInch);
    EXPECT_EQ(systems[1].Get(), 1);
    set_receiving_system_unit(VRELUnitFoot);
    EXPECT_EQ(systems[0].Get(), 8);
    EXPECT_EQ(systems[1].Get(), 9);
  });
}

TEST(VRELUnitSystemTest, InvalidUnitChangesNothing) {
  InChild([] {
    for (System const& system : systems) {
      system.setValue(VRELUnitInch);
      VRELUnit variable = VRELUnitFoot;
      for (int number : strangers) {
        VRELUnit stranger = Unit(number);
        EXPECT_EQ(system.setValue(stranger), VREL_E_ERROR);
        EXPECT_EQ(system.Get(), 8);
        EXPECT_EQ(system.setVariable(&stranger), VREL_E_ERROR);
        EXPECT_EQ(system.Get(), 8);
      }
      EXPECT_EQ(system.setVariable(nullptr), VREL_E_ERROR);
      EXPECT_EQ(system.Get(), 8);
      system.setVariable(&variable);
      EXPECT_EQ(system.setValue(Unit(14)), VREL_E_ERROR);
      EXPECT_EQ(system.Get(), 9);
      variable = VRELUnitMile;
      EXPECT_EQ(system.Get(), 10);
      system.setValue(VRELUnitMeter);
    }
  });
}

TEST(VRELUnitSystemTest, SetByPointerKeepsVariable) {
  InChild([] {
    for (System const& system : systems) {
      VRELUnit variable = VRELUnitInch;
      EXPECT_EQ(system.setVariable(&variable), VREL_S_OK);
      EXPECT_EQ(system.Get(), 8);
      variable = VRELUnitMile;
      EXPECT_EQ(system.Get(), 10);
      variable = Unit(77);  // is returned unchecked
      EXPECT_EQ(system.Get(), 77);
      // Another setting no longer uses the variable and does not change it.
      EXPECT_EQ(system.setValue(VRELUnitMeter), VREL_S_OK);
      EXPECT_EQ(variable, 77);
      variable = VRELUnitFoot;
      EXPECT_EQ(system.Get(), 7);
      EXPECT_EQ(system.setVariable(&variable), VREL_S_OK);
      EXPECT_EQ(system.setVariable(&variable), VREL_S_OK);
      EXPECT_EQ(system.Get(), 9);
      system.setValue(VRELUnitMeter);
    }
  });
}

TEST(VRELUnitSystemTest, ReleaseKeepsVariable) {
  static VRELUnit variable = VRELUnitInch;
  InChild([] {
    for (System const& system : systems) system.setVariable(&variable);
  });
}

TEST(VRELUnitSystemTest, ReleaseResetsOwnedUnits) {
  InChild([] {
    static VRELUnit variable = VRELUnitInch;
    set_sending_system_unit(VRELUnitFoot);
    set_receiving_system_unit(&variable);
    { ReleaseUnits const release; }
    EXPECT_EQ(systems[0].Get(), 1);
    EXPECT_EQ(systems[1].Get(), 8);
    EXPECT_EQ(variable, 8);
    set_sending_system_unit(VRELUnitMile);
    set_receiving_system_unit(VRELUnitMeter);
    EXPECT_EQ(systems[0].Get(), 10);
    EXPECT_EQ(systems[1].Get(), 7);
    EXPECT_EQ(variable, 8);
  });
}

TEST(VRELUnitSystemTest, SetInternalUnitSetsBoth) {
  InChild([] {
    EXPECT_EQ(set_internal_unit(VRELUnitInch, VRELUnitFoot), VREL_S_OK);
    EXPECT_EQ(systems[0].Get(), 8);
    EXPECT_EQ(systems[1].Get(), 9);
    EXPECT_EQ(set_internal_unit(Unit(14), VRELUnitMile), VREL_S_OK);
    EXPECT_EQ(systems[0].Get(), 8);
    EXPECT_EQ(systems[1].Get(), 10);
    EXPECT_EQ(set_internal_unit(VRELUnitMeter, Unit(-1)), VREL_S_OK);
    EXPECT_EQ(systems[0].Get(), 7);
    EXPECT_EQ(systems[1].Get(), 10);
  });
}

TEST(VRELUnitSystemTest, SetInternalUnitUsesRoles) {
  InChild([] {
    VRELUnitValue::SetReadUnit(VRELUnitInch);
    VRELUnitValue::SetApplicationUnit(VRELUnitMeter);
    VRELUnitValue::SetWriteUnit(VRELUnitFoot);
    EXPECT_EQ(set_internal_unit(true), VREL_S_OK);
    EXPECT_EQ(systems[0].Get(), 7);
    EXPECT_EQ(systems[1].Get(), 9);
    EXPECT_EQ(set_internal_unit(false), VREL_S_OK);
    EXPECT_EQ(systems[0].Get(), 8);
    EXPECT_EQ(systems[1].Get(), 7);
  });
}

}  // namespace
