// An option of the folder tree.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELOption.h"

// An option with the operations and the narrow text of the older layer. Its values obey the rules of VRELOption.
//
// What these operations call the value is the option's name: setValue and getValue set and get that, and this is
// promised.
class VREL_EXPORT Gk_Option : public VRELOption {
 public:
  // Unset, with an empty name.
  Gk_Option();
  Gk_Option(Gk_Option& other);
  // Assigns as VRELOption does; the texts that the other has given out are taken over.
  Gk_Option& operator=(Gk_Option const& other);

  // Sets the name, and gives it, for an unset option too. That getValue goes on to give a name that it has given before
  // is promised.
  void setValue(Gk_String const& newName);
  Gk_String const& getValue();

  // VRELOption::SetValue; the remark is promised to count for nothing.
  VRINResult set(VRELString value, char const* remark = nullptr);
  VRINResult set(bool value, char const* remark = nullptr);
  VRINResult set(double value, char const* remark = nullptr);
  VRINResult set(int value, char const* remark = nullptr);

  // The current value, converted as VRELOption does; 0, 0 and false where it cannot be read so.
  double value() const;
  int count() const;
  bool on() const;
  // In the process's default codepage, and good until the next call; null where it cannot be read.
  char const* string();
  // Empty where it cannot be read.
  VRELString getVRELString() const;

  // As Gk_Nest::fetchOption; the path in the process's default codepage.
  static Gk_Option* fetch(VRELString const& path, bool create);

 private:
  Gk_String nameCache;
  Gk_String textCache;
};
