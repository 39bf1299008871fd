#include "VRELFileInputStream.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr int fileSize = 1 << 20;

// A temporary file.
struct ScratchFile {
  ScratchFile() : stream(std::tmpfile()) {
    std::string const bytes(fileSize, 'x');
    if (stream == nullptr || std::fwrite(bytes.data(), 1, fileSize, stream) != fileSize) std::abort();
    std::fflush(stream);
  }
  ~ScratchFile() { std::fclose(stream); }

  std::FILE* stream;
};

void readBlocks(benchmark::State& state) {
  ScratchFile const file;
  VRELFileInputStream stream(file.stream);
  std::string block(static_cast<std::size_t>(state.range(0)), '\0');
  for (auto _ : state) {
    stream.setOffset(0);
    while (stream.read(block.data(), static_cast<int>(block.size())) > 0) benchmark::DoNotOptimize(block.data());
  }
  state.SetBytesProcessed(state.iterations() * fileSize);
}
BENCHMARK(readBlocks)->Arg(512)->Arg(8192)->Arg(65536);

// The system calls alone.
void peerRead(benchmark::State& state) {
  ScratchFile const file;
  int const descriptor = fileno(file.stream);
  std::string block(static_cast<std::size_t>(state.range(0)), '\0');
  for (auto _ : state) {
    lseek(descriptor, 0, SEEK_SET);
    while (read(descriptor, block.data(), block.size()) > 0) benchmark::DoNotOptimize(block.data());
  }
  state.SetBytesProcessed(state.iterations() * fileSize);
}
BENCHMARK(peerRead)->Arg(512)->Arg(8192)->Arg(65536);

}  // namespace
