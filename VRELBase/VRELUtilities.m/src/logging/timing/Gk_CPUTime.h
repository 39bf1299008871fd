// Processor time, as clock() counts it.
#pragma once

#include "VRELExport.h"

// A number of processor ticks, a millionth of a second each: a moment, or a span between two.
//
//   Gk_CPUTime const start = Gk_CPUTime::now();
//   ...
//   Gk_CPUTime span = Gk_CPUTime::now();
//   span -= start;
class VREL_EXPORT Gk_CPUTime {
 public:
  Gk_CPUTime(long ticks = 0) noexcept : tickCount(ticks) {}

  // Sums and differences wrap around, as the ticks of the processor do.
  Gk_CPUTime& operator-=(Gk_CPUTime const& other) noexcept;
  Gk_CPUTime& operator+=(Gk_CPUTime const& other) noexcept;

  double seconds() const noexcept { return static_cast<double>(tickCount) / 1000000; }

  // The processor time that this process has taken.
  static Gk_CPUTime now() noexcept;

 private:
  long tickCount;
};
