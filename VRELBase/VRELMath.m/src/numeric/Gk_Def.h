// The tolerances that the whole system works with, and the angles around pi.
#pragma once

#include <cstdint>

// Constants only. A length is in the units of the model, a parameter has none.
class Gk_Def {
 public:
  // Two numbers, or two parameters, are one number within this.
  static constexpr double FuzzReal = 1e-10;
  // Two knots are one knot within this.
  static constexpr double FuzzKnot = 1e-10;
  // Two positions are one position within this.
  static constexpr double FuzzPos = 1e-6;
  // A position snaps to another within this.
  static constexpr double FuzzSnap = 0.001;

  static constexpr double VRELPI = 3.141592653589793;

  static constexpr std::int32_t errorLevel = 1;
};

// Angles in radians; each is the double nearest to its true value, which is also the product or quotient of VRELPI.
inline constexpr double VRELPI = Gk_Def::VRELPI;
inline constexpr double VREL2PI = 6.283185307179586;
inline constexpr double VREL3PI = 9.42477796076938;
inline constexpr double VRELPIBY2 = 1.5707963267948966;
inline constexpr double VREL3PIBY2 = 4.71238898038469;
inline constexpr double VRELPIBY4 = 0.7853981633974483;
inline constexpr double VREL3PIBY4 = 2.356194490192345;
inline constexpr double VRELINVPI = 0.3183098861837907;
inline constexpr double VRELINV2PI = 0.15915494309189535;
