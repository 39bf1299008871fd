// Compares the number parser with strtod and fast_float on the real numbers of STEP files: those in the folder
// VREL_CORPUS, or else a few hundred similar ones.
#include "VRELFloatUtil.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <regex>
#include <string>
#include <vector>

#ifdef VREL_BENCHMARK_FAST_FLOAT
#include <fast_float/fast_float.h>
#endif

namespace {

std::vector<std::string> GeneratedNumbers() {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> distribution(-500.0, 500.0);
  char const* const formats[] = {"%.1f,", "%.3f,", "%.12f,", "%.14f,", "%.15E)", "%.6E,", "%.0f.,", "%.17g,"};
  std::vector<std::string> numbers;
  for (int i = 0; i < 800; ++i) {
    char text[64];
    std::snprintf(text, sizeof(text), formats[i % 8], distribution(random));
    numbers.emplace_back(text);
  }
  return numbers;
}

std::vector<std::string> CorpusNumbers(std::string const& folder) {
  std::regex const real("[-+]?[0-9]+\\.[0-9]*(E[-+]?[0-9]+)?[,)]");
  std::vector<std::string> numbers;
  for (auto const& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".stp") continue;
    std::ifstream file(entry.path());
    std::string const text{std::istreambuf_iterator<char>(file), {}};
    for (std::sregex_iterator at(text.begin(), text.end(), real), end; at != end; ++at) numbers.push_back(at->str());
  }
  return numbers;
}

std::vector<std::string> const& Numbers() {
  static std::vector<std::string> const numbers = [] {
    char const* const folder = std::getenv("VREL_CORPUS");
    return folder != nullptr ? CorpusNumbers(folder) : GeneratedNumbers();
  }();
  return numbers;
}

template <class Read>
void ReadAll(benchmark::State& state, Read read) {
  std::vector<std::string> const& numbers = Numbers();
  for (auto _ : state) {
    for (std::string const& number : numbers) benchmark::DoNotOptimize(read(number));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(numbers.size()));
}

void Vrelstrtod(benchmark::State& state) {
  ReadAll(state, [](std::string const& text) {
    char* end;
    return VRELFloatUtil::vrelstrtod(text.c_str(), &end);
  });
}
BENCHMARK(Vrelstrtod);

void Strtod(benchmark::State& state) {
  ReadAll(state, [](std::string const& text) {
    char* end;
    return std::strtod(text.c_str(), &end);
  });
}
BENCHMARK(Strtod);

#ifdef VREL_BENCHMARK_FAST_FLOAT
void FastFloat(benchmark::State& state) {
  ReadAll(state, [](std::string const& text) {
    double value = 0.0;
    fast_float::from_chars(text.data(), text.data() + text.size(), value);
    return value;
  });
}
BENCHMARK(FastFloat);
#endif

}  // namespace
