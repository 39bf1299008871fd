// Reads a settings file of 10,000 lines, compared with the usual readers of C++ and C programs. All read the same file
// into memory; inih stores nothing by itself, so that its callback fills a container of pairs.
#include "VRELCfgFile.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "VRELFilePath.h"

#ifdef VREL_BENCHMARK_BOOST
#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#endif
#ifdef VREL_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef VREL_BENCHMARK_INIH
#include <ini.h>
#endif

namespace {

constexpr int lineCount = 10000;

// A temporary file with 100 sections of a header and 99 keys.
class SettingsFile {
 public:
  SettingsFile() {
    int const descriptor = mkstemp(path.data());
    std::FILE* const stream = descriptor < 0 ? nullptr : fdopen(descriptor, "w");
    if (stream == nullptr) std::abort();
    char const* const values[] = {"true", "0.001", "Millimetre", "some text of a user"};
    for (int line = 0; line < lineCount; ++line) {
      if (line % 100 == 0) {
        std::fprintf(stream, "[Section.%d]\n", line / 100);
      } else {
        std::fprintf(stream, "Import.Setting.%d = %s\n", line % 100, values[line % 4]);
      }
    }
    std::fclose(stream);
  }
  ~SettingsFile() { unlink(path.c_str()); }
  SettingsFile(SettingsFile const&) = delete;
  SettingsFile& operator=(SettingsFile const&) = delete;

  std::string path = "/tmp/VRELCfgFileBenchmark.XXXXXX";
};

void LoadSettings(benchmark::State& state) {
  SettingsFile const settings;
  VRELFilePath const path(settings.path.c_str());
  for (auto _ : state) {
    VRELCfgFile file;
    if (file.Load(path) != VREL_S_OK) std::abort();
    benchmark::DoNotOptimize(file.findSection("Section.99"));
  }
  state.SetItemsProcessed(state.iterations() * lineCount);
}
BENCHMARK(LoadSettings);

#ifdef VREL_BENCHMARK_BOOST
void LoadSettingsByBoost(benchmark::State& state) {
  SettingsFile const settings;
  for (auto _ : state) {
    boost::property_tree::ptree tree;
    boost::property_tree::ini_parser::read_ini(settings.path, tree);
    benchmark::DoNotOptimize(tree.size());
  }
  state.SetItemsProcessed(state.iterations() * lineCount);
}
BENCHMARK(LoadSettingsByBoost);
#endif

#ifdef VREL_BENCHMARK_GLIB
void LoadSettingsByGlib(benchmark::State& state) {
  SettingsFile const settings;
  for (auto _ : state) {
    GKeyFile* file = g_key_file_new();
    if (g_key_file_load_from_file(file, settings.path.c_str(), G_KEY_FILE_NONE, nullptr) == 0) std::abort();
    benchmark::DoNotOptimize(file);
    g_key_file_free(file);
  }
  state.SetItemsProcessed(state.iterations() * lineCount);
}
BENCHMARK(LoadSettingsByGlib);
#endif

#ifdef VREL_BENCHMARK_INIH
using Pairs = std::vector<std::pair<std::string, std::string>>;

int TakePair(void* user, char const* /*section*/, char const* name, char const* value) {
  static_cast<Pairs*>(user)->emplace_back(name, value);
  return 1;
}

void LoadSettingsByInih(benchmark::State& state) {
  SettingsFile const settings;
  for (auto _ : state) {
    Pairs pairs;
    if (ini_parse(settings.path.c_str(), TakePair, &pairs) != 0) std::abort();
    benchmark::DoNotOptimize(pairs.data());
  }
  state.SetItemsProcessed(state.iterations() * lineCount);
}
BENCHMARK(LoadSettingsByInih);
#endif

// Reads one number of that file.
void ReadSetting(benchmark::State& state) {
  SettingsFile const settings;
  VRELCfgFile file;
  if (file.Load(VRELFilePath(settings.path.c_str())) != VREL_S_OK) std::abort();
  for (auto _ : state) {
    double value = 0.0;
    benchmark::DoNotOptimize(file.GetDouble("Import.Setting.97", value, 0, "Section.60"));
  }
}
BENCHMARK(ReadSetting);

#ifdef VREL_BENCHMARK_BOOST
void ReadSettingByBoost(benchmark::State& state) {
  SettingsFile const settings;
  boost::property_tree::ptree tree;
  boost::property_tree::ini_parser::read_ini(settings.path, tree);
  boost::property_tree::ptree::path_type const path("Section.60|Import.Setting.97", '|');
  for (auto _ : state) benchmark::DoNotOptimize(tree.get<double>(path));
}
BENCHMARK(ReadSettingByBoost);
#endif

}  // namespace
