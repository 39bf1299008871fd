// Option of the folder tree.
#pragma once

#include <string>
#include <string_view>

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELOption.h"

// VRELOption with the operations of the older, narrow interface.
//
//   Gk_Option* const option = Gk_OptionDoc::addOption(L"step/reader/unit", "mm");
//   char const* unit = option->string();
//
// Compatibility: setValue and getValue are about the name of the option, not its value.
class VREL_EXPORT Gk_Option : public VRELOption {
 public:
  // Creates an unset option with an empty name.
  Gk_Option();
  Gk_Option(Gk_Option& other);
  // Assigns as VRELOption does, and copies the cached strings.
  Gk_Option& operator=(Gk_Option const& other);

  // Sets the name.
  void setValue(Gk_String const& newName);
  // Returns the name, also of an unset option.
  // Compatibility: a name that was returned once is cached, and setValue does not change the cached one.
  Gk_String const& getValue();

  // Set the value (see VRELOption::SetValue). The remark is ignored.
  VRINResult set(VRELString value, char const* remark = nullptr);
  VRINResult set(bool value, char const* remark = nullptr);
  VRINResult set(double value, char const* remark = nullptr);
  VRINResult set(int value, char const* remark = nullptr);
  VRINResult set(char const* value, char const* remark = nullptr) { return set(VRELString(value), remark); }
  VRINResult set(wchar_t const* value, char const* remark = nullptr) { return set(VRELString(value), remark); }
  VRINResult set(std::string const& value, char const* remark = nullptr) { return set(VRELString(value), remark); }
  VRINResult set(std::string_view value, char const* remark = nullptr) { return set(std::string(value), remark); }
  // Other pointers would convert to bool.
  template <class T>
  VRINResult set(T const* value, char const* remark = nullptr) = delete;

  // Return the current value, converted as VRELOption does; 0, 0 and false if it cannot be converted.
  double value() const;
  int count() const;
  bool on() const;
  // Returns the current value in the default codepage of the process, or null if it cannot be converted. Valid until
  // the next call.
  char const* string();
  // Returns the current value, or the empty string if it cannot be converted.
  VRELString getVRELString() const;

  // Calls Gk_Nest::fetchOption with the path in the default codepage of the process.
  static Gk_Option* fetch(VRELString const& path, bool create);

 private:
  Gk_String nameCache;
  Gk_String textCache;
};
