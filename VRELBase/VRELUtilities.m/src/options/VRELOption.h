// One named, typed setting.
#pragma once

#include "VRELExport.h"
#include "VRELOptionName.h"
#include "VRELString.h"
#include "VRELValue.h"
#include "VRINResult.h"

// A current value beside the default that the option was born with, a name, and a flag for what users are not shown.
//
//   VRELOption option(VRELOptionName::XStep_Import_Mode_Assem, true, false);
//   bool assemblies = false;
//   option.GetValue(assemblies, true);  // VREL and the name, as an environment variable, beats the current value
//
// The kind of the default is the option's type for good; its first value gives a type to an option that is unset. As
// long as it is unset, every read gives VREL_E_OPTION_UNSET and leaves its argument alone, but for GetValueType.
//
// A typed read converts as VRELValue does, and gives the result of that; the argument stays untouched on failure. A
// wide or narrow literal would be taken for a bool: wrap it in a VRELString.
//
// An option stays on one thread at a time.
class VREL_EXPORT VRELOption {
 public:
  // Unset; the name is empty, or the one given. It can be read once there is a value.
  VRELOption();
  VRELOption(VRELString name);
  // The value is both default and current value; one without a kind leaves the option unset.
  VRELOption(VRELOptionName const& name, VRELValue& value, bool isPrivate);
  VRELOption(VRELOptionName const& name, VRELString& value, bool isPrivate);
  VRELOption(VRELOptionName const& name, bool value, bool isPrivate);
  VRELOption(VRELOptionName const& name, double value, bool isPrivate);
  VRELOption(VRELOptionName const& name, int value, bool isPrivate);
  // The same for constants, which would otherwise be taken for a bool.
  VRELOption(VRELOptionName const& name, VRELValue const& value, bool isPrivate);
  VRELOption(VRELOptionName const& name, VRELString const& value, bool isPrivate);
  VRELOption(VRELOption const& other);
  ~VRELOption();

  // Takes current value, name and flag. That the default stays unless this option is unset is promised: an option keeps
  // its type, and may then hold a current value of another kind.
  VRELOption& operator=(VRELOption const& other);

  // The kind of the default; UnknownType when unset.
  VRINResult GetValueType(VRELValue::VRELValueType& valueType) const;
  VRINResult GetName(VRELString& text) const;
  VRINResult IsPrivate(bool& flag) const;
  // Always VREL_S_OK.
  VRINResult ChangeName(VRELString const& newName);

  VRINResult GetDefaultValue(VRELValue& value) const;
  VRINResult GetDefaultValue(VRELString& value) const;
  VRINResult GetDefaultValue(bool& value) const;
  VRINResult GetDefaultValue(double& value) const;
  VRINResult GetDefaultValue(int& value) const;

  // The current value.
  VRINResult GetValue(VRELValue& value) const;
  VRINResult GetValue(VRELString& value) const;
  VRINResult GetValue(bool& value) const;
  VRINResult GetValue(double& value) const;
  VRINResult GetValue(int& value) const;

  // With the flag, the environment variable that formEnvVarName makes of the option's name comes first, also when the
  // option is unset, and each value found there is told on the channel VRELWarning. A text that is no number counts as
  // absent for a number; one that is no boolean reads as false.
  VRINResult GetValue(VRELString& value, bool fromEnvironment) const;
  VRINResult GetValue(bool& value, bool fromEnvironment) const;
  VRINResult GetValue(double& value, bool fromEnvironment) const;
  VRINResult GetValue(int& value, bool fromEnvironment) const;

  // Take a value of the option's own kind as the current value, an integer also for a bool option: whether it is not 0.
  // In an unset option it becomes the default too, and sets the type. Everything else is refused: VREL_E_ERROR, nothing
  // changes, and it is told on the channel VRELError. That a refused int is told on the channel VRELWarning instead is
  // promised. A value without a kind succeeds where the option is unset, and leaves it so.
  VRINResult SetValue(VRELValue const& value);
  VRINResult SetValue(VRELString const& value);
  VRINResult SetValue(bool value);
  VRINResult SetValue(double value);
  VRINResult SetValue(int value);

 protected:
  // The name, of an unset option too.
  VRELString const& Name() const noexcept { return name; }

 private:
  VRELValue::VRELValueType Kind() const;
  template <class T>
  VRINResult ReadDefault(T& value) const;
  template <class T>
  VRINResult Read(T& value, VRELValue::VRELValueType kind) const;
  bool MayHold(VRELValue::VRELValueType kind) const { return !defaultValue.IsValid() || kind == Kind(); }
  template <class T>
  VRINResult Store(T const& value);
  void TellMismatch(VRELValue::VRELValueType kind) const;

  VRELValue defaultValue;
  VRELValue currentValue;
  VRELString name;
  bool isPrivateOption = false;
};

// The environment variable that can override an option: "VREL" and the name as it is.
VREL_EXPORT VRELString formEnvVarName(VRELString const& name);
