#include "VRELFileInputStream.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <memory>
#include <string>

#include "ChildProcess.h"
#include "OpenDescriptors.h"
#include "Raised.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "VRELFilePath.h"

namespace {

class VRELFileInputStreamTest : public testing::Test {
 protected:
  // Returns the bytes that a read of `count` returns.
  static std::string Read(VRELInputStream& stream, int count) {
    std::string bytes(static_cast<std::size_t>(count), '#');
    int const taken = stream.read(bytes.data(), count);
    if (taken < 0) return "(failed)";
    bytes.resize(static_cast<std::size_t>(taken));
    return bytes;
  }

  ScratchDirectory directory;
  std::string file = directory.Write("digits", "0123456789");
  VRELFilePath path = file.c_str();
};

TEST_F(VRELFileInputStreamTest, HasThreeFields) {
  EXPECT_EQ(sizeof(VRELFileInputStream), sizeof(VRELInputStream) + 2 * sizeof(long) + sizeof(VRELFileDescriptorHandle));
}

TEST_F(VRELFileInputStreamTest, ReadsFile) {
  VRELFileInputStream stream(path);
  EXPECT_EQ(stream.available(), 10);
  EXPECT_EQ(stream.getCurrentOffset(), 0);
  EXPECT_EQ(Read(stream, 4), "0123");
  EXPECT_EQ(stream.available(), 6);
  EXPECT_EQ(stream.getCurrentOffset(), 4);
  EXPECT_EQ(stream.readChar(), '4');
  EXPECT_EQ(Read(stream, 0), "");
  EXPECT_EQ(Read(stream, 100), "56789");
  EXPECT_EQ(Read(stream, 1), "");
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(stream.available(), 0);
}

TEST_F(VRELFileInputStreamTest, ReadCharReadsEveryByte) {
  VRELFilePath const bytes(directory.Write("bytes", std::string("\xFF\x80\0", 3)).c_str());
  VRELFileInputStream stream(bytes);
  EXPECT_EQ(stream.readChar(), 255);
  EXPECT_EQ(stream.readChar(), 128);
  EXPECT_EQ(stream.readChar(), 0);
  EXPECT_EQ(stream.readChar(), -1);
}

TEST_F(VRELFileInputStreamTest, MissingFileRaises) {
  RecordingListener const listener;
  VRELFilePath missing(directory.Path("missing").c_str());
  EXPECT_EQ(Raised([&] { VRELFileInputStream const stream(missing); }), "CANNOT_OPEN_FILE");
  EXPECT_EQ(listener.Texts(), std::vector<std::string>{"CANNOT_OPEN_FILE"});
  EXPECT_FALSE(directory.Has("missing"));
}

TEST_F(VRELFileInputStreamTest, ReadOfDirectoryFails) {
  VRELFilePath const folder(directory.Path().c_str());
  VRELFileInputStream stream(folder);
  EXPECT_EQ(Read(stream, 4), "(failed)");
  EXPECT_EQ(stream.readChar(), -1);
}

TEST_F(VRELFileInputStreamTest, FailedReadKeepsPosition) {
  VRELFilePath const folder(directory.Path().c_str());
  VRELFileInputStream stream(folder);
  std::unique_ptr<VRELInputStream> const other(stream.duplicate());
  stream.setOffset(5);
  EXPECT_EQ(Read(stream, 4), "(failed)");
  EXPECT_EQ(stream.getCurrentOffset(), 5);
}

TEST_F(VRELFileInputStreamTest, NegativeCountFails) {
  VRELFileInputStream stream(path);
  char byte = '#';
  EXPECT_EQ(stream.read(&byte, -1), -1);
  EXPECT_EQ(stream.read(&byte, INT_MIN), -1);
  EXPECT_EQ(byte, '#');
  EXPECT_EQ(stream.getCurrentOffset(), 0);
}

// The stream uses the position of the descriptor, and leaves the file open.
TEST_F(VRELFileInputStreamTest, ReadsFileOfStream) {
  std::FILE* const given = std::fopen(file.c_str(), "r");
  ASSERT_NE(given, nullptr);
  lseek(fileno(given), 3, SEEK_SET);
  {
    VRELFileInputStream stream(given);
    EXPECT_EQ(stream.available(), 7);
    EXPECT_EQ(stream.getCurrentOffset(), 3);
    EXPECT_EQ(Read(stream, 2), "34");
  }
  EXPECT_EQ(std::fgetc(given), '5');
  EXPECT_EQ(std::fclose(given), 0);
}

TEST_F(VRELFileInputStreamTest, NullStreamFails) {
  std::FILE* const none = nullptr;
  VRELFileInputStream stream(none);
  EXPECT_EQ(Read(stream, 1), "(failed)");
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(stream.getCurrentOffset(), -1);
  EXPECT_EQ(stream.setOffset(4), -1);
  EXPECT_EQ(stream.skip(4), -1);
  EXPECT_EQ(stream.available(), 0);
}

struct Step {
  char const* what;
  long argument;
  long result;
  long offset;     // position after the operation
  long available;  // available() after the operation
};

void Walk(VRELFileInputStream& stream, Step const* begin, Step const* end) {
  for (Step const* step = begin; step != end; ++step) {
    SCOPED_TRACE(std::string(step->what) + " " + std::to_string(step->argument));
    std::string const what = step->what;
    char buffer[32];
    long result = -100;
    if (what == "read") result = stream.read(buffer, static_cast<int>(step->argument));
    if (what == "skip") result = stream.skip(step->argument);
    if (what == "set") result = stream.setOffset(step->argument);
    if (what == "add") result = stream.add(Gk_String("xxxxxxxxxxxx", static_cast<int>(step->argument))) ? 1 : 0;
    EXPECT_EQ(result, step->result);
    EXPECT_EQ(stream.getCurrentOffset(), step->offset);
    EXPECT_EQ(stream.available(), step->available);
  }
}

TEST_F(VRELFileInputStreamTest, SharedModeMovesFile) {
  Step const steps[] = {
      {"skip", 4, 4, 4, 6},
      {"skip", -1, 3, 3, 7},
      {"read", 2, 2, 5, 5},
      {"add", 2, 1, 3, 7},
      {"add", 0, 1, 3, 7},
      {"set", 8, 8, 8, 2},
      {"read", 9, 2, 10, 0},
      {"read", 9, 0, 10, 0},
      {"skip", 5, 15, 15, -5},
      {"read", 1, 0, 15, -5},
      // The file does not move before its beginning; add returns true nevertheless.
      {"set", 2, 2, 2, 8},
      {"add", 3, 1, 2, 8},
      {"skip", -3, -1, 2, 8},
      {"set", -1, -1, 2, 8},
  };
  VRELFileInputStream stream(path);
  Walk(stream, std::begin(steps), std::end(steps));
}

TEST_F(VRELFileInputStreamTest, PrivatePosition) {
  Step const steps[] = {
      {"skip", 4, 4, 4, 6},
      {"skip", -1, 3, 3, 7},
      {"read", 2, 2, 5, 5},
      {"add", 2, 1, 3, 7},
      {"add", 0, 1, 3, 7},
      {"set", 8, 8, 8, 2},
      {"read", 9, 2, 10, 0},
      {"read", 9, 0, 10, 0},
      {"skip", 5, 15, 15, -5},
      {"read", 1, 0, 15, -5},
      // A position that is not checked until the next read.
      {"set", 2, 2, 2, 8},
      {"skip", -7, -5, -5, 15},
      {"skip", 6, 1, 1, 9},
      {"add", 3, 1, -2, 12},
      {"set", 3, 3, 3, 7},
      {"read", 1, 1, 4, 6},
  };
  VRELFileInputStream stream(path);
  std::unique_ptr<VRELInputStream> const other(stream.duplicate());
  Walk(stream, std::begin(steps), std::end(steps));
  EXPECT_EQ(other->getCurrentOffset(), 0);
  Walk(*static_cast<VRELFileInputStream*>(other.get()), std::begin(steps), std::end(steps));
}

// At position -1, the stream returns to shared mode.
TEST_F(VRELFileInputStreamTest, MinusOneIsSharedMode) {
  VRELFileInputStream stream(path);
  std::unique_ptr<VRELInputStream> const other(stream.duplicate());
  EXPECT_EQ(Read(*other, 3), "012");
  EXPECT_EQ(stream.setOffset(-1), -1);
  EXPECT_EQ(stream.getCurrentOffset(), 3);
  EXPECT_EQ(Read(stream, 1), "3");
  // Only duplicate switches to a private position again.
  EXPECT_EQ(stream.setOffset(5), 5);
  EXPECT_EQ(other->getCurrentOffset(), 3);
  VRELFileInputStream copy(stream);
  EXPECT_EQ(copy.readChar(), '5');
  EXPECT_EQ(stream.readChar(), '6');
}

// Extreme offsets wrap around instead of being undefined.
TEST_F(VRELFileInputStreamTest, AnyOffset) {
  VRELFileInputStream stream(path);
  std::unique_ptr<VRELInputStream> const other(stream.duplicate());
  EXPECT_EQ(stream.setOffset(LONG_MAX), LONG_MAX);
  EXPECT_EQ(stream.skip(1), LONG_MIN);
  EXPECT_EQ(stream.skip(LONG_MIN), 0);
  EXPECT_EQ(stream.setOffset(LONG_MIN), LONG_MIN);
  EXPECT_EQ(stream.available(), LONG_MIN + 10);
  EXPECT_EQ(Read(*other, 2), "01");
}

// A terminator counts.
TEST_F(VRELFileInputStreamTest, AddMovesByLength) {
  for (bool const hasOwnPosition : {false, true}) {
    SCOPED_TRACE(hasOwnPosition);
    VRELFileInputStream stream(path);
    std::unique_ptr<VRELInputStream> const other(hasOwnPosition ? stream.duplicate() : nullptr);
    stream.setOffset(9);
    EXPECT_TRUE(stream.add(Gk_String("abc")));
    EXPECT_EQ(stream.getCurrentOffset(), 5);
    EXPECT_TRUE(stream.add(Gk_String("abc", 3)));
    EXPECT_EQ(stream.getCurrentOffset(), 2);
    EXPECT_TRUE(stream.add(Gk_String()));
    // The bytes of the file are read, not those that were pushed back.
    EXPECT_EQ(Read(stream, 3), "234");
  }
}

TEST_F(VRELFileInputStreamTest, DuplicateIsIndependent) {
  VRELFileInputStream stream(path);
  EXPECT_EQ(Read(stream, 2), "01");
  std::unique_ptr<VRELInputStream> const other(stream.duplicate());
  EXPECT_EQ(stream.getCurrentOffset(), 2);
  EXPECT_EQ(other->getCurrentOffset(), 2);
  EXPECT_EQ(other->available(), 8);
  EXPECT_EQ(Read(stream, 3), "234");
  EXPECT_EQ(Read(*other, 1), "2");
  EXPECT_EQ(stream.readChar(), '5');
  EXPECT_EQ(other->readChar(), '3');
  EXPECT_EQ(other->setOffset(9), 9);
  EXPECT_EQ(Read(*other, 5), "9");
  EXPECT_EQ(Read(stream, 2), "67");
  EXPECT_EQ(CountOpenDescriptors(file), 1);
}

// At first both share the position. After duplicate, the first stream has its own, and the earlier copy does not.
TEST_F(VRELFileInputStreamTest, CopySharesPosition) {
  VRELFileInputStream stream(path);
  VRELFileInputStream copy(stream);
  EXPECT_EQ(Read(stream, 2), "01");
  EXPECT_EQ(Read(copy, 2), "23");
  EXPECT_EQ(stream.getCurrentOffset(), 4);
  std::unique_ptr<VRELInputStream> const other(stream.duplicate());
  copy.setOffset(9);
  EXPECT_EQ(Read(copy, 1), "9");
  EXPECT_EQ(Read(stream, 1), "4");
  EXPECT_EQ(Read(*other, 1), "4");
  EXPECT_EQ(copy.getCurrentOffset(), 5);

  VRELFileInputStream privateCopy(stream);
  EXPECT_EQ(Read(privateCopy, 1), "5");
  EXPECT_EQ(stream.getCurrentOffset(), 5);
}

TEST_F(VRELFileInputStreamTest, DuplicateStartsAtFilePosition) {
  VRELFileInputStream stream(path);
  std::unique_ptr<VRELInputStream> const first(stream.duplicate());
  EXPECT_EQ(Read(*first, 6), "012345");
  EXPECT_EQ(stream.setOffset(3), 3);
  std::unique_ptr<VRELInputStream> const second(stream.duplicate());
  EXPECT_EQ(second->getCurrentOffset(), 6);
  EXPECT_EQ(stream.getCurrentOffset(), 6);
}

TEST_F(VRELFileInputStreamTest, FileClosesWithLastStream) {
  VRELInputStream* other = nullptr;
  {
    VRELFileInputStream stream(path);
    other = stream.duplicate();
    EXPECT_EQ(CountOpenDescriptors(file), 1);
  }
  EXPECT_EQ(CountOpenDescriptors(file), 1);
  EXPECT_EQ(Read(*other, 2), "01");
  delete other;
  EXPECT_EQ(CountOpenDescriptors(file), 0);
}

TEST_F(VRELFileInputStreamTest, Assignment) {
  std::string const letters = directory.Write("letters", "abc");
  VRELFileInputStream stream(path);
  VRELFilePath const lettersPath(letters.c_str());
  VRELFileInputStream other(lettersPath);
  other = stream;
  EXPECT_EQ(CountOpenDescriptors(letters), 0);
  EXPECT_EQ(other.available(), 10);
  EXPECT_EQ(Read(other, 2), "01");
  EXPECT_EQ(Read(stream, 2), "23");
}

// The size is read once.
TEST_F(VRELFileInputStreamTest, SizeIsReadAtConstruction) {
  VRELFileInputStream stream(path);
  directory.Write("digits", "012");
  EXPECT_EQ(stream.available(), 10);
  EXPECT_EQ(Read(stream, 9), "012");
  EXPECT_EQ(stream.available(), 7);
}

TEST_F(VRELFileInputStreamTest, PipeIsShared) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  std::FILE* const reading = fdopen(ends[0], "r");
  ASSERT_NE(reading, nullptr);
  {
    VRELFileInputStream stream(reading);
    ASSERT_EQ(write(ends[1], "abcdef", 6), 6);
    std::unique_ptr<VRELInputStream> const other(stream.duplicate());
    EXPECT_EQ(Read(stream, 2), "ab");
    EXPECT_EQ(other->readChar(), 'c');
    EXPECT_EQ(Read(*other, 9), "def");
    EXPECT_EQ(stream.getCurrentOffset(), -1);
    EXPECT_EQ(stream.available(), 0);
    EXPECT_EQ(stream.skip(1), -1);
    close(ends[1]);
    EXPECT_EQ(Read(stream, 1), "");
  }
  std::fclose(reading);
}

TEST_F(VRELFileInputStreamTest, ConsoleReadsStandardInput) {
  ChildResult const child = RunInChild([&] {
    int const given = dup(STDIN_FILENO);
    if (std::freopen(file.c_str(), "r", stdin) == nullptr) return 90;
    VRELFileInputStream& console = VRELFileInputStream::console;
    if (console.available() != -1) return 1;
    if (Read(console, 4) != "0123") return 2;
    if (console.available() != -5 || console.getCurrentOffset() != 4) return 3;
    VRELFileInputStream own;
    if (own.readChar() != '4' || own.available() != -6) return 4;
    {
      std::unique_ptr<VRELInputStream> const other(own.duplicate());
      if (other->readChar() != '5' || own.readChar() != '5' || other->available() != -7) return 5;
    }
    return given < 0 ? 6 : 0;
  });
  EXPECT_EQ(child.exitStatus, 0);
}

TEST_F(VRELFileInputStreamTest, StandardInputIsNotClosed) {
  { VRELFileInputStream const stream; }
  EXPECT_TRUE(IsOpenDescriptor(STDIN_FILENO));
}

}  // namespace
