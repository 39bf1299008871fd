// The order in which the library comes up and goes down, seen from a program that loads it while it runs.
#include <cxxabi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "NameList.h"

namespace {

std::string Demangled(std::string const& symbol) {
  std::unique_ptr<char, decltype(&std::free)> const name(abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr),
                                                         &std::free);
  return name != nullptr ? name.get() : symbol;
}

// The objects that announced their destructors while the library was loaded.
std::vector<std::string> ComingUp() {
  ChildResult const child = RunProgram({LIBRARY_LOADER, "order", LIBRARY});
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  std::vector<std::string> names;
  std::istringstream lines(child.output);
  for (std::string line; std::getline(lines, line);) names.push_back(Demangled(line));
  return names;
}

void AddMembers(std::vector<std::string>& names, std::string const& owner, std::string const& list) {
  for (ListedName const& name : ReadNameList(list)) names.push_back(owner + "::" + name.identifier);
}

// What is told in order to be torn down stands in reverse order of the announcements: that is the language's promise.
TEST(VRELStartupTest, NamesComeUpInOrderBehindWhatTheyNeed) {
  std::vector<std::string> expected = {"VREL_OPTION_WILDCARD", "VRELOptionName::_optionNames"};
  AddMembers(expected, "VRELOptionName", "VRELUtilities.m/src/settings/VRELOptionNames.def");
  AddMembers(expected, "VRINOptionName", "public/VRINOptionNames.def");
  AddMembers(expected, "VRINComponentName", "public/VRINComponentNames.def");
  AddMembers(expected, "VRINReaderWriterName", "public/VRINReaderWriterNames.def");
  AddMembers(expected, "VRINRepresentationName", "public/VRINRepresentationNames.def");
  ASSERT_EQ(expected.size(), 2U + 1053 + 162 + 16 + 3 + 5);
  std::vector<std::string> const actual = ComingUp();
  auto const first = std::find(actual.begin(), actual.end(), "VREL_OPTION_WILDCARD");
  ASSERT_GE(actual.end() - first, static_cast<std::ptrdiff_t>(expected.size()));
  for (std::size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(first[static_cast<std::ptrdiff_t>(i)], expected[i]);
}

TEST(VRELStartupTest, NamesComeUpBeforeUnitsAndBus) {
  std::vector<std::string> const actual = ComingUp();
  auto const place = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(place("VRELEventBus::_eventBus"), actual.end());
  ASSERT_NE(place("Gk_Unit::meter"), actual.end());
  EXPECT_LT(place("VRINRepresentationName::Visualization"), place("Gk_Unit::meter"));
  EXPECT_LT(place("Gk_Unit::uinch"), place("VRELEventBus::_eventBus"));
}

TEST(VRELStartupTest, TheMatrixConstantComesUpBetweenUnitsAndHeaderKeys) {
  std::vector<std::string> const actual = ComingUp();
  auto const place = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(place("VREL4x4MatrixI"), actual.end());
  EXPECT_LT(place("Gk_Unit::uinch"), place("VREL4x4MatrixI"));
  EXPECT_LT(place("VREL4x4MatrixI"), place("VRELFileHeader::MODIFICATION_DATE"));
}

// What comes up later goes down earlier.
TEST(VRELStartupTest, LoggersGoDownBeforeTheBus) {
  std::vector<std::string> const actual = ComingUp();
  auto const place = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(place("VRELConsoleLogger::_console"), actual.end());
  EXPECT_LT(place("VRELFileOutputStream::console"), place("VRELConsoleLogger::_console"));
  EXPECT_LT(place("VRELEventBus::_eventBus"), place("VRELConsoleLogger::_console"));
}

TEST(VRELStartupTest, ModulesGoDownBeforeTheLoggers) {
  std::vector<std::string> const actual = ComingUp();
  auto const place = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(place("VRELLibraryManager::_libraries"), actual.end());
  EXPECT_LT(place("VRELConsoleLogger::_console"), place("VRELLibraryManager::_libraries"));
}

TEST(VRELStartupTest, TheTimerGoesDownBeforeWhatItLeansOn) {
  std::vector<std::string> const actual = ComingUp();
  auto const place = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(place("VRELTimingLogger::_timer"), actual.end());
  for (char const* const earlier : {"VRELEventBus::_eventBus", "VRELPerfTrackerStatus::instance",
                                    "VRELConsoleLogger::_console", "VRELLibraryManager::_libraries"}) {
    EXPECT_LT(place(earlier), place("VRELTimingLogger::_timer")) << earlier;
  }
}

// The console may be the stream that it flushes when it goes.
TEST(VRELStartupTest, TheTraceOfObserversGoesDownBeforeTheConsole) {
  std::vector<std::string> const actual = ComingUp();
  auto const place = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(place("Gk_ObservableDoc::_debugSink"), actual.end());
  EXPECT_LT(place("VRELFileOutputStream::console"), place("Gk_ObservableDoc::_debugSink"));
}

TEST(VRELStartupTest, LoadsAndUnloadsAHundredTimes) {
  // The memory that the C library keeps at hand for a thread would count as held.
  ProgramOptions options;
  options.environment = {"GLIBC_TUNABLES=glibc.malloc.tcache_count=0"};
  ChildResult const child = RunProgram({LIBRARY_LOADER, "repeat", LIBRARY, "100"}, options);
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  EXPECT_EQ(child.signal, 0);
}

// ICU settles the default codepage when it is first asked for; the program must have the chance to choose its locale.
TEST(VRELStartupTest, LoadingDoesNotSettleTheCodepage) {
  ChildResult const child = RunProgram({LIBRARY_LOADER, "codepage", LIBRARY});
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

}  // namespace
