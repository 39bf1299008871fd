// Event of a warning.
#pragma once

#include "VRELTextEvent.h"

// Event that VRELWarning sends.
//
//   VRELWarningEvent::Fire(4096, "unknown names: %s", longList);  // a message of up to 4096 bytes
class VREL_EXPORT VRELWarningEvent : public VRELTextEventOf<VRELWarningEvent> {
 public:
  // Creates an event of level WARNING.
  explicit VRELWarningEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  // Creates an event of level INFO.
  //
  // Compatibility: the levels differ. The console logger writes warnings of VRELWarning::Printf to its error stream,
  // and those of Fire to its output stream.
  VRELWarningEvent(va_list arguments, char const* format);
  // Creates an event of level INFO with a message of up to `size` bytes. A size below 1 leaves the message null.
  VRELWarningEvent(va_list arguments, char const* format, int size);

  // Writes "Warning : ", the message and a line end.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  using VRELTextEventOf::Fire;
  // Sends a message of up to `size` bytes, at level INFO. A null format sends nothing.
  static void Fire(int size, char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
};
