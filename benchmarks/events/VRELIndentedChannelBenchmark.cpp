#include <benchmark/benchmark.h>

#include <cstdio>

#include "VRELDebug.h"
#include "VRELEventListener.h"
#include "VRELInfo.h"
#include "VRELMessageEvent.h"

namespace {

void printfUnheard(benchmark::State& state) {
  int number = 0;
  for (auto _ : state) VRELInfo::Printf("%s %d", "Gearbox", ++number);
}
BENCHMARK(printfUnheard);

void peerSnprintf(benchmark::State& state) {
  int number = 0;
  char text[1024];
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "%s %d", "Gearbox", ++number));
    benchmark::ClobberMemory();
  }
}
BENCHMARK(peerSnprintf);

class IdleListener : public VRELEventListener {
 public:
  void HandleEvent(VRELEvent& event) override { benchmark::DoNotOptimize(&event); }
};

void printfHeard(benchmark::State& state) {
  IdleListener listener;
  VRELEventBus::GetEventBus()->AddListener(&listener);
  int number = 0;
  for (auto _ : state) VRELInfo::Printf("%s %d", "Gearbox", ++number);
  VRELEventBus::GetEventBus()->RemoveListener(&listener);
}
BENCHMARK(printfHeard);

void fireUnheard(benchmark::State& state) {
  int number = 0;
  for (auto _ : state) VRELMessageEvent::Fire("%s %d", "Gearbox", ++number);
}
BENCHMARK(fireUnheard);

void debugPrintf(benchmark::State& state) {
  int number = 0;
  for (auto _ : state) {
    VRELDebug::Printf("%s %d", "Gearbox", ++number);
    benchmark::DoNotOptimize(number);
  }
}
BENCHMARK(debugPrintf);

}  // namespace
