// Event of a failed assertion.
#pragma once

#include "VRELTextEvent.h"

// Event that VRELAssert::Printf sends.
//
//   VRELAssertEvent::Fire("face %d has no loop", face);  // level VERBOSE
class VREL_EXPORT VRELAssertEvent : public VRELTextEventOf<VRELAssertEvent> {
 public:
  // Creates an event of level ABORT.
  explicit VRELAssertEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  // Creates an event of level VERBOSE.
  //
  // Compatibility: the levels differ, so that Fire sends at VERBOSE and VRELAssert::Printf at ABORT.
  VRELAssertEvent(va_list arguments, char const* format);

  // Writes "Assert : ", the message and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;
};
