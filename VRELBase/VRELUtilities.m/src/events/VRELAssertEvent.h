// A condition that had to hold and did not.
#pragma once

#include "VRELTextEvent.h"

class VREL_EXPORT VRELAssertEvent : public VRELTextEventOf<VRELAssertEvent> {
 public:
  // Level ABORT.
  explicit VRELAssertEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  // Level VERBOSE. That it differs, so that Fire sends far below VRELAssert::Printf, is promised.
  VRELAssertEvent(va_list arguments, char const* format);

  // "Assert : ", the text and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;
};
