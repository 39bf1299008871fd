// Section of a configuration file.
#pragma once

#include <memory>
#include <string_view>

#include "Gk_String.h"
#include "VRELCfgFileKey.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "detail/VRELCfgFileIndex.h"

// Name and keys of one section, in file order. Keys with equal names are all kept: findKey returns the first, and
// GetKey returns each. Names are case-sensitive; null is the empty string.
//
//   for (int i = 0; i < section->GetNumKeys(); ++i) use(section->GetKey(i)->GetName());
//
// Ownership: the section owns its keys.
class VREL_EXPORT VRELCfgFileSection {
 public:
  // Creates a section without keys.
  explicit VRELCfgFileSection(char const* name);
  virtual ~VRELCfgFileSection();
  VRELCfgFileSection(VRELCfgFileSection const&) = delete;
  VRELCfgFileSection& operator=(VRELCfgFileSection const&) = delete;

  Gk_String const& GetSectionName() const noexcept { return name; }
  int GetNumKeys() const noexcept { return keys.size(); }
  // Returns the key at an index, or null for an index out of range.
  VRELCfgFileKey* GetKey(int index) const;
  // Returns the first key of that name, or null.
  VRELCfgFileKey* findKey(char const* keyName) const;
  // Appends a new key, also if there is one of that name.
  VRELCfgFileKey* createKey(char const* keyName);
  // Appends a new key with memory for `expectedValues` values.
  VRELCfgFileKey* createKey(char const* keyName, int expectedValues);

 private:
  VRELCfgFileKey* Append(std::unique_ptr<VRELCfgFileKey> key);

  Gk_String name;
  VRELDynamicArray<VRELCfgFileKey*> keys;
  mutable VRELCfgFileIndex<std::u16string_view, VRELCfgFileKey> index;
};
