#include "VRELFloatUtil.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "VRELAscii.h"

// How a number is parsed. The value of a string is defined by a loop over its bytes:
//
//   - A digit of the mantissa m sets it to 10 m + digit, in doubles, as long as m is below 2^53.
//     Later digits are dropped; those before the point are counted in the exponent, but only while m is above 2^53.
//   - The digits of the written exponent are added to the same number as that count.
//     With such a mantissa, and no point, they are dropped and counted too.
//   - The value is m * 5^e * 2^e, or m / 5^-e * 2^e for a negative exponent e. 5^e is computed by repeated squaring.
//
// This is not the correctly rounded conversion of strtod (compare Clinger, "How to read floating point numbers
// accurately", 1990), and clients depend on its exact results. The parser therefore performs the same double operations
// in the same order, and is faster where that makes no difference: the first digits are collected in a 64-bit integer,
// where all sums are exact in both types; the powers of 5 come from a table that the compiler computes by the same
// squarings; the multiplication by 2^e is exact and needs no call of ldexp in the range of normal doubles.
namespace {

constexpr double kMantissaLimit = 9007199254740992.0;             // 2^53
constexpr std::int64_t kLargestFinitePower = 441;                 // higher powers of 5 are no finite doubles
constexpr std::int64_t kExponentLimit = 100'000'000'000'000'000;  // further digits do not change the value

bool MayBeginNumber(char c) {
  return VRELIsAsciiDigit(c) || VRELIsAsciiSpace(c) || c == '+' || c == '-' || c == '.';
}

bool IsExponentMark(char c) {
  return c == 'e' || c == 'E' || c == 'd' || c == 'D';
}

// Repeated squaring from the lowest bit of the exponent on. The order of the operations determines the rounding.
constexpr double PowerOfFive(std::int64_t exponent) {
  double result = 1.0;
  for (double base = 5.0;; base *= base) {
    if ((exponent & 1) != 0) result *= base;
    exponent >>= 1;
    if (exponent == 0) return result;
  }
}

constexpr auto MakePowersOfFive() {
  std::array<double, kLargestFinitePower + 1> powers{};
  for (std::int64_t i = 0; i <= kLargestFinitePower; ++i) powers[static_cast<std::size_t>(i)] = PowerOfFive(i);
  return powers;
}

constexpr auto kPowersOfFive = MakePowersOfFive();

// Returns std::ldexp(x, exponent), by one multiplication if the power of two is a normal double.
double ScaleByPowerOfTwo(double x, std::int64_t exponent) {
  if (exponent < -1022 || exponent > 1023) {
    return std::ldexp(x, static_cast<int>(std::clamp<std::int64_t>(exponent, -100000, 100000)));
  }
  std::uint64_t const bits = static_cast<std::uint64_t>(exponent + 1023) << 52;
  double power;
  std::memcpy(&power, &bits, sizeof(power));
  return x * power;
}

// Parser of one unsigned number.
class NumberParser {
 public:
  explicit NumberParser(char const* text) : at(text) {
    ReadExactMantissa();
    ReadMantissa();
    if (digits != 0 && IsExponentMark(*at)) ReadExponent();
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
    if (n > kLargestFinitePower) return std::numeric_limits<double>::infinity();
    return kPowersOfFive[static_cast<std::size_t>(n)];
  }

  // Fast path of ReadMantissa: reads the digits, and the point, as long as the mantissa is an exact integer.
  void ReadExactMantissa() {
    std::uint64_t whole = 0;
    char const* start = at;
    whole = ReadExactDigits(whole);
    digits = at - start;
    if (*at == '.') {
      ++at;
      hasPoint = true;
      start = at;
      whole = ReadExactDigits(whole);
      fractionDigits = at - start;
      digits += fractionDigits;
    }
    mantissa = static_cast<double>(whole);
  }

  std::uint64_t ReadExactDigits(std::uint64_t whole) {
    constexpr std::uint64_t limit = (1ull << 53) / 10 - 1;  // 10 * limit + 9 is below 2^53
    for (; VRELIsAsciiDigit(*at) && whole <= limit; ++at) whole = whole * 10 + static_cast<std::uint64_t>(*at - '0');
    return whole;
  }

  void ReadMantissa() {
    for (;; ++at) {
      if (VRELIsAsciiDigit(*at)) {
        ReadMantissaDigit(*at - '0');
      } else if (*at == '.' && !hasPoint) {
        hasPoint = true;
      } else {
        return;
      }
    }
  }

  void ReadMantissaDigit(int digit) {
    if (CountsInExponent()) {
      ++exponent;
      return;
    }
    ++digits;
    if (mantissa >= kMantissaLimit) return;
    mantissa = mantissa * 10.0 + digit;
    if (hasPoint) ++fractionDigits;
  }

  void ReadExponent() {
    bool hasSign = false;
    for (++at;; ++at) {
      if (VRELIsAsciiDigit(*at)) {
        ReadExponentDigit(*at - '0');
      } else if ((*at == '+' || *at == '-') && !hasSign) {
        hasSign = true;
        isExponentNegative = *at == '-';
      } else {
        return;
      }
    }
  }

  void ReadExponentDigit(int digit) {
    if (CountsInExponent()) {
      ++exponent;
    } else if (exponent < kExponentLimit) {
      exponent = exponent * 10 + digit;
    }
  }

  bool CountsInExponent() const { return mantissa > kMantissaLimit && !hasPoint; }

  char const* at;
  double mantissa = 0.0;
  std::int64_t digits = 0;          // digits of the mantissa, dropped ones after the point included
  std::int64_t fractionDigits = 0;  // digits after the point that are in the mantissa
  std::int64_t exponent = 0;        // written exponent and number of dropped digits
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
    while (VRELIsAsciiSpace(*at)) ++at;
    double const sign = *at == '-' ? -1.0 : 1.0;
    if (VRELIsAsciiPunctuation(*at) && *at != '.') ++at;
    NumberParser const parser(at);
    value = parser.Value(sign);
    at = parser.End();
  }
  if (end != nullptr) *end = const_cast<char*>(at);
  return value;
}

double VRELFloatUtil::vrelatof(char const*) noexcept {
  return 0.0;
}
