#include "StepRecordText.h"

#include <cstddef>
#include <cstring>
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

// Returns whether the bytes begin with the name of a type, compared in blocks that overlap.
bool BeginsWith(char const* bytes, std::string_view type) {
  constexpr std::size_t kBlock = sizeof(std::uint64_t);
  if (type.size() < kBlock) return std::memcmp(bytes, type.data(), type.size()) == 0;
  auto const isSameAt = [&](std::size_t place) {
    std::uint64_t found;
    std::uint64_t expected;
    std::memcpy(&found, bytes + place, kBlock);
    std::memcpy(&expected, type.data() + place, kBlock);
    return found == expected;
  };
  for (std::size_t place = 0; place + kBlock < type.size(); place += kBlock) {
    if (!isSameAt(place)) return false;
  }
  return isSameAt(type.size() - kBlock);
}

}  // namespace

StepRecordText::StepRecordText(char const* bytes, std::string_view type) noexcept {
  if (bytes == nullptr || !BeginsWith(bytes, type)) return;
  at = bytes + type.size();
  SkipBlanks();
  if (*at == '(') {
    ++at;
  } else {
    Stop();
  }
}

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
        return Enumeration(name);
      }
      break;
    default:
      break;
  }
  double number = 0.0;
  return TakeNumber(number) && EndValue();
}

bool StepRecordText::Enumeration(std::string_view& name) noexcept {
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

// Most numbers have a point, no exponent, and not more digits than a double.
bool StepRecordText::TakeShortNumber(double& number) noexcept {
  constexpr std::size_t kWhole = 8;
  constexpr std::size_t kFraction = std::size(kWholePowersOfTen) - 1;
  char const* digits = at;
  bool const isNegative = *digits == '-';
  if (isNegative) ++digits;
  std::size_t const whole = CountDigits(digits);
  if (whole == 0 || whole > kWhole || digits[whole] != '.') return false;
  std::size_t const fraction = CountDigits(digits + whole + 1);
  char const* const end = digits + whole + 1 + fraction;
  if (fraction > kFraction || whole + fraction > kSafeDigits || *end == 'E' || *end == 'e') return false;
  auto mantissa =
      static_cast<std::int64_t>(whole == 1 ? static_cast<std::uint64_t>(*digits - '0') : NumberOfDigits(digits, whole));
  auto size = static_cast<double>(mantissa);
  if (fraction > 0) {
    mantissa = mantissa * static_cast<std::int64_t>(kWholePowersOfTen[fraction]) +
               static_cast<std::int64_t>(NumberOfDigits(digits + whole + 1, fraction));
    if (mantissa > static_cast<std::int64_t>(kExactMantissa)) return false;
    size = static_cast<double>(mantissa) / kPowersOfTen[fraction];
  }
  number = isNegative ? -size : size;
  at = end;
  return true;
}

bool StepRecordText::TakeNumber(double& number) noexcept {
  if (TakeShortNumber(number)) return true;
  char const* const first = at;
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
