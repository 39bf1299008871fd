// Base of the reader and the writer of ISO 10303-21 strings.
#pragma once

#include "VRELExport.h"

// Owner of one ASCII string, or of none.
class VREL_EXPORT VRELStringISO1030321Converter {
 public:
  VRELStringISO1030321Converter() = default;
  VRELStringISO1030321Converter(VRELStringISO1030321Converter const&) = delete;
  VRELStringISO1030321Converter& operator=(VRELStringISO1030321Converter const&) = delete;
  virtual ~VRELStringISO1030321Converter();

  // Replaces the string by a copy of `text`, which may be part of the present string; by none for null.
  void ResetUSAsciiString(char const* text);
  // Deletes the string.
  void ReleaseUSAsciiString();

 protected:
  char* USAsciiString = nullptr;  // owned, allocated with new[]
};
