// Details for who wants to follow the work.
#pragma once

#include "VRELTextEvent.h"

class VREL_EXPORT VRELVerboseEvent : public VRELTextEventOf<VRELVerboseEvent> {
 public:
  // Level VERBOSE.
  explicit VRELVerboseEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  // Level VERBOSE.
  VRELVerboseEvent(va_list arguments, char const* format);

  // The text and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;
};
