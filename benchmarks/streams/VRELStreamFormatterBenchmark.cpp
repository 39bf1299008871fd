#include "VRELStreamFormatter.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "VRELString.h"
#include "VRELStringOutputStream.h"

namespace {

constexpr int count = 1000000;
constexpr int textCount = 100000;

// Coordinates of various magnitudes.
std::vector<double> const& Numbers() {
  static std::vector<double> const numbers = [] {
    std::vector<double> made;
    made.reserve(count);
    for (long i = 0; i < count; ++i) made.push_back(static_cast<double>(i * 7919 % 2000003 - 1000000) / 128.0);
    return made;
  }();
  return numbers;
}

// Returns a word of the given length.
std::string Word(benchmark::State const& state) {
  return std::string(static_cast<std::size_t>(state.range(0)), 'x');
}

void dumpDoubles(benchmark::State& state) {
  std::vector<double> const& numbers = Numbers();
  for (auto _ : state) {
    VRELStringOutputStream stream;
    VRELStreamFormatter out(&stream);
    for (double const number : numbers) out << number;
    benchmark::DoNotOptimize(stream.contents());
  }
  state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(dumpDoubles)->Unit(benchmark::kMillisecond);

void dumpDoublesWithoutZeros(benchmark::State& state) {
  std::vector<double> const& numbers = Numbers();
  for (auto _ : state) {
    VRELStringOutputStream stream;
    VRELStreamFormatter out(&stream);
    out.SetTrailingZerosRemovalFormat(VREL_TRAILING_ZEROS_REMOVED);
    for (double const number : numbers) out << number;
    benchmark::DoNotOptimize(stream.contents());
  }
  state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(dumpDoublesWithoutZeros)->Unit(benchmark::kMillisecond);

void peerSnprintfAndAppend(benchmark::State& state) {
  std::vector<double> const& numbers = Numbers();
  for (auto _ : state) {
    std::string text;
    char number[128];
    for (double const value : numbers) {
      std::snprintf(number, sizeof number, "%lf", value);
      text.append(number);
    }
    benchmark::DoNotOptimize(text.data());
  }
  state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(peerSnprintfAndAppend)->Unit(benchmark::kMillisecond);

void dumpChars(benchmark::State& state) {
  std::string const word = Word(state);
  for (auto _ : state) {
    VRELStringOutputStream stream;
    VRELStreamFormatter out(&stream);
    for (int i = 0; i < textCount; ++i) out << word.c_str();
    benchmark::DoNotOptimize(stream.contents());
  }
  state.SetItemsProcessed(state.iterations() * textCount);
}
BENCHMARK(dumpChars)->Arg(8)->Arg(32)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);

void dumpStrings(benchmark::State& state) {
  VRELString const word(Word(state));
  for (auto _ : state) {
    VRELStringOutputStream stream;
    VRELStreamFormatter out(&stream);
    for (int i = 0; i < textCount; ++i) out << word;
    benchmark::DoNotOptimize(stream.contents());
  }
  state.SetItemsProcessed(state.iterations() * textCount);
}
BENCHMARK(dumpStrings)->Arg(8)->Arg(32)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);

void peerAppend(benchmark::State& state) {
  std::string const word = Word(state);
  for (auto _ : state) {
    std::string text;
    for (int i = 0; i < textCount; ++i) text.append(word.c_str());
    benchmark::DoNotOptimize(text.data());
  }
  state.SetItemsProcessed(state.iterations() * textCount);
}
BENCHMARK(peerAppend)->Arg(8)->Arg(32)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
