// Named, typed setting.
#pragma once

#include <string>
#include <string_view>

#include "VRELExport.h"
#include "VRELOptionName.h"
#include "VRELString.h"
#include "VRELValue.h"
#include "VRINResult.h"

// Option: a name, a default value, a current value, and a flag for options that are not shown to users.
//
//   VRELOption option(VRELOptionName::AuthorName, "drawing office", false);
//   option.SetValue("design office");
//   VRELString author;
//   option.GetValue(author, true);  // the environment variable VRELAuthorName, if set, else "design office"
//
// The kind of the default value is the type of the option. An option without a default is unset: the first value that
// is set becomes its default too. While it is unset, every read returns VREL_E_OPTION_UNSET and leaves its argument
// unchanged, except GetValueType.
//
// A typed read converts as VRELValue does and returns the result of the conversion; on failure the argument is
// unchanged.
//
// Thread safety: an option is used by one thread at a time.
class VREL_EXPORT VRELOption {
 public:
  // Creates an unset option. The name can be read once a value is set.
  VRELOption();
  VRELOption(VRELString name);
  // Create an option with a default value, which is also the current value. A value of unknown kind leaves it unset.
  VRELOption(VRELOptionName const& name, VRELValue& value, bool isPrivate);
  VRELOption(VRELOptionName const& name, VRELString& value, bool isPrivate);
  VRELOption(VRELOptionName const& name, bool value, bool isPrivate);
  VRELOption(VRELOptionName const& name, double value, bool isPrivate);
  VRELOption(VRELOptionName const& name, int value, bool isPrivate);
  VRELOption(VRELOptionName const& name, VRELValue const& value, bool isPrivate);
  VRELOption(VRELOptionName const& name, VRELString const& value, bool isPrivate);
  // Take a string: a C string in the default codepage of the process, a wide string, or UTF-8. Null is the empty
  // string.
  VRELOption(VRELOptionName const& aName, char const* value, bool isPrivate)
      : VRELOption(aName, static_cast<VRELString const&>(VRELString(value)), isPrivate) {}
  VRELOption(VRELOptionName const& aName, wchar_t const* value, bool isPrivate)
      : VRELOption(aName, static_cast<VRELString const&>(VRELString(value)), isPrivate) {}
  VRELOption(VRELOptionName const& aName, std::string const& value, bool isPrivate)
      : VRELOption(aName, static_cast<VRELString const&>(VRELString(value)), isPrivate) {}
  VRELOption(VRELOptionName const& aName, std::string_view value, bool isPrivate)
      : VRELOption(aName, std::string(value), isPrivate) {}
  // Other pointers would convert to bool.
  template <class T>
  VRELOption(VRELOptionName const& aName, T const* value, bool isPrivate) = delete;
  VRELOption(VRELOption const& other);
  ~VRELOption();

  // Copies current value, name and flag.
  // Compatibility: the default value is copied only if this option is unset. The option keeps its type, and can then
  // have a current value of another kind.
  VRELOption& operator=(VRELOption const& other);

  // Returns the kind of the default value; UnknownType, with VREL_E_OPTION_UNSET, if unset.
  VRINResult GetValueType(VRELValue::VRELValueType& valueType) const;
  VRINResult GetName(VRELString& text) const;
  VRINResult IsPrivate(bool& flag) const;
  // Sets the name, also of an unset option. Always returns VREL_S_OK.
  VRINResult ChangeName(VRELString const& newName);

  // Read the default value.
  VRINResult GetDefaultValue(VRELValue& value) const;
  VRINResult GetDefaultValue(VRELString& value) const;
  VRINResult GetDefaultValue(bool& value) const;
  VRINResult GetDefaultValue(double& value) const;
  VRINResult GetDefaultValue(int& value) const;

  // Read the current value.
  VRINResult GetValue(VRELValue& value) const;
  VRINResult GetValue(VRELString& value) const;
  VRINResult GetValue(bool& value) const;
  VRINResult GetValue(double& value) const;
  VRINResult GetValue(int& value) const;

  // Read the environment variable formEnvVarName(name) if `fromEnvironment` is true and the variable is set, also for
  // an unset option; else the current value. Each value from the environment is reported on the channel VRELWarning.
  // For a number, a string that is not a number counts as not set; for a bool, a string that is not a boolean is false.
  //
  // A name with dots is no identifier of a shell, so that "export" refuses it; start the program by env:
  //   env 'VRELStep.ConvertAttributes=Off' program
  VRINResult GetValue(VRELString& value, bool fromEnvironment) const;
  VRINResult GetValue(bool& value, bool fromEnvironment) const;
  VRINResult GetValue(double& value, bool fromEnvironment) const;
  VRINResult GetValue(int& value, bool fromEnvironment) const;

  // Set the current value; of an unset option also the default value, and so its type. An integer sets a bool option to
  // whether it is not 0. A value of unknown kind succeeds for an unset option, and leaves it unset.
  // Errors: VREL_E_ERROR, with nothing changed, for a value of another kind. Reported on the channel VRELError.
  // Compatibility: an int of the wrong kind is reported on the channel VRELWarning.
  VRINResult SetValue(VRELValue const& value);
  VRINResult SetValue(VRELString const& value);
  VRINResult SetValue(bool value);
  VRINResult SetValue(double value);
  VRINResult SetValue(int value);
  // Take a string: a C string in the default codepage of the process, a wide string, or UTF-8. Null is the empty
  // string.
  VRINResult SetValue(char const* value) { return SetValue(VRELString(value)); }
  VRINResult SetValue(wchar_t const* value) { return SetValue(VRELString(value)); }
  VRINResult SetValue(std::string const& value) { return SetValue(VRELString(value)); }
  VRINResult SetValue(std::string_view value) { return SetValue(std::string(value)); }
  // Other pointers would convert to bool.
  template <class T>
  VRINResult SetValue(T const* value) = delete;

 protected:
  // Returns the name, also of an unset option.
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
  void ReportMismatch(VRELValue::VRELValueType kind) const;

  VRELValue defaultValue;
  VRELValue currentValue;
  VRELString name;
  bool isPrivateOption = false;
};

// Returns the name of the environment variable that overrides an option: "VREL" followed by the name, unchanged.
VREL_EXPORT VRELString formEnvVarName(VRELString const& name);
