// Whole runs that mesh a STEP file, compared with direct use of the engine.
#ifdef VREL_BENCHMARK_OCCT_STEP

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

#ifdef DIRECT_MESH
constexpr char kBrivet[] = BRIVET_PROGRAM " -nolog -nosync -quiet";
constexpr char kDirect[] = DIRECT_MESH;

// The sample part, or the file that VREL_MESH_FILE names.
std::string InputFile() {
  char const* const given = std::getenv("VREL_MESH_FILE");
  return given != nullptr ? given : VREL_SOURCE_DIR "/examples/bracket.stp";
}

void MeasureRun(benchmark::State& state, std::string const& program) {
  char folder[] = "/tmp/vrel-mesh-XXXXXX";
  if (mkdtemp(folder) == nullptr) return state.SkipWithError("no temporary folder");
  std::string const output = std::string(folder) + "/part.glb";
  std::string const command = program + " '" + InputFile() + "' " + output + " >/dev/null 2>&1";
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) {
      state.SkipWithError("nothing was written");
      break;
    }
  }
  unlink(output.c_str());
  rmdir(folder);
}

#else
constexpr char kBrivet[] = "";
constexpr char kDirect[] = "";

void MeasureRun(benchmark::State& state, std::string const& /*program*/) {
  state.SkipWithError("the shape module was not built");
}
#endif

}  // namespace

BENCHMARK_CAPTURE(MeasureRun, Brivet, kBrivet)->Name("STEP file to glTF")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MeasureRun, Direct, kDirect)
    ->Name("STEP file to glTF, peer Open CASCADE")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

#endif
