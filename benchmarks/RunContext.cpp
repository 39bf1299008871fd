// Says in each run's results which compiler made the program, and which peers it was built with.
#include <benchmark/benchmark.h>

namespace {

bool const isTold = [] {
  benchmark::AddCustomContext("compiler", BENCHMARK_COMPILER);
  benchmark::AddCustomContext("peers", BENCHMARK_PEERS);
  return true;
}();

}  // namespace
