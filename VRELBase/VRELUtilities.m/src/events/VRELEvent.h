// What travels on the event bus: everything that the library has to say.
#pragma once

#include "VRELEventLevel.h"
#include "VRELObject.h"
#include "VRINResult.h"

class VRELOutputStream;
class VRELString;

// An event is built by its sender, mostly on the stack, sent, and destroyed after every listener has seen it; a
// listener that wants to keep something copies it. The class of an event is told by its event name:
//
//   void HandleEvent(VRELEvent& event) override {
//     if (event.IsA("VRELErrorEvent")) ++errors;
//   }
//
// That IsKindOf knows the name "VRELEvent" alone, for the events of every class, is promised.
class VREL_EXPORT VRELEvent : public VRELObject {
 public:
  // Null or empty: without an event name.
  VRELEvent(char const* name, VRELEventLevel level);
  // A copy has a name of its own.
  VRELEvent(VRELEvent const& other);
  VRELEvent& operator=(VRELEvent const&) = delete;
  ~VRELEvent() override;

  // Writes the text of the event; the plain event has none.
  virtual void GetFormattedDescription(VRELOutputStream* stream);

  // Whether the bus stamps the event with the time at which it is sent.
  virtual bool IsTimed();

  // Owned by the event; null until a name was set.
  char const* GetEventName() const noexcept { return eventName; }

  // Keeps a copy. Null or empty changes nothing.
  void SetEventName(char const* name);

  // Whether this is the event name, byte by byte. False for null, and for an event without a name.
  bool IsA(char const* name) const noexcept;

  VRELEventLevel GetLevel() const noexcept { return eventLevel; }

  // The level that a keyword stands for: ALL, DEBUG, TEST, VERBOSE, INFO, ERROR, ABORT or NONE, in capitals. The
  // fallback for every other text; that warnings have no keyword is promised.
  static VRELEventLevel GetLevel(VRELString const& keyword, VRELEventLevel fallback);

  // Stamp the event. Clock: processor ticks, as clock() counts them; time: seconds, as time() counts them. Always
  // VREL_S_OK.
  VRINResult SetClock(long const& ticks) noexcept;
  VRINResult SetTime(long const& seconds) noexcept;

  // Give the stored value in every case, 0 where none was set; VREL_E_FAIL when the event was never stamped.
  VRINResult GetClock(long& ticks) const noexcept;
  VRINResult GetTime(long& seconds) const noexcept;

 private:
  VRINResult Stamped() const noexcept;

  char* eventName;
  VRELEventLevel eventLevel;
  bool stamped;
  long timeStamp;
  long clockStamp;
};
