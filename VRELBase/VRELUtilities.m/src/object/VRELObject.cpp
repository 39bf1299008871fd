#include "VRELObject.h"

#include <cstring>

#include "VRELTextCopy.h"

VRELObject::VRELObject(char const* name) : typeName(VRELTextCopy(name)) {}

VRELObject::VRELObject(VRELObject const& other) : VRELReferenceCount(other), typeName(VRELTextCopy(other.typeName)) {}

VRELObject& VRELObject::operator=(VRELObject const& other) {
  VRELReferenceCount::operator=(other);
  if (this != &other) {
    char* const copy = VRELTextCopy(other.typeName);
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
