#include "VRELBlast.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "Imploder.h"

#ifdef VREL_BENCHMARK_ZLIB
#include <zlib.h>
#endif

namespace {

constexpr std::size_t plainSize = 16 << 20;

std::string ReadFile(std::filesystem::path const& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

// Repeats the data up to the measured size, beyond the window of both formats.
std::string Filled(std::string bytes) {
  if (bytes.empty()) std::abort();
  while (bytes.size() < plainSize) bytes += bytes.substr(0, plainSize - bytes.size());
  bytes.resize(plainSize);
  return bytes;
}

// The headers of the system.
std::string const& Text() {
  static std::string const text = [] {
    std::string gathered;
    for (auto const& entry : std::filesystem::recursive_directory_iterator("/usr/include")) {
      if (entry.is_regular_file() && gathered.size() < plainSize) gathered += ReadFile(entry.path());
    }
    return Filled(std::move(gathered));
  }();
  return text;
}

// The bytes of this program.
std::string const& Binary() {
  static std::string const binary = Filled(ReadFile("/proc/self/exe"));
  return binary;
}

using Plain = std::string const& (*)();

struct Ends {
  static unsigned Read(void* how, unsigned char** buffer) {
    auto& ends = *static_cast<Ends*>(how);
    std::size_t const length = std::min(ends.blockLength, ends.imploded.size() - ends.read);
    *buffer = reinterpret_cast<unsigned char*>(ends.imploded.data()) + ends.read;
    ends.read += length;
    return static_cast<unsigned>(length);
  }
  static int Write(void* how, unsigned char* buffer, unsigned length) {
    auto& ends = *static_cast<Ends*>(how);
    std::memcpy(&ends.plain[ends.written], buffer, length);
    ends.written += length;
    return 0;
  }

  std::string imploded;
  std::string plain;
  std::size_t blockLength;
  std::size_t read = 0;
  std::size_t written = 0;
};

// Made once, because the encoder is slow.
template <Plain plain, bool isCoded>
std::string const& Imploded() {
  static std::string const imploded = Implode(plain(), isCoded, 6);
  return imploded;
}

template <Plain plain, bool isCoded>
void decompress(benchmark::State& state) {
  Ends ends{Imploded<plain, isCoded>(), std::string(plainSize, '\0'), static_cast<std::size_t>(state.range(0))};
  for (auto _ : state) {
    ends.read = ends.written = 0;
    if (blast(Ends::Read, &ends, Ends::Write, &ends) != 0) state.SkipWithError("not decompressed");
  }
  if (ends.plain != plain()) state.SkipWithError("wrong bytes");
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(plainSize));
  state.counters["ratio"] = static_cast<double>(ends.imploded.size()) / plainSize;
}
BENCHMARK_TEMPLATE(decompress, Text, true)->Name("blastText")->Arg(4096)->Arg(65536)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(decompress, Text, false)->Name("blastTextPlainLiterals")->Arg(65536)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(decompress, Binary, false)
    ->Name("blastBinary")
    ->Arg(4096)
    ->Arg(65536)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(decompress, Binary, true)
    ->Name("blastBinaryCodedLiterals")
    ->Arg(65536)
    ->Unit(benchmark::kMillisecond);

#ifdef VREL_BENCHMARK_ZLIB
// In one call, the fastest way.
template <Plain plain>
void peerInflate(benchmark::State& state) {
  static std::string const deflated = [] {
    std::string made(compressBound(plainSize), '\0');
    uLongf size = made.size();
    auto const* const bytes = reinterpret_cast<Bytef const*>(plain().data());
    if (compress2(reinterpret_cast<Bytef*>(made.data()), &size, bytes, plainSize, 6) != Z_OK) std::abort();
    made.resize(size);
    return made;
  }();
  auto const* const bytes = reinterpret_cast<Bytef const*>(deflated.data());
  std::string inflated(plainSize, '\0');
  for (auto _ : state) {
    uLongf length = plainSize;
    if (uncompress(reinterpret_cast<Bytef*>(inflated.data()), &length, bytes, deflated.size()) != Z_OK) std::abort();
  }
  if (inflated != plain()) state.SkipWithError("wrong bytes");
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(plainSize));
  state.counters["ratio"] = static_cast<double>(deflated.size()) / plainSize;
}
BENCHMARK_TEMPLATE(peerInflate, Text)->Name("peerZlibInflateText")->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(peerInflate, Binary)->Name("peerZlibInflateBinary")->Unit(benchmark::kMillisecond);
#endif

}  // namespace
