// Exception that names a failure by a token.
#pragma once

#include "Gk_Marker.h"

// Exception with a token that identifies the failure: "CANNOT_OPEN_FILE", "Gk_IOException", "Array index is out of
// bound". It is thrown by value, usually by Gk_ErrMgr::raise, which also sends an error event.
//
//   try {
//     VRELFileInputStream stream("part.stp");
//   } catch (Gk_Exception const& exception) {
//     std::fprintf(stderr, "%s\n", exception.token());
//   }
//
// Ownership: the token is not owned. Use a string literal.
class VREL_EXPORT Gk_Exception : public Gk_Marker {
 public:
  // Creates an exception with a token. `parent` is ignored.
  //
  // Requires: `token` outlives the exception and its copies.
  explicit Gk_Exception(char const* token, Gk_Exception* parent = nullptr) noexcept;
};
