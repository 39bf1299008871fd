#include "VRELValue.h"

#include "VRELStreamFormatter.h"
#include "VRELStringConversions.h"

char const* const VRELValue::VRELValueTypeNames[6] = {"unknown", "double", "int", "bool", "string", nullptr};

VRELValue::VRELValue() = default;

VRELValue::VRELValue(bool value) : type(BoolType) {
  number.asBool = value;
}

VRELValue::VRELValue(int value) : type(IntType) {
  number.asInt = value;
}

VRELValue::VRELValue(double value) : type(DoubleType) {
  number.asDouble = value;
}

VRELValue::VRELValue(VRELString const& value) : text(value), type(StringType) {}

VRELValue::VRELValue(char const* value) : text(value), type(StringType) {
  VRELStringToChars(text, narrowText);
}

VRELValue::VRELValue(VRELValue const& other) {
  *this = other;
}

VRELValue::~VRELValue() {
  VRELReleaseChars(narrowText);
  VRELReleaseWideChars(wideText);
}

VRELValue& VRELValue::operator=(VRELValue const& other) {
  type = other.type;
  narrowText = nullptr;
  wideText = nullptr;
  switch (type) {
    case DoubleType:
      other.GetValue(number.asDouble);
      break;
    case IntType:
      other.GetValue(number.asInt);
      break;
    case BoolType:
      other.GetValue(number.asBool);
      break;
    case StringType:
      other.GetValue(text);
      break;
    case UnknownType:
      break;
  }
  return *this;
}

VRINResult VRELValue::SetValue(double value) {
  number.asDouble = value;
  type = DoubleType;
  return VREL_S_OK;
}

VRINResult VRELValue::SetValue(bool value) {
  number.asBool = value;
  type = BoolType;
  return VREL_S_OK;
}

VRINResult VRELValue::SetValue(int value) {
  number.asInt = value;
  type = IntType;
  return VREL_S_OK;
}

VRINResult VRELValue::SetValue(VRELString const& value) {
  text = value;
  type = StringType;
  return VREL_S_OK;
}

VRINResult VRELValue::GetValueType(VRELValueType& valueType) const {
  valueType = type;
  return VREL_S_OK;
}

VRINResult VRELValue::GetValue(double& value) const {
  switch (type) {
    case DoubleType:
      value = number.asDouble;
      return VREL_S_OK;
    case IntType:
      value = number.asInt;
      return VREL_S_OK;
    case BoolType:
      value = number.asBool ? 1.0 : 0.0;
      return VREL_S_OK;
    case StringType: {
      bool truth = false;
      if (VRELStringToBool(text, truth).IsFailure()) return VRELStringToDouble(text, value);
      value = truth ? 1.0 : 0.0;
      return VREL_S_OK;
    }
    case UnknownType:
      break;
  }
  return VREL_E_INVALID_ARGUMENT;
}

VRINResult VRELValue::GetValue(bool& value) const {
  switch (type) {
    case DoubleType:
      value = number.asDouble != 0.0;
      return VREL_S_OK;
    case IntType:
      value = number.asInt != 0;
      return VREL_S_OK;
    case BoolType:
      value = number.asBool;
      return VREL_S_OK;
    case StringType: {
      if (VRELStringToBool(text, value) == VREL_S_OK) return VREL_S_OK;
      int integer = -1;
      VRINResult const result = VRELStringToInteger(text, integer);
      if (result.IsSuccess()) value = integer != 0;
      return result;
    }
    case UnknownType:
      break;
  }
  return VREL_E_INVALID_ARGUMENT;
}

VRINResult VRELValue::GetValue(int& value) const {
  switch (type) {
    case DoubleType:
      value = number.asDouble != 0.0 ? 1 : 0;
      return VREL_S_OK;
    case IntType:
      value = number.asInt;
      return VREL_S_OK;
    case BoolType:
      value = number.asBool ? 1 : 0;
      return VREL_S_OK;
    case StringType: {
      bool truth = false;
      if (VRELStringToBool(text, truth) != VREL_S_OK) return VRELStringToInteger(text, value);
      value = truth ? 1 : 0;
      return VREL_S_OK;
    }
    case UnknownType:
      break;
  }
  return VREL_E_INVALID_ARGUMENT;
}

VRINResult VRELValue::GetValue(VRELString& value) const {
  switch (type) {
    case DoubleType:
      value = VRELStringFromDouble(number.asDouble);
      return VREL_S_OK;
    case IntType:
      value = VRELStringFromInteger(number.asInt);
      return VREL_S_OK;
    case BoolType:
      value = VRELStringFromBool(number.asBool);
      return VREL_S_OK;
    case StringType:
      value = text;
      return VREL_S_OK;
    case UnknownType:
      break;
  }
  return VREL_E_INVALID_ARGUMENT;
}

VRELValue::operator char const*() const {
  VRELString form;
  if (narrowText == nullptr && GetValue(form).IsSuccess()) VRELStringToChars(form, narrowText);
  return narrowText;
}

VRELValue::operator wchar_t const*() const {
  VRELString form;
  if (wideText == nullptr && GetValue(form).IsSuccess()) VRELStringToWideChars(form, wideText);
  return wideText;
}

void VRELValue::Dump(VRELStreamFormatter& formatter) const {
  switch (type) {
    case DoubleType:
      formatter << number.asDouble;
      break;
    case IntType:
      formatter << number.asInt;
      break;
    case BoolType:
      formatter << (number.asBool ? 1 : 0);
      break;
    case StringType:
      formatter << text;
      break;
    case UnknownType:
      break;
  }
}

bool VRELValue::operator==(VRELValue const& other) const {
  if (type != other.type) return false;
  switch (type) {
    case DoubleType:
      return number.asDouble == other.number.asDouble;
    case IntType:
      return number.asInt == other.number.asInt;
    case BoolType:
      return number.asBool == other.number.asBool;
    case StringType:
      return text.equals(other.text);
    case UnknownType:
      break;
  }
  return false;
}

int VRELValue::GetHashCode() const {
  switch (type) {
    case DoubleType:
      return static_cast<int>(VRELHashTraits<double>::Hash(number.asDouble));
    case IntType:
      return GetHashCode(number.asInt);
    case BoolType:
      return GetHashCode(number.asBool ? 1 : 0);
    case StringType:
      return text.hashCode();
    case UnknownType:
      break;
  }
  return 0;
}

int VRELValue::GetHashCode(int key) {
  return static_cast<int>(VRELMixInteger(key));
}
