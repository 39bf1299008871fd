// Event bus of the process.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELEvent.h"
#include "VRELEventListener.h"
#include "VRELExport.h"

// Dispatches events to registered listeners, synchronously and in registration order. Send returns after every listener
// has handled the event. Events are neither queued nor stored nor filtered by level; a listener filters by itself.
// Without a listener, events are dropped, including errors. The library registers no listener by itself.
//
//   VRELEventBus::GetEventBus()->AddListener(&listener);
//   VRELInfo::Printf("%d faces", count);
//   VRELEventBus::GetEventBus()->RemoveListener(&listener);
//
// Ownership: listeners are not owned. Remove a listener before it is destroyed.
// Thread safety: none. All threads of a process share one bus.
class VREL_EXPORT VRELEventBus {
 public:
  VRELEventBus();
  VRELEventBus(VRELEventBus const&) = delete;
  VRELEventBus& operator=(VRELEventBus const&) = delete;
  // Does not call the listeners.
  ~VRELEventBus();

  // Returns the bus of the process. It exists from library load to process exit.
  static VRELEventBus* GetEventBus() noexcept { return &_eventBus; }

  // Appends a listener unless it is registered. Ignores null.
  void AddListener(VRELEventListener* listener);

  // Removes a listener. The others keep their order. Ignores null and a listener that is not registered.
  void RemoveListener(VRELEventListener* listener);

  int GetListenerCount() const { return listeners.size(); }

  // Sets the time stamps of a timed event, then calls HandleEvent of each listener in registration order. An exception
  // of a listener ends the dispatch and propagates to the sender.
  //
  // HandleEvent can change the list, which is iterated by index up to its size at the start. A listener that is added
  // does not receive the event in progress. When a listener is removed, the later ones move up by one; if it is the
  // current one or an earlier one, the next listener does not receive the event.
  void Send(VRELEvent& event) {
    if (event.IsTimed()) Stamp(event);
    int const count = listeners.size();
    // The second bound: a listener can remove entries.
    for (int i = 0; i < count && i < listeners.size(); ++i) listeners[i]->HandleEvent(event);
  }

  // Sends an event on the bus of the process.
  static void Fire(VRELEvent& event) { _eventBus.Send(event); }

  static VRELEventBus _eventBus;

 private:
  static void Stamp(VRELEvent& event);

  VRELDynamicArray<VRELEventListener*> listeners;
};
