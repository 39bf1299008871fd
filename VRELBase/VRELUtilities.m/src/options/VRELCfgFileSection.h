// One section of a configuration file, with its keys.
#pragma once

#include <memory>
#include <string_view>

#include "Gk_String.h"
#include "detail/VRELCfgFileIndex.h"
#include "VRELCfgFileKey.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"

// A name and keys in the order of the file. Two keys may have one name: a search finds the first, and GetKey gives
// both. Names differ by case, and null counts as the empty text. The keys belong to the section.
class VREL_EXPORT VRELCfgFileSection {
 public:
  // Without keys. The name is kept as bytes.
  explicit VRELCfgFileSection(char const* name);
  virtual ~VRELCfgFileSection();
  VRELCfgFileSection(VRELCfgFileSection const&) = delete;
  VRELCfgFileSection& operator=(VRELCfgFileSection const&) = delete;

  Gk_String const& GetSectionName() const noexcept { return name; }
  int GetNumKeys() const noexcept { return keys.size(); }
  // Null for an index out of range.
  VRELCfgFileKey* GetKey(int index) const;
  // The first key of that name; null where there is none.
  VRELCfgFileKey* findKey(char const* keyName) const;
  // Appends a new key, also where there is one of that name.
  VRELCfgFileKey* createKey(char const* keyName);
  // The same with memory for just so many values, at least 1.
  VRELCfgFileKey* createKey(char const* keyName, int expectedValues);

 private:
  VRELCfgFileKey* Append(std::unique_ptr<VRELCfgFileKey> key);

  Gk_String name;
  VRELDynamicArray<VRELCfgFileKey*> keys;
  mutable VRELCfgFileIndex<std::u16string_view, VRELCfgFileKey> index;
};
