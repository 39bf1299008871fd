// Event of a debug message.
#pragma once

#include "VRELTextEvent.h"

// Event with a debug message, of level DEBUG from every constructor.
//
//   VRELDebugEvent::Fire("%d candidates", value);
class VREL_EXPORT VRELDebugEvent : public VRELTextEventOf<VRELDebugEvent> {
 public:
  explicit VRELDebugEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  VRELDebugEvent(va_list arguments, char const* format);

  // Writes the message and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;
};
