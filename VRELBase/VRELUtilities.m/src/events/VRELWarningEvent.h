// Something is wrong, and the work goes on.
#pragma once

#include "VRELTextEvent.h"

class VREL_EXPORT VRELWarningEvent : public VRELTextEventOf<VRELWarningEvent> {
 public:
  // Level WARNING.
  explicit VRELWarningEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  // Level INFO. That it differs, so that VRELWarning::Printf goes to the error stream of the console and Fire does not,
  // is promised.
  VRELWarningEvent(va_list arguments, char const* format);
  // Level INFO, for a text of up to `size` bytes in place of the usual limit. A size below 1 gives no text.
  VRELWarningEvent(va_list arguments, char const* format, int size);

  // "Warning : ", the text and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  using VRELTextEventOf::Fire;
  // Sends a text of up to `size` bytes. A null format sends nothing.
  static void Fire(int size, char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
};
