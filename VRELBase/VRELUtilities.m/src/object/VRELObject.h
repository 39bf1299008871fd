// Reference-counted object with a type name; base of the event classes.
#pragma once

#include "VRELReferenceCount.h"

// Reference-counted object that stores the name of its type.
//
//   VRELObject object("VRELEvent");
//   object.IsKindOf("VRELEvent");  // true
//
// Ownership: the object owns a copy of the name; a copied object has its own.
// Compatibility: assignment sets the reference count of the left side to 0, as for every VRELReferenceCount. Do not
// assign to an object that handles hold: it is deleted by the first handle that releases it.
class VREL_EXPORT VRELObject : public VRELReferenceCount {
 public:
  // Copies the name. A null or empty name is stored as null. The reference count starts at 0.
  explicit VRELObject(char const* typeName);

  VRELObject(VRELObject const& other);
  VRELObject& operator=(VRELObject const& other);

  ~VRELObject() override;

  // Returns true if `name` equals the type name, byte by byte; false if either is null.
  //
  // Compatibility: compares this object's own type name only, not those of its base classes.
  virtual bool IsKindOf(char const* name);

  // Returns the type name, or null.
  // Ownership: the object.
  char const* GetTypeName() const noexcept { return typeName; }

 private:
  char* typeName;
};
