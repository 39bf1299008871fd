// Checks a name against the whole vocabulary, compared with a look-up of the lower-case name in a std::unordered_set,
// which has no wildcards.
#include "VRELOptionName.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <unordered_set>

namespace {

void IsValidMiss(benchmark::State& state, wchar_t const* text) {
  VRELString const name(text);
  for (auto _ : state) benchmark::DoNotOptimize(VRELOptionName::IsValid(name));
}
BENCHMARK_CAPTURE(IsValidMiss, BareWord, L"NoSuchSetting");
BENCHMARK_CAPTURE(IsValidMiss, Path, L"/XStep/Import/Mode/Assem.true/NoSuchSetting");
BENCHMARK_CAPTURE(IsValidMiss, Wildcard, L"*.*.*.NoSuchSetting");
BENCHMARK_CAPTURE(IsValidMiss, BeyondAscii, L"\u00C9chelle");

void IsValidLastName(benchmark::State& state) {
  VRELString const name(L"EnableCurveSimplification");
  for (auto _ : state) benchmark::DoNotOptimize(VRELOptionName::IsValid(name));
}
BENCHMARK(IsValidLastName);

void SetOfStdStringMiss(benchmark::State& state) {
  std::unordered_set<std::string> names;
  auto const lowered = [](std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return text;
  };
  for (VRELOptionName const* const name : VRELOptionName::_optionNames) {
    names.insert(lowered(static_cast<VRELString const>(*name).toUtf8()));
  }
  VRELString const name(L"NoSuchSetting");
  for (auto _ : state) benchmark::DoNotOptimize(names.count(lowered(name.toUtf8())));
}
BENCHMARK(SetOfStdStringMiss);

}  // namespace
