// Encoder of the characters outside ASCII of one string for ISO 10303-21.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Encodes each run of UTF-16 code units above 127 of one string as one \X2\hhhh...\X0\ escape.
// VRELStringISO1030321Writer returns the result as bytes.
class VREL_EXPORT VRELStringISO10646Writer {
 public:
  explicit VRELStringISO10646Writer(VRELString const& text);
  virtual ~VRELStringISO10646Writer() = default;

  // Encodes the string in linear time and returns VREL_S_OK. An ASCII string is copied.
  VRINResult GetResult(VRELString& out);

  static constexpr bool IsUSAscii(unsigned short const& unit) noexcept { return unit < 128; }
  // Finds the first run of units above 127: its start and the index after its end.
  // Errors: VREL_E_FAIL, with -1 in both, if there is none.
  static VRINResult GetFirstNonAsciiSubstring(VRELString const& text, int& start, int& end);
  // Returns the four upper-case hexadecimal digits of a unit in `out`.
  static VRINResult GetQuadrupletAsciiString(unsigned short unit, VRELString& out);
  // Encodes all units of the string, ASCII included, as one escape; an empty string stays empty.
  static VRINResult GetEncodedAsciiString(VRELString const& text, VRELString& out);

 private:
  VRELString source;
  VRELString result;
};
