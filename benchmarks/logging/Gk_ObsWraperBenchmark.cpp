// Delivery of a value to 1, 4 and 40 observers, compared with a signal of Boost, which allows changes during a send
// too, and with a vector of functions, which does not.
#include "Gk_ObsWraper.h"

#include <benchmark/benchmark.h>
#ifdef VREL_BENCHMARK_BOOST
#include <boost/signals2.hpp>
#endif

#include <functional>
#include <vector>

#include "Gk_IntObserver.h"
#include "Gk_Observable.h"

namespace {

class Adder final : public Gk_IntObserver {
 public:
  Type getType() const override { return IntType; }
  void setInt(int value) override { sum += value; }

  long sum = 0;
};

void Send(benchmark::State& state) {
  Gk_Observable observable;
  std::vector<Adder> adders(static_cast<std::size_t>(state.range(0)));
  for (Adder& adder : adders) observable.getObservers().Add(&adder);
  Gk_ObsWraper wrapper(Gk_String("faces"), &observable);
  for (auto _ : state) wrapper.setInt(1);
  benchmark::DoNotOptimize(adders.front().sum);
}
BENCHMARK(Send)->Arg(1)->Arg(4)->Arg(40);

#ifdef VREL_BENCHMARK_BOOST
void BoostSignal(benchmark::State& state) {
  boost::signals2::signal<void(int)> signal;
  std::vector<Adder> adders(static_cast<std::size_t>(state.range(0)));
  for (Adder& adder : adders) signal.connect([&adder](int value) { adder.setInt(value); });
  for (auto _ : state) signal(1);
  benchmark::DoNotOptimize(adders.front().sum);
}
BENCHMARK(BoostSignal)->Arg(1)->Arg(4)->Arg(40);
#endif

void VectorOfFunctions(benchmark::State& state) {
  std::vector<std::function<void(int)>> functions;
  std::vector<Adder> adders(static_cast<std::size_t>(state.range(0)));
  for (Adder& adder : adders) functions.emplace_back([&adder](int value) { adder.setInt(value); });
  for (auto _ : state) {
    for (auto const& function : functions) function(1);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(VectorOfFunctions)->Arg(1)->Arg(4)->Arg(40);

}  // namespace
