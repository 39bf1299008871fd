#include "VRINFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <type_traits>

#include "PublicObject.h"
#include "VRELFilePath.h"
#include "VRINFileImpl.h"

namespace {

std::string PathOf(VRINFile const& file) {
  VRELFilePath path("untouched");
  VRINResult const result = ImplOf<VRINFileImpl>(file)->GetPath(path);
  EXPECT_EQ(result == VREL_S_OK, ImplOf<VRINFileImpl>(file)->HasPath());
  return path.GetPath().toUtf8();
}

int DescriptorOf(VRINFile const& file) {
  int descriptor = -42;
  ImplOf<VRINFileImpl>(file)->GetFile()->GetFileDescriptor(descriptor);
  return descriptor;
}

TEST(VRINFileTest, StoresPath) {
  VRINFile const narrow("assembly\\wheel.step");
  EXPECT_TRUE(narrow.IsValid());
  EXPECT_EQ(PathOf(narrow), "assembly/wheel.step");
  EXPECT_EQ(DescriptorOf(narrow), -42);
  VRINFile const wide(L"r\u00E4der.step");
  EXPECT_TRUE(wide.IsValid());
  EXPECT_EQ(PathOf(wide),
            "r\xC3\xA4"
            "der.step");
}

TEST(VRINFileTest, StringTypesBecomePaths) {
  using namespace std::string_literals;
  using namespace std::string_view_literals;
  VRINFile const files[] = {"a\\b.step"s,   "a\\b.step"sv,      L"a\\b.step"s,
                            L"a\\b.step"sv, "a\\b.step\0.txt"s, "a\\b.step\0x"sv};
  for (VRINFile const& file : files) EXPECT_EQ(PathOf(file), "a/b.step");
  EXPECT_TRUE(VRINFile(std::string_view()).IsValid());
}

TEST(VRINFileTest, BoolDoesNotCompile) {
  static_assert(!std::is_constructible_v<VRINFile, bool>);
  static_assert(!std::is_constructible_v<VRINFile, std::FILE*>);
  static_assert(!std::is_constructible_v<VRINFile, void*>);
  static_assert(std::is_constructible_v<VRINFile, short>);
  static_assert(std::is_constructible_v<VRINFile, long>);
}

TEST(VRINFileTest, StoresDescriptor) {
  VRINFile const file(7);
  EXPECT_TRUE(file.IsValid());
  EXPECT_EQ(DescriptorOf(file), 7);
  EXPECT_FALSE(ImplOf<VRINFileImpl>(file)->HasPath());
  EXPECT_EQ(PathOf(file), "untouched");
  EXPECT_TRUE(VRINFile(-1).IsValid());
  EXPECT_EQ(DescriptorOf(VRINFile(-1)), -42);
}

TEST(VRINFileTest, StoresDescriptorOfStream) {
  std::FILE const* const stream = stderr;
  EXPECT_EQ(DescriptorOf(VRINFile(stream, nullptr)), 2);
  VRINFile const named(stream, "not used");
  EXPECT_EQ(DescriptorOf(named), 2);
  EXPECT_FALSE(ImplOf<VRINFileImpl>(named)->HasPath());
}

TEST(VRINFileTest, NullIsInvalid) {
  EXPECT_FALSE(VRINFile(static_cast<char const*>(nullptr)).IsValid());
  EXPECT_FALSE(VRINFile(static_cast<wchar_t const*>(nullptr)).IsValid());
  EXPECT_FALSE(VRINFile(nullptr, "path").IsValid());
  EXPECT_EQ(VRINFile(nullptr, "path").GetData(), nullptr);
  EXPECT_TRUE(VRINFile("").IsValid());
}

TEST(VRINFileTest, CopiesShareFile) {
  VRINFile first("wheel.step");
  VRINFile const second(first);
  EXPECT_EQ(UseCount(first), 2);
  EXPECT_EQ(ImplOf<VRINFileImpl>(first)->GetFile().GetInstance(),
            ImplOf<VRINFileImpl>(second)->GetFile().GetInstance());
}

TEST(VRINFileTest, NumbersObjectsConsecutively) {
  VRINFile const first(1);
  VRINFile const second("path");
  int const last = VRINObjectImpl::_objectCounter;
  EXPECT_EQ(DiagnosticName(first), "VRINFile[" + std::to_string(last - 1) + "]");
  EXPECT_EQ(DiagnosticName(second), "VRINFile[" + std::to_string(last) + "]");
}

TEST(VRINFileImplTest, CreatesFile) {
  VRINFileImpl const byPath(VRELFilePath("wheel.step"));
  EXPECT_TRUE(byPath.HasPath());
  VRINFileImpl const byDescriptor(0);
  EXPECT_FALSE(byDescriptor.HasPath());
  VRELFilePath path("untouched");
  EXPECT_EQ(byDescriptor.GetPath(path), VREL_E_FAIL);
  EXPECT_EQ(path.GetPath().toUtf8(), "untouched");
}

}  // namespace
