#include "VRELUnit.h"

#include "Gk_Func.h"
#include "Gk_Unit.h"
#include "VRELUnitValue.h"

namespace {

struct UnitRow {
  char const* name;
  double metres;
  double tolerance;
};

// Names, factors and tolerances by value. The factors are those of the international system and of the international
// inch of 25.4 mm. Foot and mile are 12 * 0.0254 and 5280 * 12 * 0.0254 computed in double precision, and therefore one
// unit in the last place below 0.3048 and 1609.344.
constexpr UnitRow kUnits[] = {
    {"UNKNOWN", 0.0, 0.0},
    {"MODELUNIT", 0.0, 0.0},
    {"NANOMETER", 1e-9, 1e-10},
    {"MICROMETER", 1e-6, 1e-10},
    {"MILLIMETER", 0.001, 1e-10},
    {"CENTIMETER", 0.01, 1e-10},
    {"DECIMETER", 0.1, 1e-10},
    {"METER", 1.0, 1e-5},
    {"INCH", 0.0254, 1e-10},
    {"FOOT", 0.30479999999999996, 1e-10},
    {"MILE", 1609.3439999999998, 1e-5},
    {"KM", 1000.0, 1e-10},
    {"MILLIINCH", 2.54e-5, 1e-10},
    {"MICROINCH", 2.54e-8, 1e-10},
};

// Returns true if the unit has a size; the unknown and the model unit only have names.
bool HasFactor(VRELUnit unit) {
  return unit >= VRELUnitNanometer && unit <= VRELUnitMicroinch;
}

// System unit of the process: unset, an object on the heap that is owned here, or a variable of the caller.
class SystemUnit {
 public:
  VRELUnit Get() const { return unit != nullptr ? *unit : VRELUnitModel; }

  VRINResult Set(VRELUnit value) {
    VRINResult const result = CheckUnit(value);
    if (result.IsFailure()) return result;
    if (isOwned) {
      *unit = value;
    } else {
      unit = new VRELUnit(value);
      isOwned = true;
    }
    return VREL_S_OK;
  }

  VRINResult Set(VRELUnit* variable) {
    if (variable == nullptr || CheckUnit(*variable).IsFailure()) return VREL_E_ERROR;
    ReleaseOwned();
    unit = variable;
    return VREL_S_OK;
  }

  void ReleaseOwned() {
    if (!isOwned) return;
    delete unit;
    unit = nullptr;
    isOwned = false;
  }

 private:
  VRELUnit* unit = nullptr;
  bool isOwned = false;
};

SystemUnit sendingUnit;
SystemUnit receivingUnit;

}  // namespace

VRINResult CheckUnit(VRELUnit unit) {
  return unit >= VRELUnitUnknown && unit <= VRELUnitMicroinch ? VREL_S_OK : VREL_E_ERROR;
}

VRINResult GetUnitName(VRELUnit unit, VRELString& name) {
  if (CheckUnit(unit).IsFailure()) return VREL_E_ERROR;
  name = VRELString(kUnits[unit].name, VRELString::CODEPAGE_NAME_ASCII);
  return HasFactor(unit) ? VREL_S_OK : VREL_E_ERROR;
}

VRINResult GetUnitScaleFactor(VRELUnit unit, double& factor) {
  factor = HasFactor(unit) ? kUnits[unit].metres : 0.0;
  return HasFactor(unit) ? VREL_S_OK : VREL_E_ERROR;
}

VRINResult GetVRELUnit(double factor, VRELUnit& unit) {
  for (int i = VRELUnitNanometer; i <= VRELUnitMicroinch; ++i) {
    if (Gk_Func::abs(factor - kUnits[i].metres) < kUnits[i].tolerance) {
      unit = static_cast<VRELUnit>(i);
      return VREL_S_OK;
    }
  }
  if (factor <= 0.0) return VREL_E_ERROR;
  unit = VRELUnitUnknown;
  return VREL_S_OK;
}

VRINResult GetVRELUnitFromGkUnit(Gk_Unit const& from, VRELUnit& unit) {
  unit = VRELUnitUnknown;
  return GetVRELUnit(from.getValue() / 1000.0, unit);
}

VRINResult GetGkUnitFromVRELUnit(VRELUnit const& from, Gk_Unit& to) {
  if (!HasFactor(from)) return VREL_E_ERROR;
  to = Gk_Unit(kUnits[from].name, kUnits[from].metres * 1000.0);
  return VREL_S_OK;
}

VRINResult get_sending_system_unit(VRELUnit& unit) {
  unit = sendingUnit.Get();
  return VREL_S_OK;
}

VRINResult get_receiving_system_unit(VRELUnit& unit) {
  unit = receivingUnit.Get();
  return VREL_S_OK;
}

VRINResult set_sending_system_unit(VRELUnit unit) {
  return sendingUnit.Set(unit);
}

VRINResult set_receiving_system_unit(VRELUnit unit) {
  return receivingUnit.Set(unit);
}

VRINResult set_sending_system_unit(VRELUnit* unit) {
  return sendingUnit.Set(unit);
}

VRINResult set_receiving_system_unit(VRELUnit* unit) {
  return receivingUnit.Set(unit);
}

VRINResult set_internal_unit(VRELUnit sending, VRELUnit receiving) {
  set_sending_system_unit(sending);
  set_receiving_system_unit(receiving);
  return VREL_S_OK;
}

VRINResult set_internal_unit(bool writing) {
  if (writing) return set_internal_unit(VRELUnitValue::GetApplicationUnit(), VRELUnitValue::GetWriteUnit());
  return set_internal_unit(VRELUnitValue::GetReadUnit(), VRELUnitValue::GetApplicationUnit());
}

ReleaseUnits::~ReleaseUnits() {
  sendingUnit.ReleaseOwned();
  receivingUnit.ReleaseOwned();
}
