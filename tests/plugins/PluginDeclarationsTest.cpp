// Declarations of the classes in plugins/: types of all public operations and offsets of fields. The calls of the
// dynamic loader with their flags: its functions are replaced by functions that record the call and forward it.
// Sanitizers replace the same functions, so that test is skipped under them.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <type_traits>
#include <vector>

#include "Declaration.h"
#include "Sanitizer.h"
#include "VRELBrivetLibrary.h"
#include "VRELExport.h"
#include "VRELLibrary.h"
#include "VRELLibraryHandle.h"
#include "VRELLibraryManager.h"

namespace {

using Calls = std::vector<std::string>;

Calls* recorded = nullptr;

}  // namespace

#ifndef VREL_TEST_HAS_SANITIZER

extern "C" {

VREL_EXPORT void* dlopen(char const* name, int flags) noexcept {
  if (recorded != nullptr) {
    char text[200];
    std::snprintf(text, sizeof text, "dlopen %s 0x%x", name, static_cast<unsigned>(flags));
    recorded->emplace_back(text);
  }
  // The loader searches the run path of the caller, which is this program instead of the library.
  static auto* const original = reinterpret_cast<void* (*)(char const*, int)>(dlsym(RTLD_NEXT, "dlopen"));
  return original(name, flags);
}

VREL_EXPORT int dlclose(void* handle) noexcept {
  if (recorded != nullptr) recorded->emplace_back("dlclose");
  static auto* const original = reinterpret_cast<int (*)(void*)>(dlsym(RTLD_NEXT, "dlclose"));
  return original(handle);
}

}  // extern "C"

#endif

namespace {

using ::testing::ElementsAre;

using Text = VRELString const&;
using Library = VRELLibrary;
static_assert(IsDeclared<char* (Library::*)()>(&Library::GetLibraryName));
static_assert(IsDeclared<bool (Library::*)() const>(&Library::IsLoaded));
static_assert(IsDeclared<void (Library::*)(bool)>(&Library::SetUnloadable));
static_assert(IsDeclared<VRINResult (Library::*)()>(&Library::LoadAndInitialize));
static_assert(IsDeclared<VRINResult (Library::*)(Text, void*&)>(&Library::GetFunction));
static_assert(IsDeclared<VRINResult (Library::*)()>(&Library::FinalizeAndUnload));
static_assert(IsDeclared<unsigned int (Library::*)()>(&Library::RaiseReference));
static_assert(IsDeclared<unsigned int (Library::*)()>(&Library::LowerReference));
static_assert(std::is_constructible_v<Library, Text, Text, Text> && !std::is_copy_constructible_v<Library>);

using Manager = VRELLibraryManager;
static_assert(IsDeclared<VRINResult (*)(Text, Text, Text, Library*&)>(&Manager::CreateLibrary));
static_assert(IsDeclared<VRINResult (*)(Library*)>(&Manager::AddLibrary));
static_assert(IsDeclared<VRINResult (*)()>(&Manager::FreeLibraries));
static_assert(std::is_same_v<decltype(Manager::_libraries), VRELHashMap<VRELString, VRELLibraryHandle>>);

using Module = VRELBrivetLibrary;
static_assert(IsDeclared<void (Module::*)(bool)>(&Module::SetUnloadable));
static_assert(IsDeclared<VRINResult (Module::*)()>(&Module::Load));
static_assert(IsDeclared<VRINResult (Module::*)(Text, void*&)>(&Module::GetFunction));
static_assert(std::is_constructible_v<Module, Text, Text, Text> && std::has_virtual_destructor_v<Module>);

static_assert(std::is_base_of_v<VRELReferenceHandle, VRELLibraryHandle>);
static_assert(std::is_convertible_v<VRELLibraryHandle const&, Library*>);
static_assert(sizeof(VRELLibraryHandle) == 2 * sizeof(void*));

TEST(PluginDeclarationsTest, LibraryKeepsFieldOffsets) {
  VRELLibrary library(L"NoSuchModule", L"Start", L"Stop");
  auto const* const bytes = reinterpret_cast<char const*>(&library);
  EXPECT_EQ(FieldAt<void*>(library, 16), nullptr);
  EXPECT_EQ(library.GetLibraryName(), bytes + 24);
  EXPECT_STREQ(bytes + 24, "NoSuchModule");
  EXPECT_TRUE(FieldAt<bool>(library, 24 + 64));
  EXPECT_FALSE(FieldAt<bool>(library, 24 + 65));
  EXPECT_FALSE(FieldAt<bool>(library, 24 + 66));
  EXPECT_EQ(reinterpret_cast<VRELString const*>(bytes + 96)->toUtf8(), "Start");
  EXPECT_EQ(reinterpret_cast<VRELString const*>(bytes + 96 + sizeof(VRELString))->toUtf8(), "Stop");
  library.SetUnloadable(false);
  EXPECT_FALSE(FieldAt<bool>(library, 24 + 64));
}

TEST(PluginDeclarationsTest, BrivetLibraryKeepsFieldOffsets) {
  VRELBrivetLibrary const library(L"NoSuchModule", L"Start", L"Stop");
  auto const* const bytes = reinterpret_cast<char const*>(&library);
  auto const text = [&](std::size_t index) {
    return reinterpret_cast<VRELString const*>(bytes + 8 + index * sizeof(VRELString))->toUtf8();
  };
  EXPECT_EQ(text(0), "NoSuchModule");
  EXPECT_EQ(text(1), "Start");
  EXPECT_EQ(text(2), "Stop");
  std::size_t const handle = 8 + 3 * sizeof(VRELString);
  EXPECT_FALSE(reinterpret_cast<VRELLibraryHandle const*>(bytes + handle)->IsValid());
  EXPECT_TRUE(FieldAt<bool>(library, handle + sizeof(VRELLibraryHandle)));
}

TEST(PluginDeclarationsTest, LibraryCallsLoaderWithFlags) {
#ifdef VREL_TEST_HAS_SANITIZER
  GTEST_SKIP() << "a sanitizer replaces the functions of the dynamic loader";
#endif
  Calls calls;
  recorded = &calls;
  {
    VRELLibrary missing(L"NoSuchModule", L"Start", L"Stop");
    missing.LoadAndInitialize();
    missing.FinalizeAndUnload();
    VRELLibrary loaded(L"VRELTestBoth", L"Initialise", L"Finalise");
    loaded.LoadAndInitialize();
    loaded.FinalizeAndUnload();
    loaded.SetUnloadable(false);
    loaded.LoadAndInitialize();
    loaded.FinalizeAndUnload();
    calls.emplace_back("may be unloaded");
    loaded.SetUnloadable(true);
    loaded.FinalizeAndUnload();
  }
  recorded = nullptr;
  EXPECT_THAT(calls, ElementsAre("dlopen libNoSuchModule.so 0x102", "dlopen libVRELTestBoth.so 0x102", "dlclose",
                                 "dlopen libVRELTestBoth.so 0x102", "may be unloaded", "dlclose"));
}

}  // namespace
