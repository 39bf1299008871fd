// Reads STEP files made of one shipped document, again and again with fresh ids, and writes pages of them. The peer is
// the reader of Open CASCADE, which makes an object of each instance.
#include "StepFormatReader.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "BrivetModule.h"
#include "HtmlPage.h"
#include "Progress.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"
#include "WatchedStream.h"
#ifdef VREL_BENCHMARK_OCCT_STEP
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPControl_Reader.hxx>
#endif

namespace {

constexpr long INSTANCES_EACH = 232;  // in the shipped document
constexpr long HIGHEST_ID = 1000;     // none of its ids is as high

// The data section's instances with `shift` added to each id.
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

// The document with at least so many instances, in a file that dies with it.
class LargeFile {
 public:
  explicit LargeFile(long instances) {
    std::ifstream shipped(VREL_SOURCE_DIR "/examples/bracket.stp", std::ios::binary);
    std::string const text(std::istreambuf_iterator<char>(shipped), {});
    std::size_t const begin = text.find("DATA;") + 5;
    std::size_t const end = text.rfind("ENDSEC;");
    std::string bytes = text.substr(0, begin);
    for (long made = 0; made < instances; made += INSTANCES_EACH, ++copies) {
      AppendShifted(bytes, text.substr(begin, end - begin), copies * HIGHEST_ID);
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

// Gathers what is written as a file stream would, and drops it.
class Discarded final : public VRELOutputStream {
 public:
  int write(char const* buffer, int count) override {
    block.append(buffer, static_cast<std::size_t>(count));
    if (block.size() > 65536) flush();
    return count;
  }
  void flush() override {
    benchmark::DoNotOptimize(block.data());
    bytes += block.size();
    block.clear();
  }
  void close() override { flush(); }
  std::string block;
  std::size_t bytes = 0;
};

// What -list does with a file.
StepFormatReader* Read(char const* path, VRELFormatReaderHandle& handle) {
  auto* const document = new StepFormatReader(VRELFileHandle(new VRELFile(path)), path);
  handle = document;
  document->Open();
  VRELReader reader(handle);
  reader.ReadHeaderSection();
  reader.ReadDataSection();
  return document;
}

void SetCounters(benchmark::State& state, LargeFile const& file) {
  state.SetBytesProcessed(static_cast<std::int64_t>(file.size) * state.iterations());
  state.counters["per instance"] =
      benchmark::Counter(static_cast<double>(file.copies * INSTANCES_EACH),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void ReadsAFile(benchmark::State& state) {
  LargeFile const file(state.range(0));
  for (auto _ : state) {
    VRELFormatReaderHandle handle;
    benchmark::DoNotOptimize(Read(file.path, handle)->GetInstanceCount());
  }
  SetCounters(state, file);
}

void WritesAPage(benchmark::State& state) {
  LargeFile const file(state.range(0));
  for (auto _ : state) {
    VRELFormatReaderHandle handle;
    StepFormatReader* const document = Read(file.path, handle);
    document->Resolve();
    Discarded target;
    WatchedStream stream(&target);
    Progress progress;
    BrivetWriteRequest request;
    request.document = document;
    request.progress = &progress;
    HtmlPage(stream, "large").WritePage(request);
    benchmark::DoNotOptimize(target.bytes);
  }
  SetCounters(state, file);
}

#ifdef VREL_BENCHMARK_OCCT_STEP
void ReadsAFileByOpenCascade(benchmark::State& state) {
  LargeFile const file(state.range(0));
  Message::DefaultMessenger()->ChangePrinters().Clear();
  for (auto _ : state) {
    STEPControl_Reader reader;
    benchmark::DoNotOptimize(reader.ReadFile(file.path));
  }
  SetCounters(state, file);
}
#endif

void Sizes(benchmark::internal::Benchmark* each) {
  each->Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(ReadsAFile)->Name("STEP file read")->Apply(Sizes);
BENCHMARK(WritesAPage)->Name("STEP file to a page")->Apply(Sizes);
#ifdef VREL_BENCHMARK_OCCT_STEP
BENCHMARK(ReadsAFileByOpenCascade)->Name("STEP file read, peer Open CASCADE")->Apply(Sizes);
#endif
