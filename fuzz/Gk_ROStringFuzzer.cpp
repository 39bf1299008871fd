// Matches a name (all lines but the first) against a pattern (the first line) by Gk_ROString::matchPathPattern and
// matchPathString, and compares the results with models. The model of patterns tries every position after a star
// recursively, and is used only for short strings.
#include "Gk_ROString.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "FuzzInput.h"
#include "Require.h"

namespace {

unsigned char Folded(char c) {
  return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}

// Both strings end in a zero byte.
bool Matches(char const* name, char const* pattern);

// Moves past the set at the beginning of the pattern, and returns whether it takes the byte.
bool TakesByte(char const*& pattern, unsigned char byte) {
  bool const negated = *pattern == '!' || *pattern == '^';
  if (negated) ++pattern;
  auto const element = [&pattern](unsigned char& value) {
    if (*pattern == '\\') ++pattern;
    if (*pattern == '\0' || *pattern == '/') return false;
    value = Folded(*pattern++);
    return true;
  };
  while (*pattern != ']') {
    unsigned char low;
    if (*pattern == '\0' || !element(low)) return false;
    unsigned char high = low;
    if (*pattern == '-' && pattern[1] != '\0' && pattern[1] != ']') {
      ++pattern;
      if (!element(high)) return false;
    }
    if (byte < low || byte > high) continue;
    while (*pattern != ']') {
      if (*pattern == '\\') ++pattern;
      if (*pattern == '\0') return false;
      ++pattern;
    }
    ++pattern;
    return !negated;
  }
  ++pattern;
  return negated;
}

bool MatchesAfterStar(char const* name, char const* pattern) {
  for (; *pattern == '?' || *pattern == '*'; ++pattern) {
    if (*name == '/' || (*name == '\0' && *pattern == '?')) return false;
    if (*name != '\0') ++name;
  }
  if (*pattern == '\0') return true;
  char const* const literal = *pattern == '\\' && pattern[1] != '\0' ? pattern + 1 : pattern;
  for (; *name != '\0'; ++name) {
    if ((*pattern == '[' || Folded(*name) == Folded(*literal)) && Matches(name, pattern)) return true;
  }
  return false;
}

bool Matches(char const* name, char const* pattern) {
  char const* const begin = name;
  for (; *pattern != '\0'; ++name) {
    char const element = *pattern++;
    if (element == '*') return MatchesAfterStar(name, pattern);
    bool const leadingDot = *name == '.' && (name == begin || name[-1] == '/');
    if (element == '?') {
      if (*name == '\0' || *name == '/' || leadingDot) return false;
    } else if (element == '[') {
      if (*name == '\0' || leadingDot || !TakesByte(pattern, Folded(*name))) return false;
    } else {
      char literal = element;
      if (element == '\\' && (literal = *pattern++) == '\0') return false;
      if (*name == '\0' || Folded(*name) != Folded(literal)) return false;
    }
  }
  return *name == '\0' || *name == '/';
}

int SegmentLength(std::string const& path, std::string const& segment) {
  bool const rooted = path.compare(0, 1, "/") == 0;
  if (segment.compare(0, 1, "/") == 0) return rooted ? 1 : 0;
  if (rooted) return -1;
  std::size_t same = 0;
  while (same < path.size() && same < segment.size() && path[same] == segment[same]) ++same;
  if (same < segment.size()) return -1;
  if (same == path.size()) return static_cast<int>(same);
  return path[same] == '/' ? static_cast<int>(same) + 1 : -1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  std::string const pattern = input.Line();
  std::string const name = input.Rest();
  // Without terminators, so that AddressSanitizer finds reads after the bytes.
  Gk_ROString const nameView(name.data(), static_cast<int>(name.size()));
  Gk_ROString const patternView(pattern.data(), static_cast<int>(pattern.size()));
  bool const matches = nameView.matchPathPattern(patternView);
  bool const isShort = name.size() <= 24 && std::count(pattern.begin(), pattern.end(), '*') <= 4;
  if (isShort)
    Require(matches == Matches(name.c_str(), pattern.c_str()), "a name matches a pattern if the model matches");

  std::string const path = name.c_str();
  std::string const segment = pattern.c_str();
  int const length = nameView.matchPathString(patternView);
  Require(length == SegmentLength(path, segment), "a segment takes as many bytes as in the model");
  return 0;
}
