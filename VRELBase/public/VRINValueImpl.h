// What stands behind the public values.
#pragma once

#include "VRELExport.h"
#include "VRELValue.h"
#include "VRINObjectImpl.h"
#include "VRINResult.h"

// Holds a value.
class VREL_EXPORT VRINValueImpl : public VRINObjectImpl {
 public:
  VRINValueImpl(VRELValue const& held);

  // Assigns the held value to the argument; always VREL_S_OK.
  VRINResult GetValue(VRELValue& out) const;
  // The held value itself, which lives as long as this object.
  VRELValue const& GetHeldValue() const noexcept { return value; }

  // The text forms of the held value, which owns them.
  operator char const*() const;
  operator wchar_t const*() const;

 private:
  VRELValue value;
};
