// Options of 20 components with 5 groups of 20 options each, by path, compared with a hash map from path to value.
#include "Gk_OptionDoc.h"

#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "Gk_Option.h"
#include "VRELOptions.h"

namespace {

std::vector<std::string> const& Paths() {
  static std::vector<std::string> const paths = [] {
    std::vector<std::string> made;
    for (int i = 0; i < 2000; ++i) {
      made.push_back("component" + std::to_string(i / 100) + "/group" + std::to_string(i / 20 % 5) + "/option" +
                     std::to_string(i % 20));
    }
    return made;
  }();
  return paths;
}

std::vector<VRELString> const& AddedPaths() {
  static std::vector<VRELString> const paths = [] {
    std::vector<VRELString> added;
    for (std::string const& path : Paths()) {
      added.emplace_back(path.c_str());
      Gk_OptionDoc::addOption(added.back(), 1, nullptr);
    }
    return added;
  }();
  return paths;
}

void FetchOption(benchmark::State& state) {
  std::vector<VRELString> const& paths = AddedPaths();
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(Gk_OptionDoc::fetchOption(paths[next]));
    next = (next + 7) % paths.size();
  }
}
BENCHMARK(FetchOption);

void HashMapOfPaths(benchmark::State& state) {
  std::unordered_map<std::string, int> values;
  for (std::string const& path : Paths()) values[path] = 1;
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(values.find(Paths()[next]));
    next = (next + 7) % Paths().size();
  }
}
BENCHMARK(HashMapOfPaths);

// Copies the 100 options of one component into a store.
void FetchAllComponentOptions(benchmark::State& state) {
  AddedPaths();
  for (auto _ : state) {
    VRELOptions store;
    Gk_OptionDoc::FetchAllComponentOptions("component7", store);
    benchmark::DoNotOptimize(store.Size());
  }
}
BENCHMARK(FetchAllComponentOptions);

// Adds the same options to a store by name.
void AddToStore(benchmark::State& state) {
  std::vector<VRELString> const& paths = AddedPaths();
  for (auto _ : state) {
    VRELOptions store;
    for (std::size_t i = 700; i < 800; ++i) store.AddOption(paths[i], 1);
    benchmark::DoNotOptimize(store.Size());
  }
}
BENCHMARK(AddToStore);

}  // namespace
