// Adds the compiler and the available peers to the results of each run.
#include <benchmark/benchmark.h>

namespace {

bool const isAdded = [] {
  benchmark::AddCustomContext("compiler", BENCHMARK_COMPILER);
  benchmark::AddCustomContext("peers", BENCHMARK_PEERS);
  return true;
}();

}  // namespace
