#include "VRELFile.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "OpenDescriptors.h"
#include "ScratchDirectory.h"
#include "VRELFileHandle.h"
#include "VRELFilePath.h"
#include "VRELString.h"

namespace {

// Initial value of output arguments.
std::FILE* const untouchedStream = stderr;

TEST(VRELFileTest, DefaultFileIsInvalid) {
  VRELFile file;
  EXPECT_FALSE(file.IsValidFile());
  std::FILE* stream = untouchedStream;
  VRELFile const& constant = file;
  EXPECT_EQ(constant.GetFilePointer(stream), VREL_E_FAIL);
  EXPECT_EQ(stream, nullptr);
  int descriptor = 42;
  EXPECT_EQ(file.GetFileDescriptor(descriptor), VREL_E_FAIL);
  EXPECT_EQ(descriptor, 42);
  VRELString name(L"untouched");
  EXPECT_EQ(file.GetFileName(name), VREL_E_FAIL);
  EXPECT_EQ(name.toUtf8(), "untouched");
  VRELFilePath path("untouched");
  EXPECT_EQ(file.GetFilePath(path), VREL_E_FAIL);
  EXPECT_EQ(path.GetPath().toUtf8(), "untouched");
  EXPECT_EQ(file.GetFilePointerOpenType(), VRELFile::NoOpen);
}

TEST(VRELFileTest, OpenTypesKeepValues) {
  EXPECT_EQ(static_cast<int>(VRELFile::NoOpen), 0);
  EXPECT_EQ(static_cast<int>(VRELFile::TextOpen), 1);
  EXPECT_EQ(static_cast<int>(VRELFile::BinaryOpen), 2);
}

TEST(VRELFileTest, OnlyStandardDescriptorsAreValid) {
  struct {
    int descriptor;
    bool isKept;
    bool isValid;
  } const rows[] = {{-5, false, false}, {-1, false, false}, {0, true, true}, {1, true, true},
                    {2, true, true},    {3, true, false},   {7, true, false}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.descriptor);
    VRELFile const file(row.descriptor);
    EXPECT_EQ(file.IsValidFile(), row.isValid);
    int descriptor = 42;
    EXPECT_EQ(file.GetFileDescriptor(descriptor), row.isKept ? VREL_S_OK : VREL_E_FAIL);
    EXPECT_EQ(descriptor, row.isKept ? row.descriptor : 42);
    std::FILE* stream = untouchedStream;
    EXPECT_EQ(file.GetFilePointer(stream), VREL_E_FAIL);
    EXPECT_EQ(stream, nullptr);
  }
}

TEST(VRELFileTest, GetFileNameReturnsWholePath) {
  char const* const null = nullptr;
  VRELFile const fromPath{VRELFilePath("a\\b.c")};
  VRELFile const fromText{VRELString(L"a\\b.c")};
  VRELFile const fromBytes("a\\b.c");
  for (VRELFile const* file : {&fromPath, &fromText, &fromBytes}) {
    EXPECT_TRUE(file->IsValidFile());
    VRELString name;
    EXPECT_EQ(file->GetFileName(name), VREL_S_OK);
    EXPECT_EQ(name.toUtf8(), "a/b.c");
    VRELFilePath path;
    EXPECT_EQ(file->GetFilePath(path), VREL_S_OK);
    EXPECT_EQ(path.GetPath().toUtf8(), "a/b.c");
    int descriptor = 42;
    EXPECT_EQ(file->GetFileDescriptor(descriptor), VREL_E_FAIL);
    EXPECT_EQ(descriptor, 42);
  }
  EXPECT_FALSE(VRELFile(null).IsValidFile());
  EXPECT_FALSE(VRELFile("").IsValidFile());
  VRELFilePath withBackslash("a");
  withBackslash.AddExtension(L"b\\c");
  VRELString name;
  EXPECT_EQ(VRELFile(withBackslash).GetFileName(name), VREL_S_OK);
  EXPECT_EQ(name.toUtf8(), "a.b\\c");
}

TEST(VRELFileTest, NoOpenOpensNothing) {
  ScratchDirectory const directory;
  std::string const name = directory.Write("x.txt", "text");
  VRELFile file(name.c_str());
  std::FILE* stream = untouchedStream;
  EXPECT_EQ(file.GetFilePointer(stream, VRELFile::NoOpen), VREL_E_FAIL);
  EXPECT_EQ(stream, nullptr);
  EXPECT_EQ(file.GetFilePointerOpenType(), VRELFile::NoOpen);
  EXPECT_EQ(CountOpenDescriptors(name), 0);
}

TEST(VRELFileTest, GetFilePointerReopensFromStart) {
  ScratchDirectory const directory;
  std::string const name = directory.Write("x.txt", "text");
  {
    VRELFile file(name.c_str());
    VRELFile const& constant = file;
    int const types[] = {1, 2, 1, 7, -1};
    for (int const number : types) {
      SCOPED_TRACE(number);
      auto const type = static_cast<VRELFile::VRELFilePointerOpenType>(number);
      std::FILE* stream = nullptr;
      EXPECT_EQ(file.GetFilePointer(stream, type), VREL_S_OK);
      ASSERT_NE(stream, nullptr);
      EXPECT_EQ(file.GetFilePointerOpenType(), type);
      EXPECT_EQ(CountOpenDescriptors(name), 1);
      EXPECT_EQ(std::fgetc(stream), 't');
      EXPECT_EQ(std::fgetc(stream), 'e');
      // Calls with NoOpen do not move the stream.
      std::FILE* again = nullptr;
      EXPECT_EQ(file.GetFilePointer(again, VRELFile::NoOpen), VREL_S_OK);
      EXPECT_EQ(again, stream);
      std::FILE* constantly = nullptr;
      EXPECT_EQ(constant.GetFilePointer(constantly), VREL_S_OK);
      EXPECT_EQ(constantly, stream);
      EXPECT_EQ(std::ftell(stream), 2);
      EXPECT_TRUE(file.IsValidFile());
    }
    EXPECT_EQ(CountOpenDescriptors(name), 1);
  }
  EXPECT_EQ(CountOpenDescriptors(name), 0);
}

TEST(VRELFileTest, StreamIsReadOnly) {
  ScratchDirectory const directory;
  VRELFile file(directory.Write("x.txt", "text").c_str());
  for (auto const type : {VRELFile::TextOpen, VRELFile::BinaryOpen}) {
    std::FILE* stream = nullptr;
    ASSERT_EQ(file.GetFilePointer(stream, type), VREL_S_OK);
    EXPECT_EQ(std::fputc('x', stream), EOF);
  }
}

TEST(VRELFileTest, FailedOpenReturnsNullAndDropsStream) {
  ScratchDirectory const directory;
  std::string const name = directory.Write("x.txt", "text");
  VRELFile file(name.c_str());
  std::FILE* stream = nullptr;
  ASSERT_EQ(file.GetFilePointer(stream, VRELFile::TextOpen), VREL_S_OK);
  ASSERT_EQ(std::remove(name.c_str()), 0);
  EXPECT_EQ(file.GetFilePointer(stream, VRELFile::BinaryOpen), VREL_E_FAIL);
  EXPECT_EQ(stream, nullptr);
  // The type is that of the attempt.
  EXPECT_EQ(file.GetFilePointerOpenType(), VRELFile::BinaryOpen);
  directory.Write("x.txt", "text");
  EXPECT_EQ(CountOpenDescriptors(name), 0);
  EXPECT_EQ(file.GetFilePointer(stream, VRELFile::TextOpen), VREL_S_OK);
  EXPECT_NE(stream, nullptr);
}

TEST(VRELFileTest, InvalidPathFailsToOpen) {
  ScratchDirectory const directory;
  std::string const file = directory.Write("x.txt", "text");
  for (std::string const& name : {directory.Path("missing"), file + "/below", std::string(5000, 'x')}) {
    VRELFile missing(name.c_str());
    EXPECT_TRUE(missing.IsValidFile());
    std::FILE* stream = untouchedStream;
    EXPECT_EQ(missing.GetFilePointer(stream, VRELFile::TextOpen), VREL_E_FAIL);
    EXPECT_EQ(stream, nullptr);
  }
}

TEST(VRELFileTest, BorrowedStreamIsNeverClosed) {
  std::FILE* const own = std::tmpfile();
  ASSERT_NE(own, nullptr);
  int const descriptor = fileno(own);
  {
    VRELFile file(own);
    EXPECT_TRUE(file.IsValidFile());
    std::FILE* stream = nullptr;
    EXPECT_EQ(file.GetFilePointer(stream, VRELFile::NoOpen), VREL_S_OK);
    EXPECT_EQ(stream, own);
    EXPECT_EQ(file.GetFilePointerOpenType(), VRELFile::NoOpen);
  }
  EXPECT_TRUE(IsOpenDescriptor(descriptor));
  {
    // Without a path, an opening call forgets the stream.
    VRELFile file(own);
    std::FILE* stream = untouchedStream;
    EXPECT_EQ(file.GetFilePointer(stream, VRELFile::TextOpen), VREL_E_FAIL);
    EXPECT_EQ(stream, nullptr);
    EXPECT_FALSE(file.IsValidFile());
    EXPECT_EQ(file.GetFilePointerOpenType(), VRELFile::NoOpen);
    stream = untouchedStream;
    EXPECT_EQ(file.GetFilePointer(stream, VRELFile::NoOpen), VREL_E_FAIL);
    EXPECT_EQ(stream, nullptr);
  }
  EXPECT_TRUE(IsOpenDescriptor(descriptor));
  EXPECT_EQ(std::fputc('x', own), 'x');
  EXPECT_EQ(std::fclose(own), 0);
}

TEST(VRELFileTest, NullStreamIsIgnored) {
  std::FILE* const null = nullptr;
  VRELFile const file(null);
  EXPECT_FALSE(file.IsValidFile());
}

TEST(VRELFileTest, IsNotCopyable) {
  EXPECT_FALSE(std::is_copy_constructible_v<VRELFile>);
  EXPECT_FALSE(std::is_copy_assignable_v<VRELFile>);
}

TEST(VRELFileHandleTest, LastHandleDeletesFile) {
  ScratchDirectory const directory;
  std::string const name = directory.Write("x.txt", "text");
  VRELFileHandle first(new VRELFile(name.c_str()));
  std::FILE* stream = nullptr;
  ASSERT_EQ(first->GetFilePointer(stream, VRELFile::BinaryOpen), VREL_S_OK);
  VRELFileHandle const second(first);
  EXPECT_TRUE(first == second);
  EXPECT_FALSE(first < second);
  VRELFile* const pointer = second;
  EXPECT_EQ(pointer->GetReferenceCount(), 2u);
  VRELFileHandle third;
  EXPECT_FALSE(third.IsValid());
  EXPECT_EQ(&(third = second), &third);
  first = VRELFileHandle(nullptr);
  EXPECT_FALSE(first.IsValid());
  EXPECT_TRUE(second->IsValidFile());
  EXPECT_EQ(CountOpenDescriptors(name), 1);
  third = first;
  EXPECT_TRUE(second.IsLastCall());
  const_cast<VRELFileHandle&>(second) = first;
  EXPECT_EQ(CountOpenDescriptors(name), 0);
}

TEST(VRELFileHandleTest, AddsNoField) {
  EXPECT_EQ(sizeof(VRELFileHandle), sizeof(VRELReferenceHandle));
}

}  // namespace
