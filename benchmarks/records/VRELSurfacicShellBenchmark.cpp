// VRELSurfacicShell::CopyData compared with memcpy of the same bytes.
#include "VRELSurfacicShell.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace {

// Data of a shell with `count` points. Each point has a normal, two triangles of four ints and a colour.
struct Mesh {
  explicit Mesh(int count)
      : points(count),
        floats(3 * static_cast<std::size_t>(count), 0.5F),
        faces(8 * static_cast<std::size_t>(count), 1) {}

  std::size_t Bytes() const { return 3 * floats.size() * sizeof(float) + faces.size() * sizeof(int); }

  int points;
  std::vector<float> floats;
  std::vector<int> faces;
};

void ShellCopyData(benchmark::State& state) {
  Mesh const mesh(static_cast<int>(state.range(0)));
  float const* const floats = mesh.floats.data();
  for (auto _ : state) {
    VRELSurfacicShell shell(1, 0, 0);
    shell.CopyData(mesh.points, floats, mesh.points, floats, static_cast<int>(mesh.faces.size()), mesh.faces.data(),
                   mesh.points, floats);
    benchmark::DoNotOptimize(shell);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(mesh.Bytes()));
}

// Copies to newly allocated memory, as a shell does.
void ShellMemcpyToNewArrays(benchmark::State& state) {
  Mesh const mesh(static_cast<int>(state.range(0)));
  std::size_t const lengths[] = {mesh.floats.size(), mesh.floats.size(), mesh.faces.size(), mesh.floats.size()};
  void const* const sources[] = {mesh.floats.data(), mesh.floats.data(), mesh.faces.data(), mesh.floats.data()};
  for (auto _ : state) {
    std::unique_ptr<float[]> copies[4];
    for (std::size_t i = 0; i < 4; ++i) {
      copies[i].reset(new float[lengths[i]]);
      std::memcpy(copies[i].get(), sources[i], lengths[i] * sizeof(float));
    }
    benchmark::DoNotOptimize(copies);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(mesh.Bytes()));
}

// Copies to memory that is already allocated and mapped.
void ShellMemcpy(benchmark::State& state) {
  Mesh const mesh(static_cast<int>(state.range(0)));
  std::vector<float> copy(mesh.Bytes() / sizeof(float));
  for (auto _ : state) {
    float* to = copy.data();
    for (int i = 0; i < 3; ++i, to += mesh.floats.size()) {
      std::memcpy(to, mesh.floats.data(), mesh.floats.size() * sizeof(float));
    }
    std::memcpy(to, mesh.faces.data(), mesh.faces.size() * sizeof(int));
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(mesh.Bytes()));
}

BENCHMARK(ShellCopyData)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(ShellMemcpyToNewArrays)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(ShellMemcpy)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
