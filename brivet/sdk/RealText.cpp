#include "RealText.h"

#include <charconv>
#include <cmath>

namespace {

template <class Number>
std::string Format(Number number) {
  if (!std::isfinite(number)) return "0.";
  char buffer[32];
  auto const [end, error] = std::to_chars(buffer, buffer + sizeof buffer, number);
  static_cast<void>(error);  // the buffer is long enough for every number
  std::string text(buffer, end);
  std::size_t const exponent = text.find('e');
  if (exponent != text.npos) text[exponent] = 'E';
  if (text.find('.') == text.npos) text.insert(exponent == text.npos ? text.size() : exponent, ".");
  return text;
}

}  // namespace

std::string FormatReal(double number) {
  return Format(number);
}

std::string FormatReal(float number) {
  return Format(number);
}
