// Decoder of ISO 10303-21 strings.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRELStringISO1030321Converter.h"
#include "VRINResult.h"

// Decodes two escapes of ISO 10303-21 (STEP files): \S\c, one character of ISO 8859-1, and \X2\hhhh...\X0\, UTF-16 code
// units of four hexadecimal digits.
//
//   VRELStringISO1030321Reader reader;
//   VRELString name;
//   reader.ConvertFromASCII("Geh\\S\\duse", name);  // Geh\u00E4use
//
// Compatibility: no other escape is decoded. \X\hh, \X4\...\X0\ and the page selectors stay in the string, a doubled
// backslash or apostrophe is not reduced, and "\\S\" is a backslash before a \S\ escape.
class VREL_EXPORT VRELStringISO1030321Reader : public VRELStringISO1030321Converter {
 public:
  // Decodes bytes of the default code page of the process in linear time. Returns VREL_S_OK; null is the empty string.
  //
  // Compatibility: from the first malformed escape on, the rest of the string is copied with its escapes. A "\X0\" that
  // ends no escape makes the next \X2\ malformed. A \S\ at the very end decodes to U+0080. After the first escape,
  // characters outside ASCII become U+001A or, if they are default ignorable, are removed, since the rest of the string
  // is converted to ASCII bytes.
  VRINResult ConvertFromASCII(char const* text, VRELString& out);

 private:
  bool DecodeEscapes(VRELString const& whole, VRELString& out);
};
