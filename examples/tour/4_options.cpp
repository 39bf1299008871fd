// Checks the parts against options.
#include <iostream>

#include "VRELDynamicArray.h"
#include "VRELOption.h"
#include "VRELOptions.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRELTypedHandle.h"
#include "VRELValue.h"
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
  options.AddOption(L"Bill.MinimumQuantity", 4);
  options.AddOption(L"Bill.Pitch", 1.25);
  std::cout << "order " << Setting(options, L"Order.MinimumQuantity", 0) << "\n";
  int const minimum = Setting(options, L"Bill.MinimumQuantity", 0);
  for (PartHandle const& part : parts) {
    if (part->quantity < minimum) std::cout << "only " << part->quantity << " of " << part->name << "\n";
  }

  // A value can be read as any type.
  VRELValue const pitch(Setting(options, L"Bill.Pitch", 0.0));
  VRELString text;
  int number = 0;
  pitch.GetValue(text);
  pitch.GetValue(number);
  std::cout << "as a string " << text << ", as an integer " << number << "\n";
}
