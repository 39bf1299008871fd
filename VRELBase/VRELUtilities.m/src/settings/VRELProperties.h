// Named values with a text format.
#pragma once

#include <string>
#include <string_view>

#include "VRELExport.h"
#include "VRELHashMap.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRELValue.h"
#include "VRINResult.h"

class Gk_Source;
class VRELStreamFormatter;

// Map from strings to values. A pair can also be set from a string "key=value"; its value is then a string.
//
//   VRELProperties properties;
//   properties.Set(L"material=steel");
//   properties.Set(L"mass", 12.5);
//
// Compatibility: keys that differ in case only are usually two keys, but can be one: they are equal if they meet in one
// probe run of the hash map (see VRELHashTraits<VRELString>). When the map grows, one of two such keys can be lost, and
// is still counted.
//
// Errors: throws VRELAllocException.
// Thread safety: none. The const members move the cursor of the map.
class VREL_EXPORT VRELProperties : public VRELReferenceCount {
 public:
  VRELProperties();
  ~VRELProperties() override;

  // Reads the value of a key.
  // Errors: VREL_E_FAIL, with `value` unchanged, if there is no such key.
  virtual VRINResult Get(VRELString const& key, VRELValue& value) const;
  // Adds a pair, or replaces the value of the key.
  // Errors: VREL_E_FAIL if the map has just grown, and an equal key that differs in case is in the probe run.
  virtual VRINResult Set(VRELString const& key, VRELValue const& value);
  // Sets the part before the first "=" to the part after it, by the operation above. White space is kept, and the value
  // can be empty.
  // Errors: VREL_E_FAIL if there is no "=" or no key.
  virtual VRINResult Set(VRELString const& keyAndValue);
  // Returns the number of keys.
  virtual int GetCount() const;
  // Reads the pair at an index, in slot order of the map, which additions can change. The cost is linear in the index.
  // Errors: VREL_E_FAIL, with both arguments unchanged, for an index out of range.
  virtual VRINResult Get(int index, VRELString& key, VRELValue& value) const;

  // Set a value by the virtual Set. A char const* is read in the default codepage of the process, a std::string and a
  // std::string_view as UTF-8. Null is the empty string.
  VRINResult Set(VRELString const& key, bool value) { return Set(key, VRELValue(value)); }
  VRINResult Set(VRELString const& key, int value) { return Set(key, VRELValue(value)); }
  VRINResult Set(VRELString const& key, double value) { return Set(key, VRELValue(value)); }
  VRINResult Set(VRELString const& key, char const* value) { return Set(key, VRELValue(VRELString(value))); }
  VRINResult Set(VRELString const& key, wchar_t const* value) { return Set(key, VRELValue(VRELString(value))); }
  VRINResult Set(VRELString const& key, std::string const& value) { return Set(key, VRELValue(VRELString(value))); }
  VRINResult Set(VRELString const& key, std::string_view value) { return Set(key, std::string(value)); }
  // Other pointers would convert to bool.
  template <class T>
  VRINResult Set(VRELString const& key, T const* value) = delete;

 private:
  friend VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELProperties& properties);

  VRELHashMap<VRELString, VRELValue> values;
};

// Writes a line "key=value" for each key that is not empty, sorted by code points, with "." as the decimal mark. Keys
// and values are read by the virtual Get operations.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELProperties& properties);

// Reads lines "key=value" to the end of the source, in the default codepage of the process, and sets each pair by the
// virtual Set. The source then has line ends as its delimiters.
// Compatibility: a line with no "=" or more than one is ignored. Before the first line, the previous delimiters of the
// source are skipped, and line ends are not.
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, VRELProperties& properties);
