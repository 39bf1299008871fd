// Declarations and field offsets of the units, as clients compiled against.
#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>
#include <utility>

#include "Declaration.h"
#include "Gk_Unit.h"
#include "VRELUnit.h"
#include "VRELUnitValue.h"

namespace {

static_assert(IsDeclared<VRINResult (*)(VRELUnit)>(&CheckUnit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit, VRELString&)>(&GetUnitName));
static_assert(IsDeclared<VRINResult (*)(VRELUnit, double&)>(&GetUnitScaleFactor));
static_assert(IsDeclared<VRINResult (*)(double, VRELUnit&)>(&GetVRELUnit));
static_assert(IsDeclared<VRINResult (*)(Gk_Unit const&, VRELUnit&)>(&GetVRELUnitFromGkUnit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit const&, Gk_Unit&)>(&GetGkUnitFromVRELUnit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit&)>(&get_sending_system_unit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit&)>(&get_receiving_system_unit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit)>(&set_sending_system_unit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit)>(&set_receiving_system_unit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit*)>(&set_sending_system_unit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit*)>(&set_receiving_system_unit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit, VRELUnit)>(&set_internal_unit));
static_assert(IsDeclared<VRINResult (*)(bool)>(&set_internal_unit));

static_assert(IsDeclared<VRELUnit (*)()>(&VRELUnitValue::GetReadUnit));
static_assert(IsDeclared<void (*)(VRELUnit)>(&VRELUnitValue::SetReadUnit));
static_assert(IsDeclared<VRELUnit (*)()>(&VRELUnitValue::GetUnitWhenUnspecified));
static_assert(IsDeclared<void (*)(VRELUnit)>(&VRELUnitValue::SetUnitWhenUnspecified));
static_assert(IsDeclared<VRELUnit (*)()>(&VRELUnitValue::GetApplicationUnit));
static_assert(IsDeclared<void (*)(VRELUnit)>(&VRELUnitValue::SetApplicationUnit));
static_assert(IsDeclared<VRELUnit (*)()>(&VRELUnitValue::GetWriteUnit));
static_assert(IsDeclared<void (*)(VRELUnit)>(&VRELUnitValue::SetWriteUnit));
static_assert(IsDeclared<VRINResult (*)(VRELUnit&, VRELString const&)>(&VRELUnitValue::GetUnitFromString));
static_assert(IsDeclared<void (*)(VRELUnit, VRELString&)>(&VRELUnitValue::GetUnitAsString));

static_assert(!std::is_polymorphic_v<Gk_Unit>);
static_assert(std::is_constructible_v<Gk_Unit, char const*, double>);
static_assert(IsDeclared<double (Gk_Unit::*)() const>(&Gk_Unit::getValue));
static_assert(IsDeclared<bool (Gk_Unit::*)() const>(&Gk_Unit::IsSet));
static_assert(IsDeclared<bool (Gk_Unit::*)(Gk_Unit const&) const>(&Gk_Unit::operator==));
static_assert(IsDeclared<double (Gk_Unit::*)(Gk_Unit const&) const>(&Gk_Unit::mapTo));

template <class Argument, class = void>
struct SetsInternalUnit : std::false_type {};
template <class Argument>
struct SetsInternalUnit<Argument, std::void_t<decltype(set_internal_unit(std::declval<Argument>()))>> : std::true_type {
};

TEST(UnitsInterfaceTest, SingleUnitDoesNotConvertToBool) {
  EXPECT_TRUE(SetsInternalUnit<bool>::value);
  EXPECT_FALSE(SetsInternalUnit<VRELUnit>::value);
  EXPECT_FALSE(SetsInternalUnit<VRELUnit*>::value);
}

TEST(UnitsInterfaceTest, UnitFields) {
  Gk_Unit const unit("span", 228.6);
  double value = 0.0;
  std::memcpy(&value, reinterpret_cast<char const*>(&unit), sizeof value);
  EXPECT_EQ(value, 228.6);
  EXPECT_EQ(reinterpret_cast<char const*>(&unit.getName()) - reinterpret_cast<char const*>(&unit), 8);
  EXPECT_EQ(sizeof(VRELUnit), 4U);
}

}  // namespace
