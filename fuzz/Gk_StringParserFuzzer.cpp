// Parses a generated string by Gk_StringParser, with and without a terminator. Compares the classification with a
// scanner, integers with the C library, and real numbers with a model.
#include "Gk_StringParser.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "NumberModel.h"
#include "Require.h"

namespace {

// Scanner from the beginning of a string to its end.
struct Scanner {
  bool Take(char const* set) {
    if (at >= text.size() || std::strchr(set, text[at]) == nullptr) return false;
    ++at;
    return true;
  }
  bool TakeWord(char const* word) {
    if (text.compare(at, std::strlen(word), word) != 0) return false;
    at += std::strlen(word);
    return true;
  }
  int TakeAll(char const* set) {
    int count = 0;
    while (Take(set)) ++count;
    return count;
  }
  bool Ends() const { return at == text.size(); }

  std::string const& text;
  std::size_t at = 0;
};

char const* const kDigits = "0123456789";
char const* const kHexDigits = "0123456789abcdefABCDEF";

bool EndsInUnsigned(Scanner scanner) {
  scanner.TakeAll(scanner.TakeWord("0x") ? kHexDigits : kDigits);
  return scanner.Ends();
}

bool EndsInInteger(Scanner scanner) {
  scanner.Take("+-");
  return EndsInUnsigned(scanner);
}

bool IsReal(Scanner scanner) {
  scanner.Take("+-");
  int digits = scanner.TakeAll(kDigits);
  if (scanner.Take(".")) digits += scanner.TakeAll(kDigits);
  if (digits == 0) return false;
  return scanner.Take("eE") ? EndsInInteger(scanner) : scanner.Ends();
}

double RealOf(std::string const& text, std::size_t& taken) {
  NumberModel const first = ReadNumber(text);
  taken = first.taken;
  if (taken >= text.size() || text[taken] != '.') return first.value;
  NumberModel const second = ReadNumber(text.substr(taken));
  taken += second.taken;
  return first.value + second.value;
}

void CheckKinds(std::string const& text) {
  Gk_StringParser parser(text.c_str());
  Require(parser.isString(text.c_str()), "a string equals itself");
  for (int from = 0; from <= std::min<int>(static_cast<int>(text.size()), 8); ++from) {
    Scanner const scanner{text, static_cast<std::size_t>(from)};
    Require(parser.isUnsignedInteger(from) == EndsInUnsigned(scanner), "an unsigned integer is recognized");
    Require(parser.isInteger(from) == EndsInInteger(scanner), "an integer is recognized");
    Require(parser.isReal(from) == IsReal(scanner), "a real number is recognized");
    Scanner decimal = scanner;
    Require(parser.countDigits(from) == decimal.TakeAll(kDigits), "digits are counted");
    Require(parser.spill() != nullptr && *parser.spill() == text.c_str()[decimal.at], "a count ends at its spill");
    Scanner hexadecimal = scanner;
    Require(parser.countHexDigits(from) == hexadecimal.TakeAll(kHexDigits), "hexadecimal digits are counted");
  }
}

void CheckValues(std::string const& text) {
  Gk_StringParser parser(text.c_str());
  errno = 0;
  long const whole = std::strtol(text.c_str(), nullptr, 0);
  Require(parser.intValue() == std::clamp<long>(whole, INT_MIN, INT_MAX), "an integer is limited to its type");
  Require(parser.clean(), "a conversion tests its spill");

  errno = 0;
  char* end = nullptr;
  unsigned long const big = std::strtoul(text.c_str(), &end, 0);
  bool const negative = std::string(text.c_str(), static_cast<char const*>(end)).find('-') != std::string::npos;
  unsigned long const magnitude = negative ? 0UL - big : big;
  unsigned const expected = errno == ERANGE || magnitude > UINT_MAX ? UINT_MAX : static_cast<unsigned>(big);
  Require(parser.uIntValue() == expected, "an unsigned integer is limited to its type");
  Require(*parser.spill() == *end, "an integer ends at its spill");

  std::size_t taken = 0;
  double const real = RealOf(text, taken);
  double const value = parser.realValue();
  Require(value == real || (std::isnan(value) && std::isnan(real)), "a real number equals the model");
  Require(*parser.spill() == text.c_str()[taken], "a real number ends at its spill");
}

// Without a terminator, so that AddressSanitizer finds reads after the bytes.
void CheckBareBytes(std::uint8_t const* bytes, std::size_t size) {
  Gk_StringParser parser(Gk_String(reinterpret_cast<char const*>(bytes), static_cast<int>(size)));
  for (int from = -1; from <= static_cast<int>(std::min<std::size_t>(size, 8)) + 1; ++from) {
    parser.isUnsignedInteger(from);
    parser.isInteger(from);
    parser.isReal(from);
    Require(parser.countDigits(from) <= static_cast<int>(size), "a count ends with the bytes");
    Require(parser.countHexDigits(from) <= static_cast<int>(size), "a count ends with the bytes");
  }
  parser.intValue();
  parser.uIntValue();
  parser.realValue();
  Require(parser.clean(), "a conversion tests its spill");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const text = std::string(reinterpret_cast<char const*>(bytes), size).c_str();
  CheckKinds(text);
  CheckValues(text);
  CheckBareBytes(bytes, size);
  return 0;
}
