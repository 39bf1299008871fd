// What a fuzzer asserts.
#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the program where a promise does not hold, so that libFuzzer keeps the input.
inline void Require(bool holds, char const* promise) {
  if (holds) return;
  std::fprintf(stderr, "Contract violated: %s\n", promise);
  std::abort();
}
