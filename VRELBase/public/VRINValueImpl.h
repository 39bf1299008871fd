// Implementation object of VRINValue.
#pragma once

#include "VRELExport.h"
#include "VRELValue.h"
#include "VRINObjectImpl.h"
#include "VRINResult.h"

// Holds the VRELValue of a public value handle.
class VREL_EXPORT VRINValueImpl : public VRINObjectImpl {
 public:
  VRINValueImpl(VRELValue const& held);

  // Assigns the held value to `out`. Returns VREL_S_OK.
  VRINResult GetValue(VRELValue& out) const;
  // Returns the held value itself, valid as long as this object.
  VRELValue const& GetHeldValue() const noexcept { return value; }

  // Return the value as a string.
  // Ownership: the held value.
  operator char const*() const;
  operator wchar_t const*() const;

 private:
  VRELValue value;
};
