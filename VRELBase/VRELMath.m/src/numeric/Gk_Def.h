// System-wide tolerances, and multiples of pi.
#pragma once

#include <cstdint>

// Tolerances for Gk_Func::equal and for the geometry. Lengths are in model units; parameters have no unit.
//
//   if (Gk_Func::equal(length, 0.0, Gk_Def::FuzzPos)) return;  // a degenerate edge
class Gk_Def {
 public:
  // Tolerance of numbers and parameters.
  static constexpr double FuzzReal = 1e-10;
  // Tolerance of knots.
  static constexpr double FuzzKnot = 1e-10;
  // Tolerance of positions.
  static constexpr double FuzzPos = 1e-6;
  // Distance within which a position snaps to another.
  static constexpr double FuzzSnap = 0.001;

  static constexpr double VRELPI = 3.141592653589793;

  static constexpr std::int32_t errorLevel = 1;
};

// Angles in radians, each rounded to the nearest double. That is also the product or quotient of VRELPI.
inline constexpr double VRELPI = Gk_Def::VRELPI;
inline constexpr double VREL2PI = 6.283185307179586;
inline constexpr double VREL3PI = 9.42477796076938;
inline constexpr double VRELPIBY2 = 1.5707963267948966;
inline constexpr double VREL3PIBY2 = 4.71238898038469;
inline constexpr double VRELPIBY4 = 0.7853981633974483;
inline constexpr double VREL3PIBY4 = 2.356194490192345;
inline constexpr double VRELINVPI = 0.3183098861837907;
inline constexpr double VRELINV2PI = 0.15915494309189535;
