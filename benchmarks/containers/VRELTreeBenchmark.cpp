// Traversal of deep, wide and balanced trees of 1,000 to 100,000 nodes: the time for one node must not grow with the
// tree. Compared with a traversal of nodes of std::vector with a stack and a std::unordered_set.
#include "VRELTree.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

// Returns the index of the parent of each node; the root, 0, has none.
using Shape = std::size_t (*)(std::size_t);

std::size_t Deep(std::size_t index) {
  return index - 1;
}
std::size_t Wide(std::size_t) {
  return 0;
}
std::size_t ByTens(std::size_t index) {
  return (index - 1) / 10;
}

void* Object(std::size_t index) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(index + 1));
}

void Grow(VRELTree& tree, std::size_t count, Shape parentOf) {
  std::vector<VRELTree::VRELTreeNode*> nodes = {tree.GetRoot()};
  for (std::size_t i = 1; i < count; ++i) nodes.push_back(nodes[parentOf(i)]->AddChild(Object(i)));
}

void Walk(benchmark::State& state, Shape parentOf) {
  auto const count = static_cast<std::size_t>(state.range(0));
  VRELTree tree(Object(0));
  Grow(tree, count, parentOf);
  for (auto _ : state) benchmark::DoNotOptimize(tree.GetChildCount());
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

void GrowAndDelete(benchmark::State& state, Shape parentOf) {
  auto const count = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    VRELTree tree(Object(0));
    Grow(tree, count, parentOf);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

struct PeerNode {
  void* object = nullptr;
  std::vector<PeerNode*> children;
};

void PeerWalk(benchmark::State& state, Shape parentOf) {
  auto const count = static_cast<std::size_t>(state.range(0));
  std::vector<std::unique_ptr<PeerNode>> nodes;
  for (std::size_t i = 0; i < count; ++i) {
    nodes.push_back(std::make_unique<PeerNode>());
    nodes.back()->object = Object(i);
    if (i > 0) nodes[parentOf(i)]->children.push_back(nodes.back().get());
  }
  for (auto _ : state) {
    int met = 1;
    std::unordered_set<PeerNode*> visited;
    std::vector<std::pair<PeerNode*, std::size_t>> stack = {{nodes.front().get(), 0}};
    while (!stack.empty()) {
      auto& [node, index] = stack.back();
      if (index == node->children.size()) {
        stack.pop_back();
        continue;
      }
      PeerNode* const child = node->children[index++];
      if (!visited.insert(child).second) continue;
      ++met;
      stack.emplace_back(child, 0);
    }
    benchmark::DoNotOptimize(met);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(1000, 100000)->Complexity(benchmark::oN);
}

BENCHMARK_CAPTURE(Walk, Deep, Deep)->Apply(Sizes);
BENCHMARK_CAPTURE(PeerWalk, Deep, Deep)->Apply(Sizes);
BENCHMARK_CAPTURE(Walk, Wide, Wide)->Apply(Sizes);
BENCHMARK_CAPTURE(PeerWalk, Wide, Wide)->Apply(Sizes);
BENCHMARK_CAPTURE(Walk, ByTens, ByTens)->Apply(Sizes);
BENCHMARK_CAPTURE(PeerWalk, ByTens, ByTens)->Apply(Sizes);
BENCHMARK_CAPTURE(GrowAndDelete, Deep, Deep)->Apply(Sizes);
BENCHMARK_CAPTURE(GrowAndDelete, Wide, Wide)->Apply(Sizes);

}  // namespace
