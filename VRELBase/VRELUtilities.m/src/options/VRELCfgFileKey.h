// Key of a configuration file.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"

// Name and values of one key line, in file order.
//
//   VRELCfgFileKey key("layers");
//   key.AppendValue("1");
//   key.AppendValue("2");
//   key.GetAllValues();  // "1,2"
//
// Strings are in the default codepage of the process; null is the empty string.
class VREL_EXPORT VRELCfgFileKey {
 public:
  // Creates a key without values.
  explicit VRELCfgFileKey(char const* name);
  // Creates a key without values, with memory for `expectedValues` of them.
  VRELCfgFileKey(char const* name, int expectedValues);
  virtual ~VRELCfgFileKey();
  VRELCfgFileKey(VRELCfgFileKey const&) = delete;
  VRELCfgFileKey& operator=(VRELCfgFileKey const&) = delete;

  VRELString const& GetName() const noexcept { return name; }
  int GetNumValues() const noexcept { return values.size(); }
  // Returns the value at an index, or the empty string for an index out of range.
  VRELString GetValue(int index) const;
  void AppendValue(char const* value);
  // Returns all values separated by commas, as in the file; the empty string if there are none.
  VRELString GetAllValues() const;

 private:
  VRELString name;
  VRELDynamicArray<VRELString> values;
};
