// Looks up one of 1,053 options by a name of 4 tokens; the stored name has wildcards in two of them. The peers look up
// an equal name, because they have no wildcards.
#include "VRELOptions.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELStringTokenizer.h"

#ifdef VREL_BENCHMARK_BOOST
#include <boost/property_tree/ptree.hpp>
#endif
#ifdef VREL_BENCHMARK_QT
#include <QSettings>
#include <QTemporaryDir>
#endif

namespace {

constexpr int optionCount = 1053;

char const* const starts[] = {"Step.Assembly.Reader.", "*.*.Reader.", "Iges.*.Writer."};

std::string NameOf(int index) {
  return starts[index % 3] + ("Option" + std::to_string(index));
}

VRELString const& AskedFor() {
  static VRELString const name(L"Step.Assembly.Reader.Option499");
  return name;
}

void BM_OptionsLookUp(benchmark::State& state) {
  VRELOptions options;
  for (int i = 0; i < optionCount; ++i) options.AddOption(VRELString(NameOf(i)), i);
  VRELOption* option = nullptr;
  for (auto step : state) {
    if (options.GetOption(AskedFor(), option).IsFailure()) std::abort();
    benchmark::DoNotOptimize(option);
  }
}
BENCHMARK(BM_OptionsLookUp);

// Splits the same name into strings, which a look-up avoids.
void BM_OptionsTokenizer(benchmark::State& state) {
  for (auto step : state) {
    VRELStringTokenizer const tokens(AskedFor(), VREL_OPTION_SEPARATOR);
    benchmark::DoNotOptimize(tokens.GetTokenCount());
  }
}
BENCHMARK(BM_OptionsTokenizer);

#ifdef VREL_BENCHMARK_BOOST
void BM_BoostTreeLookUp(benchmark::State& state) {
  boost::property_tree::ptree tree;
  for (int i = 0; i < optionCount; ++i) tree.put(NameOf(i), i);
  std::string const name = NameOf(498);
  for (auto step : state) {
    auto const found = tree.get_child_optional(name);
    if (!found) std::abort();
    benchmark::DoNotOptimize(&*found);
  }
}
BENCHMARK(BM_BoostTreeLookUp);

void BM_BoostTreeGet(benchmark::State& state) {
  boost::property_tree::ptree tree;
  for (int i = 0; i < optionCount; ++i) tree.put(NameOf(i), i);
  std::string const name = NameOf(498);
  for (auto step : state) {
    std::string const value = tree.get<std::string>(name);
    benchmark::DoNotOptimize(value.data());
  }
}
BENCHMARK(BM_BoostTreeGet);
#endif

#ifdef VREL_BENCHMARK_QT
void BM_QtSettingsLookUp(benchmark::State& state) {
  auto const keyOf = [](int index) { return QString::fromStdString(NameOf(index)).replace('.', '/'); };
  QTemporaryDir const directory;
  QString const file = directory.filePath("options.ini");
  {
    QSettings written(file, QSettings::IniFormat);
    for (int i = 0; i < optionCount; ++i) written.setValue(keyOf(i), i);
  }
  QSettings const settings(file, QSettings::IniFormat);
  QString const key = keyOf(498);
  if (settings.value(key).toInt() != 498) std::abort();
  for (auto step : state) {
    QVariant const value = settings.value(key);
    benchmark::DoNotOptimize(value.constData());
  }
}
BENCHMARK(BM_QtSettingsLookUp);
#endif

void BM_OptionsAddAndRemove(benchmark::State& state) {
  for (auto step : state) {
    VRELOptions options;
    for (int i = 0; i < optionCount; ++i) options.AddOption(VRELString(NameOf(i)), i);
    benchmark::DoNotOptimize(options.Size());
  }
}
BENCHMARK(BM_OptionsAddAndRemove);

}  // namespace
