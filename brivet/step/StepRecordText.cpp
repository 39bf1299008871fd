#include "StepRecordText.h"

#include <cstddef>
#include <cstring>

#include "VRELFloatUtil.h"

namespace {

// A mantissa below 2^53 and a power of ten up to 10^22 are exact doubles, so that one multiplication or division gives
// the nearest double (W. D. Clinger: How to read floating point numbers accurately). VRELFloatUtil gives the same
// there: 5^22 is exact as well, and its factors of two do not round.
constexpr std::uint64_t kExactMantissa = std::uint64_t(1) << 53U;
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kLargestPower = 22;
constexpr int kSafeDigits = 18;
constexpr int kNumberLimit = 63;  // bytes; longer numbers take the general way

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
// Takes eight digits at once, if there are so many: in a register, neighbouring digits are combined to numbers of two,
// of four and of eight digits (D. Lemire: Number parsing at a gigabyte per second).
bool TakeEightDigits(char const* bytes, std::uint64_t& number) {
  std::uint64_t block;
  std::memcpy(&block, bytes, sizeof block);
  std::uint64_t const above = block + 0x4646464646464646U;
  std::uint64_t const below = block - 0x3030303030303030U;
  if (((above | below) & 0x8080808080808080U) != 0) return false;
  block = below * 10 + (below >> 8U);
  constexpr std::uint64_t kPairs = 0x000000FF000000FFU;
  block = ((block & kPairs) * 0x000F424000000064U + (block >> 16U & kPairs) * 0x0000271000000001U) >> 32U;
  number = number * 100000000U + block;
  return true;
}
#else
bool TakeEightDigits(char const* /*bytes*/, std::uint64_t& /*number*/) {
  return false;
}
#endif

// Takes digits, and returns the position after them. So many that they overflow are not used.
char const* TakeDigits(char const* at, std::uint64_t& number) {
  if (TakeEightDigits(at, number)) at += 8;
  for (; IsDigit(*at); ++at) number = number * 10 + static_cast<std::uint64_t>(*at - '0');
  return at;
}

bool IsPlain(char byte) {
  return byte >= ' ' && byte < 0x7F && byte != '\'' && byte != '\\';
}

}  // namespace

StepRecordText::StepRecordText(char const* bytes, std::string_view type) noexcept {
  if (bytes == nullptr || std::memcmp(bytes, type.data(), type.size()) != 0) return;
  at = bytes + type.size();
  SkipBlanks();
  if (*at == '(') {
    ++at;
  } else {
    Stop();
  }
}

bool StepRecordText::Skip() noexcept {
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

bool StepRecordText::TakeNumber(double& number) noexcept {
  char const* const first = at;
  bool const isNegative = *at == '-';
  if (isNegative || *at == '+') ++at;
  char const* const mantissa = at;
  std::uint64_t whole = 0;
  at = TakeDigits(at, whole);
  auto digits = at - mantissa;
  std::ptrdiff_t power = 0;
  if (*at == '.') {
    char const* const fraction = ++at;
    at = TakeDigits(at, whole);
    power = fraction - at;
    digits -= power;
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
