// Converts generated strings to numbers, booleans and trimmed strings, and numbers to strings and back, and compares
// the results with the C library.
#include "VRELStringConversions.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "Require.h"

namespace {

std::string Lower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

void CheckNumbers(std::string const& text, VRELString const& string) {
  double const real = std::atof(text.c_str());
  double value = -77;
  bool const isReal = VRELStringToDouble(string, value).IsSuccess();
  Require(isReal == (real != 0.0 || text[0] == '0'), "a zero needs the digit 0 at the start");
  if (isReal) {
    Require(value == real || (std::isnan(value) && std::isnan(real)), "a real number is read as by atof");
  } else {
    Require(value == -77, "a failure leaves the number unchanged");
  }

  int const whole = static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
  int number = -77;
  bool const isWhole = VRELStringToInteger(string, number).IsSuccess();
  Require(isWhole == (whole != 0 || text[0] == '0'), "a zero needs the digit 0 at the start");
  Require(number == (isWhole ? whole : -77), "an integer is read as by atoi");

  std::string const lower = Lower(text);
  bool const isTrue = lower == "yes" || lower == "true" || lower == "on";
  bool const isFalse = lower == "no" || lower == "false" || lower == "off";
  bool truth = !isTrue;
  bool const before = truth;
  Require(VRELStringToBool(string, truth).IsSuccess() == (isTrue || isFalse), "six words are booleans");
  Require(truth == (isTrue || (!isFalse && before)), "a word is true or false");
}

void CheckTrimming(std::string const& text, VRELString const& string) {
  char const* const blanks = " \t\n\v\f\r";
  std::size_t const first = text.find_first_not_of(blanks);
  std::string trimmed;
  if (first != std::string::npos) trimmed = text.substr(first, text.find_last_not_of(blanks) - first + 1);
  Require(VRELStringGetTrimmedString(string).toUtf8() == trimmed, "white space is cut at both ends");
  Require(VRELStringCheckIfWhiteSpace(string) == trimmed.empty(), "white space alone leaves nothing");

  std::size_t const begin = std::min(text.find_first_not_of('"'), text.size());
  std::string const rest = text.substr(begin);
  std::string const stripped = rest.substr(0, rest.find_last_not_of('"') + 1);
  VRELString out;
  RemoveDoubleQuotesAtStartAndEndOf(string, out);
  Require(out.toUtf8() == stripped, "quotation marks are removed at both ends");
}

// The first bytes as a double and as an integer, formatted and read back.
void CheckFormats(std::uint8_t const* bytes, std::size_t size) {
  double real = 0;
  std::memcpy(&real, bytes, std::min(size, sizeof real));
  char formatted[512];
  std::snprintf(formatted, sizeof formatted, "%f", real);
  Require(VRELStringFromDouble(real).toUtf8() == std::string(formatted).substr(0, 254), "a double has six decimals");

  int whole = 0;
  std::memcpy(&whole, bytes, std::min(size, sizeof whole));
  VRELString const digits = VRELStringFromInteger(whole);
  Require(digits.toUtf8() == std::to_string(whole), "an integer is decimal");
  int back = -1;
  Require(VRELStringToInteger(digits, back).IsSuccess() && back == whole, "an integer is read back");
  unsigned long big = 0;
  std::memcpy(&big, bytes, std::min(size, sizeof big));
  Require(VRELStringFromULong(big).toUtf8() == std::to_string(big), "an unsigned long is decimal");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  CheckFormats(bytes, size);
  std::string text = std::string(reinterpret_cast<char const*>(bytes), size).c_str();
  // Any bytes must be safe; the models are for ASCII.
  VRELString const any{std::string_view(text)};
  double value = 0;
  VRELStringToDouble(any, value);
  VRELStringGetTrimmedString(any);
  VRELString out;
  RemoveDoubleQuotesAtStartAndEndOf(any, out);
  VRELStringConvertToUpperCase(any);
  for (char& c : text) c = static_cast<char>(c & 0x7F);
  text = text.c_str();
  VRELString const string{std::string_view(text)};
  CheckNumbers(text, string);
  CheckTrimming(text, string);
  Require(VRELStringConvertToLowerCase(string).toUtf8() == Lower(text), "capital letters become small");
  return 0;
}
