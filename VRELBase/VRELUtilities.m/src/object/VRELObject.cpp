#include "VRELObject.h"

#include <cstring>

namespace {

char* CopyOf(char const* name) {
  if (name == nullptr || *name == '\0') return nullptr;
  std::size_t const size = std::strlen(name) + 1;
  return static_cast<char*>(std::memcpy(new char[size], name, size));
}

}  // namespace

VRELObject::VRELObject(char const* name) : typeName(CopyOf(name)) {}

VRELObject::VRELObject(VRELObject const& other) : VRELReferenceCount(other), typeName(CopyOf(other.typeName)) {}

VRELObject& VRELObject::operator=(VRELObject const& other) {
  VRELReferenceCount::operator=(other);
  if (this != &other) {
    char* const copy = CopyOf(other.typeName);
    delete[] typeName;
    typeName = copy;
  }
  return *this;
}

VRELObject::~VRELObject() {
  delete[] typeName;
  typeName = nullptr;
}

bool VRELObject::IsKindOf(char const* name) {
  return name != nullptr && typeName != nullptr && std::strcmp(name, typeName) == 0;
}
