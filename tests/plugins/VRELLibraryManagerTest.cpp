#include "VRELLibraryManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "RecordingListener.h"
#include "VRELConsoleLogger.h"
#include "VRELPair.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Library that reports its destruction.
class TrackedLibrary : public VRELLibrary {
 public:
  TrackedLibrary(char const* name, bool& isDestroyed)
      : VRELLibrary(name, "InitializeModule", "FinalizeModule"), destroyed(isDestroyed) {
    destroyed = false;
  }
  ~TrackedLibrary() override { destroyed = true; }

 private:
  bool& destroyed;
};

// There is one table in the process. Each test starts and ends with an empty table.
class VRELLibraryManagerTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(VRELLibraryManager::_libraries.Size(), 0); }
  void TearDown() override {
    // A finalize entry point may load other modules.
    for (int i = 0; i < 2; ++i) VRELLibraryManager::FreeLibraries();
    ASSERT_EQ(VRELLibraryManager::_libraries.Size(), 0);
  }

  static VRELLibrary* Create(std::string const& name) {
    VRELLibrary* library = nullptr;
    EXPECT_EQ(VRELLibraryManager::CreateLibrary(name.c_str(), "InitializeModule", "FinalizeModule", library),
              VREL_S_OK);
    return library;
  }

  RecordingListener listener;
};

TEST_F(VRELLibraryManagerTest, SharesLibraryByName) {
  VRELLibrary* const first = Create("VRELTestBoth");
  ASSERT_NE(first, nullptr);
  EXPECT_FALSE(first->IsLoaded());
  EXPECT_EQ(first->GetReferenceCount(), 1U);
  EXPECT_EQ(Create("VRELTestBoth"), first);
  EXPECT_EQ(first->GetReferenceCount(), 1U);
  VRELLibrary* const second = Create("VRELTestBare");
  EXPECT_NE(second, first);
  EXPECT_STREQ(second->GetLibraryName(), "VRELTestBare");
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 2);
  VRELLibraryHandle held;
  EXPECT_TRUE(VRELLibraryManager::_libraries.Get("VRELTestBare", held));
  EXPECT_EQ(held, VRELLibraryHandle(second));
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST_F(VRELLibraryManagerTest, FirstEntryPointNamesAreKept) {
  VRELLibrary* const first = Create("VRELTestBoth");
  VRELLibrary* second = nullptr;
  EXPECT_EQ(VRELLibraryManager::CreateLibrary("VRELTestBoth", "OtherInitialize", "", second), VREL_S_OK);
  EXPECT_EQ(second, first);
  second->LoadAndInitialize();
  second->FinalizeAndUnload();
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized", "VRELTestBoth finalized"));
}

TEST_F(VRELLibraryManagerTest, AddLibraryUsesNameOfLibrary) {
  EXPECT_EQ(VRELLibraryManager::AddLibrary(nullptr), VREL_E_INVALID_ARGUMENT);
  bool isDestroyed = false;
  auto* const library = new TrackedLibrary("VRELTestBoth", isDestroyed);
  EXPECT_EQ(VRELLibraryManager::AddLibrary(library), VREL_S_OK);
  EXPECT_EQ(library->GetReferenceCount(), 1U);
  EXPECT_FALSE(library->IsLoaded());
  EXPECT_EQ(Create("VRELTestBoth"), library);
  EXPECT_EQ(VRELLibraryManager::FreeLibraries(), VREL_S_OK);
  EXPECT_TRUE(isDestroyed);
}

TEST_F(VRELLibraryManagerTest, AddLibraryIgnoresSecondLibrary) {
  VRELLibrary* const first = Create("VRELTestBoth");
  bool isDestroyed = false;
  EXPECT_EQ(VRELLibraryManager::AddLibrary(new TrackedLibrary("VRELTestBoth", isDestroyed)), VREL_S_OK);
  EXPECT_TRUE(isDestroyed);
  VRELLibraryHandle const held(new TrackedLibrary("VRELTestBoth", isDestroyed));
  EXPECT_EQ(VRELLibraryManager::AddLibrary(held), VREL_S_OK);
  EXPECT_FALSE(isDestroyed);
  EXPECT_EQ(Create("VRELTestBoth"), first);
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 1);
}

TEST_F(VRELLibraryManagerTest, LongNamesShareFirst63Bytes) {
  std::string const cut(63, 'n');
  VRELLibrary* const first = Create(cut + "one");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->GetLibraryName(), cut);
  // Neither call finds the full name. Both succeed.
  EXPECT_EQ(Create(cut + "one"), first);
  EXPECT_EQ(Create(cut + "two"), first);
  EXPECT_EQ(Create(cut), first);
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 1);
  EXPECT_EQ(first->GetReferenceCount(), 1U);
}

TEST_F(VRELLibraryManagerTest, FreeLibrariesAcceptsEmptyTable) {
  EXPECT_EQ(VRELLibraryManager::FreeLibraries(), VREL_S_OK);
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 0);
}

TEST_F(VRELLibraryManagerTest, FreeLibrariesKeepsUsedLibraries) {
  bool isDestroyed = false;
  VRELLibraryManager::AddLibrary(new TrackedLibrary("VRELTestBoth", isDestroyed));
  Create("VRELTestBoth")->LoadAndInitialize();
  {
    VRELLibraryHandle const held(Create("VRELTestNoFinalize"));
    held->LoadAndInitialize();
    listener.events.clear();
    EXPECT_EQ(VRELLibraryManager::FreeLibraries(), VREL_S_OK);
    EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth finalized"));
    EXPECT_TRUE(isDestroyed);
    EXPECT_TRUE(held->IsLoaded());
    EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 1);
    EXPECT_EQ(Create("VRELTestNoFinalize"), static_cast<VRELLibrary*>(held));
  }
  EXPECT_EQ(VRELLibraryManager::FreeLibraries(), VREL_S_OK);
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 0);
}

TEST_F(VRELLibraryManagerTest, FreeLibrariesRemovesMany) {
  for (int i = 0; i < 100; ++i) Create("VRELTestNoSuchModule" + std::to_string(i));
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 100);
  VRELLibraryHandle const held(Create("VRELTestNoSuchModule50"));
  EXPECT_EQ(VRELLibraryManager::FreeLibraries(), VREL_S_OK);
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 1);
}

TEST_F(VRELLibraryManagerTest, FinalizeFunctionCanUseTable) {
  Create("VRELTestReentrant")->LoadAndInitialize();
  listener.events.clear();
  EXPECT_EQ(VRELLibraryManager::FreeLibraries(), VREL_S_OK);
  // The module loaded another one during its finalization, which the next call frees.
  EXPECT_THAT(listener.Texts(), testing::Contains("VRELTestReentrant finalized"));
  VRELLibraryManager::FreeLibraries();
  EXPECT_EQ(listener.Texts().back(), "VRELTestBoth finalized");
}

TEST_F(VRELLibraryManagerTest, ExitFinalizesLibraries) {
  ChildResult const child = RunInChild([]() -> int {
    unsetenv("VRELConsoleTracesLevel");
    Create("VRELTestBoth")->LoadAndInitialize();
    VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
    return 0;
  });
  EXPECT_EQ(child.exitStatus, 0);
  EXPECT_EQ(child.output, "Message : VRELTestBoth finalized\n");
}

TEST_F(VRELLibraryManagerTest, FinalizeFunctionCanUseTableAtExit) {
  ChildResult const child = RunInChild([]() -> int {
    unsetenv("VRELConsoleTracesLevel");
    Create("VRELTestReentrant")->LoadAndInitialize();
    VRELLibraryManager::_libraries.Remove("VRELTestBoth");
    VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
    return 0;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  EXPECT_EQ(child.signal, 0);
  // Loading is disabled.
  EXPECT_EQ(child.output, "Message : VRELTestReentrant finalized\n");
  EXPECT_THAT(child.errors, testing::HasSubstr("VRELTestBoth library not loaded."));
}

}  // namespace
