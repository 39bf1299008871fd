// One key of a configuration file, with its values.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"

// A name and a list of values in the order of the file. Text comes in the process's default codepage; null counts as
// the empty text.
class VREL_EXPORT VRELCfgFileKey {
 public:
  // Without values.
  explicit VRELCfgFileKey(char const* name);
  // The same with memory for just so many values, at least 1. More can still come.
  VRELCfgFileKey(char const* name, int expectedValues);
  virtual ~VRELCfgFileKey();
  VRELCfgFileKey(VRELCfgFileKey const&) = delete;
  VRELCfgFileKey& operator=(VRELCfgFileKey const&) = delete;

  VRELString const& GetName() const noexcept { return name; }
  int GetNumValues() const noexcept { return values.size(); }
  // Empty for an index out of range.
  VRELString GetValue(int index) const;
  void AppendValue(char const* value);
  // All values with a comma between them: the text of the file. Empty without values.
  VRELString GetAllValues() const;

 private:
  VRELString name;
  VRELDynamicArray<VRELString> values;
};
