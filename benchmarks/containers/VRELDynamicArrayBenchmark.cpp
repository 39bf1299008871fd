// VRELDynamicArray compared with std::vector.
#include "VRELDynamicArray.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr int million = 1000000;

void ArrayAddMillionInts(benchmark::State& state) {
  for (auto _ : state) {
    VRELDynamicArray<int> array;
    for (int i = 0; i < million; ++i) array.add(i);
    benchmark::DoNotOptimize(array.getArray());
  }
}
BENCHMARK(ArrayAddMillionInts)->Unit(benchmark::kMicrosecond);

void ArrayAddMillionIntsStdVector(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<int> array;
    for (int i = 0; i < million; ++i) array.push_back(i);
    benchmark::DoNotOptimize(array.data());
  }
}
BENCHMARK(ArrayAddMillionIntsStdVector)->Unit(benchmark::kMicrosecond);

void ArraySumMillionInts(benchmark::State& state) {
  VRELDynamicArray<int> array(million, 3);
  for (auto _ : state) {
    benchmark::DoNotOptimize(array);
    long sum = 0;
    for (int i = 0, n = array.size(); i < n; ++i) sum += array[i];
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(ArraySumMillionInts)->Unit(benchmark::kMicrosecond);

void ArraySumMillionIntsStdVector(benchmark::State& state) {
  std::vector<int> array(million, 3);
  for (auto _ : state) {
    benchmark::DoNotOptimize(array);
    long sum = 0;
    for (std::size_t i = 0, n = array.size(); i < n; ++i) sum += array[i];
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(ArraySumMillionIntsStdVector)->Unit(benchmark::kMicrosecond);

}  // namespace
