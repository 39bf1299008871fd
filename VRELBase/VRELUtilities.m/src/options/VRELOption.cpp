#include "VRELOption.h"

#include <utility>

#include "VRELDebug.h"
#include "VRELEnvironment.h"
#include "VRELError.h"
#include "VRELEventBus.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELStringConversions.h"
#include "VRELWarning.h"

namespace {

constexpr char kMismatchFormat[] =
    "VRELOption::SetValue: Specified type (%s) doesn't match stored type (%s) for option '%s'.";

// Narrow form of a string for a message.
class NarrowText {
 public:
  explicit NarrowText(VRELString const& text) : narrow(text, false) {}

  char const* Get() const {
    char const* const text = narrow;
    return text != nullptr ? text : "";
  }

 private:
  VRELStringAsciiCharUtil narrow;
};

// Messages are formatted only if there is a listener.
bool HasListeners() {
  return VRELEventBus::GetEventBus()->GetListenerCount() > 0;
}

// Reads an environment variable as a number.
template <class Number>
bool ReadNumber(VRELString const& variable, VRINResult (*convert)(VRELString const&, Number&), Number& value) {
  VRELString text;
  return VRELEnvironment::GetVariable(variable, text).IsSuccess() && convert(text, value).IsSuccess();
}

}  // namespace

VRELString formEnvVarName(VRELString const& name) {
  return VRELString(L"VREL") + name;
}

VRELOption::VRELOption() = default;

VRELOption::VRELOption(VRELString aName) : name(std::move(aName)) {}

VRELOption::VRELOption(VRELOptionName const& aName, VRELValue& value, bool isPrivate)
    : VRELOption(aName, std::as_const(value), isPrivate) {}

VRELOption::VRELOption(VRELOptionName const& aName, VRELString& value, bool isPrivate)
    : VRELOption(aName, std::as_const(value), isPrivate) {}

VRELOption::VRELOption(VRELOptionName const& aName, bool value, bool isPrivate)
    : defaultValue(value), currentValue(value), name(aName), isPrivateOption(isPrivate) {}

VRELOption::VRELOption(VRELOptionName const& aName, double value, bool isPrivate)
    : defaultValue(value), currentValue(value), name(aName), isPrivateOption(isPrivate) {}

VRELOption::VRELOption(VRELOptionName const& aName, int value, bool isPrivate)
    : defaultValue(value), currentValue(value), name(aName), isPrivateOption(isPrivate) {}

VRELOption::VRELOption(VRELOptionName const& aName, VRELValue const& value, bool isPrivate)
    : defaultValue(value), currentValue(value), name(aName), isPrivateOption(isPrivate) {}

VRELOption::VRELOption(VRELOptionName const& aName, VRELString const& value, bool isPrivate)
    : defaultValue(value), currentValue(value), name(aName), isPrivateOption(isPrivate) {}

VRELOption::VRELOption(VRELOption const& other) {
  *this = other;
}

VRELOption::~VRELOption() = default;

VRELOption& VRELOption::operator=(VRELOption const& other) {
  if (this == &other) return *this;
  if (!defaultValue.IsValid()) defaultValue = other.defaultValue;
  currentValue = other.currentValue;
  name = other.name;
  isPrivateOption = other.isPrivateOption;
  return *this;
}

VRELValue::VRELValueType VRELOption::Kind() const {
  VRELValue::VRELValueType kind = VRELValue::UnknownType;
  defaultValue.GetValueType(kind);
  return kind;
}

VRINResult VRELOption::GetValueType(VRELValue::VRELValueType& valueType) const {
  valueType = Kind();
  if (valueType == VRELValue::UnknownType) return VREL_E_OPTION_UNSET;
  return VREL_S_OK;
}

VRINResult VRELOption::GetName(VRELString& text) const {
  if (!defaultValue.IsValid()) return VREL_E_OPTION_UNSET;
  text = name;
  return VREL_S_OK;
}

VRINResult VRELOption::IsPrivate(bool& flag) const {
  if (!defaultValue.IsValid()) return VREL_E_OPTION_UNSET;
  flag = isPrivateOption;
  return VREL_S_OK;
}

VRINResult VRELOption::ChangeName(VRELString const& newName) {
  name = newName;
  return VREL_S_OK;
}

template <class T>
VRINResult VRELOption::ReadDefault(T& value) const {
  if (!defaultValue.IsValid()) return VREL_E_OPTION_UNSET;
  return defaultValue.GetValue(value);
}

VRINResult VRELOption::GetDefaultValue(VRELValue& value) const {
  if (!defaultValue.IsValid()) return VREL_E_OPTION_UNSET;
  value = defaultValue;
  return VREL_S_OK;
}

VRINResult VRELOption::GetDefaultValue(VRELString& value) const {
  return ReadDefault(value);
}

VRINResult VRELOption::GetDefaultValue(bool& value) const {
  return ReadDefault(value);
}

VRINResult VRELOption::GetDefaultValue(double& value) const {
  return ReadDefault(value);
}

VRINResult VRELOption::GetDefaultValue(int& value) const {
  return ReadDefault(value);
}

VRINResult VRELOption::GetValue(VRELValue& value) const {
  if (!defaultValue.IsValid()) return VREL_E_OPTION_UNSET;
  value = currentValue;
  return VREL_S_OK;
}

template <class T>
VRINResult VRELOption::Read(T& value, VRELValue::VRELValueType kind) const {
  if (!defaultValue.IsValid()) return VREL_E_OPTION_UNSET;
  VRINResult const result = currentValue.GetValue(value);
  if (result.IsFailure() && HasListeners()) {
    VRELDebug::Printf("VRELOption::GetValue: Requested type (%s) doesn't match stored type (%s) for option '%s'.",
                      VRELValue::VRELValueTypeNames[kind], VRELValue::VRELValueTypeNames[Kind()],
                      NarrowText(name).Get());
  }
  return result;
}

VRINResult VRELOption::GetValue(VRELString& value) const {
  return Read(value, VRELValue::StringType);
}

VRINResult VRELOption::GetValue(bool& value) const {
  VRINResult const result = Read(value, VRELValue::BoolType);
  if (defaultValue.IsValid() && HasListeners()) {
    VRELDebug::Printf("VRELOption::GetValue('%s'): %s", NarrowText(name).Get(), value ? "TRUE" : "FALSE");
  }
  return result;
}

VRINResult VRELOption::GetValue(double& value) const {
  return Read(value, VRELValue::DoubleType);
}

VRINResult VRELOption::GetValue(int& value) const {
  return Read(value, VRELValue::IntType);
}

VRINResult VRELOption::GetValue(VRELString& value, bool fromEnvironment) const {
  if (!fromEnvironment || VRELEnvironment::GetVariable(formEnvVarName(name), value).IsFailure()) return GetValue(value);
  VRELWarning::Printf("%s value overridden to %s by environment variable", NarrowText(name).Get(),
                      NarrowText(value).Get());
  return VREL_S_OK;
}

VRINResult VRELOption::GetValue(bool& value, bool fromEnvironment) const {
  // A failed read would set the argument of the caller to false.
  bool found = false;
  if (!fromEnvironment || VRELEnvironment::GetVariable(formEnvVarName(name), found).IsFailure()) return GetValue(value);
  value = found;
  VRELWarning::Printf("%s value overridden to %s by environment variable", NarrowText(name).Get(),
                      value ? "On" : "Off");
  return VREL_S_OK;
}

// Compatibility: the warnings for numbers begin with the name of the variable, those above with the name of the option.
VRINResult VRELOption::GetValue(double& value, bool fromEnvironment) const {
  if (!fromEnvironment) return GetValue(value);
  VRELString const variable = formEnvVarName(name);
  if (!ReadNumber(variable, VRELStringToDouble, value)) return GetValue(value);
  VRELWarning::Printf("%s value overridden to %7.3g by environment variable", NarrowText(variable).Get(), value);
  return VREL_S_OK;
}

VRINResult VRELOption::GetValue(int& value, bool fromEnvironment) const {
  if (!fromEnvironment) return GetValue(value);
  VRELString const variable = formEnvVarName(name);
  if (!ReadNumber(variable, VRELStringToInteger, value)) return GetValue(value);
  VRELWarning::Printf("%s value overridden to %d by environment variable", NarrowText(variable).Get(), value);
  return VREL_S_OK;
}

template <class T>
VRINResult VRELOption::Store(T const& value) {
  if (!defaultValue.IsValid()) defaultValue.SetValue(value);
  return currentValue.SetValue(value);
}

void VRELOption::ReportMismatch(VRELValue::VRELValueType kind) const {
  VRELError::Printf(kMismatchFormat, VRELValue::VRELValueTypeNames[kind], VRELValue::VRELValueTypeNames[Kind()],
                    NarrowText(name).Get());
}

VRINResult VRELOption::SetValue(VRELValue const& value) {
  VRELValue::VRELValueType kind = VRELValue::UnknownType;
  value.GetValueType(kind);
  if (Kind() == VRELValue::BoolType && kind == VRELValue::IntType) {
    bool truth = false;
    value.GetValue(truth);
    return currentValue.SetValue(truth);
  }
  if (!MayHold(kind)) {
    ReportMismatch(kind);
    return VREL_E_ERROR;
  }
  if (!defaultValue.IsValid()) defaultValue = value;
  currentValue = value;
  return VREL_S_OK;
}

VRINResult VRELOption::SetValue(VRELString const& value) {
  if (MayHold(VRELValue::StringType)) return Store(value);
  ReportMismatch(VRELValue::StringType);
  return VREL_E_ERROR;
}

VRINResult VRELOption::SetValue(bool value) {
  if (MayHold(VRELValue::BoolType)) return Store(value);
  ReportMismatch(VRELValue::BoolType);
  return VREL_E_ERROR;
}

VRINResult VRELOption::SetValue(double value) {
  if (MayHold(VRELValue::DoubleType)) return Store(value);
  ReportMismatch(VRELValue::DoubleType);
  return VREL_E_ERROR;
}

VRINResult VRELOption::SetValue(int value) {
  if (Kind() == VRELValue::BoolType) return currentValue.SetValue(value != 0);
  if (MayHold(VRELValue::IntType)) return Store(value);
  VRELWarning::Printf(kMismatchFormat, VRELValue::VRELValueTypeNames[VRELValue::IntType],
                      VRELValue::VRELValueTypeNames[Kind()], NarrowText(name).Get());
  return VREL_E_ERROR;
}
