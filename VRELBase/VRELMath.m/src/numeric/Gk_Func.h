// Comparison with a tolerance, and other small functions of numbers.
#pragma once

#include <cmath>

#include "VRELExport.h"

constexpr double VRELSquare(double x) noexcept {
  return x * x;
}

// Static functions without state; none fails.
class VREL_EXPORT Gk_Func {
 public:
  // Whether a and b differ by at most tol; false if one of the three is not a number.
  static bool equal(double a, double b, double tol) noexcept { return std::fabs(a - b) <= tol; }
  static bool equal(float a, float b, float tol) noexcept { return std::fabs(a - b) <= tol; }

  // Whether a is at most b, or above it by no more than tol.
  static bool lesseq(double a, double b, double tol) noexcept { return b + tol >= a; }

  static bool isEven(int n) noexcept { return (n & 1) == 0; }

  // The absolute value; the smallest int stays as it is.
  static int abs(int n) noexcept { return n < 0 ? static_cast<int>(0u - static_cast<unsigned int>(n)) : n; }
  static double abs(double x) noexcept { return std::fabs(x); }

  // True only when b is below both a and c. Name and order of the arguments promise no more than that.
  static bool notInRange(int a, int b, int c) noexcept { return b < a && b < c; }

  // In how many ways k things are taken out of n; 0 for a k below 0 or above n. A running product of quotients, so the
  // last places are rounded.
  static double binCoeff(int n, int k) noexcept;

  // The rational map a t / (b - (b - a) t), which leaves 0 and 1 where they are. A t within FuzzReal of 0 or 1 comes
  // back unchanged.
  static double projectConvexRatio(double t, double a, double b) noexcept;

  // Whether two texts agree up to the first place at which either has its end or the byte `stop`. A stop byte in one
  // of them is enough, whatever stands there in the other. False for null.
  static bool compare(char const* s, char const* t, char stop) noexcept;

  // x, its fraction rounded to the nearest multiple of step (halves go up).
  static double round(double x, double step) noexcept;

  // The angle of (x, y) in 0 to 2 pi. An angle within FuzzReal of 0 is 0.
  static double atan2(double y, double x) noexcept;
};
