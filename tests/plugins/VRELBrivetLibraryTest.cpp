#include "VRELBrivetLibrary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "RecordingListener.h"
#include "VRELLibraryManager.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VRELBrivetLibraryTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(VRELLibraryManager::_libraries.Size(), 0); }
  void TearDown() override {
    // A finalize entry point may load other modules.
    for (int i = 0; i < 2; ++i) VRELLibraryManager::FreeLibraries();
    ASSERT_EQ(VRELLibraryManager::_libraries.Size(), 0);
  }

  // Returns the library in the table with this name.
  static VRELLibraryHandle Held(char const* name) {
    VRELLibraryHandle library;
    EXPECT_TRUE(VRELLibraryManager::_libraries.Get(name, library));
    return library;
  }

  RecordingListener listener;
};

TEST_F(VRELBrivetLibraryTest, ConstructorLoadsNothing) {
  static_assert(std::has_virtual_destructor_v<VRELBrivetLibrary>);
  VRELBrivetLibrary const library("VRELTestBoth", "InitializeModule", "FinalizeModule");
  EXPECT_EQ(VRELLibraryManager::_libraries.Size(), 0);
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST_F(VRELBrivetLibraryTest, ObjectsShareLibrary) {
  VRELBrivetLibrary first("VRELTestBoth", "InitializeModule", "FinalizeModule");
  VRELBrivetLibrary second("VRELTestBoth", "OtherInitialize", "");
  EXPECT_EQ(first.Load(), VREL_S_OK);
  EXPECT_EQ(second.Load(), VREL_S_OK);
  EXPECT_EQ(first.Load(), VREL_S_OK);
  void* one = nullptr;
  void* other = nullptr;
  EXPECT_EQ(first.GetFunction("Answer", one), VREL_S_OK);
  EXPECT_EQ(second.GetFunction("Answer", other), VREL_S_OK);
  EXPECT_NE(one, nullptr);
  EXPECT_EQ(one, other);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized"));
  // One reference each of the table, the two objects and the local handle.
  EXPECT_EQ(Held("VRELTestBoth")->GetReferenceCount(), 4U);
}

TEST_F(VRELBrivetLibraryTest, GetFunctionLoads) {
  VRELBrivetLibrary library("VRELTestBoth", "InitializeModule", "FinalizeModule");
  void* function = nullptr;
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_S_OK);
  ASSERT_NE(function, nullptr);
  EXPECT_EQ(reinterpret_cast<int (*)()>(function)(), 42);
  EXPECT_EQ(library.GetFunction("Question", function), VREL_E_FAIL);
  EXPECT_EQ(function, nullptr);
  EXPECT_EQ(library.GetFunction("", function), VREL_E_INVALID_ARGUMENT);
}

TEST_F(VRELBrivetLibraryTest, OnlyFirstLoadReportsFailure) {
  VRELBrivetLibrary library("VRELTestNoModule", "InitializeModule", "FinalizeModule");
  std::string const warning = "VRELTestNoModule library not loaded.";
  EXPECT_EQ(library.Load(), VREL_E_FAIL);
  EXPECT_THAT(listener.Texts(), ElementsAre(warning));
  EXPECT_EQ(library.Load(), VREL_S_OK);
  EXPECT_THAT(listener.Texts(), ElementsAre(warning));
  // GetFunction of the library tries to load again.
  int here = 0;
  void* function = &here;
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_E_FAIL);
  EXPECT_EQ(function, &here);
  EXPECT_THAT(listener.Texts(), ElementsAre(warning, warning));
}

TEST_F(VRELBrivetLibraryTest, GetFunctionFailsAfterFailedLoad) {
  VRELBrivetLibrary library("VRELTestNoModule", "InitializeModule", "FinalizeModule");
  int here = 0;
  void* function = &here;
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_E_FAIL);
  EXPECT_EQ(function, &here);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestNoModule library not loaded."));
}

TEST_F(VRELBrivetLibraryTest, DestructorKeepsModuleLoaded) {
  {
    VRELBrivetLibrary library("VRELTestBoth", "InitializeModule", "FinalizeModule");
    library.Load();
    VRELLibraryManager::FreeLibraries();
    EXPECT_TRUE(Held("VRELTestBoth")->IsLoaded());
  }
  EXPECT_TRUE(Held("VRELTestBoth")->IsLoaded());
  EXPECT_EQ(Held("VRELTestBoth")->GetReferenceCount(), 2U);
  VRELLibraryManager::FreeLibraries();
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized", "VRELTestBoth finalized"));
}

TEST_F(VRELBrivetLibraryTest, SetUnloadableReachesLibrary) {
  VRELBrivetLibrary library("VRELTestBoth", "InitializeModule", "FinalizeModule");
  library.SetUnloadable(false);
  library.Load();
  VRELLibraryHandle held = Held("VRELTestBoth");
  held->FinalizeAndUnload();
  EXPECT_TRUE(held->IsLoaded());
  library.SetUnloadable(true);
  held->FinalizeAndUnload();
  EXPECT_FALSE(held->IsLoaded());
  // The last Load determines the setting.
  held->LoadAndInitialize();
  held->SetUnloadable(false);
  VRELBrivetLibrary later("VRELTestBoth", "", "");
  later.Load();
  held->FinalizeAndUnload();
  EXPECT_FALSE(held->IsLoaded());
}

TEST_F(VRELBrivetLibraryTest, InitializeFunctionCanFreeLibraries) {
  VRELBrivetLibrary library("VRELTestReentrant", "InitializeModule", "FinalizeModule");
  EXPECT_EQ(library.Load(), VREL_S_OK);
  EXPECT_TRUE(Held("VRELTestReentrant")->IsLoaded());
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized", "VRELTestReentrant initialized"));
}

TEST_F(VRELBrivetLibraryTest, ThrowingInitializeKeepsNoLibrary) {
  VRELBrivetLibrary library("VRELTestThrowingInitialize", "InitializeModule", "FinalizeModule");
  EXPECT_ANY_THROW(library.Load());
  EXPECT_ANY_THROW(library.Load());
  EXPECT_EQ(Held("VRELTestThrowingInitialize")->GetReferenceCount(), 2U);
}

}  // namespace
