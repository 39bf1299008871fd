#include "Gk_Source.h"

#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

#include "VRELStringInputStream.h"

namespace {

constexpr int tokenCount = 12000;

// Lines of words and numbers, as in data files.
std::string Words() {
  std::string text;
  for (int i = 0; i < tokenCount / 6; ++i) {
    text += "bolt_" + std::to_string(i) + " hexagonal\t" + std::to_string(i * 0.125) + "  12 M8x40 steel-8.8\n";
  }
  return text;
}

std::string Numbers() {
  std::string text;
  for (int i = 0; i < tokenCount; ++i) text += std::to_string(i * 0.37) + (i % 6 == 5 ? "\n" : " ");
  return text;
}

void next(benchmark::State& state) {
  Gk_String const text(Words().c_str());
  for (auto _ : state) {
    VRELStringInputStream stream(text);
    Gk_Source source(&stream);
    source.setWhiteSpace(" \t\r\n");
    for (int i = 0; i < tokenCount; ++i) benchmark::DoNotOptimize(source.next().len());
  }
  state.SetItemsProcessed(state.iterations() * tokenCount);
}
BENCHMARK(next);

// One string for all tokens, and one per token as next returns them.
template <bool isFresh>
void peerIstream(benchmark::State& state) {
  std::string const text = Words();
  for (auto _ : state) {
    std::istringstream stream(text);
    std::string reused;
    for (int i = 0; i < tokenCount; ++i) {
      std::string fresh;
      std::string& token = isFresh ? fresh : reused;
      stream >> token;
      benchmark::DoNotOptimize(token.size());
    }
  }
  state.SetItemsProcessed(state.iterations() * tokenCount);
}
BENCHMARK_TEMPLATE(peerIstream, false)->Name("peerIstreamReusedString");
BENCHMARK_TEMPLATE(peerIstream, true)->Name("peerIstreamFreshString");

void readDoubles(benchmark::State& state) {
  Gk_String const text(Numbers().c_str());
  for (auto _ : state) {
    VRELStringInputStream stream(text);
    Gk_Source source(&stream);
    source.setWhiteSpace(" \t\r\n");
    double number = 0;
    for (int i = 0; i < tokenCount; ++i) {
      source >> number;
      benchmark::DoNotOptimize(number);
    }
  }
  state.SetItemsProcessed(state.iterations() * tokenCount);
}
BENCHMARK(readDoubles);

void peerIstreamDoubles(benchmark::State& state) {
  std::string const text = Numbers();
  for (auto _ : state) {
    std::istringstream stream(text);
    double number = 0;
    for (int i = 0; i < tokenCount; ++i) {
      stream >> number;
      benchmark::DoNotOptimize(number);
    }
  }
  state.SetItemsProcessed(state.iterations() * tokenCount);
}
BENCHMARK(peerIstreamDoubles);

}  // namespace
