#include "Gk_ROString.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>

#include "VRELAllocException.h"
#include "VRELAscii.h"
#include "VRELMatchPathSegment.h"

namespace {

// Returns the lower-case form of a capital letter in the current locale. A to Z are the only ASCII capitals in every
// locale, so other ASCII bytes skip the locale.
inline unsigned char foldLower(char c) {
  unsigned char const byte = static_cast<unsigned char>(c);
  if (byte < 0x80 && !VRELIsAsciiUpper(byte)) return byte;
  return static_cast<unsigned char>(std::isupper(byte) != 0 ? std::tolower(byte) : byte);
}

inline bool equalFolded(char a, char b) {
  return a == b || foldLower(a) == foldLower(b);
}

// Matches one name against one pattern, by the usual iterative algorithm for globs: backtrack to the latest "*" only.
//
// Each "*", with the "?" and "*" that follow it, divides the pattern into segments. Every element of a segment takes
// one byte of the name. A segment that matches at an earlier position therefore also ends earlier, and what can match
// after a later end can also match after an earlier one. So the first position where a segment matches is sufficient,
// and after a mismatch only the latest "*" has to try its next position. The time is at most the product of the two
// lengths.
class PathPatternMatch {
 public:
  PathPatternMatch(std::string_view aName, std::string_view aPattern) : name(aName), pattern(aPattern) {}

  bool Holds() {
    while (true) {
      switch (MatchSegment()) {
        case Outcome::Matched:
          return true;
        case Outcome::Star:
          starSeen = true;
          starName = nameAt;
          starPattern = patternAt;
          break;
        case Outcome::Failed:
          if (!starSeen) return false;
          ++starName;
          break;
      }
      if (!AdvanceStar()) return false;
    }
  }

 private:
  enum class Outcome { Failed, Matched, Star };

  bool NameEnded() const { return nameAt >= name.size(); }
  bool PatternEnded() const { return patternAt >= pattern.size(); }
  bool AtSlash() const { return !NameEnded() && name[nameAt] == '/'; }
  // The rest of the name after a "*" is matched as a separate name, so a dot at its beginning is a leading one.
  bool AtLeadingDot() const {
    return !NameEnded() && name[nameAt] == '.' && (nameAt == starName || name[nameAt - 1] == '/');
  }

  // Matches up to the next "*", which it takes with the "?" and "*" that follow it, or to the end of the pattern.
  Outcome MatchSegment() {
    while (!PatternEnded()) {
      char const element = pattern[patternAt++];
      if (element == '*') return TakeStarRun();
      if (!MatchElement(element)) return Outcome::Failed;
      ++nameAt;
    }
    return NameEnded() || AtSlash() ? Outcome::Matched : Outcome::Failed;
  }

  bool MatchElement(char element) {
    switch (element) {
      case '?':
        return !NameEnded() && !AtSlash() && !AtLeadingDot();
      case '[':
        return !NameEnded() && !AtLeadingDot() && MatchSet();
      case '\\':
        // A "\" at the end of the pattern matches nothing.
        if (PatternEnded()) return false;
        element = pattern[patternAt++];
        break;
      default:
        break;
    }
    return !NameEnded() && equalFolded(name[nameAt], element);
  }

  // Takes the "?" and "*" after a "*". A "*" takes one byte too, if one is left.
  Outcome TakeStarRun() {
    for (; !PatternEnded() && (pattern[patternAt] == '?' || pattern[patternAt] == '*'); ++patternAt) {
      if (AtSlash() || (NameEnded() && pattern[patternAt] == '?')) return Outcome::Failed;
      if (!NameEnded()) ++nameAt;
    }
    return PatternEnded() ? Outcome::Matched : Outcome::Star;
  }

  bool MatchSet() {
    unsigned char const byte = foldLower(name[nameAt]);
    bool const negated = !PatternEnded() && (pattern[patternAt] == '!' || pattern[patternAt] == '^');
    if (negated) ++patternAt;
    bool found = false;
    while (!PatternEnded() && pattern[patternAt] != ']') {
      if (found) {
        SkipSetByte();
        continue;
      }
      unsigned char low;
      if (!TakeSetByte(low)) return false;
      unsigned char high = low;
      if (pattern.size() - patternAt >= 2 && pattern[patternAt] == '-' && pattern[patternAt + 1] != ']') {
        ++patternAt;
        if (!TakeSetByte(high)) return false;
      }
      found = low <= byte && byte <= high;
    }
    if (PatternEnded()) return false;
    ++patternAt;
    return found != negated;
  }

  // Skips a byte of the set after the matching element; it is not checked, so that a "/" is allowed.
  void SkipSetByte() {
    if (pattern[patternAt] == '\\') ++patternAt;
    if (!PatternEnded()) ++patternAt;
  }

  bool TakeSetByte(unsigned char& byte) {
    if (pattern[patternAt] == '\\') ++patternAt;
    if (PatternEnded() || pattern[patternAt] == '/') return false;
    byte = foldLower(pattern[patternAt++]);
    return true;
  }

  // Moves to the next position where the pattern after the latest "*" can match; false at the end of the name.
  bool AdvanceStar() {
    char first = pattern[starPattern];
    if (first != '[') {
      if (first == '\\' && starPattern + 1 < pattern.size()) first = pattern[starPattern + 1];
      unsigned char const wanted = foldLower(first);
      auto const takes = [wanted](char c) { return foldLower(c) == wanted; };
      auto const begin = name.begin() + static_cast<std::ptrdiff_t>(starName);
      starName = static_cast<std::size_t>(std::find_if(begin, name.end(), takes) - name.begin());
    }
    nameAt = starName;
    patternAt = starPattern;
    return !NameEnded();
  }

  std::string_view name;
  std::string_view pattern;
  std::size_t nameAt = 0;
  std::size_t patternAt = 0;
  bool starSeen = false;
  std::size_t starName = 0;  // position for the latest "*"; 0 before the first one
  std::size_t starPattern = 0;
};

// The number of bytes of a C string with its terminator.
int SizeWithTerminator(char const* s) {
  std::size_t const length = std::strlen(s);
  if (length >= INT_MAX) throw VRELAllocException();
  return static_cast<int>(length) + 1;
}

}  // namespace

Gk_ROString::Gk_ROString(char const* s)
    : Gk_ROString(s != nullptr ? s : "", s != nullptr ? SizeWithTerminator(s) : 1) {}

Gk_ROString::Gk_ROString(char const* s, int n) : array(s != nullptr ? n : 0, '\0') {
  if (array.size() > 0) std::memcpy(array.getArray(), s, static_cast<std::size_t>(n));
}

void Gk_ROString::offset(int n) {
  std::int64_t const moved = static_cast<std::int64_t>(start) + n;
  start = static_cast<std::int32_t>(std::clamp<std::int64_t>(moved, INT_MIN, INT_MAX));
}

int Gk_ROString::len() const {
  std::int64_t const length = static_cast<std::int64_t>(array.size()) - start;
  return static_cast<int>(std::clamp<std::int64_t>(length, INT_MIN, INT_MAX));
}

// Computed on integers: the address may lie outside the bytes, where pointer arithmetic is undefined.
char* Gk_ROString::bytes() const {
  auto const address = reinterpret_cast<std::uintptr_t>(array.getArray());
  return reinterpret_cast<char*>(address + static_cast<std::uintptr_t>(static_cast<std::intptr_t>(start)));
}

std::string_view Gk_ROString::visible() const {
  auto const first = static_cast<std::size_t>(std::clamp(start, 0, array.size()));
  return std::string_view(array.getArray(), static_cast<std::size_t>(array.size())).substr(first);
}

char* Gk_ROString::writable(int index) const {
  std::int64_t const place = static_cast<std::int64_t>(start) + index;
  if (place < 0 || place >= array.size()) return nullptr;
  return const_cast<char*>(array.getArray()) + place;
}

char Gk_ROString::operator[](int index) const {
  char const* const byte = writable(index);
  return byte != nullptr ? *byte : '\0';
}

std::string_view Gk_ROString::text() const {
  if (start < 0) return {};
  std::string_view const all = visible();
  return all.substr(0, all.find('\0'));
}

int Gk_ROString::find(char c) const {
  std::size_t const place = visible().find(c);
  if (place == std::string_view::npos) return -1;
  // Bytes before the array count in the index, and none of them is `c`.
  std::int64_t const index = static_cast<std::int64_t>(place) - std::min(start, 0);
  return static_cast<int>(std::min<std::int64_t>(index, INT_MAX));
}

int Gk_ROString::find(Gk_ROString const& s) const {
  std::size_t const place = text().find(s.text());
  if (place == std::string_view::npos) return len();
  return static_cast<int>(reinterpret_cast<std::uintptr_t>(bytes()) + place -
                          reinterpret_cast<std::uintptr_t>(s.bytes()));
}

int Gk_ROString::reverseFind(char c, int from) const {
  if (len() < 2) return -1;
  long const highest = std::min<long>(static_cast<long>(len()) - 1 - from, array.size() - 1);
  for (int i = static_cast<int>(std::max<long>(highest, -1)); i >= 0; --i) {
    if (array[i] == c) return i;
  }
  return -1;
}

int Gk_ROString::matchPathString(Gk_ROString const& segment) const {
  return VRELMatchPathSegment(text(), segment.text());
}

bool Gk_ROString::matchPathPattern(Gk_ROString const& pattern) const {
  return PathPatternMatch(text(), pattern.text()).Holds();
}

bool operator<(Gk_ROString const& a, Gk_ROString const& b) {
  return a.text() < b.text();
}

bool operator==(Gk_ROString const& a, Gk_ROString const& b) {
  return a.text() == b.text();
}

bool operator==(Gk_ROString const& a, char const* b) {
  return a.text() == (b != nullptr ? b : "");
}
