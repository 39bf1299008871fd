// Loads the library with all its names in a new process, compared with ICU, Qt 5 Core and the kernel of Open CASCADE.
// "Alone" means that the dependencies of the library are loaded before. The time is that of dlopen with all symbols
// bound.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

void Load(benchmark::State& state, std::string const& libraries) {
  std::string const command = LOAD_TIMER " " + libraries;
  for (auto _ : state) {
    std::FILE* const output = popen(command.c_str(), "r");
    long long nanoseconds = 0;
    bool const isRead = output != nullptr && std::fscanf(output, "%lld", &nanoseconds) == 1;
    if (output != nullptr) pclose(output);
    if (!isRead || nanoseconds == 0) {
      state.SkipWithError("the library is not installed");
      return;
    }
    state.SetIterationTime(static_cast<double>(nanoseconds) * 1e-9);
  }
}

constexpr char kIcu[] = "libicuuc.so.72";
constexpr char kQtGround[] =
    "libicui18n.so.72 libdouble-conversion.so.3 libpcre2-16.so.0 libglib-2.0.so.0 libzstd.so.1 libz.so.1";

void VrelBase(benchmark::State& state) {
  Load(state, LIBRARY);
}
void VrelBaseAlone(benchmark::State& state) {
  Load(state, std::string(kIcu) + " " LIBRARY);
}
void Icu(benchmark::State& state) {
  Load(state, kIcu);
}
void QtCore(benchmark::State& state) {
  Load(state, "libQt5Core.so.5");
}
void QtCoreAlone(benchmark::State& state) {
  Load(state, std::string(kQtGround) + " libQt5Core.so.5");
}
void OpenCascadeKernel(benchmark::State& state) {
  Load(state, "libTKernel.so.7");
}
void OpenCascadeKernelAlone(benchmark::State& state) {
  Load(state, "libtbb.so.12 libtbbmalloc.so.2 libTKernel.so.7");
}

#define LOAD_BENCHMARK(function) BENCHMARK(function)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(100)
LOAD_BENCHMARK(VrelBase);
LOAD_BENCHMARK(VrelBaseAlone);
LOAD_BENCHMARK(Icu);
LOAD_BENCHMARK(QtCore);
LOAD_BENCHMARK(QtCoreAlone);
LOAD_BENCHMARK(OpenCascadeKernel);
LOAD_BENCHMARK(OpenCascadeKernelAlone);

}  // namespace
