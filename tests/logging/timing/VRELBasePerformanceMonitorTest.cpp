#include "VRELBasePerformanceMonitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <type_traits>

#include "RecordingListener.h"
#include "VRELBrivetLibrary.h"
#include "VRELLibraryManager.h"
#include "VRELTimingLogger.h"
#include "VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VRELBasePerformanceMonitorTest : public testing::Test {
 protected:
  // No monitor is installed and no module loaded.
  ~VRELBasePerformanceMonitorTest() override {
    EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
    EXPECT_EQ(VRELTimingLogger::_pMonitor, nullptr);
    VRELLibraryManager::FreeLibraries();
    EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 0);
  }

  // Loads a module that installs its monitor.
  static void LoadModule(char const* name) {
    VRELBrivetLibrary module(name, "InitializeModule", "");
    ASSERT_EQ(module.Load(), VREL_S_OK);
  }

  RecordingListener listener;
};

TEST_F(VRELBasePerformanceMonitorTest, BaseOperationsFail) {
  VRELBasePerformanceMonitor monitor;
  double kernel = 1.5;
  double user = 2.5;
  EXPECT_EQ(monitor.PrintStatistics(), VREL_E_FAIL);
  EXPECT_EQ(monitor.QueryProcessTimes(kernel, user), VREL_E_FAIL);
  EXPECT_EQ(kernel, 1.5);
  EXPECT_EQ(user, 2.5);
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST_F(VRELBasePerformanceMonitorTest, KeepsSlotsAndHasNoField) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELBasePerformanceMonitor>);
  EXPECT_EQ(SlotOf(&VRELBasePerformanceMonitor::PrintStatistics), 2U);
  EXPECT_EQ(SlotOf(&VRELBasePerformanceMonitor::QueryProcessTimes), 3U);
  EXPECT_EQ(sizeof(VRELBasePerformanceMonitor), sizeof(void*));
}

TEST_F(VRELBasePerformanceMonitorTest, NothingIsInstalledInitially) {
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  VRELBasePerformanceMonitor::Clear();
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST_F(VRELBasePerformanceMonitorTest, ClearKeepsMonitorWithoutLibrary) {
  VRELBasePerformanceMonitor monitor;
  VRELBasePerformanceMonitor::Install(&monitor, nullptr);
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), &monitor);
  EXPECT_EQ(VRELTimingLogger::_pMonitor, nullptr);
  VRELBasePerformanceMonitor::Clear();
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), &monitor);
  VRELBasePerformanceMonitor::Install(nullptr, nullptr);
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
}

TEST_F(VRELBasePerformanceMonitorTest, DestructorRemovesMonitor) {
  VRELBasePerformanceMonitor lasting;
  {
    VRELBasePerformanceMonitor monitor;
    VRELBasePerformanceMonitor::Install(&monitor, nullptr);
    VRELTimingLogger::_pMonitor = &monitor;
    { VRELBasePerformanceMonitor const another; }
    EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), &monitor);
    EXPECT_EQ(VRELTimingLogger::_pMonitor, &monitor);
  }
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  EXPECT_EQ(VRELTimingLogger::_pMonitor, nullptr);
}

TEST_F(VRELBasePerformanceMonitorTest, ClearCallsTerminateFunction) {
  LoadModule("VRELTestMonitor");
  EXPECT_NE(VRELBasePerformanceMonitor::Instance(), nullptr);
  EXPECT_EQ(VRELTimingLogger::_pMonitor, VRELBasePerformanceMonitor::Instance());
  // Referenced by the installed object.
  VRELLibraryManager::FreeLibraries();
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 1);
  EXPECT_THAT(listener.Texts(), IsEmpty());
  VRELBasePerformanceMonitor::Clear();
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestMonitor terminates"));
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  EXPECT_EQ(VRELTimingLogger::_pMonitor, nullptr);
  VRELLibraryManager::FreeLibraries();
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 0);
  VRELBasePerformanceMonitor::Clear();
  EXPECT_EQ(listener.events.size(), 1U);
}

TEST_F(VRELBasePerformanceMonitorTest, InstallClearsPreviousLibrary) {
  LoadModule("VRELTestMonitor");
  VRELBasePerformanceMonitor monitor;
  VRELBasePerformanceMonitor::Install(&monitor, nullptr);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestMonitor terminates"));
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), &monitor);
}

TEST_F(VRELBasePerformanceMonitorTest, InstallKeepsSameLibrary) {
  VRELBasePerformanceMonitor first;
  VRELBasePerformanceMonitor second;
  auto* const library = new VRELBrivetLibrary("VRELTestNoSuchModule", "", "");
  VRELBasePerformanceMonitor::Install(&first, library);
  VRELBasePerformanceMonitor::Install(&second, library);
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), &second);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestNoSuchModule library not loaded."));
  VRELBasePerformanceMonitor::Clear();
}

TEST_F(VRELBasePerformanceMonitorTest, MissingTerminateFunctionKeepsMonitor) {
  LoadModule("VRELTestMonitorBare");
  VRELBasePerformanceMonitor const* const monitor = VRELBasePerformanceMonitor::Instance();
  VRELBasePerformanceMonitor::Clear();
  EXPECT_THAT(listener.Texts(),
              ElementsAre("No TerminatePerformanceMonitor function in VRELTestMonitorBare library.\n"));
  EXPECT_NE(monitor, nullptr);
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), monitor);
  // The library was deleted.
  VRELBasePerformanceMonitor::Clear();
  EXPECT_EQ(listener.events.size(), 1U);
  // The monitor is destroyed with its module.
  VRELLibraryManager::FreeLibraries();
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  EXPECT_EQ(VRELTimingLogger::_pMonitor, nullptr);
}

TEST_F(VRELBasePerformanceMonitorTest, ClearRethrowsException) {
  LoadModule("VRELTestMonitorThrowing");
  EXPECT_THROW(VRELBasePerformanceMonitor::Clear(), std::runtime_error);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestMonitorThrowing terminates"));
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  VRELBasePerformanceMonitor::Clear();
  VRELLibraryManager::FreeLibraries();
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 0);
}

// Sanitizers report a leak if the library is not deleted.
TEST_F(VRELBasePerformanceMonitorTest, InstallFailsIfEntryPointThrows) {
  VRELBasePerformanceMonitor monitor;
  EXPECT_ANY_THROW(VRELBasePerformanceMonitor::Install(
      &monitor, new VRELBrivetLibrary("VRELTestThrowingInitialize", "InitializeModule", "")));
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  LoadModule("VRELTestMonitorThrowing");
  EXPECT_THROW(VRELBasePerformanceMonitor::Install(&monitor, new VRELBrivetLibrary("VRELTestBare", "", "")),
               std::runtime_error);
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), nullptr);
  listener.events.clear();
  VRELBasePerformanceMonitor::Clear();
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST_F(VRELBasePerformanceMonitorTest, ClearDropsUnloadableModule) {
  VRELBasePerformanceMonitor monitor;
  VRELBasePerformanceMonitor::Install(&monitor, new VRELBrivetLibrary("VRELTestNoSuchModule", "", ""));
  EXPECT_EQ(listener.events.size(), 1U);
  // Tries again.
  VRELBasePerformanceMonitor::Clear();
  EXPECT_THAT(listener.Texts(),
              ElementsAre("VRELTestNoSuchModule library not loaded.", "VRELTestNoSuchModule library not loaded."));
  EXPECT_EQ(VRELBasePerformanceMonitor::Instance(), &monitor);
  VRELBasePerformanceMonitor::Clear();
  EXPECT_EQ(listener.events.size(), 2U);
}

}  // namespace
