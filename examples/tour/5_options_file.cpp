// Reads the options from a file.
#include <iostream>

#include "VRELDynamicArray.h"
#include "VRELOption.h"
#include "VRELOptions.h"
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

// Returns the value of an option, or the fallback if there is none.
template <class T>
T Setting(VRELOptions const& options, VRELString const& name, T fallback) {
  VRELOption* option = nullptr;
  if (options.GetOption(name, option).IsSuccess()) option->GetValue(fallback);
  return fallback;
}

int main() {
  PartList parts;
  parts.add(PartHandle(new Part(L"bolt", 8)));
  parts.add(PartHandle(new Part(L"washer", 2)));

  VRELOptions options;
  options.AddOption(L"MinimumQuantity", 1);
  VRINResult const result = options.ReadFromFile(L"bill.cfg");
  if (result.IsFailure()) {
    std::cout << "bill.cfg: " << result.GetMessage() << "\n";
    return static_cast<int>(result.GetReturnCode());
  }
  std::cout << Setting(options, L"Bill.Title", VRELString()) << "\n";
  int const minimum = Setting(options, L"Bill.MinimumQuantity", 0);
  for (PartHandle const& part : parts) {
    if (part->quantity < minimum) std::cout << "only " << part->quantity << " of " << part->name << "\n";
  }
}
