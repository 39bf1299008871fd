// Processor time in ticks of clock().
#pragma once

#include "VRELExport.h"

// Point in time or time span, in processor ticks of a microsecond.
//
//   Gk_CPUTime const start = Gk_CPUTime::now();
//   ...
//   Gk_CPUTime span = Gk_CPUTime::now();
//   span -= start;
//   double const seconds = span.seconds();
class VREL_EXPORT Gk_CPUTime {
 public:
  Gk_CPUTime(long ticks = 0) noexcept : tickCount(ticks) {}

  // Subtract and add modulo 2^64, as clock() wraps around.
  Gk_CPUTime& operator-=(Gk_CPUTime const& other) noexcept;
  Gk_CPUTime& operator+=(Gk_CPUTime const& other) noexcept;

  double seconds() const noexcept { return static_cast<double>(tickCount) / 1000000; }

  // Returns the processor time that the process has used.
  static Gk_CPUTime now() noexcept;

 private:
  long tickCount;
};
