#include "detail/VRELSeededHash.h"

#include <sys/random.h>

#include <chrono>

VRELSeededHash::Key const& VRELSeededHash::ProcessKey() noexcept {
  static Key const key = [] {
    Key drawn = {};
#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
    // A fixed key, so that the run of a fuzzer can be repeated.
    return drawn;
#endif
    if (getrandom(&drawn, sizeof drawn, GRND_NONBLOCK) != static_cast<ssize_t>(sizeof drawn)) {
      // Early in the start of a machine: the time and the random base of the stack.
      drawn.low = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
      drawn.high = reinterpret_cast<std::uintptr_t>(&drawn);
    }
    return drawn;
  }();
  return key;
}
