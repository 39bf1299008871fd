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
  VRELReferenceCount* const taken = other.instance;
  ReleaseBeside(taken);
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

// The object that dies may hold the only handle on `kept`, as the node of a list does on the next one.
void VRELReferenceHandle::ReleaseBeside(VRELReferenceCount* kept) {
  if (kept == nullptr) return Release();
  if (instance == nullptr || instance->LowerReference() != 0) return;
  kept->VRELReferenceCount::RaiseReference();
  delete instance;
  kept->VRELReferenceCount::LowerReference();
}
