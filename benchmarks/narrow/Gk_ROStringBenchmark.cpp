#include "Gk_ROString.h"

#include <benchmark/benchmark.h>
#include <fnmatch.h>

#include <string>

namespace {

struct Match {
  char const* name;
  char const* pattern;
};

// Patterns as in a search for files in directories.
constexpr Match ordinary[] = {
    {"/home/jo/parts/bolt_m8x40.stp", "*.stp"},
    {"/home/jo/parts/bolt_m8x40.stp", "*.igs"},
    {"Assembly_Gearbox.CATProduct", "assembly_*.cat*"},
    {"Gearbox_0012_revB.prt", "gearbox_[0-9][0-9][0-9][0-9]_rev?.prt"},
};

void matchPathPattern(benchmark::State& state) {
  Match const& match = ordinary[state.range(0)];
  Gk_ROString const name(match.name);
  Gk_ROString const pattern(match.pattern);
  for (auto _ : state) benchmark::DoNotOptimize(name.matchPathPattern(pattern));
}
BENCHMARK(matchPathPattern)->DenseRange(0, 3);

void peerFnmatch(benchmark::State& state) {
  Match const& match = ordinary[state.range(0)];
  for (auto _ : state) benchmark::DoNotOptimize(fnmatch(match.pattern, match.name, FNM_CASEFOLD));
}
BENCHMARK(peerFnmatch)->DenseRange(0, 3);

// A pattern that fails at every position, for names of many lengths.
constexpr char hostile[] = "*a*a*a*a*b";

void matchPathPatternHostile(benchmark::State& state) {
  std::string const letters(static_cast<std::size_t>(state.range(0)), 'a');
  Gk_ROString const name(letters.c_str());
  Gk_ROString const pattern(hostile);
  for (auto _ : state) benchmark::DoNotOptimize(name.matchPathPattern(pattern));
}
BENCHMARK(matchPathPatternHostile)->Arg(100)->Arg(1000)->Arg(10000);

void peerFnmatchHostile(benchmark::State& state) {
  std::string const letters(static_cast<std::size_t>(state.range(0)), 'a');
  for (auto _ : state) benchmark::DoNotOptimize(fnmatch(hostile, letters.c_str(), FNM_CASEFOLD));
}
BENCHMARK(peerFnmatchHostile)->Arg(100)->Arg(1000)->Arg(10000);

}  // namespace
