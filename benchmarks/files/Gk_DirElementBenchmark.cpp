// Search for half of 50,000 files in 500 directories, compared with nftw, std::filesystem and find.
#include "Gk_DirElement.h"

#include <benchmark/benchmark.h>
#include <fnmatch.h>
#include <ftw.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kDirectoryCount = 500;
constexpr int kFilesPerDirectory = 100;
constexpr std::size_t kMatchingCount = 25000;

// Created by the first benchmark that needs it, removed when the program exits.
class Tree {
 public:
  static std::string const& Path() {
    static Tree const tree;
    return tree.path;
  }

 private:
  Tree() : path((fs::temp_directory_path() / "vrel-benchmark-XXXXXX").string()) {
    if (mkdtemp(path.data()) == nullptr) std::abort();
    for (int i = 0; i < kDirectoryCount; ++i) {
      std::string const directory = path + "/assembly" + std::to_string(i);
      fs::create_directory(directory);
      for (int j = 0; j < kFilesPerDirectory; ++j) {
        std::ofstream(directory + "/wheel" + std::to_string(j) + (j % 2 == 0 ? ".stp" : ".igs"));
      }
    }
  }
  ~Tree() { fs::remove_all(path); }

  std::string path;
};

void Check(benchmark::State& state, std::size_t found) {
  if (found != kMatchingCount) state.SkipWithError("found another number of files");
}

void FetchLeafFiles(benchmark::State& state) {
  Gk_DirElement const directory(Gk_String(Tree::Path().c_str()));
  for (auto _ : state) {
    Check(state, static_cast<std::size_t>(directory.fetchLeafFiles("*.stp").size()));
  }
}
BENCHMARK(FetchLeafFiles)->Unit(benchmark::kMillisecond)->UseRealTime();

std::vector<std::string>* found;

int AddIfItMatches(char const* path, struct stat const* /*stats*/, int type, FTW* position) {
  if (type == FTW_F && fnmatch("*.stp", path + position->base, 0) == 0) found->emplace_back(path);
  return 0;
}

void Nftw(benchmark::State& state) {
  std::string const& path = Tree::Path();
  for (auto _ : state) {
    std::vector<std::string> paths;
    found = &paths;
    nftw(path.c_str(), AddIfItMatches, 16, FTW_PHYS);
    Check(state, paths.size());
  }
}
BENCHMARK(Nftw)->Unit(benchmark::kMillisecond)->UseRealTime();

void StdFilesystem(benchmark::State& state) {
  std::string const& path = Tree::Path();
  for (auto _ : state) {
    std::vector<std::string> paths;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(path)) {
      if (entry.is_regular_file() && entry.path().extension() == ".stp") paths.push_back(entry.path().string());
    }
    Check(state, paths.size());
  }
}
BENCHMARK(StdFilesystem)->Unit(benchmark::kMillisecond)->UseRealTime();

// Reads the output of the program, as a translator that calls it does.
void Find(benchmark::State& state) {
  std::string const command = "find " + Tree::Path() + " -type f -name '*.stp'";
  for (auto _ : state) {
    std::vector<std::string> paths;
    std::FILE* const output = popen(command.c_str(), "r");
    if (output == nullptr) return state.SkipWithError("find does not start");
    char line[4096];
    while (std::fgets(line, sizeof line, output) != nullptr) paths.emplace_back(line);
    pclose(output);
    Check(state, paths.size());
  }
}
BENCHMARK(Find)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
