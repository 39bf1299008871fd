// Whoever wants to hear of events.
#pragma once

#include "VRELExport.h"

class VRELEvent;

// Derive, register with VRELEventBus::AddListener, and remove the listener from the bus before it dies: the bus keeps a
// plain pointer.
class VREL_EXPORT VRELEventListener {
 public:
  // Called for each event, on the thread of the sender and before its call returns. What it throws reaches the sender;
  // the listeners behind this one then do not see the event.
  virtual void HandleEvent(VRELEvent& event) = 0;
  virtual ~VRELEventListener();
};
