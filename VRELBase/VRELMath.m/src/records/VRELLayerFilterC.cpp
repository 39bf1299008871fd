#include "VRELLayerFilterC.h"

#include "VRELString.h"

VRELLayerFilterC::VRELLayerFilterC() : nameText(nullptr), currentFilter(false), filterType(eLayerFilterDefault) {}

VRELLayerFilterC::VRELLayerFilterC(int count, int const* layers, VRELString const& name, bool current,
                                   eLayerFilterType type)
    : VRELLayerFilterC() {
  Set(count, layers, name, current, type);
}

VRELLayerFilterC::VRELLayerFilterC(VRELLayerFilterC const& other) : VRELLayerFilterC() {
  init(other);
}

VRELLayerFilterC& VRELLayerFilterC::operator=(VRELLayerFilterC const& other) {
  if (this != &other) init(other);
  return *this;
}

VRELLayerFilterC::~VRELLayerFilterC() {
  ReplaceName(nullptr);
  currentFilter = false;
  filterType = eLayerFilterDefault;
}

VRINResult VRELLayerFilterC::Set(int count, int const* layers, VRELString const& name, bool current,
                                 eLayerFilterType type) {
  bool const some = count >= 1 && layers != nullptr;
  bool const none = count == 0 && layers == nullptr;
  if (!some && !none) return VREL_E_FAIL;
  layerNumbers.clear();
  layerNumbers.append(layers, count);
  ReplaceName(&name);
  currentFilter = current;
  filterType = type;
  return VREL_S_OK;
}

VRINResult VRELLayerFilterC::SetName(VRELString const& name) {
  if (name.length() <= 0) return VREL_E_FAIL;
  ReplaceName(&name);
  return VREL_S_OK;
}

VRINResult VRELLayerFilterC::GetName(VRELString& out) const {
  if (nameText == nullptr) return VREL_E_FAIL;
  out = *nameText;
  return VREL_S_OK;
}

VRINResult VRELLayerFilterC::GetNumLayers(int& out) const noexcept {
  out = layerNumbers.size();
  return VREL_S_OK;
}

VRINResult VRELLayerFilterC::GetLayerAt(int index, int& out) const noexcept {
  bool const inside = index >= 0 && index < layerNumbers.size();
  out = inside ? layerNumbers[index] : -1;
  return inside ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELLayerFilterC::SetCurrent(bool current) noexcept {
  currentFilter = current;
  return VREL_S_OK;
}

VRINResult VRELLayerFilterC::IsCurrent(bool& out) const noexcept {
  out = currentFilter;
  return VREL_S_OK;
}

VRINResult VRELLayerFilterC::SetLayerFilterType(eLayerFilterType type) noexcept {
  filterType = type;
  return VREL_S_OK;
}

VRINResult VRELLayerFilterC::GetLayerFilterType(eLayerFilterType& out) const noexcept {
  out = filterType;
  return VREL_S_OK;
}

VRINResult VRELLayerFilterC::IsALLLayerFilter(bool& out) const noexcept {
  out = filterType == eLayerFilterAll;
  return VREL_S_OK;
}

void VRELLayerFilterC::init(VRELLayerFilterC const& other) {
  currentFilter = other.currentFilter;
  filterType = other.filterType;
  ReplaceName(other.nameText);
  // A deep copy, because copies of an array share their storage and Set modifies it.
  layerNumbers = other.layerNumbers.copy();
}

// Replaces the name with a copy of `name`, or with none if it is null or empty.
void VRELLayerFilterC::ReplaceName(VRELString const* name) {
  VRELString* const newName = name != nullptr && name->length() > 0 ? new VRELString(*name) : nullptr;
  delete nameText;
  nameText = newName;
}
