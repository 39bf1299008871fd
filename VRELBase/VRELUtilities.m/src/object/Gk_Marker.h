// Token of an exception, and the comparison of keywords that can be abbreviated.
#pragma once

#include "VRELExport.h"

// Holds a token, which is a C string. Gk_Exception derives from it. It also compares keywords that can be abbreviated.
//
//   Gk_Marker const keyword("op#tion");
//   keyword.compare(Gk_Marker("opt"));  // 0: "op", "opt", ... and "option" match
//
// Ownership: the token is not owned; a copy has the same pointer.
class VREL_EXPORT Gk_Marker {
 public:
  // Requires: `token` outlives the marker and its copies. Null is treated as the empty string in comparisons.
  explicit Gk_Marker(char const* token) noexcept : text(token) {}

  // Returns the pointer that was passed to the constructor.
  char const* token() const noexcept { return text; }

  // Compares the characters of the tokens, as strcmp does.
  bool operator==(Gk_Marker const& other) const noexcept;
  bool operator<(Gk_Marker const& other) const noexcept;

  // Compares two keywords and ignores case. A '#' ends the mandatory part: "op#tion" matches "op", "opt", "opti",
  // "optio" and "option". Two '#' at the same position cancel each other. Returns 0 for a match, otherwise -1 or 1 by
  // the first difference.
  //
  // Compatibility: returns 1 if this keyword is a proper prefix of the other and -1 in the opposite case, which is the
  // reverse of strcmp.
  int compare(Gk_Marker const& other) const noexcept;

 private:
  char const* text;
};
