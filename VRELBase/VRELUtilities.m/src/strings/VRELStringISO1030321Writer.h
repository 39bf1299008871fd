// Encodes texts for STEP files.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRELStringISO1030321Converter.h"
#include "VRINResult.h"

// Encodes texts as ISO 10303-21 does: each run of characters outside ASCII becomes one \X2\hhhh...\X0\ with four
// upper-case hexadecimal digits for each UTF-16 unit. ASCII passes untouched: no backslash or apostrophe is doubled, no
// control character is escaped and no other escape is written. That is promised.
class VREL_EXPORT VRELStringISO1030321Writer : public VRELStringISO1030321Converter {
 public:
  // `out` belongs to the writer and is valid until the next conversion or the writer's end. An empty text leaves what
  // the writer held before: null in a new writer. Fails only if the codepage US-ASCII cannot be opened.
  //
  // Each further text that one writer produces leaks the text before. That is promised: callers hold on to it.
  VRINResult ConvertToASCII(VRELString const& text, char const*& out);
};
