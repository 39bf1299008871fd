#include "VRELBufferFileHandler.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>

namespace {

constexpr long kSize = 64 * 1024 * 1024;

// Returns the path of a temporary file of 64 MB.
char const* LargeFile() {
  static std::string const path = [] {
    std::FILE* const file = std::tmpfile();
    if (file == nullptr) std::abort();
    for (long i = 0; i < kSize; ++i) putc_unlocked(static_cast<int>((i * 31 + i / 251) & 0xFF), file);
    if (std::fflush(file) != 0) std::abort();
    return "/proc/self/fd/" + std::to_string(fileno(file));
  }();
  return path.c_str();
}

void Check(benchmark::State& state, unsigned long sum) {
  static unsigned long const expected = sum;
  if (sum != expected) state.SkipWithError("read something else");
  state.SetBytesProcessed(state.iterations() * kSize);
}

// Sequentially, through the class Handler.
template <class Handler>
void ReadByteByByte(benchmark::State& state) {
  unsigned long sum = 0;
  for (auto _ : state) {
    VRELFileHandle const file(new VRELFile(LargeFile()));
    std::FILE* stream = nullptr;
    file->GetFilePointer(stream, VRELFile::BinaryOpen);
    VRELBufferFileHandler window(file);
    Handler* handler = &window;
    if (!std::is_same_v<Handler, VRELBufferFileHandler>) benchmark::DoNotOptimize(handler);
    sum = 0;
    unsigned char value = 0;
    for (long position = 0; handler->GetChar(position, value) == VREL_S_OK;) {
      sum += value;
      if (++position == kSize) break;
    }
    benchmark::DoNotOptimize(sum);
  }
  Check(state, sum);
}

// Through the base class, as in a format module.
void GetChar(benchmark::State& state) {
  ReadByteByByte<VRELBufferHandler>(state);
}
BENCHMARK(GetChar)->Unit(benchmark::kMillisecond);

// Through the class itself.
void GetCharOfFileHandler(benchmark::State& state) {
  ReadByteByByte<VRELBufferFileHandler>(state);
}
BENCHMARK(GetCharOfFileHandler)->Unit(benchmark::kMillisecond);

void peerGetcUnlockedLargeFile(benchmark::State& state) {
  unsigned long sum = 0;
  for (auto _ : state) {
    std::FILE* const stream = std::fopen(LargeFile(), "rb");
    sum = 0;
    for (int byte = getc_unlocked(stream); byte != EOF; byte = getc_unlocked(stream)) {
      sum += static_cast<unsigned long>(byte);
    }
    std::fclose(stream);
    benchmark::DoNotOptimize(sum);
  }
  Check(state, sum);
}
BENCHMARK(peerGetcUnlockedLargeFile)->Unit(benchmark::kMillisecond);

}  // namespace
