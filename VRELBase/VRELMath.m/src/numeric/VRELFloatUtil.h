// The number reader of the library.
#pragma once

#include "VRELExport.h"

// Reads numbers from plain bytes. No locale takes part: the decimal mark is always ".", white space and punctuation are
// those of ASCII. No allocation, no error state, any bytes are safe.
class VREL_EXPORT VRELFloatUtil {
 public:
  // 1 for null or "+", -1 for "-", 0 for every other byte.
  static int checkSign(unsigned char const* text) noexcept;

  // The number that a text begins with. The value is what a chain of double operations gives (see the source), which
  // may be off the nearest double in the last places, and is promised to the bit. Unless null, `end` is set behind the
  // last byte taken; to `text` when the text begins like no number, and then the value is 0. Null text gives 0 and
  // leaves `end` alone.
  //
  // An exponent begins with e, E, d or D; its sign may stand anywhere in it. White space may be followed by any one
  // punctuation byte, which counts as a plus sign. Both are promised.
  static double vrelstrtod(char const* text, char** end) noexcept;

  // Always 0: the value is promised to be dropped.
  static double vrelatof(char const* text) noexcept;
};
