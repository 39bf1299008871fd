#include "Gk_Option.h"

#include "Gk_Nest.h"
#include "VRELNarrowText.h"

namespace {

template <class Value>
Value CurrentValue(Gk_Option const& option) {
  Value value = Value();
  option.GetValue(value);
  return value;
}

}  // namespace

Gk_Option::Gk_Option() : VRELOption(VRELString()) {}

Gk_Option::Gk_Option(Gk_Option& other) : VRELOption(VRELWideText(other.getValue())) {
  *this = other;
}

Gk_Option& Gk_Option::operator=(Gk_Option const& other) {
  VRELOption::operator=(other);
  nameCache = other.nameCache.copy();
  textCache = other.textCache.copy();
  return *this;
}

void Gk_Option::setValue(Gk_String const& newName) {
  ChangeName(VRELWideText(newName));
}

Gk_String const& Gk_Option::getValue() {
  if (nameCache.len() < 2 && nameCache.dataLen() == 0) nameCache = VRELNarrowText(Name());
  return nameCache;
}

// By value, because the signature is part of the interface.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
VRINResult Gk_Option::set(VRELString value, char const* /*remark*/) {
  return SetValue(value);
}

VRINResult Gk_Option::set(bool value, char const* /*remark*/) {
  return SetValue(value);
}

VRINResult Gk_Option::set(double value, char const* /*remark*/) {
  return SetValue(value);
}

VRINResult Gk_Option::set(int value, char const* /*remark*/) {
  return SetValue(value);
}

double Gk_Option::value() const {
  return CurrentValue<double>(*this);
}

int Gk_Option::count() const {
  return CurrentValue<int>(*this);
}

bool Gk_Option::on() const {
  return CurrentValue<bool>(*this);
}

char const* Gk_Option::string() {
  VRELString text;
  if (GetValue(text).IsFailure()) return nullptr;
  textCache = VRELNarrowText(text);
  return textCache;
}

VRELString Gk_Option::getVRELString() const {
  return CurrentValue<VRELString>(*this);
}

Gk_Option* Gk_Option::fetch(VRELString const& path, bool create) {
  // Nearly every path fits.
  char narrow[256];
  if (!create && path.convertToMBCS(narrow, sizeof narrow, nullptr, false).IsSuccess()) {
    return Gk_Nest::findOption(narrow);
  }
  return Gk_Nest::fetchOption(VRELNarrowText(path).dataStr(), create);
}
