#include "VRELStringOutputStream.h"

#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

namespace {

constexpr int writeCount = 1000;

// Pieces of the given size, up to the size of a report.
template <class Stream>
void WriteAll(benchmark::State& state) {
  std::string const piece(static_cast<std::size_t>(state.range(0)), 'x');
  int const size = static_cast<int>(piece.size());
  for (auto _ : state) {
    Stream stream;
    for (int i = 0; i < writeCount; ++i) stream.write(piece.data(), size);
    benchmark::DoNotOptimize(stream);
  }
  state.SetBytesProcessed(state.iterations() * writeCount * size);
}
BENCHMARK_TEMPLATE(WriteAll, VRELStringOutputStream)->Name("write")->Arg(1)->Arg(16)->Arg(1024);
BENCHMARK_TEMPLATE(WriteAll, std::ostringstream)->Name("peerOstringstreamWrite")->Arg(1)->Arg(16)->Arg(1024);

}  // namespace
