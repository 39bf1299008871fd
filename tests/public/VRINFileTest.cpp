#include "VRINFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

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

TEST(VRINFileTest, HoldsAPath) {
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

TEST(VRINFileTest, HoldsADescriptor) {
  VRINFile const file(7);
  EXPECT_TRUE(file.IsValid());
  EXPECT_EQ(DescriptorOf(file), 7);
  EXPECT_FALSE(ImplOf<VRINFileImpl>(file)->HasPath());
  EXPECT_EQ(PathOf(file), "untouched");
  EXPECT_TRUE(VRINFile(-1).IsValid());
  EXPECT_EQ(DescriptorOf(VRINFile(-1)), -42);
}

TEST(VRINFileTest, TakesTheDescriptorOfAStream) {
  std::FILE const* const stream = stderr;
  EXPECT_EQ(DescriptorOf(VRINFile(stream, nullptr)), 2);
  VRINFile const named(stream, "not used");
  EXPECT_EQ(DescriptorOf(named), 2);
  EXPECT_FALSE(ImplOf<VRINFileImpl>(named)->HasPath());
}

TEST(VRINFileTest, NullMakesAnInvalidHandle) {
  EXPECT_FALSE(VRINFile(static_cast<char const*>(nullptr)).IsValid());
  EXPECT_FALSE(VRINFile(static_cast<wchar_t const*>(nullptr)).IsValid());
  EXPECT_FALSE(VRINFile(nullptr, "path").IsValid());
  EXPECT_EQ(VRINFile(nullptr, "path").GetData(), nullptr);
  EXPECT_TRUE(VRINFile("").IsValid());
}

TEST(VRINFileTest, CopiesShareTheFile) {
  VRINFile first("wheel.step");
  VRINFile const second(first);
  EXPECT_EQ(UseCount(first), 2);
  EXPECT_EQ(ImplOf<VRINFileImpl>(first)->GetFile().GetInstance(),
            ImplOf<VRINFileImpl>(second)->GetFile().GetInstance());
}

TEST(VRINFileTest, ObjectsAreNumberedInARow) {
  VRINFile const first(1);
  VRINFile const second("path");
  int const last = VRINObjectImpl::_objectCounter;
  EXPECT_EQ(DiagnosticName(first), "VRINFile[" + std::to_string(last - 1) + "]");
  EXPECT_EQ(DiagnosticName(second), "VRINFile[" + std::to_string(last) + "]");
}

TEST(VRINFileImplTest, MakesANewFile) {
  VRINFileImpl const byPath(VRELFilePath("wheel.step"));
  EXPECT_TRUE(byPath.HasPath());
  VRINFileImpl const byDescriptor(0);
  EXPECT_FALSE(byDescriptor.HasPath());
  VRELFilePath path("untouched");
  EXPECT_EQ(byDescriptor.GetPath(path), VREL_E_FAIL);
  EXPECT_EQ(path.GetPath().toUtf8(), "untouched");
}

}  // namespace
