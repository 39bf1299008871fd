// StepMemory read|page|occt FILE
//
// Performs the operation on a STEP file and prints by how many bytes the peak memory of the process exceeds that
// before; 0 if the operation failed or the peer is not available.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "StepWork.h"

namespace {

// Returns a value of /proc/self/status in bytes: VmRSS is the present memory, VmHWM the peak.
long long Memory(char const* name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    std::istringstream words(line);
    std::string key;
    long long kilobytes = 0;
    if (words >> key >> kilobytes && key == std::string(name) + ":") return kilobytes * 1024;
  }
  return 0;
}

std::size_t Work(char const* how, char const* path) {
  if (std::strcmp(how, "read") == 0) return ReadStepFile(path);
  if (std::strcmp(how, "page") == 0) return WritePageOfStepFile(path);
#ifdef VREL_BENCHMARK_OCCT_STEP
  if (std::strcmp(how, "occt") == 0) return ReadStepFileByOpenCascade(path);
#endif
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  long long const before = Memory("VmRSS");
  std::size_t const outcome = Work(argv[1], argv[2]);
  std::printf("%lld\n", outcome == 0 ? 0 : Memory("VmHWM") - before);
  return 0;
}
