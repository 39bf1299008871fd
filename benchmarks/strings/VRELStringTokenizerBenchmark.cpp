// Compares splitting a string with splitting the same UTF-16 units into std::u16string.
#include "VRELStringTokenizer.h"

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

VRELString ManyTokens(benchmark::State const& state) {
  std::string bytes;
  for (int i = 0; i < state.range(0); ++i) bytes += "a token here,";
  return VRELString(bytes.c_str());
}

void Tokenizer(benchmark::State& state) {
  VRELString const text = ManyTokens(state);
  for (auto _ : state) benchmark::DoNotOptimize(VRELStringTokenizer(text, L',').GetTokenCount());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Tokenizer)->Arg(10)->Arg(10000);

void SplitOfStdString(benchmark::State& state) {
  std::u16string const text = ManyTokens(state).toUtf16();
  for (auto _ : state) {
    std::vector<std::u16string> tokens;
    std::u16string_view rest = text;
    for (std::size_t end; (end = rest.find(u',')) != rest.npos; rest.remove_prefix(end + 1)) {
      tokens.emplace_back(rest.substr(0, end));
    }
    tokens.emplace_back(rest);
    benchmark::DoNotOptimize(tokens.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SplitOfStdString)->Arg(10)->Arg(10000);

}  // namespace
