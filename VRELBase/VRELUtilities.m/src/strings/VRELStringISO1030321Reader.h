// Decodes the strings of STEP files.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRELStringISO1030321Converter.h"
#include "VRINResult.h"

// Decodes the string encoding of ISO 10303-21: \S\c, one character of ISO 8859-1, and \X2\hhhh...\X0\, UTF-16 units of
// four hexadecimal digits.
//
//   VRELStringISO1030321Reader reader;
//   VRELString name;
//   reader.ConvertFromASCII("Geh\\S\\duse", name);  // Geh\u00E4use
//
// No other escape is read, and that is promised: \X\hh, \X4\...\X0\ and the page selectors stay in the text, a doubled
// backslash or apostrophe is not reduced, and "\\S\" is a backslash before a \S\ escape.
class VREL_EXPORT VRELStringISO1030321Reader : public VRELStringISO1030321Converter {
 public:
  // Decodes the text, read in the process's default codepage, from its start to its end, in time that grows with its
  // length alone. Always VREL_S_OK; null gives the empty text. From the first malformed escape on, the rest of the text
  // stays as it is, its escapes included. A "\X0\" that ends no escape makes the next \X2\ behind it malformed. A
  // \S\ at the very end reads as U+0080.
  //
  // Characters outside ASCII stay as they are up to the end of the first escape and become U+001A (or vanish, where
  // they have no shape of their own) behind it: what follows an escape goes on as ASCII bytes. All of this is promised.
  VRINResult ConvertFromASCII(char const* text, VRELString& out);

 private:
  bool DecodeEscapes(VRELString const& whole, VRELString& out);
};
