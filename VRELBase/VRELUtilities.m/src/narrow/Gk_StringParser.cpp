#include "Gk_StringParser.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>

#include "Gk_ErrMgr.h"
#include "VRELAscii.h"
#include "VRELFloatUtil.h"
#include "VRELStringAsciiCharUtil.h"

Gk_StringParser::Gk_StringParser(VRELString const& string)
    : text(static_cast<char const*>(VRELStringAsciiCharUtil(string, false))) {}

bool Gk_StringParser::isString(char const* string) const {
  return text.text() == (string != nullptr ? string : "");
}

// Another owner of the bytes may have moved or shortened them since the spill was set.
bool Gk_StringParser::isInText(char const* place) const {
  char const* const begin = text;
  std::less<char const*> const before;
  return place != nullptr && !before(place, begin) && before(place, begin + text.len());
}

int Gk_StringParser::count(int from, bool (*isDigit)(unsigned char)) {
  int const length = text.len();
  for (int i = from; i >= 0 && i < length; ++i) {
    if (isDigit(static_cast<unsigned char>(text[i]))) continue;
    spillPlace = &text[i];
    return i - from;
  }
  return from < 0 ? 0 : std::max(length - from, 0);
}

int Gk_StringParser::countDigits(int from) {
  return count(from, [](unsigned char byte) { return VRELIsAsciiDigit(byte); });
}

int Gk_StringParser::countHexDigits(int from) {
  return count(from, [](unsigned char byte) { return VRELIsAsciiHexDigit(byte); });
}

bool Gk_StringParser::isUnsignedInteger(int from) {
  int const length = text.len();
  if (from < 0 || from >= length) return false;
  if (at(from) == '0' && at(from + 1) == 'x') return length - (from + 2) - countHexDigits(from + 2) == 1;
  int const start = at(from) == '0' ? from + 1 : from;
  return length - start - countDigits(start) == 1;
}

bool Gk_StringParser::isInteger(int from) {
  bool const isSigned = at(from) == '-' || at(from) == '+';
  return isUnsignedInteger(isSigned ? from + 1 : from);
}

bool Gk_StringParser::isReal(int from) {
  if (from < 0 || from >= text.len()) return false;
  int place = at(from) == '-' || at(from) == '+' ? from + 1 : from;
  int digits = countDigits(place);
  place += digits;
  if (at(place) == '.') {
    int const fractionDigits = countDigits(++place);
    digits += fractionDigits;
    place += fractionDigits;
  }
  if (digits == 0) return false;
  if (at(place) == 'e' || at(place) == 'E') return isInteger(place + 1);
  return place < text.len() && at(place) == '\0';
}

// Runs a conversion with the interface of strtol on the text from an index on, and sets the spill to its end. The
// conversion needs a terminator; a text without one is copied first.
template <class Number>
Number Gk_StringParser::convert(Number (*read)(char const*, char**), int from) {
  if (from >= text.len()) return 0;
  char* const begin = &text[from];
  char* const end = begin + (text.len() - from);
  if (std::find(begin, end, '\0') != end) return read(begin, &spillPlace);

  std::string const terminated(begin, end);
  char* stop = nullptr;
  Number const number = read(terminated.c_str(), &stop);
  spillPlace = begin + (stop - terminated.c_str());
  return number;
}

double Gk_StringParser::realValue() {
  double number = convert(&VRELFloatUtil::vrelstrtod, 0);
  if (isInText(spillPlace) && *spillPlace == '.') {
    number += convert(&VRELFloatUtil::vrelstrtod, static_cast<int>(spillPlace - &text[0]));
  }
  testSpill();
  return number;
}

int Gk_StringParser::intValue() {
  using Limits = std::numeric_limits<int>;
  long const number = convert<long>([](char const* place, char** end) { return std::strtol(place, end, 0); }, 0);
  testSpill();
  return static_cast<int>(std::clamp<long>(number, Limits::min(), Limits::max()));
}

unsigned int Gk_StringParser::uIntValue() {
  // A number is in range if its magnitude is: a negative number wraps in 32 bits, as it does in the wider type.
  static_assert(sizeof(unsigned long) > sizeof(unsigned int));
  auto const read = [](char const* place, char** end) {
    unsigned long const number = std::strtoul(place, end, 0);
    while (std::isspace(static_cast<unsigned char>(*place)) != 0) ++place;
    unsigned long const magnitude = *place == '-' ? 0UL - number : number;
    unsigned long const most = std::numeric_limits<unsigned int>::max();
    return magnitude <= most ? number : most;
  };
  unsigned long const number = convert<unsigned long>(read, 0);
  testSpill();
  return static_cast<unsigned int>(number);
}

void Gk_StringParser::testSpill() {
  isClean = false;
  if (isInText(spillPlace) && *spillPlace != '\0') {
    Gk_ErrMgr::checkAbort();
    Gk_ErrMgr::doAssert("VRELBase/VRELUtilities.m/src/VRELStringParser", 80);
  }
  isClean = true;
}
