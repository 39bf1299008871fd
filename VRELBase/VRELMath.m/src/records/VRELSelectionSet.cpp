#include "VRELSelectionSet.h"

VRELSelectionSet::VRELSelectionSet(VRELString const& name, bool current)
    : nameText(name), currentSet(current), members(17) {}

VRELSelectionSet::VRELSelectionSet(VRELSelectionSet const& other) : currentSet(false), members(0) {
  init(other);
}

VRELSelectionSet& VRELSelectionSet::operator=(VRELSelectionSet const& other) {
  if (this != &other) init(other);
  return *this;
}

VRELSelectionSet::~VRELSelectionSet() = default;

VRELString VRELSelectionSet::GetName() const {
  return nameText;
}

bool VRELSelectionSet::IsCurrent() const noexcept {
  return currentSet;
}

VRINResult VRELSelectionSet::AddMember(void* member) {
  if (member == nullptr) return VREL_E_FAIL;
  members.Add(member);
  return VREL_S_OK;
}

bool VRELSelectionSet::IsMember(void* member) const {
  return members.Get(member);
}

int VRELSelectionSet::SelectionSetLength() const noexcept {
  return members.Size();
}

bool VRELSelectionSet::GetMemberAtIndex(int index, void*& member) const {
  if (index >= members.Size()) return false;
  void* taken = nullptr;
  members.InitEnumeration();
  // Compatibility: a negative index returns the first member.
  members.GetNext(taken);
  for (int i = 0; i < index; ++i) members.GetNext(taken);
  if (taken == nullptr) return false;
  member = taken;
  return true;
}

void VRELSelectionSet::init(VRELSelectionSet const& other) {
  nameText = other.nameText;
  currentSet = other.currentSet;
  members = other.members.copy();
}
