#include "VRELUnitValue.h"

#include <string_view>

#include "VRELStringConversions.h"

namespace {

VRELUnit fileReadUnit = VRELUnitUnknown;
VRELUnit unitWhenUnspecifiedInFile = VRELUnitUnknown;
VRELUnit userApplicationUnit = VRELUnitModel;
VRELUnit userWriteUnit = VRELUnitModel;

struct Spelling {
  std::u16string_view text;
  VRELUnit unit;
};

// Accepted names and abbreviations, in the order of comparison.
constexpr Spelling kSpellings[] = {
    {u"UNKNOWN", VRELUnitUnknown},
    {u"NANOMETER", VRELUnitNanometer},
    {u"nm", VRELUnitNanometer},
    {u"MODEL UNIT", VRELUnitModel},
    {u"model", VRELUnitModel},
    {u"MICROMETER", VRELUnitMicrometer},
    {u"micr", VRELUnitMicrometer},
    {u"MILLIMETER", VRELUnitMillimeter},
    {u"mm", VRELUnitMillimeter},
    {u"CENTIMETER", VRELUnitCentimeter},
    {u"cm", VRELUnitCentimeter},
    {u"DECIMETER", VRELUnitDecimeter},
    {u"deci", VRELUnitDecimeter},
    {u"METER", VRELUnitMeter},
    {u"m", VRELUnitMeter},
    {u"INCH", VRELUnitInch},
    {u"in", VRELUnitInch},
    {u"FOOT", VRELUnitFoot},
    {u"ft", VRELUnitFoot},
    {u"MILE", VRELUnitMile},
    {u"KM", VRELUnitKilometer},
    {u"kilometer", VRELUnitKilometer},
    {u"MILLIINCH", VRELUnitMilliinch},
    {u"MICROINCH", VRELUnitMicroinch},
};

}  // namespace

VRELUnit VRELUnitValue::GetReadUnit() {
  return fileReadUnit;
}

void VRELUnitValue::SetReadUnit(VRELUnit unit) {
  fileReadUnit = unit;
}

VRELUnit VRELUnitValue::GetUnitWhenUnspecified() {
  return unitWhenUnspecifiedInFile;
}

void VRELUnitValue::SetUnitWhenUnspecified(VRELUnit unit) {
  unitWhenUnspecifiedInFile = unit;
}

VRELUnit VRELUnitValue::GetApplicationUnit() {
  return userApplicationUnit;
}

void VRELUnitValue::SetApplicationUnit(VRELUnit unit) {
  userApplicationUnit = unit;
}

VRELUnit VRELUnitValue::GetWriteUnit() {
  return userWriteUnit;
}

void VRELUnitValue::SetWriteUnit(VRELUnit unit) {
  userWriteUnit = unit;
}

VRINResult VRELUnitValue::GetUnitFromString(VRELUnit& unit, VRELString const& text) {
  for (Spelling const& spelling : kSpellings) {
    if (!VRELStringIsWord(text, spelling.text)) continue;
    unit = spelling.unit;
    return VREL_S_OK;
  }
  return VREL_E_FAIL;
}

void VRELUnitValue::GetUnitAsString(VRELUnit unit, VRELString& text) {
  if (unit == VRELUnitModel) {
    text = VRELString(L"MODEL UNIT");
  } else {
    GetUnitName(unit, text);
  }
}
