// The token that names a failure, and the comparison of keywords with optional tails.
#pragma once

#include "VRELExport.h"

// Carries a token: a text that must outlive the marker, in practice a string literal. A copy carries the same pointer.
class VREL_EXPORT Gk_Marker {
 public:
  explicit Gk_Marker(char const* token) noexcept : text(token) {}

  // The token, not owned.
  char const* token() const noexcept { return text; }

  // By the characters of the tokens; here and below a null token has none.
  bool operator==(Gk_Marker const& other) const noexcept;
  bool operator<(Gk_Marker const& other) const noexcept;

  // Compares two keywords without regard to case, where a # ends the part that must be there: op#tion stands for op,
  // opt, opti, optio and option. Two # at the same place cancel out. Returns 0 for a match, otherwise -1 or 1 by the
  // first difference. That a keyword which ends too early gives 1, and one that runs on gives -1, is promised: it is
  // the reverse of strcmp.
  int compare(Gk_Marker const& other) const noexcept;

 private:
  char const* text;
};
