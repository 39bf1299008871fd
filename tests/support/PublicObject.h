// Access to the implementation object of a public handle.
#pragma once

#include <string>

#include "VRINNameImpl.h"
#include "VRINObject.h"
#include "VRINObjectImpl.h"

// Returns the implementation object of a handle, or null.
template <class Impl>
Impl* ImplOf(VRINObject const& object) {
  return static_cast<Impl*>(static_cast<VRINObjectImpl*>(object.GetData()));
}

// Returns the diagnostic name, "type[n]".
inline std::string DiagnosticName(VRINObject const& object) {
  return ImplOf<VRINObjectImpl>(object)->GetName().toUtf8();
}

inline std::string NameText(VRINObject const& name) {
  VRELString text;
  ImplOf<VRINNameImpl>(name)->GetName(text);
  return text.toUtf8();
}

// Returns the reference count of the implementation object.
inline long UseCount(VRINObject& object) {
  object.Ref();
  return object.Unref();
}
