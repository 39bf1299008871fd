// Compares conversions of strings to numbers and booleans with the C library on bytes.
#include "VRELStringConversions.h"

#include <benchmark/benchmark.h>
#include <strings.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Reals() {
  return {"0.001", "25.4", "-14.000000000000", "1.5E-07", "0.30479999999999996", "1000."};
}

std::vector<std::string> Integers() {
  return {"0", "7", "-12", "4096", "637540710"};
}

std::vector<std::string> Booleans() {
  return {"Yes", "TRUE", "on", "no", "False", "off"};
}

template <class Read>
void ReadTexts(benchmark::State& state, std::vector<std::string> const& bytes, Read read) {
  std::vector<VRELString> texts;
  for (std::string const& text : bytes) texts.emplace_back(text.c_str());
  for (auto _ : state) {
    for (VRELString const& text : texts) benchmark::DoNotOptimize(read(text));
  }
}

template <class Read>
void ReadBytes(benchmark::State& state, std::vector<std::string> const& bytes, Read read) {
  for (auto _ : state) {
    for (std::string const& text : bytes) benchmark::DoNotOptimize(read(text.c_str()));
  }
}

void StringToDouble(benchmark::State& state) {
  ReadTexts(state, Reals(), [](VRELString const& text) {
    double value = 0.0;
    VRELStringToDouble(text, value);
    return value;
  });
}
BENCHMARK(StringToDouble);

void StrtodOfReals(benchmark::State& state) {
  ReadBytes(state, Reals(), [](char const* text) { return std::strtod(text, nullptr); });
}
BENCHMARK(StrtodOfReals);

void StringToInteger(benchmark::State& state) {
  ReadTexts(state, Integers(), [](VRELString const& text) {
    int value = 0;
    VRELStringToInteger(text, value);
    return value;
  });
}
BENCHMARK(StringToInteger);

void StrtodOfIntegers(benchmark::State& state) {
  ReadBytes(state, Integers(), [](char const* text) { return std::strtod(text, nullptr); });
}
BENCHMARK(StrtodOfIntegers);

void StrtolOfIntegers(benchmark::State& state) {
  ReadBytes(state, Integers(), [](char const* text) { return std::strtol(text, nullptr, 10); });
}
BENCHMARK(StrtolOfIntegers);

void StringToBool(benchmark::State& state) {
  ReadTexts(state, Booleans(), [](VRELString const& text) {
    bool value = false;
    VRELStringToBool(text, value);
    return value;
  });
}
BENCHMARK(StringToBool);

void Strcasecmp(benchmark::State& state) {
  ReadBytes(state, Booleans(), [](char const* text) {
    for (char const* word : {"Yes", "True", "On"}) {
      if (strcasecmp(text, word) == 0) return 1;
    }
    for (char const* word : {"No", "False", "Off"}) {
      if (strcasecmp(text, word) == 0) return 0;
    }
    return -1;
  });
}
BENCHMARK(Strcasecmp);

void RemoveQuotes(benchmark::State& state) {
  std::string const marks(static_cast<std::size_t>(state.range(0)), '"');
  VRELString const text((marks + "text" + marks).c_str());
  VRELString out;
  for (auto _ : state) RemoveDoubleQuotesAtStartAndEndOf(text, out);
  state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}
BENCHMARK(RemoveQuotes)->Arg(1)->Arg(100)->Arg(10000);

}  // namespace
