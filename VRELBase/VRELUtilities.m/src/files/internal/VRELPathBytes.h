// Paths of the older layer on their way to the C library. For the library's own sources.
#pragma once

#include <string>
#include <string_view>

#include "Gk_String.h"

// The bytes of a string with a terminator behind them, which a Gk_String need not have. Valid as long as the string
// is not changed.
class VRELPathBytes {
 public:
  explicit VRELPathBytes(Gk_String const& path) {
    if (path.dataLen() < path.len()) {
      bytes = path.begin();
    } else {
      terminated = path.text();
      bytes = terminated.c_str();
    }
  }
  VRELPathBytes(VRELPathBytes const&) = delete;
  VRELPathBytes& operator=(VRELPathBytes const&) = delete;

  operator char const*() const noexcept { return bytes; }

 private:
  char const* bytes;
  std::string terminated;
};

// Where the name of the directory ends in a path: at the last "/"; without one at the last backslash; npos without
// either.
inline std::size_t VRELDirectoryEnd(std::string_view path) {
  std::size_t const slash = path.rfind('/');
  return slash != std::string_view::npos ? slash : path.rfind('\\');
}
