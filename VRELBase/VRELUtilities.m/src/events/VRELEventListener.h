// Interface of event listeners.
#pragma once

#include "VRELExport.h"

class VRELEvent;

// Interface of event listeners. Derive from it and register the object on the bus:
//
//   class Counter : public VRELEventListener {
//    public:
//     void HandleEvent(VRELEvent& event) override { errors += event.IsA("VRELErrorEvent"); }
//     int errors = 0;
//   };
//
//   Counter counter;
//   VRELEventBus::GetEventBus()->AddListener(&counter);
//   ...
//   VRELEventBus::GetEventBus()->RemoveListener(&counter);
//
// Ownership: the bus stores a plain pointer. Remove the listener before it is destroyed.
class VREL_EXPORT VRELEventListener {
 public:
  // Handles an event, on the sender's thread. An exception propagates to the sender, and later listeners do not receive
  // the event.
  virtual void HandleEvent(VRELEvent& event) = 0;
  virtual ~VRELEventListener();
};
