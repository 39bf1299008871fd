#include "VRELBufferFileHandler.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr long kSize = 64 * 1024 * 1024;

// A file of 64 MB, removed at the end of the program.
class LargeFile {
 public:
  static char const* Path() {
    static LargeFile const file;
    return file.path;
  }

 private:
  LargeFile() {
    int const descriptor = mkstemp(path);
    std::vector<char> block(1024 * 1024);
    for (std::size_t i = 0; i < block.size(); ++i) block[i] = static_cast<char>(i * 31 + i / 251);
    for (long written = 0; written < kSize; written += static_cast<long>(block.size())) {
      if (write(descriptor, block.data(), block.size()) < 0) std::abort();
    }
    close(descriptor);
  }
  ~LargeFile() { unlink(path); }

  char path[32] = "/tmp/VRELBenchmarkXXXXXX";
};

void Check(benchmark::State& state, unsigned long sum) {
  static unsigned long const expected = sum;
  if (sum != expected) state.SkipWithError("read something else");
  state.SetBytesProcessed(state.iterations() * kSize);
}

// Front to back, through the frame as a format module holds it.
void GetChar(benchmark::State& state) {
  unsigned long sum = 0;
  for (auto _ : state) {
    VRELFileHandle const file(new VRELFile(LargeFile::Path()));
    std::FILE* stream = nullptr;
    file->GetFilePointer(stream, VRELFile::BinaryOpen);
    VRELBufferFileHandler handler(file);
    VRELBufferHandler* frame = &handler;
    benchmark::DoNotOptimize(frame);
    sum = 0;
    unsigned char value = 0;
    for (long position = 0; frame->GetChar(position, value) == VREL_S_OK;) {
      sum += value;
      if (++position == kSize) break;
    }
    benchmark::DoNotOptimize(sum);
  }
  Check(state, sum);
}
BENCHMARK(GetChar)->Unit(benchmark::kMillisecond);

// The same where the class is known.
void GetCharOfFileHandler(benchmark::State& state) {
  unsigned long sum = 0;
  for (auto _ : state) {
    VRELFileHandle const file(new VRELFile(LargeFile::Path()));
    std::FILE* stream = nullptr;
    file->GetFilePointer(stream, VRELFile::BinaryOpen);
    VRELBufferFileHandler handler(file);
    sum = 0;
    unsigned char value = 0;
    for (long position = 0; handler.GetChar(position, value) == VREL_S_OK;) {
      sum += value;
      if (++position == kSize) break;
    }
    benchmark::DoNotOptimize(sum);
  }
  Check(state, sum);
}
BENCHMARK(GetCharOfFileHandler)->Unit(benchmark::kMillisecond);

void peerGetcUnlocked(benchmark::State& state) {
  unsigned long sum = 0;
  for (auto _ : state) {
    std::FILE* const stream = std::fopen(LargeFile::Path(), "rb");
    sum = 0;
    for (int byte = getc_unlocked(stream); byte != EOF; byte = getc_unlocked(stream)) {
      sum += static_cast<unsigned long>(byte);
    }
    std::fclose(stream);
    benchmark::DoNotOptimize(sum);
  }
  Check(state, sum);
}
BENCHMARK(peerGetcUnlocked)->Unit(benchmark::kMillisecond);

}  // namespace
