#include "VRELBufferFileHandler.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <type_traits>

#include "CapturedOutput.h"
#include "ChildProcess.h"
#include "ScratchDirectory.h"
#include "VRELBufferFileHandlerHandle.h"
#include "VirtualSlot.h"

namespace {

constexpr char kNoMove[] = "VRELBufferFileHandler::GetChar: Unable to get next info from buffer!!!";
constexpr char kError[] = "VRELBufferFileHandler::FillBuffer: Error has occured !!!!";
constexpr char kEnd[] = "VRELBufferFileHandler::FillBuffer: Reached end of file !!!!";
constexpr char kNull[] = "Buffer is NULL. Looks like allocation of buffer failed!!!";

constexpr long kMega = 1024 * 1024;

// Bytes that depend on their position, so that no two windows are equal.
char ByteAt(long position) {
  return static_cast<char>(position * 31 + position / 251 + position / 65521);
}

std::string Bytes(long count) {
  std::string bytes(static_cast<std::size_t>(count), '\0');
  for (long i = 0; i < count; ++i) bytes[static_cast<std::size_t>(i)] = ByteAt(i);
  return bytes;
}

// An open file.
VRELFileHandle Open(std::string const& path) {
  VRELFileHandle file(new VRELFile(path.c_str()));
  std::FILE* stream = nullptr;
  EXPECT_EQ(file->GetFilePointer(stream, VRELFile::BinaryOpen), VREL_S_OK);
  return file;
}

std::FILE* StreamOf(VRELFileHandle const& file) {
  std::FILE* stream = nullptr;
  file->GetFilePointer(stream);
  return stream;
}

// Position of the file description, which moves with each read.
off_t KernelOffset(VRELFileHandle const& file) {
  return lseek(fileno(StreamOf(file)), 0, SEEK_CUR);
}

// Counts the read system calls of this process since construction.
class ReadCalls {
 public:
  ReadCalls() : before(Now()) {
    long const again = Now();
    cost = again - before;
    before = again;
  }
  long Count() const { return Now() - before - cost; }

 private:
  static long Now() {
    char text[512] = {};
    std::FILE* const io = std::fopen("/proc/self/io", "r");
    if (io == nullptr) return 0;
    std::setvbuf(io, nullptr, _IOFBF, sizeof text);
    std::string word;
    long calls = 0;
    while (std::fscanf(io, "%511s", text) == 1) {
      if (word == "syscr:") calls = std::atol(text);
      word = text;
    }
    std::fclose(io);
    return calls;
  }

  long before;
  long cost = 0;  // system calls of the measurement itself
};

class VRELBufferFileHandlerTest : public testing::Test {
 protected:
  // Writes a file of `size` bytes that depend on their position.
  std::string Write(long count) { return directory.Write("data", Bytes(count)); }

  // Expects the byte and no message.
  static void ExpectByte(VRELBufferFileHandler& handler, long position, unsigned char expected) {
    SCOPED_TRACE(position);
    unsigned char value = static_cast<unsigned char>(~expected);
    std::string const printed = PrintedBy([&] { EXPECT_EQ(handler.GetChar(position, value), VREL_S_OK); });
    EXPECT_EQ(value, expected);
    EXPECT_EQ(printed, "");
  }
  static void ExpectByteOfFile(VRELBufferFileHandler& handler, long position) {
    ExpectByte(handler, position, static_cast<unsigned char>(ByteAt(position)));
  }

  static void ExpectFailure(VRELBufferFileHandler& handler, long position, long code, std::string const& message) {
    SCOPED_TRACE(position);
    unsigned char value = 77;
    std::string const printed = PrintedBy([&] { EXPECT_EQ(handler.GetChar(position, value), code); });
    EXPECT_EQ(value, 77);
    EXPECT_EQ(printed, message);
  }

  ScratchDirectory directory;
};

TEST_F(VRELBufferFileHandlerTest, DerivesFromBufferHandler) {
  static_assert(std::is_base_of_v<VRELBufferHandler, VRELBufferFileHandler>);
  EXPECT_EQ(SlotOf(&VRELBufferFileHandler::GetChar), 5U);
  VRELBufferFileHandlerHandle const handler(new VRELBufferFileHandler(Open(Write(3))));
  VRELBufferHandler& frame = *static_cast<VRELBufferFileHandler*>(handler);
  unsigned char value = 0;
  EXPECT_EQ(frame.GetChar(2, value), VREL_S_OK);
  EXPECT_EQ(value, static_cast<unsigned char>(ByteAt(2)));
}

TEST_F(VRELBufferFileHandlerTest, SmallFileIsOneWindow) {
  VRELFileHandle const file = Open(directory.Write("data", "0123456789"));
  std::unique_ptr<VRELBufferFileHandler> handler;
  EXPECT_EQ(PrintedBy([&] { handler = std::make_unique<VRELBufferFileHandler>(file); }), "");
  EXPECT_EQ(std::ftell(StreamOf(file)), 10);
  ReadCalls const calls;
  std::string read;
  for (long const position : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 9, 5}) {
    unsigned char value = 0;
    if (handler->GetChar(position, value) == VREL_S_OK) read += static_cast<char>(value);
  }
  EXPECT_EQ(calls.Count(), 0);
  EXPECT_EQ(read, "0123456789095");
  EXPECT_EQ(file->GetReferenceCount(), 2U);
  handler.reset();
  EXPECT_EQ(file->GetReferenceCount(), 1U);
  // The stream is still open.
  EXPECT_EQ(std::fseek(StreamOf(file), 0, SEEK_SET), 0);
  EXPECT_EQ(std::getc(StreamOf(file)), '0');
}

TEST_F(VRELBufferFileHandlerTest, PositionAtEndFailsSilently) {
  VRELBufferFileHandler handler(Open(Write(10)));
  ExpectFailure(handler, 10, 0x1000055, "");
  // The block is dropped; the end is reported again.
  ExpectFailure(handler, 10, 0x1000055, "");
  std::string const printed = PrintedBy([&] { EXPECT_EQ(handler.IsBufferValid(), 0x1000051); });
  EXPECT_EQ(printed, kNull);
}

TEST_F(VRELBufferFileHandlerTest, PositionsOutsideFileFail) {
  VRELBufferFileHandler handler(Open(Write(10)));
  for (long const position : {11L, 12L, 4194304L, 0x7FFFFFFFFFFFFFFFL, -1L, -10L, -0x7FFFFFFFFFFFFFFFL - 1}) {
    ExpectFailure(handler, position, 0x1000056, kNoMove);
  }
  // The window is unchanged.
  for (long position = 0; position < 10; ++position) ExpectByteOfFile(handler, position);
}

TEST_F(VRELBufferFileHandlerTest, DrainedHandlerFails) {
  VRELBufferFileHandler handler(Open(Write(10)));
  ExpectFailure(handler, 10, 0x1000055, "");
  // There are bytes, but no block.
  ExpectFailure(handler, 3, 0x1000054, kEnd);
  ExpectFailure(handler, 3, 0x1000054, kEnd);
  ExpectFailure(handler, 9, 0x1000054, kEnd);
  ExpectFailure(handler, 10, 0x1000055, "");
  ExpectFailure(handler, 11, 0x1000056, kNoMove);
  // A new block makes the object usable again.
  EXPECT_EQ(handler.AllocateBuffer(), VREL_S_OK);
  ExpectByteOfFile(handler, 3);
}

TEST_F(VRELBufferFileHandlerTest, EmptyFileIsDrained) {
  std::unique_ptr<VRELBufferFileHandler> handler;
  VRELFileHandle const file = Open(Write(0));
  EXPECT_EQ(PrintedBy([&] { handler = std::make_unique<VRELBufferFileHandler>(file); }), "");
  ExpectFailure(*handler, 0, 0x1000055, "");
  ExpectFailure(*handler, 1, 0x1000056, kNoMove);
  std::string const printed = PrintedBy([&] { EXPECT_EQ(handler->IsBufferValid(), 0x1000051); });
  EXPECT_EQ(printed, kNull);
}

TEST_F(VRELBufferFileHandlerTest, FourMegabytesAreOneWindow) {
  VRELFileHandle const file = Open(Write(4 * kMega));
  VRELBufferFileHandler handler(file);
  EXPECT_EQ(KernelOffset(file), 4 * kMega);
  ReadCalls const calls;
  long wrong = 0;
  for (long position = 4 * kMega - 1; position >= 0; --position) {
    unsigned char value = 0;
    bool const isRight = handler.GetChar(position, value) == VREL_S_OK && static_cast<char>(value) == ByteAt(position);
    if (!isRight) ++wrong;
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(calls.Count(), 0);
  ExpectFailure(handler, 4 * kMega, 0x1000055, "");
}

TEST_F(VRELBufferFileHandlerTest, WindowRestartsAtPosition) {
  VRELFileHandle const file = Open(Write(5 * kMega));
  VRELBufferFileHandler handler(file);
  EXPECT_EQ(KernelOffset(file), 4194304);
  ExpectByteOfFile(handler, 4194303);
  EXPECT_EQ(KernelOffset(file), 4194304);
  EXPECT_EQ(handler.IsPointerPositionValid(4194303), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(4194304), VREL_E_FAIL);
  ExpectByteOfFile(handler, 4194304);
  EXPECT_EQ(KernelOffset(file), 5 * kMega);
  EXPECT_EQ(handler.IsPointerPositionValid(4194303), VREL_E_FAIL);
  EXPECT_EQ(handler.IsPointerPositionValid(4194304), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(5242879), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(5242880), VREL_E_FAIL);
  ExpectByteOfFile(handler, 0);
  EXPECT_EQ(handler.IsPointerPositionValid(4194303), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(4194304), VREL_E_FAIL);
  // A step back by one byte at the start of a window reads a whole window.
  ExpectByteOfFile(handler, 4500000);
  EXPECT_EQ(handler.IsPointerPositionValid(4499999), VREL_E_FAIL);
  ExpectByteOfFile(handler, 4499999);
  EXPECT_EQ(handler.IsPointerPositionValid(4500000), VREL_S_OK);
  ExpectByteOfFile(handler, 5242879);
  ExpectFailure(handler, 5242881, 0x1000056, kNoMove);
}

// A sparse file with bytes at its end.
TEST_F(VRELBufferFileHandlerTest, PositionsAboveFourGigabytes) {
  constexpr long size = 5L * 1024 * kMega + 7;
  std::string const path = directory.Write("data", "first");
  std::filesystem::resize_file(path, static_cast<std::uintmax_t>(size) - 4);
  std::ofstream(path, std::ios::app | std::ios::binary) << "last";
  VRELBufferFileHandler handler(Open(path));
  ExpectByte(handler, size - 1, 't');
  ExpectByte(handler, size - 4, 'l');
  ExpectByte(handler, size - 5, 0);
  ExpectByte(handler, 4L * 1024 * kMega, 0);
  ExpectByte(handler, 0, 'f');
  ExpectFailure(handler, size + 1, 0x1000056, kNoMove);
}

TEST_F(VRELBufferFileHandlerTest, AgreesWithModel) {
  constexpr long size = 9 * kMega + 12345;
  VRELBufferFileHandler handler(Open(Write(size)));
  unsigned long state = 20261120;
  long position = 0;
  for (int i = 0; i < 300; ++i) {
    state = state * 6364136223846793005UL + 1442695040888963407UL;
    // Mostly near positions, sometimes far ones.
    long const step = static_cast<long>(state >> 40) % (i % 7 == 0 ? size : 5000) - (i % 7 == 0 ? 0 : 2500);
    position = (position + step % size + size) % size;
    unsigned char value = 0;
    ASSERT_EQ(handler.GetChar(position, value), VREL_S_OK);
    ASSERT_EQ(static_cast<char>(value), ByteAt(position)) << position;
  }
}

TEST_F(VRELBufferFileHandlerTest, RequiresOpenStream) {
  VRELFileHandle const closed(new VRELFile(Write(10).c_str()));
  for (VRELFileHandle const& file : {closed, VRELFileHandle(new VRELFile()), VRELFileHandle()}) {
    std::unique_ptr<VRELBufferFileHandler> handler;
    std::string const printed = PrintedBy([&] { handler = std::make_unique<VRELBufferFileHandler>(file); });
    EXPECT_EQ(printed, "File pointer is NULL!!!");
    ExpectFailure(*handler, 0, 0x1000056, kNoMove);
    EXPECT_EQ(handler->AdvanceFilePointerPosition(0), 0x1000008);
    EXPECT_EQ(handler->FillBuffer(), 0x1000008);
    EXPECT_EQ(handler->IsPointerPositionValid(0), VREL_E_FAIL);
    EXPECT_EQ(PrintedBy([&] { EXPECT_EQ(handler->IsBufferValid(), 0x1000051); }),
              std::string(kNull) + "Buffer is allocated of size 0!!!");
    EXPECT_EQ(PrintedBy([&] { EXPECT_EQ(handler->AllocateBuffer(), 0x1000053); }),
              "VRELBufferFileHandler::AllocateBuffer: Buffer size undefined!!!!");
  }
  EXPECT_EQ(StreamOf(closed), nullptr);
}

TEST_F(VRELBufferFileHandlerTest, IsBufferValid) {
  VRELBufferFileHandler handler(Open(Write(10)));
  EXPECT_EQ(PrintedBy([&] { EXPECT_EQ(handler.IsBufferValid(), VREL_S_OK); }), "");
}

TEST_F(VRELBufferFileHandlerTest, HelpersInAnyOrder) {
  std::string const path = Write(100);
  VRELBufferFileHandler handler(Open(path));
  EXPECT_EQ(handler.AdvanceFilePointerPosition(101), 0x1000052);
  EXPECT_EQ(handler.AdvanceFilePointerPosition(0xFFFFFFFFFFFFFFFFUL), 0x1000052);
  EXPECT_EQ(handler.AdvanceFilePointerPosition(100), VREL_S_OK);
  EXPECT_EQ(handler.AdvanceFilePointerPosition(40), VREL_S_OK);
  // The end of the window is set by the next fill.
  EXPECT_EQ(handler.IsPointerPositionValid(39), VREL_E_FAIL);
  EXPECT_EQ(handler.IsPointerPositionValid(40), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(99), VREL_S_OK);
  EXPECT_EQ(handler.FillBuffer(), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(99), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(100), VREL_E_FAIL);
  ExpectByteOfFile(handler, 40);
  ExpectByteOfFile(handler, 99);
  // The window moves, and the block keeps 60 bytes of the last fill and then 40 of the first.
  EXPECT_EQ(handler.AdvanceFilePointerPosition(10), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(99), VREL_S_OK);
  ExpectByte(handler, 10, static_cast<unsigned char>(ByteAt(40)));
  ExpectByte(handler, 69, static_cast<unsigned char>(ByteAt(99)));
  ExpectByte(handler, 70, static_cast<unsigned char>(ByteAt(60)));
  ExpectByte(handler, 99, static_cast<unsigned char>(ByteAt(89)));
  // A new block is empty.
  EXPECT_EQ(handler.AllocateBuffer(), VREL_S_OK);
  EXPECT_EQ(handler.AdvanceFilePointerPosition(40), VREL_S_OK);
  ExpectByteOfFile(handler, 40);
  ExpectByteOfFile(handler, 99);
  ExpectByteOfFile(handler, 0);
  // The file and its size have grown, but not the block.
  directory.Write("data", Bytes(5000));
  EXPECT_EQ(handler.DecideFileBufferSize(), VREL_S_OK);
  EXPECT_EQ(handler.AdvanceFilePointerPosition(0), VREL_S_OK);
  EXPECT_EQ(handler.FillBuffer(), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(99), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(100), VREL_E_FAIL);
  ExpectByteOfFile(handler, 4321);
}

TEST_F(VRELBufferFileHandlerTest, AdvanceKeepsWindowEnd) {
  VRELBufferFileHandler handler(Open(Write(100)));
  EXPECT_EQ(handler.AdvanceFilePointerPosition(95), VREL_S_OK);
  ExpectByte(handler, 99, static_cast<unsigned char>(ByteAt(4)));
  ExpectFailure(handler, 100, 0x1000055, "");
  VRELBufferFileHandler other(Open(Write(100)));
  EXPECT_EQ(other.AdvanceFilePointerPosition(100), VREL_S_OK);
  ExpectFailure(other, 100, 0x1000055, "");
}

TEST_F(VRELBufferFileHandlerTest, StreamWithoutPathHasSmallWindow) {
  std::string bytes = Bytes(5000);
  std::FILE* const stream = fmemopen(bytes.data(), bytes.size(), "r");
  ASSERT_NE(stream, nullptr);
  {
    VRELBufferFileHandler handler(VRELFileHandle(new VRELFile(stream)));
    for (long const position : {0, 1, 2046, 2047}) ExpectByteOfFile(handler, position);
    // The size of the file counts as 0.
    ExpectFailure(handler, 2048, 0x1000056, kNoMove);
    ExpectByteOfFile(handler, 2047);
  }
  std::fclose(stream);
}

TEST_F(VRELBufferFileHandlerTest, FirstFillStartsAtStreamPosition) {
  VRELFileHandle const file = Open(directory.Write("data", "0123456789"));
  std::fseek(StreamOf(file), 4, SEEK_SET);
  VRELBufferFileHandler handler(file);
  ExpectByte(handler, 0, '4');
  ExpectByte(handler, 5, '9');
  ExpectByte(handler, 6, '6');
}

TEST_F(VRELBufferFileHandlerTest, PipeIsReadOnce) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(write(ends[1], "piped", 5), 5);
  close(ends[1]);
  std::FILE* const stream = fdopen(ends[0], "rb");
  ASSERT_NE(stream, nullptr);
  {
    VRELBufferFileHandler handler(VRELFileHandle(new VRELFile(stream)));
    ExpectByte(handler, 0, 'p');
    ExpectByte(handler, 4, 'd');
    ExpectFailure(handler, 5, 0x1000056, kNoMove);
    ExpectByte(handler, 0, 'p');
  }
  std::fclose(stream);
}

TEST_F(VRELBufferFileHandlerTest, EndlessDeviceHasSmallWindow) {
  VRELBufferFileHandler handler(Open("/dev/zero"));
  ExpectByte(handler, 0, 0);
  ExpectByte(handler, 2047, 0);
  ExpectFailure(handler, 2048, 0x1000056, kNoMove);
}

TEST_F(VRELBufferFileHandlerTest, DirectoryFails) {
  VRELFileHandle const file = Open(directory.Path());
  std::unique_ptr<VRELBufferFileHandler> handler;
  EXPECT_EQ(PrintedBy([&] { handler = std::make_unique<VRELBufferFileHandler>(file); }), kError);
  ExpectFailure(*handler, 0, 0x1000055, kError);
}

TEST_F(VRELBufferFileHandlerTest, ShrinkingFile) {
  std::string const path = Write(5 * kMega);
  VRELBufferFileHandler handler(Open(path));
  std::filesystem::resize_file(path, 1000);
  // Bytes in the window stay readable.
  ExpectByteOfFile(handler, 4000000);
  ExpectFailure(handler, 4500000, 0x1000055, "");
}

TEST_F(VRELBufferFileHandlerTest, FileShrinkingWithinWindow) {
  std::string const path = Write(5 * kMega);
  VRELBufferFileHandler handler(Open(path));
  std::filesystem::resize_file(path, 4500000);
  ExpectByteOfFile(handler, 4499000);
  EXPECT_EQ(handler.IsPointerPositionValid(4499999), VREL_S_OK);
  EXPECT_EQ(handler.IsPointerPositionValid(4500000), VREL_E_FAIL);
}

TEST_F(VRELBufferFileHandlerTest, GrowingFileKeepsSize) {
  std::string const path = directory.Write("data", "0123456789");
  VRELBufferFileHandler handler(Open(path));
  std::ofstream(path, std::ios::app) << "abc";
  ExpectFailure(handler, 11, 0x1000056, kNoMove);
  // The position after the old end can be read, up to the size of the block.
  ExpectByte(handler, 10, 'a');
  ExpectByte(handler, 12, 'c');
  ExpectByte(handler, 5, '5');
}

TEST_F(VRELBufferFileHandlerTest, StreamClosedByFile) {
  std::string const path = Write(5 * kMega);
  VRELFileHandle const file = Open(path);
  VRELBufferFileHandler handler(file);
  std::FILE* stream = nullptr;
  std::filesystem::remove(path);
  EXPECT_EQ(file->GetFilePointer(stream, VRELFile::BinaryOpen), VREL_E_FAIL);
  ExpectByteOfFile(handler, 0);
  ExpectFailure(handler, 4194304, 0x1000056, kNoMove);
  EXPECT_EQ(handler.AdvanceFilePointerPosition(0), 0x1000008);
  EXPECT_EQ(handler.FillBuffer(), 0x1000008);
  ExpectByteOfFile(handler, 0);
}

// A stream that the caller opened stays open when the file forgets it.
TEST_F(VRELBufferFileHandlerTest, StreamReleasedByFile) {
  std::string bytes = Bytes(5000);
  std::FILE* const stream = fmemopen(bytes.data(), bytes.size(), "r");
  ASSERT_NE(stream, nullptr);
  {
    VRELFileHandle const file(new VRELFile(stream));
    VRELBufferFileHandler handler(file);
    std::FILE* forgotten = stream;
    EXPECT_EQ(file->GetFilePointer(forgotten, VRELFile::BinaryOpen), VREL_E_FAIL);
    EXPECT_EQ(forgotten, nullptr);
    EXPECT_EQ(handler.FillBuffer(), VREL_S_OK);
    ExpectByte(handler, 0, static_cast<unsigned char>(ByteAt(2048)));
    EXPECT_EQ(handler.AdvanceFilePointerPosition(0), VREL_S_OK);
    EXPECT_EQ(handler.FillBuffer(), VREL_S_OK);
    ExpectByteOfFile(handler, 0);
    ExpectByteOfFile(handler, 2047);
  }
  std::fclose(stream);
}

TEST_F(VRELBufferFileHandlerTest, ClosedDescriptor) {
  VRELFileHandle const file = Open(Write(5 * kMega));
  VRELBufferFileHandler handler(file);
  ExpectByteOfFile(handler, 4194303);
  std::string const printed = PrintedBy([&] {
    // Closed here, so that the number is not reused.
    close(fileno(StreamOf(file)));
    unsigned char value = 77;
    EXPECT_EQ(handler.GetChar(4194304, value), 0x1000055);
    EXPECT_EQ(value, 77);
  });
  EXPECT_EQ(printed, kError);
}

TEST_F(VRELBufferFileHandlerTest, WindowIsReadAtOnce) {
  VRELFileHandle const file = Open(Write(16 * kMega));
  VRELBufferFileHandler handler(file);
  ReadCalls const calls;
  long sum = 0;
  for (long position = 0; position < 16 * kMega; ++position) {
    unsigned char value = 0;
    if (handler.GetChar(position, value) == VREL_S_OK) sum += static_cast<char>(value) == ByteAt(position) ? 1 : 0;
  }
  EXPECT_EQ(sum, 16 * kMega);
  // Three windows, each with few reads.
  EXPECT_LE(calls.Count(), 12);
}

#ifndef __SANITIZE_ADDRESS__  // which reports failing allocations as errors

void ExhaustMemory(std::size_t size) {
  rlimit const limit = {1, 1};
  setrlimit(RLIMIT_AS, &limit);
  for (; size >= 16; size /= 2) {
    while (void* block = std::malloc(size)) asm volatile("" : : "g"(block) : "memory");
  }
}

TEST_F(VRELBufferFileHandlerTest, SmallBlockIfMemoryIsShort) {
  std::string const path = Write(5 * kMega);
  ChildResult const child = RunInChildWithoutTeardown([&]() -> int {
    VRELFileHandle const file = Open(path);
    char* const spare = new char[65536];
    rlimit const limit = {1, 1};
    setrlimit(RLIMIT_AS, &limit);
    while (void* block = std::malloc(1024 * 1024)) asm volatile("" : : "g"(block) : "memory");
    delete[] spare;
    VRELBufferFileHandler handler(file);
    if (handler.IsPointerPositionValid(2047) != VREL_S_OK) return 1;
    if (handler.IsPointerPositionValid(2048) != VREL_E_FAIL) return 2;
    for (long const position : {0L, 2047L, 2048L, 4095L, 5242879L, 1L}) {
      unsigned char value = 0;
      if (handler.GetChar(position, value) != VREL_S_OK) return 3;
      if (static_cast<char>(value) != ByteAt(position)) return 4;
    }
    return 0;
  });
  EXPECT_EQ(child.exitStatus, 0);
  EXPECT_EQ(child.output, "");
}

TEST_F(VRELBufferFileHandlerTest, AllocateBufferFailsWithoutMemory) {
  ChildResult const child = RunInChildWithoutTeardown([]() -> int {
    VRELFileHandle const file(new VRELFile(stdin));
    VRELBufferFileHandler handler{VRELFileHandle()};
    std::fflush(stdout);
    ExhaustMemory(1024 * 1024);
    handler.DecideFileBufferSize();
    return handler.AllocateBuffer() == 0x1000051 ? 0 : 1;
  });
  EXPECT_EQ(child.exitStatus, 0);
  EXPECT_EQ(child.output,
            "File pointer is NULL!!!VRELBufferFileHandler::AllocateBuffer: Buffer not allocated properly!!!!");
}

#endif

}  // namespace
