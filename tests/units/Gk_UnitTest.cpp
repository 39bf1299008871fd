#include "Gk_Unit.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "DoubleBits.h"

namespace {

TEST(Gk_UnitTest, Constants) {
  struct Row {
    Gk_Unit const& unit;
    char const* name;
    std::uint64_t bits;
  };
  for (Row const& row :
       {Row{Gk_Unit::meter, "meter", 0x408F400000000000}, Row{Gk_Unit::cm, "cm", 0x4024000000000000},
        Row{Gk_Unit::mm, "mm", 0x3FF0000000000000}, Row{Gk_Unit::inch, "inch", 0x4039666666666666},
        Row{Gk_Unit::foot, "foot", 0x40730CCCCCCCCCCC}, Row{Gk_Unit::yard, "yard", 0x408C933333333332},
        Row{Gk_Unit::mile, "mile", 0x41388E7FFFFFFFFF}, Row{Gk_Unit::mils, "mils", 0x3F9A027525460AA6},
        Row{Gk_Unit::micr, "micron", 0x3F50624DD2F1A9FC}, Row{Gk_Unit::deci, "decimeter", 0x4059000000000000},
        Row{Gk_Unit::km, "km", 0x412E848000000000}, Row{Gk_Unit::uinch, "microinch", 0x3EFAA242B58735E9}}) {
    EXPECT_EQ(Bits(row.unit.getValue()), row.bits) << row.name;
    EXPECT_TRUE(row.unit.getName() == row.name) << row.name;
    EXPECT_TRUE(row.unit.IsSet()) << row.name;
  }
}

TEST(Gk_UnitTest, DefaultIsUnset) {
  Gk_Unit const unit;
  EXPECT_EQ(unit.getValue(), -1.0);
  EXPECT_TRUE(unit.getName() == "unset");
  EXPECT_FALSE(unit.IsSet());
}

TEST(Gk_UnitTest, IsSetTestsNameAndSize) {
  EXPECT_TRUE(Gk_Unit("ell", 1143.0).IsSet());
  EXPECT_FALSE(Gk_Unit("unset", 1143.0).IsSet());
  EXPECT_FALSE(Gk_Unit("ell", 0.0).IsSet());
  EXPECT_FALSE(Gk_Unit("ell", -1143.0).IsSet());
  EXPECT_TRUE(Gk_Unit("UNSET", 1.0).IsSet());
  EXPECT_TRUE(Gk_Unit("", 1.0).IsSet());
  EXPECT_TRUE(Gk_Unit(nullptr, 1.0).IsSet());
}

TEST(Gk_UnitTest, CopyKeepsNameAndSize) {
  Gk_Unit const ell("ell", 1143.0);
  Gk_Unit const copy(ell);
  Gk_Unit assigned;
  assigned = ell;
  for (Gk_Unit const* unit : {&copy, static_cast<Gk_Unit const*>(&assigned)}) {
    EXPECT_EQ(unit->getValue(), 1143.0);
    EXPECT_TRUE(unit->getName() == "ell");
  }
}

TEST(Gk_UnitTest, EqualityIgnoresName) {
  EXPECT_TRUE(Gk_Unit("a", 1.0) == Gk_Unit("b", 1.0 + 5e-11));
  EXPECT_FALSE(Gk_Unit("a", 1.0) == Gk_Unit("a", 1.0 + 2e-10));
  EXPECT_TRUE(Gk_Unit("a", 1.0) != Gk_Unit("a", 2.0));
}

TEST(Gk_UnitTest, MapTo) {
  EXPECT_EQ(Gk_Unit::inch.mapTo(Gk_Unit::mm), 25.4);
  EXPECT_EQ(Gk_Unit::mm.mapTo(Gk_Unit::cm), 0.1);
  EXPECT_EQ(Gk_Unit::km.mapTo(Gk_Unit::meter), 1000.0);
  EXPECT_EQ(Gk_Unit("a", -4.0).mapTo(Gk_Unit("b", 2.0)), 2.0);
  EXPECT_EQ(Gk_Unit("a", 4.0).mapTo(Gk_Unit("b", -2.0)), 2.0);
  EXPECT_EQ(Gk_Unit("a", -4.0).mapTo(Gk_Unit("b", -2.0)), 2.0);
}

}  // namespace
