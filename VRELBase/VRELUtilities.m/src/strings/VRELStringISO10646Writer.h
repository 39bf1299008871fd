// Encodes the characters outside ASCII of one text for ISO 10303-21.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Stands for one text and gives it with each run of UTF-16 units from 128 on as one \X2\hhhh...\X0\ escape.
class VREL_EXPORT VRELStringISO10646Writer {
 public:
  explicit VRELStringISO10646Writer(VRELString const& text);
  virtual ~VRELStringISO10646Writer() = default;

  // Always VREL_S_OK, in time that grows with the text's length alone. A text without such units passes as it is.
  VRINResult GetResult(VRELString& out);

  static constexpr bool IsUSAscii(unsigned short const& unit) noexcept { return unit < 128; }
  // The first run of units from 128 on: its start and the place behind its end. VREL_E_FAIL, and -1 in both, if there
  // is none.
  static VRINResult GetFirstNonAsciiSubstring(VRELString const& text, int& start, int& end);
  // The four upper-case hexadecimal digits of a unit.
  static VRINResult GetQuadrupletAsciiString(unsigned short unit, VRELString& out);
  // All units of the text, ASCII or not, as one escape; empty for an empty text.
  static VRINResult GetEncodedAsciiString(VRELString const& text, VRELString& out);

 private:
  VRELString source;
  VRELString result;
};
