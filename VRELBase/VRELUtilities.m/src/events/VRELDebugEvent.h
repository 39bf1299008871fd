// What a developer wants to know.
#pragma once

#include "VRELTextEvent.h"

class VREL_EXPORT VRELDebugEvent : public VRELTextEventOf<VRELDebugEvent> {
 public:
  // Level DEBUG.
  explicit VRELDebugEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  // Level DEBUG.
  VRELDebugEvent(va_list arguments, char const* format);

  // The text and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;
};
