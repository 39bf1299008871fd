// Token of the exception of an operation.
#pragma once

#include <functional>
#include <string>

#include "Gk_Exception.h"

// Returns the token of the Gk_Exception that `body` throws, or "(none)" if it does not throw.
inline std::string Raised(std::function<void()> const& body) {
  try {
    body();
    return "(none)";
  } catch (Gk_Exception const& exception) {
    return exception.token();
  }
}
