// Base class of the events.
#pragma once

#include "VRELEventLevel.h"
#include "VRELObject.h"
#include "VRINResult.h"

class VRELOutputStream;
class VRELString;

// Event with a name, a level and optional time stamps. The sender creates it, usually as a local variable, sends it on
// the bus (VRELEventBus) and destroys it. A listener that needs the event later copies it. Listeners distinguish events
// by their names:
//
//   void HandleEvent(VRELEvent& event) override {
//     if (event.IsA("VRELErrorEvent")) ++errors;
//   }
//
// Ownership: the event owns a copy of its name; a copied event has its own. Events cannot be assigned.
// Compatibility: IsKindOf returns true for "VRELEvent" only, for the events of every class. Use IsA.
class VREL_EXPORT VRELEvent : public VRELObject {
 public:
  // Creates an event. A null or empty name is stored as null.
  VRELEvent(char const* name, VRELEventLevel level);
  VRELEvent(VRELEvent const& other);
  VRELEvent& operator=(VRELEvent const&) = delete;
  ~VRELEvent() override;

  // Writes the text of the event to `stream`. The base class writes nothing.
  virtual void GetFormattedDescription(VRELOutputStream* stream);

  // Returns true if the bus sets the time stamps of the event when it is sent. The base class returns false.
  virtual bool IsTimed();

  // Returns the event name, or null.
  // Ownership: the event.
  char const* GetEventName() const noexcept { return eventName; }

  // Replaces the event name by a copy of `name`. Does nothing for a null or empty string.
  void SetEventName(char const* name);

  // Returns true if `name` equals the event name, byte by byte; false if either is null.
  bool IsA(char const* name) const noexcept;

  VRELEventLevel GetLevel() const noexcept { return eventLevel; }

  // Returns the level of a keyword: ALL, DEBUG, TEST, VERBOSE, INFO, ERROR, ABORT or NONE, in capitals. Returns
  // `fallback` for any other string.
  //
  // Compatibility: there is no keyword for VREL_LEVEL_WARNING.
  static VRELEventLevel GetLevel(VRELString const& keyword, VRELEventLevel fallback);

  // Set the time stamps: processor ticks of clock(), and seconds of time(). Return VREL_S_OK.
  VRINResult SetClock(long const& ticks) noexcept;
  VRINResult SetTime(long const& seconds) noexcept;

  // Copy a time stamp out, 0 if it was not set.
  //
  // Errors: VREL_E_FAIL if neither stamp was set. The argument is written in this case too.
  VRINResult GetClock(long& ticks) const noexcept;
  VRINResult GetTime(long& seconds) const noexcept;

 private:
  VRINResult StampResult() const noexcept;

  char* eventName;
  VRELEventLevel eventLevel;
  bool stamped;
  long timeStamp;
  long clockStamp;
};
