#include "VRELProperties.h"

#include <utility>

#include "Gk_Source.h"
#include "VRELArraySort.h"
#include "VRELDynamicArray.h"
#include "VRELLocalNumericLocaleOverride.h"
#include "VRELPair.h"
#include "VRELStreamFormatter.h"
#include "VRELStringTokenizer.h"

namespace {

VRELDynamicArray<VRELString> SortedKeys(VRELProperties const& properties) {
  VRELDynamicArray<VRELString> keys;
  for (int i = 0, count = properties.GetCount(); i < count; ++i) {
    VRELString key;
    VRELValue value;
    if (properties.Get(i, key, value) == VREL_S_OK && key.length() > 0) keys.add(key);
  }
  qsort<VRELString>(keys, 0, -1);
  return keys;
}

}  // namespace

VRELProperties::VRELProperties() : values(17) {}

VRELProperties::~VRELProperties() = default;

VRINResult VRELProperties::Get(VRELString const& key, VRELValue& value) const {
  return values.Get(key, value) ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELProperties::Set(VRELString const& key, VRELValue const& value) {
  return values.Put(key, value) ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELProperties::Set(VRELString const& keyAndValue) {
  int const mark = keyAndValue.indexOf(u'=');
  if (mark <= 0) return VREL_E_FAIL;
  return Set(keyAndValue.substring(0, mark), VRELValue(keyAndValue.substring(mark + 1)));
}

int VRELProperties::GetCount() const {
  return values.Size();
}

VRINResult VRELProperties::Get(int index, VRELString& key, VRELValue& value) const {
  if (index < 0) return VREL_E_FAIL;
  values.InitEnumeration();
  for (int passed = 0; passed < index; ++passed) {
    if (!values.SkipNext()) return VREL_E_FAIL;
  }
  VRELPair<VRELString, VRELValue> pair;
  if (!values.GetNext(pair)) return VREL_E_FAIL;
  key = std::move(pair.key);
  value = pair.value;
  return VREL_S_OK;
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELProperties& properties) {
  VRELDynamicArray<VRELString> const keys = SortedKeys(properties);
  VRELLocalNumericLocaleOverride const neutral;
  for (VRELString const& key : keys) {
    VRELValue value;
    properties.Get(key, value);
    formatter << key << '=' << value << formatter.endline();
  }
  return formatter;
}

Gk_Source& operator>>(Gk_Source& source, VRELProperties& properties) {
  while (!source.isEmpty()) {
    source.setWhiteSpace("\r\n");
    Gk_String const line = source.nextLine();
    // A stream that has none of the bytes that it tells of.
    if (line.len() == 0) break;
    VRELStringTokenizer const parts(line.begin(), L'=');
    if (parts.GetTokenCount() != 2) continue;
    VRELString key;
    VRELString value;
    parts.GetToken(0, key);
    parts.GetToken(1, value);
    properties.Set(key, VRELValue(value));
  }
  return source;
}
