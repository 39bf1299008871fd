#include "Gk_Marker.h"

#include <cstring>

namespace {

// A marker without a token reads as one of no characters.
char const* Characters(char const* token) {
  return token != nullptr ? token : "";
}

// Reads one keyword, character by character, lower-cased.
struct KeywordReader {
  char const* next;
  bool inTail = false;

  unsigned char Take() {
    unsigned char const c = static_cast<unsigned char>(*next++);
    return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c - 'A' + 'a') : c;
  }

  // Takes the next character that is no #, noting where the optional tail begins.
  unsigned char TakePastMark(unsigned char c, KeywordReader& other) {
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
  return std::strcmp(Characters(text), Characters(other.text)) == 0;
}

bool Gk_Marker::operator<(Gk_Marker const& other) const noexcept {
  return std::strcmp(Characters(text), Characters(other.text)) < 0;
}

int Gk_Marker::compare(Gk_Marker const& other) const noexcept {
  KeywordReader self{Characters(text)};
  KeywordReader that{Characters(other.text)};
  while (true) {
    unsigned char mine = self.Take();
    unsigned char theirs = that.Take();
    mine = self.TakePastMark(mine, that);
    theirs = that.TakePastMark(theirs, self);
    if (mine == 0) return theirs == 0 || that.inTail ? 0 : 1;
    if (theirs == 0) return self.inTail ? 0 : -1;
    if (mine != theirs) return mine < theirs ? -1 : 1;
  }
}
