// Reads STEP files that repeat the example document with shifted ids, and writes pages of them. The peer is the reader
// of Open CASCADE, which creates an object for each instance.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "StepWork.h"

namespace {

constexpr long kInstancesEach = 232;  // in the example document
constexpr long kLargest = 1'150'000;  // instances in a file of 50 MB
constexpr long kHighestId = 1000;     // none of its ids is as high

// Appends the instances of the data section with `shift` added to each id.
void AppendShifted(std::string& target, std::string const& data, long shift) {
  bool inString = false;
  for (std::size_t i = 0; i < data.size(); ++i) {
    target += data[i];
    inString ^= data[i] == '\'';
    if (inString || data[i] != '#') continue;
    std::size_t end = i + 1;
    while (data[end] >= '0' && data[end] <= '9') ++end;
    if (end == i + 1) continue;
    target += std::to_string(std::stol(data.substr(i + 1, end - i - 1)) + shift);
    i = end - 1;
  }
}

// Temporary file with a document of at least so many instances.
class LargeFile {
 public:
  explicit LargeFile(long instances) {
    std::ifstream shipped(VREL_SOURCE_DIR "/examples/bracket.stp", std::ios::binary);
    std::string const text(std::istreambuf_iterator<char>(shipped), {});
    std::size_t const begin = text.find("DATA;") + 5;
    std::size_t const end = text.rfind("ENDSEC;");
    std::string bytes = text.substr(0, begin);
    for (long made = 0; made < instances; made += kInstancesEach, ++copies) {
      AppendShifted(bytes, text.substr(begin, end - begin), copies * kHighestId);
    }
    bytes += text.substr(end);
    size = bytes.size();
    close(mkstemps(path, 4));
    std::ofstream(path, std::ios::binary) << bytes;
  }
  ~LargeFile() { std::remove(path); }
  LargeFile(LargeFile const&) = delete;
  LargeFile& operator=(LargeFile const&) = delete;

  char path[64] = "/tmp/step_benchmark_XXXXXX.stp";
  long copies = 0;
  std::size_t size = 0;
};

void SetCounters(benchmark::State& state, LargeFile const& file) {
  state.SetBytesProcessed(static_cast<std::int64_t>(file.size) * state.iterations());
  state.counters["per instance"] =
      benchmark::Counter(static_cast<double>(file.copies * kInstancesEach),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <std::size_t (*work)(char const*)>
void MeasureTime(benchmark::State& state) {
  LargeFile const file(state.range(0));
  for (auto _ : state) {
    if (work(file.path) == 0) return state.SkipWithError("nothing was read");
  }
  SetCounters(state, file);
}

// Measures the peak memory of the operation in a separate process.
void MeasureMemory(benchmark::State& state, char const* how) {
  LargeFile const file(state.range(0));
  std::string const command = std::string(STEP_MEMORY " ") + how + " " + file.path;
  long long bytes = 0;
  for (auto _ : state) {
    std::FILE* const output = popen(command.c_str(), "r");
    bool const isRead = output != nullptr && std::fscanf(output, "%lld", &bytes) == 1;
    if (output != nullptr) pclose(output);
    if (!isRead || bytes == 0) return state.SkipWithError("nothing was read");
  }
  state.counters["peak bytes"] = static_cast<double>(bytes);
  state.counters["peak bytes per instance"] =
      static_cast<double>(bytes) / static_cast<double>(file.copies * kInstancesEach);
}

void Sizes(benchmark::internal::Benchmark* each) {
  each->Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(kLargest)->Unit(benchmark::kMillisecond);
}

// Peak memory varies by a page or two between runs, so that few repetitions are enough.
void OnceRepeated(benchmark::internal::Benchmark* each) {
  each->Arg(kLargest)->Iterations(1)->Repetitions(2)->UseRealTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK_TEMPLATE(MeasureTime, ReadStepFile)->Name("STEP file read")->Apply(Sizes);
BENCHMARK_TEMPLATE(MeasureTime, WritePageOfStepFile)->Name("STEP file to a page")->Apply(Sizes);
BENCHMARK_CAPTURE(MeasureMemory, Read, "read")->Apply(OnceRepeated);
BENCHMARK_CAPTURE(MeasureMemory, Page, "page")->Apply(OnceRepeated);
#ifdef VREL_BENCHMARK_OCCT_STEP
BENCHMARK_TEMPLATE(MeasureTime, ReadStepFileByOpenCascade)
    ->Name("STEP file read, peer Open CASCADE")
    ->Arg(kLargest)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MeasureMemory, OpenCascade, "occt")->Apply(OnceRepeated);
#endif
