// Encoder of ISO 10303-21 strings.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRELStringISO1030321Converter.h"
#include "VRINResult.h"

// Encodes strings for ISO 10303-21 (STEP files): each run of characters outside ASCII becomes one \X2\hhhh...\X0\ with
// four upper-case hexadecimal digits for each UTF-16 code unit.
//
//   VRELStringISO1030321Writer writer;
//   char const* encoded = nullptr;
//   writer.ConvertToASCII(L"Geh\u00E4use", encoded);  // Geh\X2\00E4\X0\use
//
// Compatibility: ASCII is copied unchanged. No backslash or apostrophe is doubled, no control character is escaped, and
// no other escape is written.
class VREL_EXPORT VRELStringISO1030321Writer : public VRELStringISO1030321Converter {
 public:
  // Encodes `text`. For an empty string `out` is the previous result, null in a new writer.
  // Errors: fails only if the code page US-ASCII cannot be opened.
  // Ownership: the writer owns `out`.
  // Compatibility: a further result does not release the previous one, which leaks, since callers keep it. Use a writer
  // for one string.
  VRINResult ConvertToASCII(VRELString const& text, char const*& out);
};
