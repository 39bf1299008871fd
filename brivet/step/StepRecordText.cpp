#include "StepRecordText.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "VRELFloatUtil.h"

namespace {

// A mantissa below 2^53 and a power of ten up to 10^22 are exact doubles, so that one multiplication or division gives
// the nearest double (W. D. Clinger: How to read floating point numbers accurately). VRELFloatUtil gives the same
// there: 5^22 is exact as well, and its factors of two do not round.
constexpr std::uint64_t kExactMantissa = std::uint64_t(1) << 53U;
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kLargestPower = 22;
constexpr std::size_t kSafeDigits = 18;
constexpr int kNumberLimit = 63;  // bytes; longer numbers take the general way

// Takes digits, and returns the position after them. So many that they overflow are not used.
char const* TakeDigits(char const* at, std::uint64_t& number) {
  for (; IsDigit(*at); ++at) number = number * 10 + static_cast<std::uint64_t>(*at - '0');
  return at;
}

bool IsPlain(char byte) {
  return byte >= ' ' && byte < 0x7F && byte != '\'' && byte != '\\';
}

// Takes a number without an exponent and with no more digits than a double, as most are. Returns the position after it,
// or null for others.
char const* TakeShortNumber(char const* at, double& number) noexcept {
  constexpr std::size_t kWhole = 8;
  constexpr std::size_t kFraction = std::size(kWholePowersOfTen) - 1;
  bool const isNegative = *at == '-';
  char const* const digits = at + (isNegative ? 1 : 0);
  auto const [whole, fraction] = CountDigitsAround(digits);
  char const* const end = digits + whole + 1 + fraction;
  bool const hasExponent = (*end | 0x20) == 'e';
  if (whole - 1 >= kWhole || fraction > kFraction || hasExponent) return nullptr;
  double size;
  if (digits[whole] != '.') {
    if (digits[whole] != ',' && digits[whole] != ')') return nullptr;
    size = static_cast<double>(static_cast<std::int64_t>(NumberOfDigits(digits, whole)));
    number = isNegative ? -size : size;
    return digits + whole;
  }
  if (fraction == 0) {
    size = whole == 1 ? *digits - '0' : static_cast<double>(static_cast<std::int64_t>(NumberOfDigits(digits, whole)));
  } else {
    if (whole + fraction > kSafeDigits) return nullptr;
    std::uint64_t const mantissa =
        NumberOfDigits(digits, whole) * kWholePowersOfTen[fraction] + NumberOfDigits(digits + whole + 1, fraction);
    if (mantissa > kExactMantissa) return nullptr;
    size = static_cast<double>(static_cast<std::int64_t>(mantissa)) / kPowersOfTen[fraction];
  }
  number = isNegative ? -size : size;
  return end;
}

}  // namespace

bool StepRecordText::SkipAny() noexcept {
  SkipBlanks();
  switch (*at) {
    case '\'':
      do {
        ++at;
        while (IsPlain(*at)) ++at;
        if (*at != '\'') return Stop();
        ++at;
      } while (*at == '\'');
      return EndValue();
    case '*':
    case '$':
      ++at;
      return EndValue();
    case '#': {
      std::int64_t id = 0;
      return TakeReference(id) && EndValue();
    }
    case '.':
      if (!IsDigit(at[1])) {
        std::string_view name;
        return TakeEnumeration(name);
      }
      break;
    case '(':
      return SkipList();
    default:
      break;
  }
  double number = 0.0;
  return TakeNumber(number) && EndValue();
}

// The syntax was checked when the file was read: all that matters is where the list ends.
bool StepRecordText::SkipList() noexcept {
  long depth = 0;
  do {
    char const byte = *at++;
    if (byte == '(') {
      ++depth;
    } else if (byte == ')') {
      --depth;
    } else if (byte == '\'') {
      while (IsPlain(*at)) ++at;
      if (*at++ != '\'') return Stop();
    } else if (!IsWordByte(byte) && !IsBlank(byte) && std::string_view(",#$*.+").find(byte) == std::string_view::npos) {
      return Stop();
    }
  } while (depth > 0);
  return EndValue();
}

bool StepRecordText::TakeEnumeration(std::string_view& name) noexcept {
  SkipBlanks();
  if (*at != '.') return Stop();
  char const* const first = ++at;
  if (!IsLetter(*at)) return Stop();
  while (IsWordByte(*at)) ++at;
  if (*at != '.') return Stop();
  name = {first, static_cast<std::size_t>(at - first)};
  ++at;
  return EndValue();
}

bool StepRecordText::Triple(double* numbers) noexcept {
  // Without blanks first.
  if (*at == '(') {
    char const* position = at;
    int count = 0;
    do {
      position = TakeShortNumber(position + 1, numbers[count]);
    } while (position != nullptr && ++count < 3 && *position == ',');
    if (position != nullptr && position[0] == ')' && (position[1] == ',' || position[1] == ')')) {
      std::fill(numbers + count, numbers + 3, 0.0);
      at = position + 2;
      return true;
    }
  }
  int count = 0;
  std::fill_n(numbers, 3, 0.0);
  auto const take = [&](double number) noexcept {
    if (count == 3) return false;
    numbers[count++] = number;
    return true;
  };
  return Numbers(take) && count > 0;
}

bool StepRecordText::TakeNumber(double& number) noexcept {
  char const* const first = at;
  if (char const* const end = TakeShortNumber(at, number)) {
    at = end;
    return true;
  }
  bool const isNegative = *at == '-';
  if (isNegative || *at == '+') ++at;
  char const* const mantissa = at;
  std::uint64_t whole = 0;
  at = TakeDigits(at, whole);
  auto digits = static_cast<std::size_t>(at - mantissa);
  std::ptrdiff_t power = 0;
  if (*at == '.') {
    char const* const fraction = ++at;
    at = TakeDigits(at, whole);
    power = fraction - at;
    digits += static_cast<std::size_t>(at - fraction);
  }
  if (digits == 0) return Stop();
  if (*at == 'E' || *at == 'e') {
    ++at;
    bool const isBelowOne = *at == '-';
    if (isBelowOne || *at == '+') ++at;
    char const* const exponent = at;
    int written = 0;
    for (; IsDigit(*at); ++at) written = written < 10000 ? written * 10 + (*at - '0') : written;
    if (at == exponent) return Stop();
    power += isBelowOne ? -written : written;
  }
  if (digits <= kSafeDigits && whole <= kExactMantissa && power >= -kLargestPower && power <= kLargestPower) {
    auto const value = static_cast<double>(whole);
    double const size = power < 0 ? value / kPowersOfTen[-power] : value * kPowersOfTen[power];
    number = isNegative ? -size : size;
    return true;
  }
  if (at - first > kNumberLimit) return Stop();
  number = VRELFloatUtil::vrelstrtod(first, nullptr);
  return true;
}
