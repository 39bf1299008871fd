#include "StepBuffer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "Gk_ErrMgr.h"
#include "StepFixture.h"
#include "VRELAbortException.h"

TEST(StepBufferTest, ReadsBytes) {
  BytesInFile file("ab\xFF");
  StepBuffer& buffer = file.Buffer();
  EXPECT_EQ(buffer.IsValid(), VREL_S_OK);
  EXPECT_EQ(buffer.Size(), 3U);
  EXPECT_EQ(buffer.Peek(), 'a');
  EXPECT_EQ(buffer.Take(), 'a');
  char byte = 0;
  EXPECT_EQ(buffer.ReadChar(byte), VREL_S_OK);
  EXPECT_EQ(byte, 'b');
  unsigned char last = 0;
  EXPECT_EQ(buffer.ReadUChar(last), VREL_S_OK);
  EXPECT_EQ(last, 0xFF);
  EXPECT_EQ(buffer.Peek(), StepBuffer::kEnd);
  EXPECT_EQ(buffer.Take(), StepBuffer::kEnd);
  EXPECT_EQ(buffer.ReadChar(byte), VREL_E_FAIL);
  EXPECT_EQ(byte, 'b');
  EXPECT_EQ(buffer.ReadUChar(last), VREL_E_FAIL);
  EXPECT_EQ(last, 0xFF);
  unsigned long offset = 0;
  EXPECT_EQ(buffer.GetOffset(offset), VREL_S_OK);
  EXPECT_EQ(offset, 3U);
  EXPECT_EQ(buffer.SetOffset(1), VREL_S_OK);
  EXPECT_EQ(buffer.Take(), 'b');
  EXPECT_EQ(buffer.SetOffset(3), VREL_S_OK);
  EXPECT_EQ(buffer.Peek(), StepBuffer::kEnd);
  EXPECT_EQ(buffer.SetOffset(4), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(buffer.Offset(), 3U);
}

TEST(StepBufferTest, ReadAtKeepsOffset) {
  BytesInFile file("abcdef");
  StepBuffer& buffer = file.Buffer();
  buffer.Take();
  char bytes[4] = "";
  EXPECT_EQ(buffer.ReadAt(2, bytes, 3), 3U);
  EXPECT_STREQ(bytes, "cde");
  EXPECT_EQ(buffer.ReadAt(5, bytes, 3), 1U);
  EXPECT_EQ(bytes[0], 'f');
  EXPECT_EQ(buffer.ReadAt(6, bytes, 3), 0U);
  EXPECT_EQ(buffer.Take(), 'b');
  EXPECT_EQ(StepBuffer(VRELFileHandle(), nullptr).ReadAt(0, bytes, 3), 0U);
}

TEST(StepBufferTest, ReadsLines) {
  BytesInFile file("a\r\n\nb\rJ\xC3\xB6");
  std::vector<std::string> lines;
  VRELString line;
  while (file.Buffer().ReadLine(line).IsSuccess()) lines.push_back(line.toUtf8());
  EXPECT_EQ(lines, (std::vector<std::string>{"a", "", "b", "J\xC3\xB6"}));
  EXPECT_EQ(line.toUtf8(), "J\xC3\xB6");
}

// The operations of typed readers of binary formats fail as in the base class.
TEST(StepBufferTest, HasNoBinaryValues) {
  BytesInFile file("1234");
  int number = 5;
  EXPECT_EQ(file.Buffer().ReadInt(number), VREL_E_FAIL);
  EXPECT_EQ(number, 5);
}

TEST(StepBufferTest, ReadsEmptyFile) {
  BytesInFile file("");
  EXPECT_EQ(file.Buffer().IsValid(), VREL_S_OK);
  EXPECT_EQ(file.Buffer().Peek(), StepBuffer::kEnd);
}

TEST(StepBufferTest, RefusesStreamWithoutLength) {
  ScratchDirectory directory;
  std::string const pipe = directory.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (std::string const& path : {directory.Path(), pipe, std::string("/dev/null"), directory.Path("none")}) {
    StepBuffer buffer(VRELFileHandle(new VRELFile(path.c_str())), nullptr);
    EXPECT_EQ(buffer.IsValid(), VREL_E_FAIL) << path;
    EXPECT_EQ(buffer.Peek(), StepBuffer::kEnd) << path;
  }
  EXPECT_EQ(StepBuffer(VRELFileHandle(), nullptr).IsValid(), VREL_E_FAIL);
}

// The bytes are in several windows.
TEST(StepBufferTest, ReadsLargeFile) {
  std::string bytes(5 * 1024 * 1024, 'a');
  bytes[4 * 1024 * 1024] = 'b';
  bytes.back() = 'c';
  BytesInFile file(bytes);
  StepBuffer& buffer = file.Buffer();
  buffer.SetOffset(4 * 1024 * 1024 - 1);
  EXPECT_EQ(buffer.Take(), 'a');
  EXPECT_EQ(buffer.Take(), 'b');
  buffer.SetOffset(bytes.size() - 1);
  EXPECT_EQ(buffer.Take(), 'c');
  EXPECT_EQ(buffer.Take(), StepBuffer::kEnd);
  buffer.SetOffset(0);
  EXPECT_EQ(buffer.Take(), 'a');
}

TEST(StepBufferTest, WindowEndsAtLimit) {
  BytesInFile file("abcdef");
  StepBuffer& buffer = file.Buffer();
  EXPECT_EQ(buffer.Window(), "abcdef");
  buffer.Skip(2);
  EXPECT_EQ(buffer.Offset(), 2U);
  {
    StepBuffer::Limit const limit(buffer, 4);
    EXPECT_EQ(buffer.Window(), "cd");
    EXPECT_EQ(buffer.Block(), "cdef");
    EXPECT_EQ(buffer.Block().data()[4], '\0');
    buffer.Skip(2);
    EXPECT_EQ(buffer.Window(), "");
    EXPECT_EQ(buffer.Peek(), StepBuffer::kEnd);
  }
  EXPECT_EQ(buffer.Window(), "ef");
  buffer.Skip(2);
  EXPECT_EQ(buffer.Window(), "");
  EXPECT_EQ(buffer.Offset(), 6U);
}

TEST(StepBufferTest, WindowMovesToOffset) {
  std::string bytes(3 * 1024 * 1024, 'a');
  bytes[2 * 1024 * 1024] = 'b';
  BytesInFile file(bytes);
  StepBuffer& buffer = file.Buffer();
  buffer.SetOffset(2 * 1024 * 1024);
  EXPECT_EQ(buffer.Window().substr(0, 2), "ba");
  buffer.SetOffset(2 * 1024 * 1024 - 1);
  EXPECT_EQ(buffer.Window().substr(0, 2), "ab");
  std::size_t total = 0;
  for (buffer.SetOffset(0); !buffer.Window().empty(); buffer.Skip(buffer.Window().size()))
    total += buffer.Window().size();
  EXPECT_EQ(total, bytes.size());
}

TEST(StepBufferTest, TruncatedFileEndsEarly) {
  ScratchDirectory directory;
  std::string const path = directory.Write("part.stp", std::string(5 * 1024 * 1024, 'a'));
  StepBuffer buffer(VRELFileHandle(new VRELFile(path.c_str())), nullptr);
  ASSERT_EQ(truncate(path.c_str(), 4 * 1024 * 1024), 0);
  buffer.SetOffset(4 * 1024 * 1024 + 10);
  EXPECT_EQ(buffer.Peek(), StepBuffer::kEnd);
  EXPECT_EQ(buffer.Take(), StepBuffer::kEnd);
}

// However long a single token is.
TEST(StepBufferTest, StopsOnAbort) {
  constexpr unsigned long kMebibyte = 1048576;
  BytesInFile file(std::string(3 * kMebibyte, 'x'));
  StepBuffer& buffer = file.Buffer();
  for (int i = 0; i < 10; ++i) buffer.Take();
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(
      {
        while (buffer.Take() != StepBuffer::kEnd) {
        }
      },
      VRELAbortException);
  EXPECT_EQ(buffer.Offset(), kMebibyte);
}
