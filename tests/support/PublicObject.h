// Looks behind a public handle.
#pragma once

#include <string>

#include "VRINNameImpl.h"
#include "VRINObject.h"
#include "VRINObjectImpl.h"

// The implementation of a handle as what it is; null for an invalid handle.
template <class Impl>
Impl* ImplOf(VRINObject const& object) {
  return static_cast<Impl*>(static_cast<VRINObjectImpl*>(object.GetData()));
}

// The name for diagnosis, "type[n]".
inline std::string DiagnosticName(VRINObject const& object) {
  return ImplOf<VRINObjectImpl>(object)->GetName().toUtf8();
}

inline std::string NameText(VRINObject const& name) {
  VRELString text;
  ImplOf<VRINNameImpl>(name)->GetName(text);
  return text.toUtf8();
}

// How many handles hold the implementation.
inline long UseCount(VRINObject& object) {
  object.Ref();
  return object.Unref();
}
