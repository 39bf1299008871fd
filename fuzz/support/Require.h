// The assertion of the fuzzers.
#pragma once

#include <cstdio>
#include <cstdlib>

// Aborts the program if a contract is violated, so that libFuzzer keeps the input.
inline void Require(bool holds, char const* contract) {
  if (holds) return;
  std::fprintf(stderr, "Contract violated: %s\n", contract);
  std::abort();
}
