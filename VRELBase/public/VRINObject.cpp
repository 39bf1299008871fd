#include "VRINObject.h"

VRINObject::VRINObject(char const* type) noexcept : typeName(type) {}

VRINObject::VRINObject(VRINObject const& other) noexcept : typeName(other.typeName), data(other.data) {
  Ref();
}

VRINObject& VRINObject::operator=(VRINObject const& other) {
  SetData(other.data);
  return *this;
}

VRINObject::~VRINObject() {
  Unref();
}

bool VRINObject::IsValid() const {
  return typeName != nullptr && data != nullptr;
}

void VRINObject::SetData(void* impl) {
  if (impl == data) return;
  Unref();
  data = impl;
  Ref();
}

long VRINObject::Ref() noexcept {
  return data != nullptr ? VRINObjectImpl::Cast(data)->Ref() : 0;
}

long VRINObject::Unref() {
  if (data == nullptr) return 0;
  VRINObjectImpl* const impl = VRINObjectImpl::Cast(data);
  long const count = impl->Unref();
  if (count > 0) return count;
  data = nullptr;
  delete impl;
  return count;
}
