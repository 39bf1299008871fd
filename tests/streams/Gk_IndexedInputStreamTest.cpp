#include "Gk_IndexedInputStream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

#include "Raised.h"
#include "ScratchDirectory.h"
#include "VRELFileInputStream.h"
#include "VRELFilePath.h"
#include "VRELStringInputStream.h"

namespace {

// Supports offsets, and returns them.
class Indexed : public Gk_IndexedInputStream {
 public:
  using Gk_IndexedInputStream::Gk_IndexedInputStream;
  static VRELInputStream* SourceOf(Gk_IndexedInputStream const& stream) { return stream.*(&Indexed::source); }
};

TEST(Gk_IndexedInputStreamTest, ReadCharCountsLines) {
  VRELStringInputStream underlying(Gk_String("a\nb\n"));
  Gk_IndexedInputStream stream(&underlying);
  EXPECT_EQ(stream.getLineNumber(), 0);
  EXPECT_EQ(stream.readChar(), 'a');
  EXPECT_EQ(stream.getLineNumber(), 0);
  EXPECT_EQ(stream.readChar(), '\n');
  EXPECT_EQ(stream.getLineNumber(), 1);
  EXPECT_EQ(stream.readChar(), 'b');
  EXPECT_EQ(stream.readChar(), '\n');
  EXPECT_EQ(stream.getLineNumber(), 2);
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(stream.getLineNumber(), 2);
}

TEST(Gk_IndexedInputStreamTest, ReadCountsLines) {
  VRELStringInputStream underlying(Gk_String("a\nb\n\n\nc\r\n"));
  Gk_IndexedInputStream stream(&underlying);
  char target[20] = "\n\n\n\n\n\n\n\n\n\n";
  EXPECT_EQ(stream.read(target, 3), 3);
  EXPECT_EQ(std::string(target, 3), "a\nb");
  EXPECT_EQ(stream.getLineNumber(), 1);
  EXPECT_EQ(stream.read(target, 20), 6);
  EXPECT_EQ(stream.getLineNumber(), 5);
  EXPECT_EQ(stream.read(target, 20), 0);
  EXPECT_EQ(stream.getLineNumber(), 5);
}

TEST(Gk_IndexedInputStreamTest, AddSubtractsLines) {
  VRELStringInputStream underlying(Gk_String("a\nb\n"));
  Gk_IndexedInputStream stream(&underlying);
  char target[4];
  EXPECT_EQ(stream.read(target, 4), 4);
  EXPECT_EQ(stream.getLineNumber(), 2);
  EXPECT_TRUE(stream.add(Gk_String("b\n", 2)));
  EXPECT_EQ(stream.getLineNumber(), 1);
  EXPECT_EQ(stream.readChar(), 'b');
  EXPECT_EQ(stream.readChar(), '\n');
  EXPECT_EQ(stream.getLineNumber(), 2);
  // All elements count, also after a zero byte; more lines can be subtracted than were read.
  EXPECT_TRUE(stream.add(Gk_String("\n\0\n\n", 4)));
  EXPECT_EQ(stream.getLineNumber(), -1);
}

TEST(Gk_IndexedInputStreamTest, AddReturnsTrue) {
  struct Refusing : VRELInputStream {
    VRELInputStream* duplicate() override { return nullptr; }
    int read(char* /*buffer*/, int /*count*/) override { return -1; }
    bool add(Gk_String const& text) override {
      pushed = text.len();
      return false;
    }
    int pushed = 0;
  };
  Refusing underlying;
  Gk_IndexedInputStream stream(&underlying);
  EXPECT_TRUE(stream.add(Gk_String("x\n")));
  EXPECT_EQ(underlying.pushed, 3);
  EXPECT_EQ(stream.getLineNumber(), -1);
  Gk_IndexedInputStream alone(nullptr);
  EXPECT_TRUE(alone.add(Gk_String("x\n")));
  EXPECT_EQ(alone.getLineNumber(), -1);
}

TEST(Gk_IndexedInputStreamTest, FailedReadCountsNothing) {
  struct Failing : VRELInputStream {
    VRELInputStream* duplicate() override { return nullptr; }
    int read(char* buffer, int count) override {
      std::memset(buffer, '\n', static_cast<std::size_t>(count));
      return result;
    }
    int result = -1;
  };
  Failing underlying;
  Gk_IndexedInputStream stream(&underlying);
  char target[4];
  EXPECT_EQ(stream.read(target, 4), -1);
  EXPECT_EQ(stream.getLineNumber(), 0);
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(stream.getLineNumber(), 0);
  underlying.result = 1000;  // more than was asked for
  EXPECT_EQ(stream.read(target, 4), 1000);
  EXPECT_EQ(stream.getLineNumber(), 4);
  EXPECT_EQ(Raised([&] { stream.getCurrentOffset(); }), "Gk_IOException");
}

TEST(Gk_IndexedInputStreamTest, SkipCountsNothing) {
  VRELStringInputStream underlying(Gk_String("a\nb\nc\n"));
  Gk_IndexedInputStream stream(&underlying);
  EXPECT_EQ(stream.skip(4), 4);
  EXPECT_EQ(stream.getLineNumber(), 0);
  EXPECT_EQ(stream.readChar(), 'c');
  EXPECT_EQ(stream.readChar(), '\n');
  EXPECT_EQ(stream.getLineNumber(), 1);
}

TEST(Gk_IndexedInputStreamTest, CopySharesStream) {
  VRELStringInputStream underlying(Gk_String("a\nb\n"));
  Gk_IndexedInputStream stream(&underlying);
  stream.readChar();
  stream.readChar();
  Gk_IndexedInputStream copy(stream);
  EXPECT_EQ(copy.getLineNumber(), 1);
  EXPECT_EQ(Indexed::SourceOf(copy), &underlying);
  EXPECT_EQ(copy.readChar(), 'b');
  EXPECT_EQ(stream.readChar(), '\n');
  EXPECT_EQ(copy.getLineNumber(), 1);
  EXPECT_EQ(stream.getLineNumber(), 2);
}

TEST(Gk_IndexedInputStreamTest, DuplicateIsIndependent) {
  ScratchDirectory const scratch;
  VRELFilePath const path(VRELString(scratch.Write("lines", "a\nb\nc\n")));
  VRELFileInputStream file(path);
  Gk_IndexedInputStream stream(&file);
  stream.readChar();
  stream.readChar();
  std::unique_ptr<VRELInputStream> const copy(stream.duplicate());
  auto& indexed = dynamic_cast<Gk_IndexedInputStream&>(*copy);
  std::unique_ptr<VRELInputStream> const underlying(Indexed::SourceOf(indexed));  // not deleted by the copy
  EXPECT_NE(underlying.get(), &file);
  EXPECT_EQ(indexed.getLineNumber(), 1);
  EXPECT_EQ(copy->readChar(), 'b');
  EXPECT_EQ(copy->readChar(), '\n');
  EXPECT_EQ(stream.readChar(), 'b');
  EXPECT_EQ(indexed.getLineNumber(), 2);
  EXPECT_EQ(stream.getLineNumber(), 1);
}

// Nothing leaks.
TEST(Gk_IndexedInputStreamTest, DuplicatePropagatesExceptions) {
  struct Throwing : VRELInputStream {
    VRELInputStream* duplicate() override { throw std::runtime_error("no duplicate"); }
    int read(char* /*buffer*/, int /*count*/) override { return -1; }
  };
  Throwing underlying;
  Gk_IndexedInputStream stream(&underlying);
  EXPECT_THROW(stream.duplicate(), std::runtime_error);
  EXPECT_EQ(stream.getLineNumber(), 0);
}

TEST(Gk_IndexedInputStreamTest, DuplicateWithoutStreamIsAtEnd) {
  VRELStringInputStream underlying(Gk_String("a\n"));
  Gk_IndexedInputStream stream(&underlying);
  std::unique_ptr<VRELInputStream> const copy(stream.duplicate());
  ASSERT_NE(copy, nullptr);
  char target[2];
  EXPECT_EQ(copy->readChar(), -1);
  EXPECT_EQ(copy->read(target, 2), -1);
  EXPECT_TRUE(copy->add(Gk_String("a")));
  std::unique_ptr<VRELInputStream> const again(copy->duplicate());
  EXPECT_EQ(again->readChar(), -1);
}

}  // namespace
