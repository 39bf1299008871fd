// Construction and destruction order of the static objects of the library.
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

// Returns the objects that registered a destructor while the library was loaded, in order of construction.
std::vector<std::string> ConstructedObjects() {
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

// Destructors run in reverse order of their registration, so this order determines that of destruction.
TEST(VRELStartupTest, NamesFollowTheirArrayInListOrder) {
  std::vector<std::string> expected = {"VREL_OPTION_WILDCARD", "VRELOptionName::_optionNames"};
  AddMembers(expected, "VRELOptionName", "VRELUtilities.m/src/settings/VRELOptionNames.def");
  AddMembers(expected, "VRINOptionName", "public/VRINOptionNames.def");
  AddMembers(expected, "VRINComponentName", "public/VRINComponentNames.def");
  AddMembers(expected, "VRINReaderWriterName", "public/VRINReaderWriterNames.def");
  AddMembers(expected, "VRINRepresentationName", "public/VRINRepresentationNames.def");
  ASSERT_EQ(expected.size(), 2U + 1053 + 162 + 16 + 3 + 5);
  std::vector<std::string> const actual = ConstructedObjects();
  auto const first = std::find(actual.begin(), actual.end(), "VREL_OPTION_WILDCARD");
  ASSERT_GE(actual.end() - first, static_cast<std::ptrdiff_t>(expected.size()));
  for (std::size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(first[static_cast<std::ptrdiff_t>(i)], expected[i]);
}

TEST(VRELStartupTest, NamesPrecedeUnitsAndBus) {
  std::vector<std::string> const actual = ConstructedObjects();
  auto const position = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(position("VRELEventBus::_eventBus"), actual.end());
  ASSERT_NE(position("Gk_Unit::meter"), actual.end());
  EXPECT_LT(position("VRINRepresentationName::Visualization"), position("Gk_Unit::meter"));
  EXPECT_LT(position("Gk_Unit::uinch"), position("VRELEventBus::_eventBus"));
}

TEST(VRELStartupTest, MatrixIsBetweenUnitsAndHeaderKeys) {
  std::vector<std::string> const actual = ConstructedObjects();
  auto const position = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(position("VREL4x4MatrixI"), actual.end());
  EXPECT_LT(position("Gk_Unit::uinch"), position("VREL4x4MatrixI"));
  EXPECT_LT(position("VREL4x4MatrixI"), position("VRELFileHeader::MODIFICATION_DATE"));
}

TEST(VRELStartupTest, BusPrecedesConsoleLogger) {
  std::vector<std::string> const actual = ConstructedObjects();
  auto const position = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(position("VRELConsoleLogger::_console"), actual.end());
  EXPECT_LT(position("VRELFileOutputStream::console"), position("VRELConsoleLogger::_console"));
  EXPECT_LT(position("VRELEventBus::_eventBus"), position("VRELConsoleLogger::_console"));
}

TEST(VRELStartupTest, ConsoleLoggerPrecedesModules) {
  std::vector<std::string> const actual = ConstructedObjects();
  auto const position = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(position("VRELLibraryManager::_libraries"), actual.end());
  EXPECT_LT(position("VRELConsoleLogger::_console"), position("VRELLibraryManager::_libraries"));
}

TEST(VRELStartupTest, TimingLoggerFollowsItsDependencies) {
  std::vector<std::string> const actual = ConstructedObjects();
  auto const position = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(position("VRELTimingLogger::_timer"), actual.end());
  for (char const* const earlier : {"VRELEventBus::_eventBus", "VRELPerfTrackerStatus::instance",
                                    "VRELConsoleLogger::_console", "VRELLibraryManager::_libraries"}) {
    EXPECT_LT(position(earlier), position("VRELTimingLogger::_timer")) << earlier;
  }
}

// The formatter flushes its stream, which can be the console, in its destructor.
TEST(VRELStartupTest, ConsoleStreamPrecedesObserverTrace) {
  std::vector<std::string> const actual = ConstructedObjects();
  auto const position = [&](std::string const& name) { return std::find(actual.begin(), actual.end(), name); };
  ASSERT_NE(position("Gk_ObservableDoc::_debugSink"), actual.end());
  EXPECT_LT(position("VRELFileOutputStream::console"), position("Gk_ObservableDoc::_debugSink"));
}

TEST(VRELStartupTest, LoadsAndUnloadsRepeatedly) {
  // The per-thread cache of malloc would be counted as a leak.
  ProgramOptions options;
  options.environment = {"GLIBC_TUNABLES=glibc.malloc.tcache_count=0"};
  ChildResult const child = RunProgram({LIBRARY_LOADER, "repeat", LIBRARY, "100"}, options);
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  EXPECT_EQ(child.signal, 0);
}

// ICU determines the default codepage on its first use; a program sets its locale before that.
TEST(VRELStartupTest, LoadingKeepsCodepageOpen) {
  ChildResult const child = RunProgram({LIBRARY_LOADER, "codepage", LIBRARY});
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

// The values are the same before and after main: the library is initialized before, and destroyed after, the static
// objects of a program that links it.
TEST(VRELStartupTest, StaticObjectsOfClientsUseLibrary) {
  ChildResult const child = RunProgram({STATIC_CLIENT});
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  std::string const values =
      "result 0x1000001\n"
      "wildcard 1\n"
      "option names 1053\n"
      "public name 1\n"
      "inch 25.4\n"
      "matrix 1\n"
      "vector 1\n"
      "error 0x1000001\n"
      "header key 1\n"
      "modules 0\n"
      "tracker 0\n"
      "environment 0\n"
      "console 0\n"
      "listeners 0\n";
  EXPECT_EQ(child.output,
            "before main\n" + values + "event before main\nobjects 186\nafter main\n" + values + "event after main\n");
}

}  // namespace
