// System calls of the classes in files/ with their flags. The functions of the C library are replaced by functions that
// record the call and forward it. Sanitizers replace the same functions, so the tests are skipped under them.
#include <dirent.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "Gk_DirElement.h"
#include "Sanitizer.h"
#include "ScratchDirectory.h"
#include "VRELExport.h"
#include "VRELFile.h"
#include "VRELFileDescriptor.h"
#include "VRELFilePath.h"
#include "VRELLogFileWrapper.h"
#include "VRELTemporaryFile.h"

namespace {

// Calls since Record, or none outside of it.
std::vector<std::string>* recorded = nullptr;

#ifndef VREL_TEST_HAS_SANITIZER

template <class... Arguments>
void Add(char const* format, Arguments... arguments) {
  if (recorded == nullptr) return;
  std::vector<std::string>& calls = *recorded;
  // Formatting may call the same functions.
  recorded = nullptr;
  char text[400];
  std::snprintf(text, sizeof text, format, arguments...);
  calls.emplace_back(text);
  recorded = &calls;
}

template <class Function>
Function* Original(Function* /*replacement*/, char const* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

#endif

}  // namespace

#ifndef VREL_TEST_HAS_SANITIZER

extern "C" {

VREL_EXPORT int open(char const* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  unsigned const mode = (flags & 0x40) != 0 ? va_arg(arguments, unsigned) : 0;
  va_end(arguments);
  Add("open %s 0x%x 0%o", path, flags, mode);
  static auto* const original = Original(&open, "open");
  return original(path, flags, mode);
}

VREL_EXPORT std::FILE* fopen(char const* path, char const* mode) {
  Add("fopen %s %s", path, mode);
  static auto* const original = Original(&fopen, "fopen");
  return original(path, mode);
}

VREL_EXPORT int close(int descriptor) {
  Add("close %d", descriptor);
  static auto* const original = Original(&close, "close");
  return original(descriptor);
}

VREL_EXPORT int remove(char const* path) noexcept {
  Add("remove %s", path);
  static auto* const original = Original(&remove, "remove");
  return original(path);
}

VREL_EXPORT int unlink(char const* path) noexcept {
  Add("unlink %s", path);
  static auto* const original = Original(&unlink, "unlink");
  return original(path);
}

VREL_EXPORT int rename(char const* from, char const* to) noexcept {
  Add("rename %s %s", from, to);
  static auto* const original = Original(&rename, "rename");
  return original(from, to);
}

VREL_EXPORT int mkdir(char const* path, mode_t mode) noexcept {
  Add("mkdir %s 0%o", path, mode);
  static auto* const original = Original(&mkdir, "mkdir");
  return original(path, mode);
}

VREL_EXPORT int rmdir(char const* path) noexcept {
  Add("rmdir %s", path);
  static auto* const original = Original(&rmdir, "rmdir");
  return original(path);
}

VREL_EXPORT char* getcwd(char* buffer, std::size_t size) noexcept {
  Add("getcwd %zu", size);
  static auto* const original = Original(&getcwd, "getcwd");
  return original(buffer, size);
}

VREL_EXPORT int stat(char const* path, struct stat* stats) noexcept {
  Add("stat %s", path);
  static auto* const original = reinterpret_cast<int (*)(char const*, struct stat*)>(dlsym(RTLD_NEXT, "stat"));
  return original(path, stats);
}

VREL_EXPORT int lstat(char const* path, struct stat* stats) noexcept {
  Add("lstat %s", path);
  static auto* const original = reinterpret_cast<int (*)(char const*, struct stat*)>(dlsym(RTLD_NEXT, "lstat"));
  return original(path, stats);
}

VREL_EXPORT int fstat(int descriptor, struct stat* stats) noexcept {
  Add("fstat %d", descriptor);
  static auto* const original = reinterpret_cast<int (*)(int, struct stat*)>(dlsym(RTLD_NEXT, "fstat"));
  return original(descriptor, stats);
}

VREL_EXPORT off_t lseek(int descriptor, off_t offset, int whence) noexcept {
  Add("lseek %d %ld %d", descriptor, offset, whence);
  static auto* const original = Original(&lseek, "lseek");
  return original(descriptor, offset, whence);
}

VREL_EXPORT DIR* opendir(char const* path) {
  Add("opendir %s", path);
  static auto* const original = Original(&opendir, "opendir");
  return original(path);
}

}  // extern "C"

#endif

namespace {

using Calls = std::vector<std::string>;
using ::testing::ElementsAre;

class FileSystemCallsTest : public testing::Test {
 protected:
  void SetUp() override {
#ifdef VREL_TEST_HAS_SANITIZER
    GTEST_SKIP() << "a sanitizer replaces the functions of the C library";
#endif
  }

  // Returns the calls of `body`, with the path of the scratch directory shown as DIR.
  template <class Body>
  Calls Record(Body const& body) {
    Calls calls;
    recorded = &calls;
    body();
    recorded = nullptr;
    for (std::string& call : calls) {
      for (std::size_t at = call.find(directory.Path()); at != std::string::npos; at = call.find(directory.Path())) {
        call.replace(at, directory.Path().size(), "DIR");
      }
    }
    return calls;
  }

  VRELFilePath PathOf(char const* name) const {
    return VRELFilePath(directory.Path(name).c_str());
  }

  ScratchDirectory directory;
};

TEST_F(FileSystemCallsTest, DoesFileExistOpensReadOnly) {
  VRELFilePath const path = PathOf("file");
  EXPECT_THAT(Record([&] { path.DoesFileExist(); }), ElementsAre("open DIR/file 0x80000 00"));
  directory.Write("file", "");
  Calls const calls = Record([&] { path.DoesFileExist(); });
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0], "open DIR/file 0x80000 00");
  EXPECT_EQ(calls[1].substr(0, 6), "close ");
}

TEST_F(FileSystemCallsTest, FilePathCallsByName) {
  VRELFilePath const path = PathOf("file");
  EXPECT_THAT(Record([&] { EXPECT_EQ(path.OpenFile("r+b"), nullptr); }), ElementsAre("fopen DIR/file r+b"));
  EXPECT_THAT(Record([&] { path.RemoveFile(); }), ElementsAre("remove DIR/file"));
  long value = 0;
  EXPECT_THAT(Record([&] { path.GetFileSize(value); }), ElementsAre("stat DIR/file"));
  EXPECT_THAT(Record([&] { path.GetCreationDate(value); }), ElementsAre("stat DIR/file"));
  EXPECT_THAT(Record([&] { path.GetLastAccessDate(value); }), ElementsAre("stat DIR/file"));
  EXPECT_THAT(Record([&] { path.GetLastModificationDate(value); }), ElementsAre("stat DIR/file"));
  EXPECT_THAT(Record([] { VRELFilePath::GetCurrentWorkingDirectory(); }), ElementsAre("getcwd 4096"));
}

TEST_F(FileSystemCallsTest, ResolveAgainstProbesShortestTailFirst) {
  VRELFilePath const path("//server/x/./C:/y/z.dat");
  VRELFilePath base = PathOf("top.asm");
  EXPECT_THAT(Record([&] { path.ResolveAgainst(base); }),
              ElementsAre("open //server/x/./C:/y/z.dat 0x80000 00", "open DIR/z.dat 0x80000 00",
                          "open DIR/y/z.dat 0x80000 00", "open DIR/x/y/z.dat 0x80000 00"));
}

TEST_F(FileSystemCallsTest, ResolveAgainstProbesNoOverlongPath) {
  VRELFilePath const path("x/y/z.dat");
  std::string const longName(5000, 'd');
  VRELFilePath base((longName + "/top.asm").c_str());
  std::string result;
  EXPECT_THAT(Record([&] { result = path.ResolveAgainst(base).GetPath().toUtf8(); }), ElementsAre());
  EXPECT_EQ(result, longName + "/x/y/z.dat");
}

TEST_F(FileSystemCallsTest, FileOpensByType) {
  directory.Write("file", "");
  VRELFile file(PathOf("file"));
  std::FILE* stream = nullptr;
  EXPECT_THAT(Record([&] { file.GetFilePointer(stream, VRELFile::NoOpen); }), ElementsAre());
  EXPECT_THAT(Record([&] { file.GetFilePointer(stream, VRELFile::TextOpen); }), ElementsAre("fopen DIR/file r"));
  EXPECT_THAT(Record([&] { file.GetFilePointer(stream, VRELFile::BinaryOpen); }), ElementsAre("fopen DIR/file rb"));
  EXPECT_THAT(Record([&] { file.GetFilePointer(stream, static_cast<VRELFile::VRELFilePointerOpenType>(9)); }),
              ElementsAre("fopen DIR/file rb"));
}

TEST_F(FileSystemCallsTest, FileDescriptorOpensByMode) {
  struct {
    VRELFileDescriptor::IOMode mode;
    char const* call;
  } const rows[] = {
      {VRELFileDescriptor::ModeWrite, "open DIR/file 0x241 0600"},
      {VRELFileDescriptor::ModeReadWrite, "open DIR/file 0x241 0600"},
      {VRELFileDescriptor::ModeRead, "open DIR/file 0x0 00"},
      {VRELFileDescriptor::ModeFind, "open DIR/file 0x0 00"},
  };
  for (auto const& row : rows) {
    VRELFilePath const path = PathOf("file");
    Calls const calls = Record([&] { VRELFileDescriptor(path, row.mode); });
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0], row.call);
    EXPECT_EQ(calls[1].substr(0, 6), "close ");
  }
}

TEST_F(FileSystemCallsTest, FileDescriptorSeeksBeforeTransfer) {
  VRELFileDescriptor closed(-1, VRELFileDescriptor::ModeRead);
  char byte = 0;
  EXPECT_THAT(Record([&] { VRELFileDescriptor(-1, VRELFileDescriptor::ModeFind); }), ElementsAre("fstat -1"));
  EXPECT_THAT(Record([&] { closed.readBytes(&byte, 1, 5); }), ElementsAre("lseek -1 5 0"));
  EXPECT_THAT(Record([&] { closed.writeBytes(&byte, 1, 0); }), ElementsAre("lseek -1 0 0"));
  EXPECT_THAT(Record([&] { closed.readBytes(&byte, 1, -1); }), ElementsAre());
  EXPECT_THAT(Record([&] { closed.seek(-3); }), ElementsAre("lseek -1 -3 0"));
  EXPECT_THAT(Record([&] { closed.offset(4); }), ElementsAre("lseek -1 4 1"));
  EXPECT_THAT(Record([&] { closed.fileSize(); }), ElementsAre("lseek -1 0 1", "lseek -1 0 2", "lseek -1 -1 0"));
  EXPECT_THAT(Record([&] { closed.commit(); }), ElementsAre());
}

TEST_F(FileSystemCallsTest, TemporaryFileIsCreatedExclusively) {
  VRELTemporaryFile file;
  VRELFilePath path;
  file.GetPath(path);
  std::string const name = path.GetPath().toUtf8();
  EXPECT_THAT(Record([&] { file.Open(nullptr); }), ElementsAre("fopen " + name + " wx+b"));
  file.Close();
  // The file exists by now.
  EXPECT_THAT(Record([&] { file.Open("a"); }),
              ElementsAre("fopen " + name + " ax", "lstat " + name, "fopen " + name + " a"));
  file.Close();
  EXPECT_THAT(Record([&] { file.Open("r"); }), ElementsAre("lstat " + name, "fopen " + name + " r"));
  EXPECT_THAT(Record([&] { file.Terminate(); }), ElementsAre("remove " + name));
}

TEST_F(FileSystemCallsTest, FileElementCallsByName) {
  Gk_FileElement const element(Gk_String(directory.Path("file").c_str()));
  Gk_FileElement const target(Gk_String(directory.Path("other").c_str()));
  EXPECT_THAT(Record([&] { element.exists(); }), ElementsAre("stat DIR/file"));
  EXPECT_THAT(Record([&] { element.isDirectory(); }), ElementsAre("stat DIR/file"));
  EXPECT_THAT(Record([&] { element.length(); }), ElementsAre("stat DIR/file"));
  EXPECT_THAT(Record([&] { element.erase(); }), ElementsAre("unlink DIR/file"));
  EXPECT_THAT(Record([&] { element.renameTo(target); }), ElementsAre("rename DIR/file DIR/other"));
  EXPECT_THAT(Record([] { Gk_FileElement::getCurrentDir(); }), ElementsAre("getcwd 1024"));
}

TEST_F(FileSystemCallsTest, DirectoryElementCallsByName) {
  Gk_DirElement const element(Gk_String(directory.Path("a/b").c_str()));
  EXPECT_THAT(Record([&] { element.children(); }), ElementsAre("opendir DIR/a/b"));
  EXPECT_THAT(Record([&] { element.mkdir(); }),
              ElementsAre("stat DIR/a", "stat DIR", "mkdir DIR/a 0777", "mkdir DIR/a/b 0777"));
  EXPECT_THAT(Record([&] { element.rmdir(); }), ElementsAre("rmdir DIR/a/b"));
}

TEST_F(FileSystemCallsTest, LogFileWrapperOpensGivenPath) {
  VRELFilePath const path = PathOf("run.log");
  EXPECT_THAT(Record([&] { VRELLogFileWrapper const log(path); }), ElementsAre("fopen DIR/run.log w"));
}

// The target of the name is not checked.
TEST_F(FileSystemCallsTest, LogFileWrapperFollowsSymbolicLink) {
  directory.Write("victim", "old");
  ASSERT_EQ(symlink("victim", directory.Path("run.log").c_str()), 0);
  { VRELLogFileWrapper const log(PathOf("run.log")); }
  EXPECT_EQ(directory.Read("victim"), "");
}

}  // namespace
