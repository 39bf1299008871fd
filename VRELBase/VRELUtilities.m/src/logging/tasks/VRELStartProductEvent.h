// The product that translates comes up: the head of a log.
#pragma once

#include "VRELOptions.h"
#include "VRELStartTaskEvent.h"
#include "VRELString.h"

//   VRELStartProductEvent event("Brivet 1.0", "brivet");
//   event.AddOption("Input", "wheel.step");
//   VRELEventBus::Fire(event);
class VREL_EXPORT VRELStartProductEvent : public VRELStartTaskEvent {
 public:
  // Texts in the process's default codepage; null counts as empty.
  VRELStartProductEvent(char const* product, char const* application);

  // A line "name : value" for the product, for the application, both unless they are empty, and for each option. Where
  // the environment variable VRELTrace holds "UserEnv", the properties of VRELEnvironment::GetEnv() follow.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Adds an option that the event shows. Success is promised also where the store refuses the name.
  VRINResult AddOption(char const* name, char const* value);

 private:
  VRELString productName;
  VRELString applicationName;
  VRELOptions options;
};
