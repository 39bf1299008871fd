// Start of a run of the product.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELOptions.h"
#include "VRELStartTaskEvent.h"
#include "VRELString.h"

// Start of a run of the product: the first lines of a log.
//
//   VRELStartProductEvent event("Brivet 1.0", "brivet");
//   event.AddOption("Input", "wheel.step");
//   VRELEventBus::Fire(event);
class VREL_EXPORT VRELStartProductEvent : public VRELStartTaskEvent {
 public:
  // Strings are in the default codepage of the process; null is an empty string.
  VRELStartProductEvent(char const* product, char const* application);
  // Copies the options too.
  VRELStartProductEvent(VRELStartProductEvent const& other);

  // Writes a line "name : value" for the product and for the application unless they are empty, and for each option.
  // If the environment variable VRELTrace contains "UserEnv", writes the properties of VRELEnvironment::GetEnv() too.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Adds an option to the event's own store.
  //
  // Compatibility: returns VREL_S_OK even if the store refuses the name.
  VRINResult AddOption(char const* name, char const* value);

 private:
  VRELString productName;
  VRELString applicationName;
  VRELOptions options;
  // Names and values of the calls of AddOption, alternating. A copy repeats the calls: a store cannot be copied, and
  // the same calls give the same order of enumeration.
  VRELDynamicArray<VRELString> addedOptions;
};
