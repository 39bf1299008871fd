// Base of the task events: the start or the end of a step of a translation.
#pragma once

#include <string>

#include "VRELEvent.h"

// Start or end of a task.
//
// A translation is a nesting of tasks. Each task begins with a start event and ends with an end event that carries the
// result. Loggers write the text of both; VRELTimingLogger measures the time between them and pairs them by the task
// identifier. The event bus stamps every task event with the time at which it is sent.
//
//   VRELStartReadFileTaskEvent::Fire("wheel.step");
//   VRINResult const result = Read(header);
//   VRELEndReadFileTaskEvent end(result, &header);
//   VRELEventBus::Fire(end);
//
// All task events can be copied; a copy owns its strings.
class VREL_EXPORT VRELTaskEvent : public VRELEvent {
 public:
  // `name` becomes the event name and the task name. Null and empty strings are stored as null.
  VRELTaskEvent(char const* name, char const* identifier, VRELEventLevel level);
  VRELTaskEvent(VRELTaskEvent const& other);
  ~VRELTaskEvent() override;

  // Returns true.
  bool IsTimed() override;

  // Stores the identifier that an end event shares with its start event.
  //
  // Errors: VREL_E_FAIL if the event has none; `identifier` is then unchanged.
  virtual VRINResult GetTaskIdentifier(VRELString& identifier);
  // Returns 0 for a start event and 1 for an end event.
  virtual int GetKind() = 0;

  // Store a copy of the string. Null and empty strings change nothing.
  void SetTaskIdentifier(char const* identifier);
  void SetTaskName(char const* name);

  // Returns the task name, which the event owns, or null.
  char const* GetTaskName() const noexcept { return taskName; }

 protected:
  // Writes `text` to the stream in a single call.
  static void WriteText(VRELOutputStream* stream, std::string const& text);

 private:
  char* taskIdentifier;
  char* taskName;
};
