#include "Gk_CPUTime.h"

#include <ctime>

Gk_CPUTime& Gk_CPUTime::operator-=(Gk_CPUTime const& other) noexcept {
  tickCount = static_cast<long>(static_cast<unsigned long>(tickCount) - static_cast<unsigned long>(other.tickCount));
  return *this;
}

Gk_CPUTime& Gk_CPUTime::operator+=(Gk_CPUTime const& other) noexcept {
  tickCount = static_cast<long>(static_cast<unsigned long>(tickCount) + static_cast<unsigned long>(other.tickCount));
  return *this;
}

Gk_CPUTime Gk_CPUTime::now() noexcept {
  return Gk_CPUTime(static_cast<long>(std::clock()));
}
