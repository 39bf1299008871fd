// Paths of Gk_FileElement as zero-terminated bytes, and the positions of their parts.
#pragma once

#include <string>
#include <string_view>

#include "Gk_String.h"

// Bytes of a string with a terminator, for the C library. A Gk_String need not end in a zero byte; it is copied only if
// it does not. Valid until the string is changed.
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

// Returns the length of the directory part: the position of the last "/", of the last backslash if there is no "/", or
// npos.
inline std::size_t VRELDirectoryEnd(std::string_view path) {
  std::size_t const slash = path.rfind('/');
  return slash != std::string_view::npos ? slash : path.rfind('\\');
}

// Returns the part after the last "/". A backslash is not a separator.
inline std::string_view VRELBaseName(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}
