#include "VRELProperties.h"

#include "VRELPair.h"

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
  key = pair.key;
  value = pair.value;
  return VREL_S_OK;
}
