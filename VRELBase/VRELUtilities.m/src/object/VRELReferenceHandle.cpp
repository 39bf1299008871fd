// In an assignment, the source handle can be a member of the object that the target releases, directly or through other
// objects. Both assignments therefore read the source before they release the old object. The copy assignment calls the
// virtual RaiseReference of the new object after the release of the old one; in between it keeps the new object alive
// by its plain count, which derived classes do not see.
#include "VRELReferenceHandle.h"

#include <functional>

VRELReferenceHandle::VRELReferenceHandle(VRELReferenceCount* object) : instance(object) {
  if (instance != nullptr) instance->RaiseReference();
}

VRELReferenceHandle::VRELReferenceHandle(VRELReferenceHandle const& other) : VRELReferenceHandle(other.instance) {}

VRELReferenceHandle::~VRELReferenceHandle() {
  Release(instance);
  instance = nullptr;
}

bool VRELReferenceHandle::IsValid() const {
  return instance != nullptr;
}

VRELReferenceHandle& VRELReferenceHandle::operator=(VRELReferenceHandle const& other) {
  if (*this == other) return *this;
  VRELReferenceCount* const next = other.instance;
  ReleaseBefore(next);
  instance = next;
  if (instance != nullptr) instance->RaiseReference();
  return *this;
}

VRELReferenceHandle& VRELReferenceHandle::operator=(VRELReferenceHandle&& other) noexcept {
  if (this == &other) return *this;
  VRELReferenceCount* const previous = std::exchange(instance, std::exchange(other.instance, nullptr));
  Release(previous);
  return *this;
}

bool VRELReferenceHandle::IsLastCall() const {
  return instance != nullptr && instance->IsLastCall();
}

bool VRELReferenceHandle::operator<(VRELReferenceHandle const& other) const noexcept {
  return std::less<VRELReferenceCount*>()(instance, other.instance);
}

void VRELReferenceHandle::Release(VRELReferenceCount* object) {
  if (object != nullptr && object->LowerReference() == 0) delete object;
}

// Releases the held object. Keeps `next` alive even if the released object holds the only handle on it.
void VRELReferenceHandle::ReleaseBefore(VRELReferenceCount* next) {
  if (next == nullptr) return Release(instance);
  if (instance == nullptr || instance->LowerReference() != 0) return;
  next->VRELReferenceCount::RaiseReference();
  delete instance;
  next->VRELReferenceCount::LowerReference();
}
