// Comparison with a tolerance, and other small numeric functions.
#pragma once

#include <cmath>

#include "VRELExport.h"

// Returns x times x.
constexpr double VRELSquare(double x) noexcept {
  return x * x;
}

// Static functions without state. None of them fails.
//
//   Gk_Func::equal(0.1 + 0.2, 0.3, Gk_Def::FuzzReal);  // true
//   Gk_Func::round(2.3, 0.25);                         // 2.25
class VREL_EXPORT Gk_Func {
 public:
  // Return whether a and b differ by at most tol; false if one of the three is NaN.
  static bool equal(double a, double b, double tol) noexcept { return std::fabs(a - b) <= tol; }
  static bool equal(float a, float b, float tol) noexcept { return std::fabs(a - b) <= tol; }

  // Returns whether a is at most b + tol.
  static bool lesseq(double a, double b, double tol) noexcept { return b + tol >= a; }

  // Returns whether n is even.
  static bool isEven(int n) noexcept { return (n & 1) == 0; }

  // Return the absolute value; INT_MIN is returned unchanged.
  static int abs(int n) noexcept { return n < 0 ? static_cast<int>(0u - static_cast<unsigned int>(n)) : n; }
  static double abs(double x) noexcept { return std::fabs(x); }

  // Compatibility: returns whether b is below both a and c, which differs from what the name suggests.
  static bool notInRange(int a, int b, int c) noexcept { return b < a && b < c; }

  // Returns the binomial coefficient of n over k; 0 for k below 0 or above n. The result is a product of quotients and
  // may differ from the exact value in the last digits.
  static double binCoeff(int n, int k) noexcept;

  // Returns a t / (b - (b - a) t), a rational map that leaves 0 and 1 fixed; t itself if it is within FuzzReal of 0
  // or 1.
  static double projectConvexRatio(double t, double a, double b) noexcept;

  // Returns whether two strings are equal up to the first index where either ends or has the byte `stop`. A `stop` in
  // one string is sufficient; the other may have any byte there. False for null.
  static bool compare(char const* s, char const* t, char stop) noexcept;

  // Returns x with its fraction rounded to the nearest multiple of step; halves round up.
  static double round(double x, double step) noexcept;

  // Returns the angle of (x, y) in the range 0 to 2 pi; 0 for an angle within FuzzReal of 0.
  static double atan2(double y, double x) noexcept;
};
