// Tells what an operation raises.
#pragma once

#include <functional>
#include <string>

#include "Gk_Exception.h"

// The token of the Gk_Exception that `body` throws, "(none)" if it throws nothing.
inline std::string Raised(std::function<void()> const& body) {
  try {
    body();
    return "(none)";
  } catch (Gk_Exception const& exception) {
    return exception.token();
  }
}
