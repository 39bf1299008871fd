// A counted object that knows its type by name: the root of the event classes.
#pragma once

#include "VRELReferenceCount.h"

class VREL_EXPORT VRELObject : public VRELReferenceCount {
 public:
  // Copies the name; a null or empty one is kept as null. The count starts at 0.
  explicit VRELObject(char const* typeName);

  // A copy has a name of its own, and count 0.
  VRELObject(VRELObject const& other);
  VRELObject& operator=(VRELObject const& other);

  ~VRELObject() override;

  // Whether `name` is this object's own type name, byte by byte. No class tree is walked: an object is not of the
  // kind of its base. False for null, and for an object without a name.
  virtual bool IsKindOf(char const* name);

  // The type name, owned by the object; null when there is none.
  char const* GetTypeName() const noexcept { return typeName; }

 private:
  char* typeName;
};
