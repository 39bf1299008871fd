#include "VRELLibrary.h"

#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include "VRELBrivetLibrary.h"
#include "VRELLibraryManager.h"

namespace {

constexpr char kFunction[] = "CreateFormatReader";

void GetFunction(benchmark::State& state) {
  VRELLibrary library("VRELBenchmarkModule", "InitializeModule", "FinalizeModule");
  VRELString const name(kFunction);
  void* address = nullptr;
  for (auto _ : state) {
    if (library.GetFunction(name, address).IsFailure()) state.SkipWithError("no such function");
    benchmark::DoNotOptimize(address);
  }
}
BENCHMARK(GetFunction);

void GetFunctionOfBrivetLibrary(benchmark::State& state) {
  VRELBrivetLibrary library("VRELBenchmarkModule", "InitializeModule", "FinalizeModule");
  VRELString const name(kFunction);
  void* address = nullptr;
  for (auto _ : state) {
    if (library.GetFunction(name, address).IsFailure()) state.SkipWithError("no such function");
    benchmark::DoNotOptimize(address);
  }
}
BENCHMARK(GetFunctionOfBrivetLibrary);

void peerDlsym(benchmark::State& state) {
  VRELLibrary library("VRELBenchmarkModule", "InitializeModule", "FinalizeModule");
  library.LoadAndInitialize();
  void* const handle = dlopen("libVRELBenchmarkModule.so", RTLD_NOW | RTLD_NOLOAD);
  if (handle == nullptr) state.SkipWithError("not loaded");
  for (auto _ : state) benchmark::DoNotOptimize(dlsym(handle, kFunction));
  if (handle != nullptr) dlclose(handle);
}
BENCHMARK(peerDlsym);

}  // namespace
