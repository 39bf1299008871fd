// Gk_Marker::compare reads both keywords in parallel. A '#' switches its side into the optional tail, unless the other
// side has just entered its own: then both tails are cancelled and the keywords must match to their ends. When one side
// ends, the keywords match if the longer side is in its optional tail.
#include "Gk_Marker.h"

#include <cstring>

namespace {

// Returns the empty string for a null token.
char const* NonNull(char const* token) {
  return token != nullptr ? token : "";
}

// Reads a keyword, one lower-case character at a time.
struct KeywordReader {
  char const* next;
  bool inTail = false;

  unsigned char Take() {
    unsigned char const c = static_cast<unsigned char>(*next++);
    return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c - 'A' + 'a') : c;
  }

  // Returns `c`, or the next character that is not '#'. Each '#' enters the optional tail or cancels that of `other`.
  unsigned char SkipMarks(unsigned char c, KeywordReader& other) {
    while (c == '#') {
      if (other.inTail) {
        other.inTail = false;
      } else {
        inTail = true;
      }
      c = Take();
    }
    return c;
  }
};

}  // namespace

bool Gk_Marker::operator==(Gk_Marker const& other) const noexcept {
  return std::strcmp(NonNull(text), NonNull(other.text)) == 0;
}

bool Gk_Marker::operator<(Gk_Marker const& other) const noexcept {
  return std::strcmp(NonNull(text), NonNull(other.text)) < 0;
}

int Gk_Marker::compare(Gk_Marker const& other) const noexcept {
  KeywordReader left{NonNull(text)};
  KeywordReader right{NonNull(other.text)};
  while (true) {
    unsigned char leftCharacter = left.Take();
    unsigned char rightCharacter = right.Take();
    leftCharacter = left.SkipMarks(leftCharacter, right);
    rightCharacter = right.SkipMarks(rightCharacter, left);
    if (leftCharacter == 0) return rightCharacter == 0 || right.inTail ? 0 : 1;
    if (rightCharacter == 0) return left.inTail ? 0 : -1;
    if (leftCharacter != rightCharacter) return leftCharacter < rightCharacter ? -1 : 1;
  }
}
