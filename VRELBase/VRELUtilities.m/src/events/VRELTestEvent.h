// Event of a message for tests.
#pragma once

#include "VRELTextEvent.h"

// Event with a message for tests, of level TEST from every constructor.
//
//   VRELTestEvent::Fire("volume %g", value);
class VREL_EXPORT VRELTestEvent : public VRELTextEventOf<VRELTestEvent> {
 public:
  explicit VRELTestEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  VRELTestEvent(va_list arguments, char const* format);

  // Writes the message and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;
};
