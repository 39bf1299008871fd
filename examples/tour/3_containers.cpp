// Lists parts, and counts them by name.
#include <iostream>

#include "VRELDynamicArray.h"
#include "VRELHashMap.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRELTypedHandle.h"
#include "VRINResult.h"

// A part, shared by handles.
class Part : public VRELReferenceCount {
 public:
  Part(VRELString const& partName, int partQuantity) : name(partName), quantity(partQuantity) {}

  VRELString name;
  int quantity;
};

class PartHandle : public VRELTypedHandle<Part> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};

using PartList = VRELDynamicArray<PartHandle>;

// Returns the total quantity for each name.
VRELHashMap<VRELString, int> Count(PartList const& parts) {
  VRELHashMap<VRELString, int> counts(17);
  for (PartHandle const& part : parts) {
    int before = 0;
    counts.Get(part->name, before);
    counts.Put(part->name, before + part->quantity);
  }
  return counts;
}

int main() {
  PartList parts;
  parts.add(PartHandle(new Part(L"bolt", 8)));
  parts.add(PartHandle(new Part(L"washer", 8)));

  PartList const shared = parts;
  PartList const own = parts.copy();
  parts.add(PartHandle(new Part(L"bolt", 4)));
  std::cout << "shared " << shared.size() << ", own " << own.size() << "\n";

  VRELHashMap<VRELString, int> const counts = Count(parts);
  int bolts = 0;
  if (counts.Get(L"bolt", bolts)) std::cout << "bolts " << bolts << "\n";
  std::cout << "names " << counts.Size() << "\n";
}
