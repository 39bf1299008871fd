#include "Gk_Func.h"

#include <algorithm>

#include "Gk_Def.h"

double Gk_Func::binCoeff(int n, int k) noexcept {
  if (k < 0 || n < k) return 0.0;
  double result = 1.0;
  // Each factor is 2 or more, so that the product either ends or reaches infinity within about a thousand iterations.
  for (int m = std::min(k, n - k); m != 0 && std::isfinite(result); --m, --n) {
    result = static_cast<double>(n) / m * result;
  }
  return result;
}

double Gk_Func::projectConvexRatio(double t, double a, double b) noexcept {
  if (equal(t, 0.0, Gk_Def::FuzzReal) || equal(t, 1.0, Gk_Def::FuzzReal)) return t;
  return a * t / (b - (b - a) * t);
}

bool Gk_Func::compare(char const* s, char const* t, char stop) noexcept {
  if (s == nullptr || t == nullptr) return false;
  for (;; ++s, ++t) {
    if (*s == stop || *t == stop) return true;
    if (*s == '\0' || *t == '\0' || *s != *t) return *s == *t;
  }
}

double Gk_Func::round(double x, double step) noexcept {
  double const whole = std::floor(x);
  return std::floor((x - whole) / step + 0.5) * step + whole;
}

double Gk_Func::atan2(double y, double x) noexcept {
  double const angle = std::atan2(y, x);
  if (equal(angle, 0.0, Gk_Def::FuzzReal)) return 0.0;
  return angle < 0.0 ? angle + 2.0 * Gk_Def::VRELPI : angle;
}
