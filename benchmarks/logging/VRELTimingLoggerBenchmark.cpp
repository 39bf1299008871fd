#include "VRELTimingLogger.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <string>
#include <unordered_map>
#include <vector>

#include "VRELEndTaskEvent.h"
#include "VRELEventBus.h"
#include "VRELStartTaskEvent.h"

// Each measures the given number of pairs of start and end events, with two readings of the clocks for each.
namespace {

constexpr int kIdentifierCount = 16;

std::vector<std::string> Identifiers() {
  std::vector<std::string> identifiers;
  for (int i = 0; i < kIdentifierCount; ++i) identifiers.push_back("Conversion Stage " + std::to_string(i));
  return identifiers;
}

void Start(std::string const& identifier) {
  VRELStartTaskEvent event("Stage", identifier.c_str(), VREL_LEVEL_INFO);
  VRELEventBus::Fire(event);
}

void End(std::string const& identifier) {
  VRELEndTaskEvent event(VREL_S_OK, "Stage", identifier.c_str(), VREL_LEVEL_INFO, true);
  VRELEventBus::Fire(event);
}

void CountPairs(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["per pair"] = benchmark::Counter(static_cast<double>(state.iterations() * state.range(0)),
                                                  benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// Consecutive tasks.
void pairsInARow(benchmark::State& state) {
  std::vector<std::string> const identifiers = Identifiers();
  VRELTimingLogger logger;
  logger.Initialize();
  for (auto _ : state) {
    for (int i = 0; i < state.range(0); ++i) {
      Start(identifiers[static_cast<std::size_t>(i % kIdentifierCount)]);
      End(identifiers[static_cast<std::size_t>(i % kIdentifierCount)]);
    }
  }
  CountPairs(state);
}
BENCHMARK(pairsInARow)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);

// Nested tasks.
void pairsNested(benchmark::State& state) {
  std::vector<std::string> const identifiers = Identifiers();
  VRELTimingLogger logger;
  logger.Initialize();
  for (auto _ : state) {
    for (long i = 0; i < state.range(0); ++i) Start(identifiers[static_cast<std::size_t>(i % kIdentifierCount)]);
    for (long i = state.range(0); i-- > 0;) End(identifiers[static_cast<std::size_t>(i % kIdentifierCount)]);
  }
  CountPairs(state);
}
BENCHMARK(pairsNested)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);

// Each task once, so that the summary gets a row for each.
void pairsOfSeparateTasks(benchmark::State& state) {
  std::vector<std::string> identifiers;
  for (int i = 0; i < state.range(0); ++i) identifiers.push_back("Conversion Stage " + std::to_string(i));
  for (auto _ : state) {
    state.PauseTiming();
    auto* const logger = new VRELTimingLogger;
    logger->Initialize();
    state.ResumeTiming();
    for (std::string const& identifier : identifiers) {
      Start(identifier);
      End(identifier);
    }
    state.PauseTiming();
    delete logger;
    state.ResumeTiming();
  }
  CountPairs(state);
}
BENCHMARK(pairsOfSeparateTasks)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);

// Only the readings of the clocks.
void peerClocks(benchmark::State& state) {
  for (auto _ : state) {
    for (int i = 0; i < 2 * state.range(0); ++i) {
      benchmark::DoNotOptimize(std::clock());
      benchmark::DoNotOptimize(std::time(nullptr));
    }
  }
  CountPairs(state);
}
BENCHMARK(peerClocks)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);

struct PeerTask {
  std::string identifier;
  long seconds;
  long ticks;
};
struct PeerRow {
  int count = 0;
  double elapsed = 0;
};

// The same without an event bus: clocks, a stack and a hash table of the standard library.
void peerStandardContainers(benchmark::State& state) {
  std::vector<std::string> const identifiers = Identifiers();
  std::vector<PeerTask> stack;
  std::unordered_map<std::string, PeerRow> rows;
  for (auto _ : state) {
    for (int i = 0; i < state.range(0); ++i) {
      std::string const& identifier = identifiers[static_cast<std::size_t>(i % kIdentifierCount)];
      stack.push_back({identifier, std::time(nullptr), std::clock()});
      long const ticks = std::clock();
      long const seconds = std::time(nullptr);
      PeerTask const task = stack.back();
      stack.pop_back();
      PeerRow& row = rows[task.identifier];
      ++row.count;
      double const wall = std::difftime(seconds, task.seconds);
      row.elapsed += wall > 600 ? wall : static_cast<double>(ticks - task.ticks) / 1000000;
    }
  }
  benchmark::DoNotOptimize(rows);
  CountPairs(state);
}
BENCHMARK(peerStandardContainers)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);

}  // namespace
