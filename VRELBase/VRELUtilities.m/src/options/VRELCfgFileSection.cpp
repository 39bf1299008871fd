#include "VRELCfgFileSection.h"

#include <utility>

VRELCfgFileSection::VRELCfgFileSection(char const* aName) : name(aName) {}

VRELCfgFileSection::~VRELCfgFileSection() {
  for (VRELCfgFileKey const* const key : keys) delete key;
}

VRELCfgFileKey* VRELCfgFileSection::GetKey(int place) const {
  return place >= 0 && place < keys.size() ? keys[place] : nullptr;
}

VRELCfgFileKey* VRELCfgFileSection::findKey(char const* keyName) const {
  VRELString const wanted(keyName);
  return index.Find(keys.begin(), keys.size(), wanted.view(),
                    [](VRELCfgFileKey const& key) { return key.GetName().view(); });
}

VRELCfgFileKey* VRELCfgFileSection::createKey(char const* keyName) {
  return Append(std::make_unique<VRELCfgFileKey>(keyName));
}

VRELCfgFileKey* VRELCfgFileSection::createKey(char const* keyName, int expectedValues) {
  return Append(std::make_unique<VRELCfgFileKey>(keyName, expectedValues));
}

VRELCfgFileKey* VRELCfgFileSection::Append(std::unique_ptr<VRELCfgFileKey> key) {
  keys.add(key.get());
  return key.release();
}
