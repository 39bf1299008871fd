#include "VRELReferenceHandle.h"

#include <functional>

VRELReferenceHandle::VRELReferenceHandle(VRELReferenceCount* object) : instance(object) {
  if (instance != nullptr) instance->RaiseReference();
}

VRELReferenceHandle::VRELReferenceHandle(VRELReferenceHandle const& other) : VRELReferenceHandle(other.instance) {}

VRELReferenceHandle::~VRELReferenceHandle() {
  Release();
  instance = nullptr;
}

bool VRELReferenceHandle::IsValid() const {
  return instance != nullptr;
}

VRELReferenceHandle& VRELReferenceHandle::operator=(VRELReferenceHandle const& other) {
  if (*this == other) return *this;
  // The other handle may stand inside the object that goes now.
  VRELReferenceCount* const taken = other.instance;
  Release();
  instance = taken;
  if (instance != nullptr) instance->RaiseReference();
  return *this;
}

bool VRELReferenceHandle::IsLastCall() const {
  return instance != nullptr && instance->IsLastCall();
}

bool VRELReferenceHandle::operator<(VRELReferenceHandle const& other) const noexcept {
  return std::less<VRELReferenceCount*>()(instance, other.instance);
}

void VRELReferenceHandle::Release() {
  if (instance != nullptr && instance->LowerReference() == 0) delete instance;
}
