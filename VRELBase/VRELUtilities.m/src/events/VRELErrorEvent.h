// Event of an error.
#pragma once

#include "VRELError.h"
#include "VRELTextEvent.h"

// Event with a VRELError, a message, or both. The error tracker stores the error; loggers write the message, or the
// error if there is no message.
//
//   VRELError error(VREL_E_FILE_OPEN, name);
//   return VRELErrorEvent::Fire(error, __FILE__, __LINE__);
//
// Ownership: the error is not owned and must outlive the event and its copies.
class VREL_EXPORT VRELErrorEvent : public VRELTextEventOf<VRELErrorEvent> {
 public:
  // Creates an event of level ERROR with a message and the error VRELError::FAIL_ERROR.
  explicit VRELErrorEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  VRELErrorEvent(va_list arguments, char const* format);
  // Creates an event of level ERROR without a message.
  explicit VRELErrorEvent(VRELError& error);

  // Writes "Error : ", the message and a line end; without a message, calls GetFormattedDescription of the error.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Returns the error.
  // Ownership: not the event.
  virtual VRELError* GetError();

  using VRELTextEventOf::Fire;
  // Sets the source file and line of the error, sends the event and returns the type of the error. Only this function
  // passes the code and the description to the error tracker. A null file is treated as the empty string.
  static VRINResult Fire(VRELError& error, char const* file, int line);

 private:
  VRELError* failure;
};
