// Locale-independent number parser.
#pragma once

#include "VRELExport.h"

// Parses floating-point numbers. The decimal mark is "." in every locale, and white space and punctuation are those of
// ASCII. It allocates nothing and is safe for any bytes that end in a zero byte.
//
//   char* end = nullptr;
//   double const value = VRELFloatUtil::vrelstrtod("1.5D3 mm", &end);  // 1500, end points to " mm"
class VREL_EXPORT VRELFloatUtil {
 public:
  // Returns 1 for null or "+", -1 for "-", 0 for any other byte.
  static int checkSign(unsigned char const* text) noexcept;

  // Returns the number at the beginning of the string, or 0. Unless null, `end` is set to the byte after the number, or
  // to `text` if there is none. For a null `text` it is unchanged.
  //
  // Compatibility: the value is that of a documented sequence of double operations (see the source), bit for bit, and
  // may differ from the nearest double in the last digits. An exponent begins with e, E, d or D, and its sign may be
  // anywhere in it. One punctuation byte may follow the white space; it counts as a plus sign unless it is "-" or ".".
  static double vrelstrtod(char const* text, char** end) noexcept;

  // Compatibility: returns 0 for any string.
  static double vrelatof(char const* text) noexcept;
};
