#include "VRELLibrary.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "ChildProcess.h"
#include "LocaleProcess.h"
#include "RecordingListener.h"
#include "VRELLibraryHandle.h"
#include "VRELLibraryManager.h"
#include "VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

VRELString Text(std::string const& text) {
  return VRELString(text.c_str());
}

// Library with the entry points of most test modules.
struct TestLibrary : VRELLibrary {
  explicit TestLibrary(std::string const& name) : VRELLibrary(Text(name), "InitializeModule", "FinalizeModule") {}
};

// Returns whether the module is mapped.
bool IsMapped(std::string const& name) {
  void* const handle = dlopen(("lib" + name + ".so").c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

std::string const kLongestName = "VRELTest" + std::string(55, 'l');

TEST(VRELLibraryTest, IsCountedObject) {
  static_assert(std::is_base_of_v<VRELReferenceCount, VRELLibrary>);
  EXPECT_EQ(SlotOf(&VRELLibrary::RaiseReference), 2U);
  EXPECT_EQ(SlotOf(&VRELLibrary::LowerReference), 3U);
  EXPECT_EQ(SlotOf(&VRELLibrary::GetName), 4U);
  TestLibrary library("VRELTestBoth");
  EXPECT_EQ(library.GetName(), nullptr);
  EXPECT_EQ(library.GetReferenceCount(), 0U);
  EXPECT_EQ(library.RaiseReference(), 1U);
  EXPECT_EQ(library.RaiseReference(), 2U);
  EXPECT_EQ(library.LowerReference(), 1U);
  EXPECT_EQ(library.GetReferenceCount(), 1U);
}

TEST(VRELLibraryTest, ConstructorLoadsNothing) {
  RecordingListener listener;
  {
    TestLibrary library("VRELTestBoth");
    EXPECT_STREQ(library.GetLibraryName(), "VRELTestBoth");
    EXPECT_FALSE(library.IsLoaded());
    EXPECT_FALSE(IsMapped("VRELTestBoth"));
  }
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST(VRELLibraryTest, NameHasAtMost63Bytes) {
  ASSERT_EQ(kLongestName.size(), 63U);
  RecordingListener listener;
  for (std::string const tail : {"", "x", "xy", "and a tail that is rather long, longer than all the rest"}) {
    SCOPED_TRACE(tail);
    TestLibrary library(kLongestName + tail);
    EXPECT_EQ(library.GetLibraryName(), kLongestName);
  }
  EXPECT_STREQ(TestLibrary(std::string(62, 'a')).GetLibraryName(), std::string(62, 'a').c_str());
  EXPECT_STREQ(TestLibrary(std::string(1000, 'a')).GetLibraryName(), std::string(63, 'a').c_str());
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST(VRELLibraryTest, NameIsTruncatedByBytes) {
  RunTestInLocale("C.UTF-8", [] {
    VRELLibrary library(VRELString((std::wstring(31, L'\u00F6') + L"ab").c_str()), "", "");
    std::string expected;
    for (int i = 0; i < 31; ++i) expected += "\xC3\xB6";
    EXPECT_EQ(library.GetLibraryName(), expected + "a");
  });
}

TEST(VRELLibraryTest, LongestNameLoads) {
  for (std::string const tail : {"", "x"}) {
    SCOPED_TRACE(tail);
    RecordingListener listener;
    {
      TestLibrary library(kLongestName + tail);
      EXPECT_EQ(library.LoadAndInitialize(), VREL_S_OK);
    }
    EXPECT_THAT(listener.Texts(), ElementsAre(kLongestName + " initialized", kLongestName + " finalized"));
  }
}

TEST(VRELLibraryTest, InitializesOnce) {
  RecordingListener listener;
  TestLibrary library("VRELTestBoth");
  EXPECT_EQ(library.LoadAndInitialize(), VREL_S_OK);
  EXPECT_TRUE(library.IsLoaded());
  EXPECT_TRUE(IsMapped("VRELTestBoth"));
  EXPECT_EQ(library.LoadAndInitialize(), VREL_S_OK);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized"));
}

TEST(VRELLibraryTest, FailedLoadSendsWarning) {
  for (std::string const name : {"VRELTestNoSuchModule", "VRELTestNoModule", ""}) {
    SCOPED_TRACE(name);
    RecordingListener listener;
    TestLibrary library(name);
    EXPECT_EQ(library.LoadAndInitialize(), VREL_E_FAIL);
    EXPECT_FALSE(library.IsLoaded());
    EXPECT_EQ(library.LoadAndInitialize(), VREL_E_FAIL);
    std::string const warning = name + " library not loaded.";
    EXPECT_THAT(listener.Texts(), ElementsAre(warning, warning));
    EXPECT_EQ(listener.events[0].level, VREL_LEVEL_WARNING);
  }
}

TEST(VRELLibraryTest, MissingInitializeFunctionCountsAsLoaded) {
  RecordingListener listener;
  TestLibrary library("VRELTestNoInitialize");
  EXPECT_EQ(library.LoadAndInitialize(), VREL_S_OK);
  EXPECT_TRUE(library.IsLoaded());
  std::string const error = "No InitializeModule function in VRELTestNoInitialize library.\n";
  ASSERT_THAT(listener.Texts(), ElementsAre(error));
  EXPECT_EQ(listener.events[0].level, VREL_LEVEL_ERROR);
  // Each call looks for the entry point again.
  void* function = nullptr;
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_S_OK);
  ASSERT_NE(function, nullptr);
  EXPECT_EQ(reinterpret_cast<int (*)()>(function)(), 42);
  EXPECT_THAT(listener.Texts(), ElementsAre(error, error));
  // It was never initialized, so it is not finalized.
  EXPECT_EQ(library.FinalizeAndUnload(), VREL_S_OK);
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_THAT(listener.Texts(), ElementsAre(error, error));
}

TEST(VRELLibraryTest, EmptyEntryPointNamesAreIgnored) {
  RecordingListener listener;
  VRELLibrary library("VRELTestBare", "", "");
  EXPECT_EQ(library.LoadAndInitialize(), VREL_S_OK);
  void* function = nullptr;
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_S_OK);
  EXPECT_EQ(library.FinalizeAndUnload(), VREL_S_OK);
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST(VRELLibraryTest, GetFunctionLoadsFirst) {
  RecordingListener listener;
  TestLibrary library("VRELTestBoth");
  void* function = nullptr;
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_S_OK);
  ASSERT_NE(function, nullptr);
  EXPECT_EQ(reinterpret_cast<int (*)()>(function)(), 42);
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_S_OK);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized"));
}

TEST(VRELLibraryTest, GetFunctionAcceptsLongNames) {
  TestLibrary library("VRELTestBoth");
  std::string name;
  for (int i = 0; i < 6; ++i) name += "FunctionWhoseNameIsLong";
  void* function = nullptr;
  EXPECT_EQ(library.GetFunction(Text(name), function), VREL_S_OK);
  ASSERT_NE(function, nullptr);
  EXPECT_EQ(reinterpret_cast<int (*)()>(function)(), 138);
  RecordingListener listener;
  for (int const length : {126, 127, 128, 129, 500}) {
    SCOPED_TRACE(length);
    std::string const missing(static_cast<std::size_t>(length), 'm');
    listener.events.clear();
    EXPECT_EQ(library.GetFunction(Text(missing), function), VREL_E_FAIL);
    EXPECT_THAT(listener.Texts(), ElementsAre("No " + missing + " function in VRELTestBoth library.\n"));
  }
}

TEST(VRELLibraryTest, GetFunctionRefusesEmptyName) {
  RecordingListener listener;
  TestLibrary library("VRELTestBoth");
  VRELString taken("x");
  VRELString const taker(std::move(taken));
  int here = 0;
  for (VRELString const* name : {new VRELString(), &taken}) {
    void* function = &here;
    EXPECT_EQ(library.GetFunction(*name, function), VREL_E_INVALID_ARGUMENT);
    EXPECT_EQ(function, &here);
    if (name != &taken) delete name;
  }
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST(VRELLibraryTest, GetFunctionReportsMissingFunction) {
  RecordingListener listener;
  TestLibrary library("VRELTestBoth");
  int here = 0;
  void* function = &here;
  EXPECT_EQ(library.GetFunction("Question", function), VREL_E_FAIL);
  EXPECT_EQ(function, nullptr);
  EXPECT_TRUE(library.IsLoaded());
  EXPECT_THAT(listener.Texts(),
              ElementsAre("VRELTestBoth initialized", "No Question function in VRELTestBoth library.\n"));
  EXPECT_EQ(listener.events[1].level, VREL_LEVEL_ERROR);
}

TEST(VRELLibraryTest, GetFunctionFailsWithoutModule) {
  RecordingListener listener;
  TestLibrary library("VRELTestNoModule");
  int here = 0;
  void* function = &here;
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_E_FAIL);
  EXPECT_EQ(function, &here);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestNoModule library not loaded."));
}

TEST(VRELLibraryTest, SymbolsAreGlobalAndResolvedAtLoad) {
  ChildResult const child = RunInChild([]() -> int {
    VRELLibrary dependent("VRELTestDependent", "", "");
    if (dependent.LoadAndInitialize() != VREL_E_FAIL) return 1;
    VRELLibrary dependency("VRELTestDependency", "", "");
    if (dependency.LoadAndInitialize() != VREL_S_OK) return 2;
    void* function = nullptr;
    if (dependent.GetFunction("CallDependency", function) != VREL_S_OK) return 3;
    return reinterpret_cast<int (*)()>(function)() == 7 ? 0 : 4;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

TEST(VRELLibraryTest, FinalizesAndUnloads) {
  RecordingListener listener;
  TestLibrary library("VRELTestBoth");
  EXPECT_EQ(library.FinalizeAndUnload(), VREL_S_OK);
  EXPECT_FALSE(IsMapped("VRELTestBoth"));
  library.LoadAndInitialize();
  EXPECT_EQ(library.FinalizeAndUnload(), VREL_S_OK);
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_FALSE(IsMapped("VRELTestBoth"));
  EXPECT_EQ(library.FinalizeAndUnload(), VREL_S_OK);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized", "VRELTestBoth finalized"));
}

TEST(VRELLibraryTest, SetUnloadableFalseKeepsModule) {
  RecordingListener listener;
  TestLibrary library("VRELTestBoth");
  library.SetUnloadable(false);
  library.LoadAndInitialize();
  EXPECT_EQ(library.FinalizeAndUnload(), VREL_S_OK);
  EXPECT_TRUE(library.IsLoaded());
  EXPECT_TRUE(IsMapped("VRELTestBoth"));
  EXPECT_EQ(library.FinalizeAndUnload(), VREL_S_OK);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized", "VRELTestBoth finalized"));
  listener.events.clear();
  EXPECT_EQ(library.LoadAndInitialize(), VREL_S_OK);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized"));
  library.SetUnloadable(true);
  library.FinalizeAndUnload();
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_FALSE(IsMapped("VRELTestBoth"));
}

TEST(VRELLibraryTest, MissingFinalizeFunctionStaysInitialized) {
  RecordingListener listener;
  TestLibrary library("VRELTestNoFinalize");
  library.LoadAndInitialize();
  EXPECT_EQ(library.FinalizeAndUnload(), VREL_S_OK);
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_FALSE(IsMapped("VRELTestNoFinalize"));
  std::string const error = "No FinalizeModule function in VRELTestNoFinalize library.\n";
  ASSERT_THAT(listener.Texts(), ElementsAre("VRELTestNoFinalize initialized", error));
  EXPECT_EQ(listener.events[1].level, VREL_LEVEL_ERROR);
  // It is not initialized again when it is loaded again.
  listener.events.clear();
  void* function = nullptr;
  EXPECT_EQ(library.GetFunction("Answer", function), VREL_S_OK);
  EXPECT_NE(function, nullptr);
  EXPECT_THAT(listener.Texts(), IsEmpty());
}

TEST(VRELLibraryTest, DestructorFinalizesAndUnloads) {
  RecordingListener listener;
  {
    VRELLibraryHandle const library(new TestLibrary("VRELTestBoth"));
    library->LoadAndInitialize();
  }
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestBoth initialized", "VRELTestBoth finalized"));
  EXPECT_FALSE(IsMapped("VRELTestBoth"));
}

TEST(VRELLibraryTest, InitializeFunctionCanCallGetFunction) {
  RecordingListener listener;
  VRELLibrary* library = nullptr;
  ASSERT_EQ(VRELLibraryManager::CreateLibrary("VRELTestLookup", "InitializeModule", "", library), VREL_S_OK);
  EXPECT_EQ(library->LoadAndInitialize(), VREL_S_OK);
  EXPECT_THAT(listener.Texts(), ElementsAre("VRELTestLookup called: Success, its own"));
  VRELLibraryManager::FreeLibraries();
}

TEST(VRELLibraryTest, ExceptionOfInitializeIsRethrown) {
  RecordingListener listener;
  TestLibrary library("VRELTestThrowingInitialize");
  for (int i = 0; i < 2; ++i) {
    try {
      library.LoadAndInitialize();
      ADD_FAILURE() << "nothing thrown";
    } catch (std::exception const& exception) {
      EXPECT_STREQ(exception.what(), "VRELTestThrowingInitialize");
    }
    EXPECT_TRUE(library.IsLoaded());
  }
  // The second call tried again. A module that was not initialized is not finalized.
  library.FinalizeAndUnload();
  EXPECT_FALSE(library.IsLoaded());
  std::string const message = "VRELTestThrowingInitialize initializes";
  EXPECT_THAT(listener.Texts(), ElementsAre(message, message));
}

TEST(VRELLibraryTest, DestructorDropsExceptionOfFinalize) {
  RecordingListener listener;
  {
    TestLibrary library("VRELTestThrowingFinalize");
    library.LoadAndInitialize();
    try {
      library.FinalizeAndUnload();
      ADD_FAILURE() << "nothing thrown";
    } catch (std::exception const& exception) {
      EXPECT_STREQ(exception.what(), "VRELTestThrowingFinalize");
    }
    EXPECT_TRUE(library.IsLoaded());
  }
  EXPECT_THAT(listener.Texts(),
              ElementsAre("VRELTestThrowingFinalize initializes", "VRELTestThrowingFinalize finalises",
                          "VRELTestThrowingFinalize finalises"));
  EXPECT_TRUE(IsMapped("VRELTestThrowingFinalize"));
}

TEST(VRELLibraryTest, RunningModuleIsNotUnloaded) {
  VRELLibraryManager::FreeLibraries();
  RecordingListener listener;
  {
    VRELLibrary* created = nullptr;
    VRELLibraryManager::CreateLibrary("VRELTestReentrant", "InitializeModule", "FinalizeModule", created);
    VRELLibraryHandle const library(created);
    EXPECT_EQ(library->LoadAndInitialize(), VREL_S_OK);
    EXPECT_TRUE(library->IsLoaded());
    EXPECT_EQ(library->FinalizeAndUnload(), VREL_S_OK);
    EXPECT_FALSE(library->IsLoaded());
  }
  EXPECT_THAT(listener.Texts(),
              ElementsAre("VRELTestBoth initialized", "VRELTestReentrant initialized", "VRELTestBoth finalized",
                          "VRELTestBoth initialized", "VRELTestReentrant finalized"));
  VRELLibraryManager::FreeLibraries();
}

}  // namespace
