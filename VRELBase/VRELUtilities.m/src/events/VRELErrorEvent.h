// A failure.
#pragma once

#include "VRELError.h"
#include "VRELTextEvent.h"

class VREL_EXPORT VRELErrorEvent : public VRELTextEventOf<VRELErrorEvent> {
 public:
  // Level ERROR; the error is VRELError::FAIL_ERROR.
  explicit VRELErrorEvent(char const* format, ...) VREL_PRINTF_FORMAT(2, 3);
  VRELErrorEvent(va_list arguments, char const* format);
  // Level ERROR, without a text. The error is not owned and must outlive the event and its copies.
  explicit VRELErrorEvent(VRELError& error);

  // "Error : ", the text and a line end; without a text what the error writes of itself.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // What failed; not owned.
  virtual VRELError* GetError();

  using VRELTextEventOf::Fire;
  // Notes in the error where it was raised, sends it, and returns its type: the one way in which an error's own code
  // comes back to the caller and its text reaches the tracker. A null file is noted as the empty text.
  //
  //   VRELError error(VREL_E_FILE_OPEN, name);
  //   return VRELErrorEvent::Fire(error, __FILE__, __LINE__);
  static VRINResult Fire(VRELError& error, char const* file, int line);

 private:
  VRELError* failure;
};
