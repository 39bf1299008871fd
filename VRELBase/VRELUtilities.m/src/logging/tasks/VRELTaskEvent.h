// A step of a translation begins or ends.
#pragma once

#include <string>

#include "VRELEvent.h"

// A translation is told as a nesting of tasks: each opens with a start event and closes with an end event that carries
// the result. A logger writes their texts, which make the body of a log; VRELTimingLogger measures the time between the
// two, which it matches by the task identifier. The bus stamps every task event with the time at which it is sent.
class VREL_EXPORT VRELTaskEvent : public VRELEvent {
 public:
  // Null and empty texts are kept as null. The name is that of the event and that of the task.
  VRELTaskEvent(char const* name, char const* identifier, VRELEventLevel level);
  // A copy has texts of its own.
  VRELTaskEvent(VRELTaskEvent const& other);
  ~VRELTaskEvent() override;

  // True.
  bool IsTimed() override;

  // What an end has in common with its start. VREL_E_FAIL, with the argument untouched, for an event without one.
  virtual VRINResult GetTaskIdentifier(VRELString& identifier);
  // 0 for a start, 1 for an end.
  virtual int GetKind() = 0;

  // Keep a copy. Null or empty changes nothing.
  void SetTaskIdentifier(char const* identifier);
  void SetTaskName(char const* name);

  // Owned by the event; null until a name was set.
  char const* GetTaskName() const noexcept { return taskName; }

 protected:
  // Writes the text on a formatter of its own and in one piece, so that a log takes one call of the system for it.
  static void WriteText(VRELOutputStream* stream, std::string const& text);

 private:
  char* taskIdentifier;
  char* taskName;
};
