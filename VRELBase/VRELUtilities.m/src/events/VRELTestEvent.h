// What a test of a translator wants to know.
#pragma once

#include "VRELTextEvent.h"

class VREL_EXPORT VRELTestEvent : public VRELTextEventOf<VRELTestEvent> {
 public:
  // Level TEST.
  explicit VRELTestEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  // Level TEST.
  VRELTestEvent(va_list arguments, char const* format);

  // The text and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;
};
