#include "VRELFileDescriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <type_traits>

#include "ChildProcess.h"
#include "Gk_Exception.h"
#include "LocaleProcess.h"
#include "OpenDescriptors.h"
#include "ScratchDirectory.h"
#include "UnprivilegedProcess.h"
#include "VRELErrorTracker.h"
#include "VRELFileDescriptorHandle.h"
#include "VRELFilePath.h"

namespace {

using Descriptor = VRELFileDescriptor;

// Descriptor that is closed at the end of the scope.
struct Opened {
  Opened(std::string const& path, int flags) : number(open(path.c_str(), flags)) {}
  explicit Opened(int descriptor) : number(descriptor) {}
  ~Opened() { close(number); }
  Opened(Opened const&) = delete;
  Opened& operator=(Opened const&) = delete;

  int const number;
};

// Returns whether opening `path` raised "CANNOT_OPEN_FILE".
bool FailsToOpen(std::string const& path, Descriptor::IOMode mode) {
  try {
    Descriptor const file(VRELFilePath(path.c_str()), mode);
    return false;
  } catch (Gk_Exception const& exception) {
    EXPECT_STREQ(exception.token(), "CANNOT_OPEN_FILE");
    return true;
  }
}

TEST(VRELFileDescriptorTest, ModesKeepValues) {
  EXPECT_EQ(static_cast<int>(Descriptor::ModeFind), 0);
  EXPECT_EQ(static_cast<int>(Descriptor::ModeRead), 1);
  EXPECT_EQ(static_cast<int>(Descriptor::ModeWrite), 2);
  EXPECT_EQ(static_cast<int>(Descriptor::ModeReadWrite), 3);
}

TEST(VRELFileDescriptorTest, ModeFindUsesOwnerPermissions) {
  struct {
    mode_t permissions;
    Descriptor::IOMode mode;
  } const rows[] = {
      {0400, Descriptor::ModeRead}, {0200, Descriptor::ModeWrite}, {0600, Descriptor::ModeReadWrite},
      {0000, Descriptor::ModeFind}, {0077, Descriptor::ModeFind},  {0100, Descriptor::ModeFind},
      {0477, Descriptor::ModeRead}, {0277, Descriptor::ModeWrite}, {0777, Descriptor::ModeReadWrite},
  };
  ScratchDirectory const directory;
  std::string const path = directory.Write("file", "");
  // Opened for reading, which does not matter.
  Opened const reading(path, O_RDONLY);
  std::FILE* const stream = std::fopen(path.c_str(), "r");
  ASSERT_NE(stream, nullptr);
  for (auto const& row : rows) {
    SCOPED_TRACE(row.permissions);
    ASSERT_EQ(fchmod(reading.number, row.permissions), 0);
    EXPECT_EQ(Descriptor(reading.number, Descriptor::ModeFind).GetMode(), row.mode);
    EXPECT_EQ(Descriptor(stream, Descriptor::ModeFind).GetMode(), row.mode);
    for (auto const given : {Descriptor::ModeRead, Descriptor::ModeWrite, Descriptor::ModeReadWrite}) {
      EXPECT_EQ(Descriptor(reading.number, given).GetMode(), given);
      EXPECT_EQ(Descriptor(stream, given).GetMode(), given);
    }
  }
  std::fclose(stream);
  EXPECT_EQ(Descriptor(-1, Descriptor::ModeFind).GetMode(), Descriptor::ModeFind);
}

TEST(VRELFileDescriptorTest, ModeFindStaysForPath) {
  ScratchDirectory const directory;
  Descriptor file(VRELFilePath(directory.Write("file", "text").c_str()), Descriptor::ModeFind);
  EXPECT_EQ(file.GetMode(), Descriptor::ModeFind);
  char bytes[8] = {};
  EXPECT_EQ(file.readBytes(bytes, sizeof bytes, -1), 4);
  EXPECT_EQ(file.writeBytes("x", 1, -1), -1);
}

TEST(VRELFileDescriptorTest, ModeReadRefusesWrite) {
  ScratchDirectory const directory;
  Descriptor file(VRELFilePath(directory.Write("file", "text").c_str()), Descriptor::ModeRead);
  EXPECT_EQ(file.GetMode(), Descriptor::ModeRead);
  EXPECT_EQ(file.fileSize(), 4);
  char bytes[8] = {};
  EXPECT_EQ(file.readBytes(bytes, sizeof bytes, -1), 4);
  EXPECT_STREQ(bytes, "text");
  EXPECT_EQ(file.writeBytes("x", 1, -1), -1);
  EXPECT_EQ(directory.Read("file"), "text");
}

TEST(VRELFileDescriptorTest, WritingModesTruncateAndRefuseRead) {
  for (auto const mode : {Descriptor::ModeWrite, Descriptor::ModeReadWrite}) {
    SCOPED_TRACE(mode);
    ScratchDirectory const directory;
    Descriptor file(VRELFilePath(directory.Write("file", "text").c_str()), mode);
    EXPECT_EQ(file.GetMode(), mode);
    EXPECT_EQ(directory.Read("file"), "");
    char bytes[8];
    EXPECT_EQ(file.writeBytes("abc", 3, -1), 3);
    EXPECT_EQ(file.readBytes(bytes, sizeof bytes, 0), -1);
    EXPECT_EQ(directory.Read("file"), "abc");
  }
}

TEST(VRELFileDescriptorTest, NewFileHasOwnerPermissionsLessUmask) {
  struct {
    mode_t mask;
    mode_t permissions;
  } const rows[] = {{0, 0600}, {0022, 0600}, {0077, 0600}, {0200, 0400}, {0400, 0200}, {0777, 0}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.mask);
    ScratchDirectory const directory;
    VRELFilePath const path(directory.Path("new").c_str());
    mode_t const before = umask(row.mask);
    { Descriptor const file(path, Descriptor::ModeWrite); }
    umask(before);
    struct stat stats = {};
    ASSERT_EQ(stat(directory.Path("new").c_str(), &stats), 0);
    EXPECT_EQ(stats.st_mode & 07777, row.permissions);
  }
}

TEST(VRELFileDescriptorTest, ExistingFileKeepsPermissions) {
  ScratchDirectory const directory;
  std::string const path = directory.Write("file", "text");
  ASSERT_EQ(chmod(path.c_str(), 0644), 0);
  { Descriptor const file(VRELFilePath(path.c_str()), Descriptor::ModeWrite); }
  struct stat stats = {};
  ASSERT_EQ(stat(path.c_str(), &stats), 0);
  EXPECT_EQ(stats.st_mode & 07777, 0644u);
}

TEST(VRELFileDescriptorTest, FailedOpenRaises) {
  ScratchDirectory const directory;
  std::string const file = directory.Write("file", "text");
  EXPECT_TRUE(FailsToOpen(directory.Path("missing"), Descriptor::ModeRead));
  EXPECT_TRUE(FailsToOpen(directory.Path("missing"), Descriptor::ModeFind));
  EXPECT_FALSE(directory.Has("missing"));
  for (auto const mode :
       {Descriptor::ModeFind, Descriptor::ModeRead, Descriptor::ModeWrite, Descriptor::ModeReadWrite}) {
    SCOPED_TRACE(mode);
    EXPECT_TRUE(FailsToOpen("", mode));
    EXPECT_TRUE(FailsToOpen(file + "/below", mode));
    EXPECT_TRUE(FailsToOpen(directory.Path("no/such/directory"), mode));
  }
  EXPECT_TRUE(FailsToOpen(directory.Path(), Descriptor::ModeWrite));
  EXPECT_EQ(CountOpenDescriptors(directory.Path()), 0);
  EXPECT_EQ(CountOpenDescriptors(file), 0);
}

TEST(VRELFileDescriptorTest, FailedOpenSendsErrorEvent) {
  ChildResult const result = RunInChild([] {
    VRELErrorTracker::Initialize();
    EXPECT_TRUE(FailsToOpen("", Descriptor::ModeRead));
    EXPECT_EQ(VRELErrorTracker::GetInstance()->GetErrorCount(), 1);
    delete VRELErrorTracker::GetInstance();
    return ::testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
}

TEST(VRELFileDescriptorTest, UnreadableFileRaises) {
  ScratchDirectory const directory;
  std::string const file = directory.Write("file", "text");
  ASSERT_EQ(chmod(directory.Path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(file.c_str(), 0), 0);
  RunUnprivileged([&] {
    EXPECT_TRUE(FailsToOpen(file, Descriptor::ModeRead));
    EXPECT_TRUE(FailsToOpen(file, Descriptor::ModeWrite));
    EXPECT_TRUE(FailsToOpen(directory.Path("new"), Descriptor::ModeWrite));
  });
}

TEST(VRELFileDescriptorTest, PathHasAtMost4096Bytes) {
  struct {
    std::size_t byteCount;  // terminator included
    bool fits;
  } const rows[] = {{4095, true}, {4096, true}, {4097, false}, {9000, false}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.byteCount);
    ScratchDirectory const directory;
    directory.Write("f", "text");
    std::string const tail = row.fits ? "f" : "fx";
    std::string const path =
        directory.Path() + std::string(row.byteCount - 1 - directory.Path().size() - tail.size(), '/') + tail;
    EXPECT_EQ(FailsToOpen(path, Descriptor::ModeRead), !row.fits);
    // A path that is too long is not truncated to the name of another file.
    EXPECT_EQ(FailsToOpen(path, Descriptor::ModeWrite), !row.fits);
    EXPECT_EQ(directory.Read("f"), row.fits ? "" : "text");
    EXPECT_FALSE(directory.Has("fx"));
  }
}

TEST(VRELFileDescriptorTest, PathIsUtf8) {
  RunTestInLocale("C.UTF-8", [] {
    ScratchDirectory const directory;
    VRELFilePath const path = VRELFilePath(directory.Path().c_str()) + VRELString(L"\u00F6");
    { Descriptor const file(path, Descriptor::ModeWrite); }
    EXPECT_TRUE(directory.Has("\xC3\xB6"));
  });
}

TEST(VRELFileDescriptorTest, LoneSurrogateIsReplaced) {
  RunTestInLocale("C.UTF-8", [] {
    ScratchDirectory const directory;
    unsigned short const surrogate[] = {0xD800, 0};
    VRELFilePath const path = VRELFilePath(directory.Path().c_str()) + VRELString(surrogate);
    { Descriptor const file(path, Descriptor::ModeWrite); }
    EXPECT_TRUE(directory.Has("\xEF\xBF\xBD"));
  });
}

TEST(VRELFileDescriptorTest, CallsGetPathOfDerivedPath) {
  struct OverriddenPath : VRELFilePath {
    VRELString GetPath() const override { return VRELString(L"/dev/null"); }
  };
  Descriptor file(OverriddenPath(), Descriptor::ModeRead);
  char byte;
  EXPECT_EQ(file.readBytes(&byte, 1, -1), 0);
}

TEST(VRELFileDescriptorTest, ClosesOnlyOwnDescriptor) {
  ScratchDirectory const directory;
  std::string const path = directory.Write("file", "text");
  {
    Descriptor const file(VRELFilePath(path.c_str()), Descriptor::ModeRead);
    EXPECT_EQ(CountOpenDescriptors(path), 1);
  }
  EXPECT_EQ(CountOpenDescriptors(path), 0);

  Opened const opened(path, O_RDONLY);
  { Descriptor const file(opened.number, Descriptor::ModeRead); }
  EXPECT_TRUE(IsOpenDescriptor(opened.number));
  { Descriptor const standardOutput(STDOUT_FILENO, Descriptor::ModeWrite); }
  EXPECT_TRUE(IsOpenDescriptor(STDOUT_FILENO));

  std::FILE* const stream = std::fopen(path.c_str(), "r");
  ASSERT_NE(stream, nullptr);
  { Descriptor const file(stream, Descriptor::ModeRead); }
  EXPECT_EQ(std::fgetc(stream), 't');
  EXPECT_EQ(std::fclose(stream), 0);
}

TEST(VRELFileDescriptorTest, SeekAndOffsetReturnPosition) {
  ScratchDirectory const directory;
  Descriptor const file(VRELFilePath(directory.Write("file", "0123456789").c_str()), Descriptor::ModeRead);
  EXPECT_EQ(file.offset(0), 0);
  EXPECT_EQ(file.seek(4), 4);
  EXPECT_EQ(file.offset(0), 4);
  EXPECT_EQ(file.offset(3), 7);
  EXPECT_EQ(file.offset(-2), 5);
  EXPECT_EQ(file.fileSize(), 10);
  EXPECT_EQ(file.offset(0), 5);
  EXPECT_EQ(file.seek(100), 100);
  EXPECT_EQ(file.fileSize(), 10);
  EXPECT_EQ(file.offset(0), 100);
  EXPECT_EQ(file.seek(-1), -1);
  EXPECT_EQ(file.offset(-101), -1);
  EXPECT_EQ(file.offset(0), 100);
}

TEST(VRELFileDescriptorTest, ReadBytesUsesPositionOrCurrent) {
  ScratchDirectory const directory;
  Descriptor file(VRELFilePath(directory.Write("file", "0123456789").c_str()), Descriptor::ModeRead);
  struct {
    unsigned count;
    long position;
    char const* bytes;
  } const rows[] = {
      {3, -1, "012"},
      {3, -1, "345"},
      {2, 8, "89"},
      {5, -1, ""},
      {4, 0, "0123"},
      {0, 5, ""},
      {9, -1, "56789"},
      {9, 10, ""},
      {9, 99, ""},
      {2, 1, "12"},
      // If the position cannot be set, the bytes are read at the current position.
      {2, -2, "34"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.position);
    char buffer[16] = {};
    EXPECT_EQ(file.readBytes(buffer, row.count, row.position), static_cast<long>(std::strlen(row.bytes)));
    EXPECT_STREQ(buffer, row.bytes);
  }
}

TEST(VRELFileDescriptorTest, WriteBytesUsesPositionOrCurrent) {
  ScratchDirectory const directory;
  Descriptor file(VRELFilePath(directory.Path("file").c_str()), Descriptor::ModeWrite);
  EXPECT_EQ(file.writeBytes("abc", 3, -1), 3);
  EXPECT_EQ(file.writeBytes("def", 3, -1), 3);
  EXPECT_EQ(directory.Read("file"), "abcdef");
  EXPECT_EQ(file.writeBytes("X", 1, 0), 1);
  EXPECT_EQ(file.writeBytes("Y", 1, -1), 1);
  EXPECT_EQ(directory.Read("file"), "XYcdef");
  EXPECT_EQ(file.writeBytes("Z", 1, 8), 1);
  EXPECT_EQ(directory.Read("file"), std::string("XYcdef\0\0Z", 9));
  EXPECT_EQ(file.writeBytes("!", 1, -7), 1);
  EXPECT_EQ(directory.Read("file"), std::string("XYcdef\0\0Z!", 10));
  EXPECT_EQ(file.writeBytes("", 0, 2), 0);
  EXPECT_EQ(file.offset(0), 2);
  file.commit();
  EXPECT_EQ(file.offset(0), 2);
}

TEST(VRELFileDescriptorTest, ClosedDescriptorFails) {
  int closed = dup(STDOUT_FILENO);
  close(closed);
  for (int const number : {closed, -1}) {
    Descriptor file(number, Descriptor::ModeReadWrite);
    char byte = '#';
    EXPECT_EQ(file.seek(0), -1);
    EXPECT_EQ(file.offset(0), -1);
    EXPECT_EQ(file.fileSize(), -1);
    EXPECT_EQ(file.readBytes(&byte, 1, -1), -1);
    EXPECT_EQ(file.readBytes(&byte, 1, 0), -1);
    EXPECT_EQ(file.writeBytes("x", 1, -1), -1);
    EXPECT_EQ(file.writeBytes("x", 1, 0), -1);
    EXPECT_EQ(byte, '#');
  }
}

TEST(VRELFileDescriptorTest, NullStreamIsClosedDescriptor) {
  std::FILE* const null = nullptr;
  Descriptor file(null, Descriptor::ModeFind);
  EXPECT_EQ(file.GetMode(), Descriptor::ModeFind);
  EXPECT_EQ(file.offset(0), -1);
}

TEST(VRELFileDescriptorTest, PipeHasNoPosition) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  {
    Opened const readEnd(ends[0]);
    Descriptor reader(ends[0], Descriptor::ModeRead);
    {
      Opened const writeEnd(ends[1]);
      Descriptor writer(ends[1], Descriptor::ModeWrite);
      EXPECT_EQ(writer.seek(0), -1);
      EXPECT_EQ(writer.fileSize(), -1);
      EXPECT_EQ(reader.offset(0), -1);
      EXPECT_EQ(writer.writeBytes("abcd", 4, -1), 4);
      // The move fails and the bytes go through.
      EXPECT_EQ(writer.writeBytes("ef", 2, 100), 2);
      char buffer[16] = {};
      EXPECT_EQ(reader.readBytes(buffer, 2, 50), 2);
      EXPECT_STREQ(buffer, "ab");
      EXPECT_EQ(reader.readBytes(buffer, sizeof buffer, -1), 4);
      EXPECT_EQ(std::string(buffer, 4), "cdef");
    }
    char byte;
    EXPECT_EQ(reader.readBytes(&byte, 1, -1), 0);
  }
}

TEST(VRELFileDescriptorTest, ShortWriteIsNotRetried) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  Opened const readEnd(ends[0]);
  Opened const writeEnd(ends[1]);
  int const capacity = fcntl(ends[1], F_GETPIPE_SZ);
  ASSERT_GT(capacity, 0);
  std::string const bytes(static_cast<std::size_t>(capacity) + 1000, 'x');
  Descriptor writer(ends[1], Descriptor::ModeWrite);
  EXPECT_EQ(writer.writeBytes(bytes.data(), static_cast<unsigned>(bytes.size()), -1), capacity);
  EXPECT_EQ(writer.writeBytes("x", 1, -1), -1);
}

TEST(VRELFileDescriptorTest, DirectoryOpensAndReadFails) {
  ScratchDirectory const directory;
  Descriptor file(VRELFilePath(directory.Path().c_str()), Descriptor::ModeRead);
  char byte;
  EXPECT_EQ(file.readBytes(&byte, 1, -1), -1);
}

TEST(VRELFileDescriptorTest, DevicesReturnOwnResults) {
  Descriptor full(VRELFilePath("/dev/full"), Descriptor::ModeWrite);
  EXPECT_EQ(full.writeBytes("x", 1, -1), -1);
  Descriptor zero(VRELFilePath("/dev/zero"), Descriptor::ModeRead);
  char bytes[4] = {'#', '#', '#', '#'};
  EXPECT_EQ(zero.readBytes(bytes, sizeof bytes, -1), 4);
  EXPECT_EQ(std::string(bytes, 4), std::string(4, '\0'));
  EXPECT_EQ(zero.fileSize(), 0);
  Descriptor null(VRELFilePath("/dev/null"), Descriptor::ModeRead);
  EXPECT_EQ(null.readBytes(bytes, sizeof bytes, -1), 0);
}

TEST(VRELFileDescriptorTest, NullBufferFails) {
  ScratchDirectory const directory;
  Descriptor file(VRELFilePath(directory.Write("file", "text").c_str()), Descriptor::ModeRead);
  EXPECT_EQ(file.readBytes(nullptr, 4, -1), -1);
}

TEST(VRELFileDescriptorTest, IsNotCopyable) {
  EXPECT_FALSE(std::is_copy_constructible_v<Descriptor>);
  EXPECT_FALSE(std::is_copy_assignable_v<Descriptor>);
}

TEST(VRELFileDescriptorHandleTest, LastHandleClosesFile) {
  ScratchDirectory const directory;
  std::string const path = directory.Write("file", "0123456789");
  {
    VRELFileDescriptorHandle first(new Descriptor(VRELFilePath(path.c_str()), Descriptor::ModeRead));
    VRELFileDescriptorHandle const second(first);
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first < second);
    // One position for all.
    EXPECT_EQ(first->seek(4), 4);
    EXPECT_EQ(second->offset(0), 4);
    Descriptor* const pointer = second;
    EXPECT_EQ(pointer->GetReferenceCount(), 2u);
    VRELFileDescriptorHandle none;
    EXPECT_FALSE(none.IsValid());
    EXPECT_EQ(&(first = none), &first);
    EXPECT_FALSE(first.IsValid());
    EXPECT_EQ(CountOpenDescriptors(path), 1);
  }
  EXPECT_EQ(CountOpenDescriptors(path), 0);
  EXPECT_EQ(sizeof(VRELFileDescriptorHandle), sizeof(VRELReferenceHandle));
}

}  // namespace
