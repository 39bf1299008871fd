#include "VRELProperties.h"

#include <algorithm>
#include <typeinfo>
#include <utility>
#include <vector>

#include "Gk_Source.h"
#include "VRELEnvironment.h"
#include "VRELLocalNumericLocaleOverride.h"
#include "VRELPair.h"
#include "VRELStreamFormatter.h"
#include "VRELStringTokenizer.h"

namespace {

// Adds all keys that are not empty, in the order of the virtual Get(int, ...), whose cost is linear in the index.
void AddKeysByIndex(VRELProperties const& properties, std::vector<VRELString>& keys) {
  for (int i = 0, count = properties.GetCount(); i < count; ++i) {
    VRELString key;
    VRELValue value;
    if (properties.Get(i, key, value) == VREL_S_OK && key.length() > 0) keys.push_back(std::move(key));
  }
}

// Returns whether the object has the Get operations of VRELProperties.
bool HasPlainGet(VRELProperties const& properties) {
  return typeid(properties) == typeid(VRELProperties) || typeid(properties) == typeid(VRELEnvironment);
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
  for (int skipped = 0; skipped < index; ++skipped) {
    if (!values.SkipNext()) return VREL_E_FAIL;
  }
  VRELPair<VRELString, VRELValue> pair;
  if (!values.GetNext(pair)) return VREL_E_FAIL;
  key = std::move(pair.key);
  value = pair.value;
  return VREL_S_OK;
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELProperties& properties) {
  std::vector<VRELString> keys;
  if (HasPlainGet(properties)) {
    // One pass over the map, so that the time is not quadratic.
    properties.values.InitEnumeration();
    VRELPair<VRELString, VRELValue> pair;
    while (properties.values.GetNext(pair)) {
      if (pair.key.length() > 0) keys.push_back(std::move(pair.key));
    }
  } else {
    AddKeysByIndex(properties, keys);
  }
  std::sort(keys.begin(), keys.end());
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
    // The stream reported bytes that it cannot deliver.
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
