#include "VRELEventBus.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "VRELEvent.h"

namespace {

// Two classes, so that the compiler cannot devirtualize the calls of the peer.
template <int step>
class CountingListener : public VRELEventListener {
 public:
  void HandleEvent(VRELEvent& /*event*/) override { count += step; }
  long count = 0;
};

std::vector<std::unique_ptr<VRELEventListener>> MakeListeners(benchmark::State const& state) {
  std::vector<std::unique_ptr<VRELEventListener>> listeners;
  for (long i = 0; i < state.range(0); ++i) {
    if (i < 100) {
      listeners.push_back(std::make_unique<CountingListener<1>>());
    } else {
      listeners.push_back(std::make_unique<CountingListener<2>>());
    }
  }
  return listeners;
}

void send(benchmark::State& state) {
  auto const listeners = MakeListeners(state);
  for (auto const& listener : listeners) VRELEventBus::GetEventBus()->AddListener(listener.get());
  VRELEvent event("MyEvent", VREL_LEVEL_INFO);
  VRELEvent* sent = &event;
  benchmark::DoNotOptimize(sent);
  for (auto _ : state) {
    VRELEventBus::GetEventBus()->Send(*sent);
    benchmark::ClobberMemory();
  }
  for (auto const& listener : listeners) VRELEventBus::GetEventBus()->RemoveListener(listener.get());
}
BENCHMARK(send)->Arg(0)->Arg(1)->Arg(8);

// The obvious implementation: test whether the event is timed, then call each listener.
[[gnu::noinline]] void Loop(std::vector<VRELEventListener*>& listeners, VRELEvent& event) {
  if (event.IsTimed()) return;
  for (std::size_t i = 0; i < listeners.size(); ++i) listeners[i]->HandleEvent(event);
}

void peerLoop(benchmark::State& state) {
  auto const storage = MakeListeners(state);
  std::vector<VRELEventListener*> listeners;
  for (auto const& listener : storage) listeners.push_back(listener.get());
  VRELEvent event("MyEvent", VREL_LEVEL_INFO);
  VRELEvent* sent = &event;
  benchmark::DoNotOptimize(sent);
  for (auto _ : state) {
    Loop(listeners, *sent);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(peerLoop)->Arg(0)->Arg(1)->Arg(8);

}  // namespace
