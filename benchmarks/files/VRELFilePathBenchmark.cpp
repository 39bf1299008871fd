// Parts of a path of 100 characters, compared with std::filesystem::path. Both return new objects.
#include "VRELFilePath.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

namespace {

std::string const kShortParts =
    "/data/projects/assemblies/2024/gearbox/housing/subassembly/rev" + std::string(28, 'x') + "/wheel.stp";
std::string const kLongParts = "/" + std::string(50, 'd') + "/" + std::string(24, 'n') + "." + std::string(23, 'e');

std::string const& Text(benchmark::State const& state) {
  return state.range(0) == 0 ? kShortParts : kLongParts;
}

template <class Operation>
void Measure(benchmark::State& state, Operation operation) {
  for (auto _ : state) {
    auto piece = operation();
    benchmark::DoNotOptimize(piece);
  }
}

void Name(benchmark::State& state) {
  VRELFilePath const path(Text(state).c_str());
  Measure(state, [&] { return path.GetName(); });
}
BENCHMARK(Name)->Arg(0)->Arg(1);

void StdName(benchmark::State& state) {
  std::filesystem::path const path(Text(state));
  Measure(state, [&] { return path.filename(); });
}
BENCHMARK(StdName)->Arg(0)->Arg(1);

void Directory(benchmark::State& state) {
  VRELFilePath const path(Text(state).c_str());
  Measure(state, [&] { return path.GetDirectory(); });
}
BENCHMARK(Directory)->Arg(0)->Arg(1);

void StdDirectory(benchmark::State& state) {
  std::filesystem::path const path(Text(state));
  Measure(state, [&] { return path.parent_path(); });
}
BENCHMARK(StdDirectory)->Arg(0)->Arg(1);

void LastExtension(benchmark::State& state) {
  VRELFilePath const path(Text(state).c_str());
  Measure(state, [&] { return path.GetLastExtension(); });
}
BENCHMARK(LastExtension)->Arg(0)->Arg(1);

void StdLastExtension(benchmark::State& state) {
  std::filesystem::path const path(Text(state));
  Measure(state, [&] { return path.extension(); });
}
BENCHMARK(StdLastExtension)->Arg(0)->Arg(1);

void DoesFileExist(benchmark::State& state) {
  VRELFilePath const path("/etc/passwd");
  Measure(state, [&] { return path.DoesFileExist(); });
}
BENCHMARK(DoesFileExist);

void StdExists(benchmark::State& state) {
  std::filesystem::path const path("/etc/passwd");
  Measure(state, [&] { return std::filesystem::exists(path); });
}
BENCHMARK(StdExists);

}  // namespace
