#include "VRELLogFileWrapper.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "VRELFilePath.h"
#include "VRELInfo.h"

#ifdef VREL_BENCHMARK_SPDLOG
#include <spdlog/logger.h>
#include <spdlog/sinks/basic_file_sink.h>

#include <memory>
#endif

// Each writes the same bytes, one call per line, and all bytes are in the file when the call returns.
namespace {

constexpr int kMessageCount = 100000;

// Log in the current directory that is removed at the end.
struct LogFile {
  std::string name = "benchmark_" + std::to_string(getpid()) + ".log";
  ~LogFile() { std::remove(name.c_str()); }
};

void logMessages(benchmark::State& state) {
  LogFile const log;
  for (auto _ : state) {
    VRELLogFileWrapper const wrapper(VRELFilePath(log.name.c_str()));
    for (int i = 0; i < kMessageCount; ++i) VRELInfo::Printf("Face %d has %d edges", i, i % 7);
  }
  state.SetItemsProcessed(state.iterations() * kMessageCount);
}
BENCHMARK(logMessages)->Unit(benchmark::kMillisecond);

void peerWritePerLine(benchmark::State& state) {
  LogFile const log;
  for (auto _ : state) {
    int const file = open(log.name.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    char line[128];
    for (int i = 0; i < kMessageCount; ++i) {
      int const length = std::snprintf(line, sizeof line, "Message : Face %d has %d edges\n", i, i % 7);
      benchmark::DoNotOptimize(write(file, line, static_cast<std::size_t>(length)));
    }
    close(file);
  }
  state.SetItemsProcessed(state.iterations() * kMessageCount);
}
BENCHMARK(peerWritePerLine)->Unit(benchmark::kMillisecond);

#ifdef VREL_BENCHMARK_SPDLOG
void peerSpdlogFlushing(benchmark::State& state) {
  LogFile const log;
  for (auto _ : state) {
    spdlog::logger logger("log", std::make_shared<spdlog::sinks::basic_file_sink_st>(log.name, true));
    logger.set_pattern("Message : %v");
    logger.flush_on(spdlog::level::info);
    for (int i = 0; i < kMessageCount; ++i) logger.info("Face {} has {} edges", i, i % 7);
  }
  state.SetItemsProcessed(state.iterations() * kMessageCount);
}
BENCHMARK(peerSpdlogFlushing)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
