// VRELHashList of pointers compared with std::unordered_set and absl::flat_hash_set.
#include "VRELHashList.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <unordered_set>
#include <vector>
#ifdef VREL_BENCHMARK_ABSL
#include <absl/container/flat_hash_set.h>
#endif

namespace {

// Returns addresses as the heap returns them for objects of 16 to 144 bytes, in random order. With a shift, no object
// has them.
std::vector<void*> Pointers(std::int64_t count, unsigned int shift = 0) {
  std::mt19937 random(4);
  std::vector<void*> pointers;
  std::uintptr_t address = 0x7F0012340010;
  for (std::int64_t i = 0; i < count; ++i) {
    pointers.push_back(reinterpret_cast<void*>(address + shift));
    address += 16 * (1 + random() % 9);
  }
  std::shuffle(pointers.begin(), pointers.end(), random);
  return pointers;
}

void Insert(VRELHashList<void*>& list, void* pointer) {
  list.Add(pointer);
}
bool Contains(VRELHashList<void*> const& list, void* pointer) {
  return list.Get(pointer);
}
template <class Set>
void Insert(Set& set, void* pointer) {
  set.insert(pointer);
}
template <class Set>
bool Contains(Set const& set, void* pointer) {
  return set.find(pointer) != set.end();
}

template <class Set>
void ListInsert(benchmark::State& state) {
  std::vector<void*> const pointers = Pointers(state.range(0));
  for (auto _ : state) {
    Set set;
    for (void* pointer : pointers) Insert(set, pointer);
    benchmark::DoNotOptimize(set);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Set>
void ListFind(benchmark::State& state, unsigned int shift) {
  Set set;
  for (void* pointer : Pointers(state.range(0))) Insert(set, pointer);
  std::vector<void*> sought = Pointers(state.range(0), shift);
  std::shuffle(sought.begin(), sought.end(), std::mt19937(5));
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(Contains(set, sought[next]));
    if (++next == sought.size()) next = 0;
  }
}

template <class Set>
void ListHit(benchmark::State& state) {
  ListFind<Set>(state, 0);
}
template <class Set>
void ListMiss(benchmark::State& state) {
  ListFind<Set>(state, 8);
}

using VrelList = VRELHashList<void*>;
using StdSet = std::unordered_set<void*>;
BENCHMARK_TEMPLATE(ListInsert, VrelList)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(ListInsert, StdSet)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(ListHit, VrelList)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(ListHit, StdSet)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(ListMiss, VrelList)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(ListMiss, StdSet)->Arg(1000)->Arg(100000);
#ifdef VREL_BENCHMARK_ABSL
using AbslSet = absl::flat_hash_set<void*>;
BENCHMARK_TEMPLATE(ListInsert, AbslSet)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(ListHit, AbslSet)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(ListMiss, AbslSet)->Arg(1000)->Arg(100000);
#endif

}  // namespace
