#include "VRELCfgFileKey.h"

#include <string>
#include <utility>

VRELCfgFileKey::VRELCfgFileKey(char const* aName) : name(aName) {}

VRELCfgFileKey::VRELCfgFileKey(char const* aName, int expectedValues)
    : name(aName), values(expectedValues, VRELString()) {
  values.clear();
}

VRELCfgFileKey::~VRELCfgFileKey() = default;

VRELString VRELCfgFileKey::GetValue(int index) const {
  return index >= 0 && index < values.size() ? values[index] : VRELString();
}

void VRELCfgFileKey::AppendValue(char const* value) {
  VRELString text(value);
  values.endGrow(1);
  values[values.size() - 1] = std::move(text);
}

VRELString VRELCfgFileKey::GetAllValues() const {
  if (values.size() == 1) return values[0];
  std::u16string joined;
  for (VRELString const& value : values) {
    if (&value != values.begin()) joined += u',';
    joined += value.view();
  }
  return VRELString(joined);
}
