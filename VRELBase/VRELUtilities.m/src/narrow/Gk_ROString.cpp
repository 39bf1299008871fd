#include "Gk_ROString.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "VRELString.h"

namespace {

// The lower case of a capital. Of the ASCII bytes, A to Z are capitals in every locale and no other is; what a capital
// becomes is the locale's.
inline unsigned char foldLower(char c) {
  unsigned char const byte = static_cast<unsigned char>(c);
  if (byte < 0x80 && (byte < 'A' || byte > 'Z')) return byte;
  return static_cast<unsigned char>(std::isupper(byte) != 0 ? std::tolower(byte) : byte);
}

inline bool equalFolded(char a, char b) {
  return a == b || foldLower(a) == foldLower(b);
}

// One match of a name against a pattern.
//
// A "*" and the "?" and "*" behind it cut the pattern into segments. An element of a segment takes one byte of the
// name, so a segment that matches from an earlier place also ends earlier, and what can follow a later end can follow
// an earlier one. The first place where a segment matches is therefore as good as any, and after a failure only the
// latest "*" has to try its next place.
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
      if (!SeekPlaceForStar()) return false;
    }
  }

 private:
  enum class Outcome { Failed, Matched, Star };

  bool NameEnded() const { return nameAt >= name.size(); }
  bool PatternEnded() const { return patternAt >= pattern.size(); }
  bool AtSlash() const { return !NameEnded() && name[nameAt] == '/'; }
  // Behind a "*" the rest of the name is matched as a name of its own, so a dot that begins it is a leading one.
  bool AtLeadingDot() const {
    return !NameEnded() && name[nameAt] == '.' && (nameAt == starName || name[nameAt - 1] == '/');
  }

  // Goes on to behind the next "*" and its companions, or to the end of the pattern.
  Outcome MatchSegment() {
    while (!PatternEnded()) {
      char const element = pattern[patternAt++];
      if (element == '*') return TakeStarCompanions();
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
        // One that ends the pattern stands for no byte.
        if (PatternEnded()) return false;
        element = pattern[patternAt++];
        break;
      default:
        break;
    }
    return !NameEnded() && equalFolded(name[nameAt], element);
  }

  // A "*" behind a "*" takes a byte too, where one is left.
  Outcome TakeStarCompanions() {
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

  // What stands behind the element that matched is not looked at, a "/" neither.
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

  // Goes to the next place where the byte behind the latest "*" may match; false at the end of the name.
  bool SeekPlaceForStar() {
    char first = pattern[starPattern];
    if (first != '[') {
      if (first == '\\' && starPattern + 1 < pattern.size()) first = pattern[starPattern + 1];
      unsigned char const wanted = foldLower(first);
      auto const takes = [wanted](char c) { return foldLower(c) == wanted; };
      starName = static_cast<std::size_t>(std::find_if(name.begin() + starName, name.end(), takes) - name.begin());
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
  std::size_t starName = 0;  // where the latest "*" goes on; the begin of the name as long as none was seen
  std::size_t starPattern = 0;
};

}  // namespace

Gk_ROString::Gk_ROString(char const* s) : Gk_ROString(s != nullptr ? s : "", VRELString::getStringLength(s) + 1) {}

Gk_ROString::Gk_ROString(char const* s, int n) : array(s != nullptr ? n : 0, '\0') {
  if (array.size() > 0) std::memcpy(array.getArray(), s, static_cast<std::size_t>(n));
}

void Gk_ROString::offset(int n) {
  long const moved = static_cast<long>(start) + n;
  start = static_cast<std::int32_t>(std::clamp<long>(moved, 0, array.size()));
}

int Gk_ROString::len() const {
  return std::max(array.size() - start, 0);
}

char* Gk_ROString::bytes() const {
  return const_cast<char*>(array.getArray()) + start;
}

char Gk_ROString::operator[](int index) const {
  return index >= -start && index < len() ? bytes()[index] : '\0';
}

std::string_view Gk_ROString::text() const {
  std::string_view const all(bytes(), static_cast<std::size_t>(len()));
  return all.substr(0, all.find('\0'));
}

int Gk_ROString::find(char c) const {
  std::string_view const all(bytes(), static_cast<std::size_t>(len()));
  std::size_t const place = all.find(c);
  return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

int Gk_ROString::find(Gk_ROString const& s) const {
  std::size_t const place = text().find(s.text());
  if (place == std::string_view::npos) return len();
  return static_cast<int>(reinterpret_cast<std::uintptr_t>(bytes() + place) -
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
  std::string_view const path = text();
  std::string_view const wanted = segment.text();
  bool const pathIsRooted = !path.empty() && path.front() == '/';
  if (!wanted.empty() && wanted.front() == '/') return pathIsRooted ? 1 : 0;
  if (pathIsRooted || path.substr(0, wanted.size()) != wanted) return -1;
  int const taken = static_cast<int>(wanted.size());
  if (path.size() == wanted.size()) return taken;
  return path[wanted.size()] == '/' ? taken + 1 : -1;
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
