#include "VRELReferenceCount.h"

VRELReferenceCount::~VRELReferenceCount() = default;

unsigned int VRELReferenceCount::RaiseReference() {
  return ++count;
}

unsigned int VRELReferenceCount::LowerReference() {
  if (count > 0) --count;
  return count;
}

char const* VRELReferenceCount::GetName() {
  return nullptr;
}
