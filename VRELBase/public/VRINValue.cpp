#include "VRINValue.h"

#include "VRELValue.h"
#include "VRINValueImpl.h"

namespace {

// Returns the held value converted to T, or T() if it cannot be converted.
template <class T>
T Read(VRINValueImpl const* impl) {
  T result{};
  if (impl != nullptr) impl->GetHeldValue().GetValue(result);
  return result;
}

VRINValueImpl* NewImpl(VRELValue const& value) {
  return new VRINValueImpl(value);
}

}  // namespace

VRINValue::VRINValue() : VRINObject("VRINValue") {
  SetImpl(NewImpl(VRELValue()));
}

VRINValue::VRINValue(bool value) : VRINObject("VRINValue") {
  SetImpl(NewImpl(VRELValue(value)));
}

VRINValue::VRINValue(int value) : VRINObject("VRINValue") {
  SetImpl(NewImpl(VRELValue(value)));
}

VRINValue::VRINValue(double value) : VRINObject("VRINValue") {
  SetImpl(NewImpl(VRELValue(value)));
}

VRINValue::VRINValue(char const* value) : VRINObject("VRINValue") {
  SetImpl(NewImpl(VRELValue(VRELString(value))));
}

VRINValue::VRINValue(wchar_t const* value) : VRINObject("VRINValue") {
  SetImpl(NewImpl(VRELValue(VRELString(value))));
}

VRINValue::VRINValue(std::string const& value) : VRINObject("VRINValue") {
  SetImpl(NewImpl(VRELValue(VRELString(value))));
}

VRINValue::VRINValue(std::string_view value) : VRINValue(std::string(value)) {}

VRINValue::VRINValue(std::wstring const& value) : VRINValue(value.c_str()) {}

VRINValue::VRINValue(std::wstring_view value) : VRINValue(std::wstring(value)) {}

VRINValue::VRINValue(std::u16string_view value) : VRINObject("VRINValue") {
  SetImpl(NewImpl(VRELValue(VRELString(value))));
}

VRINValue::VRINValue(char16_t const* value)
    : VRINValue(value != nullptr ? std::u16string_view(value) : std::u16string_view()) {}

VRINValue& VRINValue::operator=(VRINValue const& other) {
  SetData(other.GetData());
  return *this;
}

VRINValue::ValueType VRINValue::GetType() const {
  auto const* const impl = GetDataAs<VRINValueImpl>();
  VRELValue::VRELValueType type = VRELValue::UnknownType;
  if (impl != nullptr) impl->GetHeldValue().GetValueType(type);
  switch (type) {
    case VRELValue::IntType:
      return IntType;
    case VRELValue::DoubleType:
      return DoubleType;
    case VRELValue::StringType:
      return StringType;
    default:
      return BoolType;
  }
}

VRINValue::operator bool() const {
  return Read<bool>(GetImpl<VRINValueImpl>());
}

VRINValue::operator int() const {
  return Read<int>(GetImpl<VRINValueImpl>());
}

VRINValue::operator double() const {
  return Read<double>(GetImpl<VRINValueImpl>());
}

VRINValue::operator char const*() const {
  auto const* const impl = GetImpl<VRINValueImpl>();
  return impl != nullptr ? static_cast<char const*>(*impl) : nullptr;
}

VRINValue::operator wchar_t const*() const {
  auto const* const impl = GetImpl<VRINValueImpl>();
  return impl != nullptr ? static_cast<wchar_t const*>(*impl) : nullptr;
}
