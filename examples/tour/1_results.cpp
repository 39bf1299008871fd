// Shares a part between two handles, and combines results.
#include <iostream>

#include "VRELReferenceCount.h"
#include "VRELTypedHandle.h"
#include "VRINResult.h"

// A part, shared by handles.
class Part : public VRELReferenceCount {
 public:
  Part(char const* partName, int partQuantity) : name(partName), quantity(partQuantity) {}

  char const* name;
  int quantity;
};

class PartHandle : public VRELTypedHandle<Part> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};

VRINResult Check(PartHandle const& part) {
  if (!part.IsValid()) return VREL_E_INVALID_OBJECT;
  return part->quantity > 0 ? VREL_S_OK : VREL_E_INVALID_ARGUMENT;
}

int main() {
  PartHandle const bolt(new Part("bolt", 8));
  PartHandle const same = bolt;
  std::cout << same->name << " has " << same->GetReferenceCount() << " handles\n";

  PartHandle const none;
  VRINResult total = VREL_S_OK;
  total &= Check(bolt);
  total &= Check(none);
  std::cout << total.GetMessage() << ", status " << total.GetReturnCode() << "\n";
}
