// Reports invalid parts as events, and writes a log.
#include <iostream>

#include "VRELDynamicArray.h"
#include "VRELErrorEvent.h"
#include "VRELEvent.h"
#include "VRELEventBus.h"
#include "VRELEventListener.h"
#include "VRELFilePath.h"
#include "VRELLogFileWrapper.h"
#include "VRELOption.h"
#include "VRELOptions.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELTypedHandle.h"
#include "VRELWarning.h"
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

// Reports a failure as an event and returns its code.
VRINResult Check(PartHandle const& part, int minimum) {
  if (part->quantity < 1) {
    VRELError error(VREL_E_INVALID_ARGUMENT, part->name + L" has no quantity");
    return VRELErrorEvent::Fire(error, __FILE__, __LINE__);
  }
  if (part->quantity < minimum) {
    VRELStringAsciiCharUtil const name(part->name, true);
    VRELWarning::Printf("only %d of %s", part->quantity, static_cast<char const*>(name));
    return VREL_S_PARTIAL;
  }
  return VREL_S_OK;
}

// Counts warnings and errors.
class ProblemCounter : public VRELEventListener {
 public:
  void HandleEvent(VRELEvent& event) override {
    if (event.IsA("VRELErrorEvent")) ++errors;
    if (event.IsA("VRELWarningEvent")) ++warnings;
  }

  int errors = 0;
  int warnings = 0;
};

int main() {
  VRELLogFileWrapper const log(VRELFilePath("bill.log"));
  ProblemCounter problems;
  VRELEventBus::GetEventBus()->AddListener(&problems);

  PartList parts;
  parts.add(PartHandle(new Part(L"bolt", 8)));
  parts.add(PartHandle(new Part(L"washer", 2)));
  parts.add(PartHandle(new Part(L"nut", 0)));
  VRELOptions options;
  options.ReadFromFile(L"bill.cfg");
  int const minimum = Setting(options, L"Bill.MinimumQuantity", 0);
  VRINResult total = VREL_S_OK;
  for (PartHandle const& part : parts) total &= Check(part, minimum);

  VRELEventBus::GetEventBus()->RemoveListener(&problems);
  std::cout << problems.warnings << " warnings, " << problems.errors << " errors: " << total.GetMessage() << "\n";
}
