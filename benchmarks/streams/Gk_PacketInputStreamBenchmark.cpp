#include "Gk_PacketInputStream.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <type_traits>

#include "Gk_Source.h"
#include "VRELFileInputStream.h"
#include "VRELFilePath.h"

namespace {

constexpr int tokenCount = 120000;
constexpr int packetSize = 8192;

// A temporary file of words and numbers, which can be opened by its path.
struct TokenFile {
  TokenFile() : stream(std::tmpfile()) {
    if (stream == nullptr) std::abort();
    for (int i = 0; i < tokenCount / 6; ++i) {
      size += std::fprintf(stream, "bolt_%d hexagonal\t%f  12 M8x40 steel-8.8\n", i, i * 0.125);
    }
    if (std::fflush(stream) != 0) std::abort();
    path = "/proc/self/fd/" + std::to_string(fileno(stream));
  }
  ~TokenFile() { std::fclose(stream); }

  std::FILE* stream;
  std::string path;
  long size = 0;
};

// Byte by byte, through the class and through its base.
template <class Stream>
void readChar(benchmark::State& state) {
  TokenFile const file;
  VRELFilePath const path{VRELString(file.path)};
  for (auto _ : state) {
    VRELFileInputStream underlying(path);
    Gk_PacketInputStream packets(&underlying, packetSize);
    Stream* stream = &packets;
    benchmark::DoNotOptimize(stream);
    int sum = 0;
    if constexpr (std::is_same_v<Stream, Gk_PacketInputStream>) {
      for (int c = packets.readChar(); c >= 0; c = packets.readChar()) sum += c;
    } else {
      for (int c = stream->readChar(); c >= 0; c = stream->readChar()) sum += c;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetBytesProcessed(state.iterations() * file.size);
}
BENCHMARK_TEMPLATE(readChar, Gk_PacketInputStream)->Name("packetReadChar");
BENCHMARK_TEMPLATE(readChar, VRELInputStream)->Name("packetReadCharThroughTheBase");

void peerGetcUnlocked(benchmark::State& state) {
  TokenFile const file;
  for (auto _ : state) {
    std::FILE* const stream = std::fopen(file.path.c_str(), "r");
    std::setvbuf(stream, nullptr, _IOFBF, packetSize);
    int sum = 0;
    for (int c = getc_unlocked(stream); c >= 0; c = getc_unlocked(stream)) sum += c;
    benchmark::DoNotOptimize(sum);
    std::fclose(stream);
  }
  state.SetBytesProcessed(state.iterations() * file.size);
}
BENCHMARK(peerGetcUnlocked);

void sourceOverPackets(benchmark::State& state) {
  TokenFile const file;
  VRELFilePath const path{VRELString(file.path)};
  for (auto _ : state) {
    VRELFileInputStream underlying(path);
    Gk_PacketInputStream packets(&underlying, packetSize);
    Gk_Source source(&packets);
    source.setWhiteSpace(" \t\r\n");
    int tokens = 0;
    while (source.next().len() > 0) ++tokens;
    if (tokens != tokenCount) state.SkipWithError("lost tokens");
  }
  state.SetItemsProcessed(state.iterations() * tokenCount);
}
BENCHMARK(sourceOverPackets);

void peerIfstreamTokens(benchmark::State& state) {
  TokenFile const file;
  for (auto _ : state) {
    std::ifstream stream(file.path);
    std::string token;
    int tokens = 0;
    while (stream >> token) ++tokens;
    if (tokens != tokenCount) state.SkipWithError("lost tokens");
  }
  state.SetItemsProcessed(state.iterations() * tokenCount);
}
BENCHMARK(peerIfstreamTokens);

}  // namespace
