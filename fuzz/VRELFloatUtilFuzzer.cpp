// Parses a generated string by vrelstrtod, and compares the value, bit for bit, and the end with a model that performs
// one documented step after the other. Decimal numbers of up to 15 digits with a power of ten of up to 22 must also
// equal the result of the C library.
#include "VRELFloatUtil.h"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "NumberModel.h"
#include "Require.h"

namespace {

bool AreSame(double a, double b) {
  return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

// Returns whether the string is a decimal number that is one rounding away from exact integers.
bool IsSimple(std::string const& text) {
  std::size_t at = 0;
  long digits = 0;
  long fraction = 0;
  auto const count = [&](long& counter) {
    for (; at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])) != 0; ++at) ++counter;
  };
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  count(digits);
  if (at < text.size() && text[at] == '.') {
    ++at;
    count(fraction);
  }
  digits += fraction;
  if (digits == 0 || digits > 15) return false;
  if (at == text.size()) return true;
  if (text[at] != 'e' && text[at] != 'E') return false;
  char* end = nullptr;
  std::string const exponent = text.substr(at + 1);
  bool const begins = !exponent.empty() && (std::isdigit(static_cast<unsigned char>(exponent.back())) != 0);
  long const power = std::strtol(exponent.c_str(), &end, 10);
  bool const isWhole = begins && std::isspace(static_cast<unsigned char>(exponent[0])) == 0 && *end == '\0';
  return isWhole && power <= 22 + fraction && power >= fraction - 22;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const text = std::string(reinterpret_cast<char const*>(bytes), size).c_str();
  char* end = nullptr;
  double const value = VRELFloatUtil::vrelstrtod(text.c_str(), &end);
  NumberModel const expected = ReadNumber(text);
  Require(end == text.c_str() + expected.taken, "the end is after the last byte taken");
  Require(AreSame(value, expected.value), "the value equals the model");
  Require(AreSame(VRELFloatUtil::vrelstrtod(text.c_str(), nullptr), value), "the end is optional");
  Require(AreSame(VRELFloatUtil::vrelatof(text.c_str()), 0.0), "vrelatof returns 0");
  if (IsSimple(text)) {
    Require(AreSame(value, std::strtod(text.c_str(), nullptr)), "a short number equals the result of strtod");
  }
  return 0;
}
