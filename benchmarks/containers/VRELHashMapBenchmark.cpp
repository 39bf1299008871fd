// VRELHashMap with string keys compared with std::unordered_map and absl::flat_hash_map, both with ICU's hash.
#include "VRELHashMap.h"

#include <benchmark/benchmark.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "VRELString.h"
#ifdef VREL_BENCHMARK_ABSL
#include <absl/container/flat_hash_map.h>
#endif

namespace {

struct IcuHash {
  std::size_t operator()(icu::UnicodeString const& text) const { return static_cast<std::size_t>(text.hashCode()); }
};
using StdMap = std::unordered_map<icu::UnicodeString, int, IcuHash>;

icu::UnicodeString IcuText(std::string const& name) {
  return icu::UnicodeString::fromUTF8(name);
}
VRELString Text(std::string const& name) {
  return VRELString(name);
}

// Returns names like those of options: words of different lengths, joined by dots.
std::vector<std::string> Names(int count, unsigned int seed) {
  std::mt19937 random(seed);
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) {
    std::string name(4 + random() % 8, ' ');
    for (char& letter : name) letter = static_cast<char>((random() % 4 == 0 ? 'A' : 'a') + random() % 26);
    names.push_back(name + "." + std::to_string(i) + (seed == 1 ? "" : "x"));
  }
  std::shuffle(names.begin(), names.end(), random);
  return names;
}

// Fills the map with names and searches it for others, or for copies of the same names in another order.
template <class Key, class Map, class Fill, class Find>
void LookUp(benchmark::State& state, Key (*key)(std::string const&), Map& map, Fill fill, Find find, bool hit) {
  int const count = static_cast<int>(state.range(0));
  std::vector<std::string> names = Names(count, 1);
  for (int i = 0; i < count; ++i) fill(map, key(names[static_cast<std::size_t>(i)]), i);
  std::shuffle(names.begin(), names.end(), std::mt19937(3));
  std::vector<Key> sought;
  for (std::string const& name : hit ? names : Names(count, 2)) sought.push_back(key(name));
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(find(map, sought[next]));
    if (++next == sought.size()) next = 0;
  }
}

void LookUpVrel(benchmark::State& state, bool hit) {
  VRELHashMap<VRELString, int> filled(17);
  LookUp(
      state, Text, filled, [](auto& map, VRELString const& key, int value) { map.Add(key, value); },
      [](auto& map, VRELString const& key) {
        int value = 0;
        map.Get(key, value);
        return value;
      },
      hit);
}

template <class Map>
void LookUpPeer(benchmark::State& state, bool hit) {
  Map filled;
  LookUp(
      state, IcuText, filled, [](auto& map, icu::UnicodeString const& key, int value) { map.emplace(key, value); },
      [](auto& map, icu::UnicodeString const& key) {
        auto const found = map.find(key);
        return found != map.end() ? found->second : 0;
      },
      hit);
}

void MapGetHit(benchmark::State& state) {
  LookUpVrel(state, true);
}
BENCHMARK(MapGetHit)->Arg(1000)->Arg(100000);
void MapGetHitStdUnorderedMap(benchmark::State& state) {
  LookUpPeer<StdMap>(state, true);
}
BENCHMARK(MapGetHitStdUnorderedMap)->Arg(1000)->Arg(100000);
void MapGetMiss(benchmark::State& state) {
  LookUpVrel(state, false);
}
BENCHMARK(MapGetMiss)->Arg(1000)->Arg(100000);
void MapGetMissStdUnorderedMap(benchmark::State& state) {
  LookUpPeer<StdMap>(state, false);
}
BENCHMARK(MapGetMissStdUnorderedMap)->Arg(1000)->Arg(100000);

#ifdef VREL_BENCHMARK_ABSL
using AbslMap = absl::flat_hash_map<icu::UnicodeString, int, IcuHash>;
void MapGetHitAbslFlatHashMap(benchmark::State& state) {
  LookUpPeer<AbslMap>(state, true);
}
BENCHMARK(MapGetHitAbslFlatHashMap)->Arg(1000)->Arg(100000);
void MapGetMissAbslFlatHashMap(benchmark::State& state) {
  LookUpPeer<AbslMap>(state, false);
}
BENCHMARK(MapGetMissAbslFlatHashMap)->Arg(1000)->Arg(100000);
#endif

}  // namespace
