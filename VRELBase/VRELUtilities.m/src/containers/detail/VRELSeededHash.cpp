#include "detail/VRELSeededHash.h"

#include <sys/random.h>

#include <chrono>

VRELSeededHash::Key const& VRELSeededHash::ProcessKey() noexcept {
  static Key const key = [] {
    Key drawn = {};
    if (getrandom(&drawn, sizeof drawn, GRND_NONBLOCK) != static_cast<ssize_t>(sizeof drawn)) {
      // Early in the start of a machine: the time and the random base of the stack.
      drawn.low = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
      drawn.high = reinterpret_cast<std::uintptr_t>(&drawn);
    }
    return drawn;
  }();
  return key;
}
