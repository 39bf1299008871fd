// Model of the number parser of the library, step by step.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

// A number parsed from the beginning of a string, and the number of bytes that it occupies.
struct NumberModel {
  double value = 0;
  std::size_t taken = 0;
};

// Parses digit by digit, without shortcuts.
// Requires: `text` has no zero byte.
inline NumberModel ReadNumber(std::string const& text) {
  auto const isIn = [](char c, char const* set) { return c != '\0' && std::string(set).find(c) != std::string::npos; };
  auto const isDigit = [&](char c) { return isIn(c, "0123456789"); };
  char const* const blanks = " \t\n\v\f\r";
  if (text.empty() || !(isDigit(text[0]) || isIn(text[0], "+-.") || isIn(text[0], blanks))) return {};
  std::size_t at = 0;
  while (at < text.size() && isIn(text[at], blanks)) ++at;
  double sign = 1;
  if (at < text.size() && isIn(text[at], "!\"#$%&'()*+,-/:;<=>?@[\\]^_`{|}~")) {
    if (text[at] == '-') sign = -1;
    ++at;
  }
  constexpr double limit = 9007199254740992.0;
  double x = 0;
  __int128 exponent = 0;
  __int128 const most = static_cast<__int128>(1) << 100;
  std::int64_t digits = 0;
  std::int64_t fraction = 0;
  bool point = false;
  bool inExponent = false;
  bool signedExponent = false;
  bool negativeExponent = false;
  for (; at < text.size(); ++at) {
    char const c = text[at];
    if (isDigit(c)) {
      if (x > limit && !point) {
        ++exponent;
      } else if (!inExponent) {
        ++digits;
        if (x < limit) {
          x = x * 10 + (c - '0');
          if (point) --fraction;
        }
      } else if (exponent < most) {
        exponent = exponent * 10 + (c - '0');
      }
    } else if (c == '.') {
      if (point || inExponent) break;
      point = true;
    } else if (isIn(c, "eEdD")) {
      if (digits == 0 || inExponent) break;
      inExponent = true;
    } else if (isIn(c, "+-")) {
      if (!inExponent || signedExponent) break;
      signedExponent = true;
      negativeExponent = c == '-';
    } else {
      break;
    }
  }
  __int128 const total = (negativeExponent ? -exponent : exponent) + fraction;
  if (total + digits < -308) return {0, at};
  double power = 1;
  double base = 5;
  for (__int128 n = total < 0 ? -total : total; n != 0; n >>= 1) {
    if ((n & 1) != 0) power *= base;
    base *= base;
  }
  x = total < 0 ? x / power : x * power;
  __int128 const far = 100000;
  __int128 const scale = total > far ? far : total < -far ? -far : total;
  return {std::ldexp(x, static_cast<int>(scale)) * sign, at};
}
