// Named values with a text form.
#pragma once

#include "VRELExport.h"
#include "VRELHashMap.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRELValue.h"
#include "VRINResult.h"

class Gk_Source;
class VRELStreamFormatter;

// A map of texts to values. A pair can be set from the text "key=value", and then its value is of kind text.
//
//   VRELProperties properties;
//   properties.Set(L"material=steel");
//   properties.Set(L"mass", VRELValue(12.5));
//
// Two spellings of one key that differ only in case are usually two keys: see VRELHashTraits<VRELString>. No locking;
// even the constant operations move the map's cursor. Throws VRELAllocException.
class VREL_EXPORT VRELProperties : public VRELReferenceCount {
 public:
  VRELProperties();
  ~VRELProperties() override;

  // VREL_E_FAIL, with `value` untouched, where there is no such key.
  virtual VRINResult Get(VRELString const& key, VRELValue& value) const;
  // Adds the pair, or replaces the key's value.
  virtual VRINResult Set(VRELString const& key, VRELValue const& value);
  // Sets, by the operation above, what stands in front of the first "=" to the text behind it; white space counts, and
  // the value may be empty. VREL_E_FAIL for a text without "=", or with nothing in front of it.
  virtual VRINResult Set(VRELString const& keyAndValue);
  // The number of keys.
  virtual int GetCount() const;
  // The pair at an index, in the order of the map's slots, which a new key may change. Walks there from the front.
  // VREL_E_FAIL, with both targets untouched, for an index outside 0 to count - 1.
  virtual VRINResult Get(int index, VRELString& key, VRELValue& value) const;

 private:
  VRELHashMap<VRELString, VRELValue> values;
};

// Writes a line "key=value" for each key that is not empty, sorted by code points, the numbers with "." as the decimal
// mark. The keys and their values come from the virtual Get of either kind.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELProperties& properties);

// Reads lines "key=value" to the end of the source, and sets each pair, with a value of kind text, by the virtual Set.
// Lines are in the process's default codepage. It is promised that a line without "=", or with more than one, is
// dropped without a word, that in front of the first line the delimiters of before are skipped and not the ends of
// lines, and that the source then keeps these as its delimiters.
VREL_EXPORT Gk_Source& operator>>(Gk_Source& source, VRELProperties& properties);
