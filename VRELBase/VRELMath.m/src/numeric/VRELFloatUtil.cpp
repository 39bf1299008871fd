#include "VRELFloatUtil.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

constexpr double mantissaLimit = 9007199254740992.0;  // 2 to the power 53
constexpr std::int64_t largestFinitePower = 441;      // 5 to a higher power is no finite double
constexpr std::int64_t exponentLimit = 100'000'000'000'000'000;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsPunctuation(char c) {
  return (c >= '!' && c <= '/') || (c >= ':' && c <= '@') || (c >= '[' && c <= '`') || (c >= '{' && c <= '~');
}

bool MayBeginNumber(char c) {
  return IsDigit(c) || IsSpace(c) || c == '+' || c == '-' || c == '.';
}

bool IsExponentMark(char c) {
  return c == 'e' || c == 'E' || c == 'd' || c == 'D';
}

// Repeated squaring, from the lowest bit of the exponent up. The order of the roundings is part of the promised value.
constexpr double PowerOfFive(std::int64_t exponent) {
  double result = 1.0;
  for (double base = 5.0;; base *= base) {
    if ((exponent & 1) != 0) result *= base;
    exponent >>= 1;
    if (exponent == 0) return result;
  }
}

constexpr auto MakePowersOfFive() {
  std::array<double, largestFinitePower + 1> powers{};
  for (std::int64_t i = 0; i <= largestFinitePower; ++i) powers[static_cast<std::size_t>(i)] = PowerOfFive(i);
  return powers;
}

constexpr auto powersOfFive = MakePowersOfFive();

// std::ldexp, which for the normal powers of two is one multiplication.
double ScaleByPowerOfTwo(double x, std::int64_t exponent) {
  if (exponent < -1022 || exponent > 1023) {
    return std::ldexp(x, static_cast<int>(std::clamp<std::int64_t>(exponent, -100000, 100000)));
  }
  std::uint64_t const bits = static_cast<std::uint64_t>(exponent + 1023) << 52;
  double power;
  std::memcpy(&power, &bits, sizeof(power));
  return x * power;
}

// Takes an unsigned number from a text, byte by byte:
//
//   - A digit of the mantissa m makes it 10 m + digit, in doubles, as long as m is below 2^53. Digits behind that are
//     dropped; those before the point are counted in the exponent, but only while m is above 2^53, not equal to it.
//   - The digits of the written exponent go into the same number as that count. With such a mantissa, and no point,
//     they are dropped and counted too.
//   - The value is m * 5^e * 2^e, or m / 5^-e * 2^e for a negative exponent e.
class NumberReader {
 public:
  explicit NumberReader(char const* text) : at(text) {
    TakeExactDigits();
    TakeMantissa();
    if (digits != 0 && IsExponentMark(*at)) TakeExponent();
  }

  char const* End() const { return at; }

  double Value(double sign) const {
    std::int64_t const total = (isExponentNegative ? -exponent : exponent) - fractionDigits;
    if (total + digits < -308) return 0.0;
    if (total < 0) return sign * ScaleByPowerOfTwo(mantissa / Power(-total), total);
    return sign * ScaleByPowerOfTwo(mantissa * Power(total), total);
  }

 private:
  static double Power(std::int64_t n) {
    if (n > largestFinitePower) return std::numeric_limits<double>::infinity();
    return powersOfFive[static_cast<std::size_t>(n)];
  }

  // Takes the digits for which the mantissa is an exact whole number, and the point among them. What it leaves is
  // taken by TakeMantissa; what it takes would come out of there just the same, only slower.
  void TakeExactDigits() {
    std::uint64_t whole = 0;
    char const* start = at;
    whole = TakeWhole(whole);
    digits = at - start;
    if (*at == '.') {
      ++at;
      hasPoint = true;
      start = at;
      whole = TakeWhole(whole);
      fractionDigits = at - start;
      digits += fractionDigits;
    }
    mantissa = static_cast<double>(whole);
  }

  std::uint64_t TakeWhole(std::uint64_t whole) {
    constexpr std::uint64_t room = (1ull << 53) / 10 - 1;  // ten times it and any digit are below 2^53
    for (; IsDigit(*at) && whole <= room; ++at) whole = whole * 10 + static_cast<std::uint64_t>(*at - '0');
    return whole;
  }

  void TakeMantissa() {
    for (;; ++at) {
      if (IsDigit(*at)) {
        TakeMantissaDigit(*at - '0');
      } else if (*at == '.' && !hasPoint) {
        hasPoint = true;
      } else {
        return;
      }
    }
  }

  void TakeMantissaDigit(int digit) {
    if (CountsInExponent()) {
      ++exponent;
      return;
    }
    ++digits;
    if (mantissa >= mantissaLimit) return;
    mantissa = mantissa * 10.0 + digit;
    if (hasPoint) ++fractionDigits;
  }

  void TakeExponent() {
    bool hasSign = false;
    for (++at;; ++at) {
      if (IsDigit(*at)) {
        TakeExponentDigit(*at - '0');
      } else if ((*at == '+' || *at == '-') && !hasSign) {
        hasSign = true;
        isExponentNegative = *at == '-';
      } else {
        return;
      }
    }
  }

  void TakeExponentDigit(int digit) {
    if (CountsInExponent()) {
      ++exponent;
    } else if (exponent < exponentLimit) {  // beyond it no further digit changes the value
      exponent = exponent * 10 + digit;
    }
  }

  bool CountsInExponent() const { return mantissa > mantissaLimit && !hasPoint; }

  char const* at;
  double mantissa = 0.0;
  std::int64_t digits = 0;          // taken into account, dropped ones behind the point included
  std::int64_t fractionDigits = 0;  // in the mantissa, behind the point
  std::int64_t exponent = 0;        // written, and counted for dropped digits
  bool hasPoint = false;
  bool isExponentNegative = false;
};

}  // namespace

int VRELFloatUtil::checkSign(unsigned char const* text) noexcept {
  if (text == nullptr || *text == '+') return 1;
  return *text == '-' ? -1 : 0;
}

double VRELFloatUtil::vrelstrtod(char const* text, char** end) noexcept {
  if (text == nullptr) return 0.0;
  char const* at = text;
  double value = 0.0;
  if (MayBeginNumber(*at)) {
    while (IsSpace(*at)) ++at;
    double const sign = *at == '-' ? -1.0 : 1.0;
    if (IsPunctuation(*at) && *at != '.') ++at;
    NumberReader const reader(at);
    value = reader.Value(sign);
    at = reader.End();
  }
  if (end != nullptr) *end = const_cast<char*>(at);
  return value;
}

double VRELFloatUtil::vrelatof(char const*) noexcept {
  return 0.0;
}
