#include <benchmark/benchmark.h>

#include <string>

#include "VRELStringISO1030321Reader.h"
#include "VRELStringISO1030321Writer.h"

// Measures 4 KB and 4 MB with an escape in every 20 bytes: the time per byte must be the same.

namespace {

std::string Encoded(benchmark::State const& state) {
  std::string text;
  while (text.size() < static_cast<std::size_t>(state.range(0))) text += "Geh\\X2\\00E4\\X0\\use, ";
  return text;
}

void Sizes(benchmark::internal::Benchmark* run) {
  run->Arg(4 << 10)->Arg(4 << 20);
}

void decode(benchmark::State& state) {
  std::string const text = Encoded(state);
  VRELStringISO1030321Reader reader;
  for (auto _ : state) {
    VRELString out;
    reader.ConvertFromASCII(text.c_str(), out);
    benchmark::DoNotOptimize(&out);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(decode)->Apply(Sizes);

void encode(benchmark::State& state) {
  VRELString text;
  VRELStringISO1030321Reader().ConvertFromASCII(Encoded(state).c_str(), text);
  for (auto _ : state) {
    VRELStringISO1030321Writer writer;
    char const* out = nullptr;
    writer.ConvertToASCII(text, out);
    benchmark::DoNotOptimize(out);
  }
  state.SetBytesProcessed(state.iterations() * text.length());
}
BENCHMARK(encode)->Apply(Sizes);

}  // namespace
