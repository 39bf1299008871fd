#include "VRELFileOutputStream.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <string>

#include "ChildProcess.h"
#include "OpenDescriptors.h"
#include "Raised.h"
#include "ScratchDirectory.h"
#include "VRELFilePath.h"

namespace {

class VRELFileOutputStreamTest : public testing::Test {
 protected:
  ScratchDirectory directory;
  std::string file = directory.Path("file");
  VRELFilePath path = file.c_str();
};

TEST_F(VRELFileOutputStreamTest, HasOneField) {
  EXPECT_EQ(sizeof(VRELFileOutputStream), sizeof(VRELOutputStream) + sizeof(VRELFileDescriptorHandle));
}

TEST_F(VRELFileOutputStreamTest, CreatesFile) {
  VRELFileOutputStream stream(path);
  struct stat stats = {};
  ASSERT_EQ(stat(file.c_str(), &stats), 0);
  EXPECT_EQ(stats.st_mode & 0777, 0600u);
}

TEST_F(VRELFileOutputStreamTest, TruncatesFile) {
  directory.Write("file", "before");
  VRELFileOutputStream const stream(path);
  EXPECT_EQ(directory.Read("file"), "");
}

// Not buffered: the bytes are in the file before any flush.
TEST_F(VRELFileOutputStreamTest, WriteIsImmediate) {
  VRELFileOutputStream stream(path);
  EXPECT_EQ(stream.write("abc", 3), 3);
  EXPECT_EQ(directory.Read("file"), "abc");
  EXPECT_EQ(stream.writeChar('\xFF'), 1);
  EXPECT_EQ(stream.write("d\0e", 3), 3);
  EXPECT_EQ(stream.write("x", 0), 0);
  EXPECT_EQ(directory.Read("file"), std::string("abc\xFF"
                                                "d\0e",
                                                7));
}

TEST_F(VRELFileOutputStreamTest, FlushAndCloseDoNothing) {
  VRELFileOutputStream stream(path);
  stream.write("a", 1);
  stream.flush();
  stream.close();
  EXPECT_EQ(stream.write("b", 1), 1);
  EXPECT_EQ(directory.Read("file"), "ab");
  EXPECT_EQ(CountOpenDescriptors(file), 1);
}

TEST_F(VRELFileOutputStreamTest, MissingDirectoryRaises) {
  VRELFilePath const unreachable(directory.Path("no/such/file").c_str());
  EXPECT_EQ(Raised([&] { VRELFileOutputStream const stream(unreachable); }), "CANNOT_OPEN_FILE");
}

TEST_F(VRELFileOutputStreamTest, CopiesShareFile) {
  {
    VRELFileOutputStream stream(path);
    {
      VRELFileOutputStream copy(stream);
      copy.write("a", 1);
      stream.write("b", 1);
      copy.write("c", 1);
    }
    EXPECT_EQ(directory.Read("file"), "abc");
    EXPECT_EQ(CountOpenDescriptors(file), 1);
  }
  EXPECT_EQ(CountOpenDescriptors(file), 0);
}

TEST_F(VRELFileOutputStreamTest, AcceptsDescriptor) {
  auto* const descriptor = new VRELFileDescriptor(path, VRELFileDescriptor::ModeWrite);
  {
    VRELFileOutputStream stream(descriptor);
    EXPECT_EQ(descriptor->GetReferenceCount(), 1u);
    EXPECT_EQ(stream.write("abc", 3), 3);
    EXPECT_EQ(CountOpenDescriptors(file), 1);
  }
  EXPECT_EQ(CountOpenDescriptors(file), 0);
  EXPECT_EQ(directory.Read("file"), "abc");
}

TEST_F(VRELFileOutputStreamTest, NullDescriptorFails) {
  VRELFileDescriptor* const none = nullptr;
  VRELFileOutputStream stream(none);
  EXPECT_EQ(stream.write("a", 1), -1);
  EXPECT_EQ(stream.writeChar('a'), -1);
  stream.flush();
  stream.close();
}

TEST_F(VRELFileOutputStreamTest, WritesToFileOfStream) {
  std::FILE* const given = std::fopen(file.c_str(), "w");
  ASSERT_NE(given, nullptr);
  {
    VRELFileOutputStream stream(given);
    EXPECT_EQ(stream.write("abc", 3), 3);
    EXPECT_EQ(directory.Read("file"), "abc");
  }
  std::fputs("def", given);
  EXPECT_EQ(std::fclose(given), 0);
  EXPECT_EQ(directory.Read("file"), "abcdef");
}

TEST_F(VRELFileOutputStreamTest, FailedWriteReturnsMinusOne) {
  directory.Write("file", "text");
  std::FILE* const reading = std::fopen(file.c_str(), "r");
  ASSERT_NE(reading, nullptr);
  VRELFileOutputStream stream(reading);
  EXPECT_EQ(stream.write("abc", 3), -1);
  EXPECT_EQ(stream.writeChar('a'), -1);
  std::fclose(reading);
  VRELFileOutputStream full(VRELFilePath("/dev/full"));
  EXPECT_EQ(full.write("abc", 3), -1);
}

TEST_F(VRELFileOutputStreamTest, NegativeCountFails) {
  VRELFileOutputStream stream(path);
  EXPECT_EQ(stream.write("abc", -1), -1);
  EXPECT_EQ(stream.write("abc", INT_MIN), -1);
  EXPECT_EQ(directory.Read("file"), "");
}

TEST_F(VRELFileOutputStreamTest, ShortWriteIsNotCompleted) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  int const capacity = fcntl(ends[1], F_GETPIPE_SZ);
  ASSERT_GT(capacity, 0);
  std::string const bytes(static_cast<std::size_t>(capacity) + 1000, 'x');
  {
    VRELFileOutputStream stream(new VRELFileDescriptor(ends[1], VRELFileDescriptor::ModeWrite));
    EXPECT_EQ(stream.write(bytes.data(), static_cast<int>(bytes.size())), capacity);
    EXPECT_EQ(stream.write("x", 1), -1);
  }
  EXPECT_EQ(close(ends[0]), 0);
  EXPECT_EQ(close(ends[1]), 0);
}

TEST_F(VRELFileOutputStreamTest, ConsoleWritesToStandardOutput) {
  ChildResult const child = RunInChild([] {
    VRELFileOutputStream own;
    if (VRELFileOutputStream::console.write("abc", 3) != 3) return 1;
    if (own.writeChar('d') != 1) return 2;
    return 0;
  });
  EXPECT_EQ(child.exitStatus, 0);
  EXPECT_EQ(child.output, "abcd");
}

TEST_F(VRELFileOutputStreamTest, StandardOutputIsNotClosed) {
  { VRELFileOutputStream const stream; }
  EXPECT_TRUE(IsOpenDescriptor(STDOUT_FILENO));
}

}  // namespace
