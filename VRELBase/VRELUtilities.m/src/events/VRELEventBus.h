// The one road on which events reach their listeners.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELEvent.h"
#include "VRELEventListener.h"
#include "VRELExport.h"

// Delivers at once, on the thread of the sender: when Send returns, every listener has seen the event. Nothing is
// queued, nothing is remembered, and nothing is filtered: each listener looks at the level itself. Without a listener
// events are dropped silently, errors included; the library registers none by itself.
//
//   VRELEventBus::GetEventBus()->AddListener(&listener);
//   VRELInfo::Printf("%d faces", count);
//   VRELEventBus::GetEventBus()->RemoveListener(&listener);
//
// Listeners are not owned. No locking.
class VREL_EXPORT VRELEventBus {
 public:
  VRELEventBus();
  VRELEventBus(VRELEventBus const&) = delete;
  VRELEventBus& operator=(VRELEventBus const&) = delete;
  // Leaves the listeners alone.
  ~VRELEventBus();

  // The bus of the process, alive from load to exit.
  static VRELEventBus* GetEventBus() noexcept { return &_eventBus; }

  // Puts the listener behind the others, unless it is there already. Null is ignored.
  void AddListener(VRELEventListener* listener);

  // The others keep their order. Null, and a listener that is not there, are ignored.
  void RemoveListener(VRELEventListener* listener);

  int GetListenerCount() const { return listeners.size(); }

  // Stamps a timed event with clock() and time(), then hands it to each listener in the order of registration.
  //
  // HandleEvent may change the list, which is walked by index up to the number of listeners at the start: one that is
  // added does not see the event in progress; when one is removed, those behind it move up, so that the one that takes
  // the place of the current listener misses this event.
  void Send(VRELEvent& event) {
    if (event.IsTimed()) Stamp(event);
    int const count = listeners.size();
    // A listener that shortens the list ends the walk early, hence the second bound.
    for (int i = 0; i < count && i < listeners.size(); ++i) listeners[i]->HandleEvent(event);
  }

  // Sends on the bus of the process.
  static void Fire(VRELEvent& event) { _eventBus.Send(event); }

  static VRELEventBus _eventBus;

 private:
  static void Stamp(VRELEvent& event);

  VRELDynamicArray<VRELEventListener*> listeners;
};
