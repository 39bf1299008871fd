// Match of a folder name against the start of a path.
#pragma once

#include <string_view>

// Returns how many bytes of the path the segment takes, by the rules of Gk_ROString::matchPathString, or -1. Neither
// string contains a zero byte.
inline int VRELMatchPathSegment(std::string_view path, std::string_view segment) noexcept {
  bool const pathIsRooted = !path.empty() && path.front() == '/';
  if (!segment.empty() && segment.front() == '/') return pathIsRooted ? 1 : 0;
  if (pathIsRooted || path.substr(0, segment.size()) != segment) return -1;
  int const taken = static_cast<int>(segment.size());
  if (path.size() == segment.size()) return taken;
  return path[segment.size()] == '/' ? taken + 1 : -1;
}
