// Event of a detailed message.
#pragma once

#include "VRELTextEvent.h"

// Event with a detailed message, of level VERBOSE from every constructor.
//
//   VRELVerboseEvent::Fire("%d edges", value);
class VREL_EXPORT VRELVerboseEvent : public VRELTextEventOf<VRELVerboseEvent> {
 public:
  explicit VRELVerboseEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  VRELVerboseEvent(va_list arguments, char const* format);

  // Writes the message and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;
};
