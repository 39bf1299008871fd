// What the reader and the writer of ISO 10303-21 texts share: the pure ASCII text that they hold.
#pragma once

#include "VRELExport.h"

// Owns one text of bytes, or none.
class VREL_EXPORT VRELStringISO1030321Converter {
 public:
  VRELStringISO1030321Converter() = default;
  VRELStringISO1030321Converter(VRELStringISO1030321Converter const&) = delete;
  VRELStringISO1030321Converter& operator=(VRELStringISO1030321Converter const&) = delete;
  virtual ~VRELStringISO1030321Converter();

  // Holds a copy of the text, which may be the held one or a part of it; nothing for null.
  void ResetUSAsciiString(char const* text);
  // Deletes the held text.
  void ReleaseUSAsciiString();

 protected:
  char* USAsciiString = nullptr;  // owned, from new[]
};
