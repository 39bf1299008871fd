#include "VRELStringInputStream.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

#include "Gk_ErrMgr.h"
#include "Raised.h"
#include "VRELAbortException.h"

namespace {

// Returns the bytes that a read of `count` returns.
std::string Read(VRELInputStream& stream, int count) {
  char buffer[64] = {};
  int const taken = stream.read(buffer, count);
  return std::string(buffer, static_cast<std::size_t>(taken));
}

TEST(VRELStringInputStreamTest, HasTwoFields) {
  EXPECT_EQ(sizeof(VRELStringInputStream), sizeof(VRELInputStream) + sizeof(Gk_String) + sizeof(long));
}

TEST(VRELStringInputStreamTest, AvailableIsOneOrZero) {
  VRELStringInputStream stream(Gk_String("ab"));
  EXPECT_EQ(stream.available(), 1);
  EXPECT_EQ(stream.readChar(), 'a');
  EXPECT_EQ(stream.available(), 1);
  EXPECT_EQ(stream.readChar(), 'b');
  EXPECT_EQ(stream.available(), 0);
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(stream.available(), 0);
}

TEST(VRELStringInputStreamTest, EmptyString) {
  for (Gk_String const& text : {Gk_String(), Gk_String(""), Gk_String(nullptr), Gk_String("a", 1)}) {
    SCOPED_TRACE(text.len());
    VRELStringInputStream stream(text);
    EXPECT_EQ(stream.available(), 0);
    EXPECT_EQ(stream.readChar(), -1);
    EXPECT_EQ(Read(stream, 5), "");
    EXPECT_EQ(stream.skip(3), 0);
  }
}

TEST(VRELStringInputStreamTest, ReadWholeFailsIfTooShort) {
  VRELStringInputStream stream(Gk_String("abcdef"));
  char buffer[8] = "#######";
  EXPECT_TRUE(stream.readWhole(buffer, 2));
  EXPECT_STREQ(buffer, "ab#####");
  EXPECT_FALSE(stream.readWhole(buffer, 5));
  EXPECT_STREQ(buffer, "ab#####");
  EXPECT_TRUE(stream.readWhole(buffer, 4));
  EXPECT_STREQ(buffer, "cdef###");
  EXPECT_FALSE(stream.readWhole(buffer, 1));
  EXPECT_EQ(stream.readChar(), -1);
}

TEST(VRELStringInputStreamTest, ReadStopsAtEnd) {
  VRELStringInputStream stream(Gk_String("abcdef"));
  EXPECT_EQ(Read(stream, 2), "ab");
  EXPECT_EQ(Read(stream, 0), "");
  EXPECT_EQ(Read(stream, -3), "");
  EXPECT_EQ(Read(stream, INT_MIN), "");
  EXPECT_EQ(Read(stream, 3), "cde");
  EXPECT_EQ(Read(stream, 60), "f");
  EXPECT_EQ(Read(stream, 60), "");
  VRELStringInputStream whole(Gk_String("abc"));
  char buffer[8] = "#######";
  EXPECT_EQ(whole.read(buffer, INT_MAX), 3);
  EXPECT_STREQ(buffer, "abc####");
  EXPECT_EQ(whole.read(nullptr, 1), 0);
}

TEST(VRELStringInputStreamTest, ReadsEveryByte) {
  VRELStringInputStream stream(Gk_String("\xFF\0\x80", 4));
  EXPECT_EQ(stream.readChar(), 255);
  EXPECT_EQ(stream.readChar(), 0);
  EXPECT_EQ(stream.readChar(), 128);
  EXPECT_EQ(stream.readChar(), -1);
}

// The last byte of a string without a terminator is never read.
TEST(VRELStringInputStreamTest, LastByteIsTerminator) {
  VRELStringInputStream stream(Gk_String("abc", 3));
  EXPECT_EQ(Read(stream, 9), "ab");
  EXPECT_EQ(stream.available(), 0);
}

TEST(VRELStringInputStreamTest, AddStopsAtBeginning) {
  VRELStringInputStream stream(Gk_String("abcdefgh"));
  EXPECT_EQ(Read(stream, 7), "abcdefg");
  EXPECT_TRUE(stream.add(Gk_String("xyz")));  // with its terminator
  EXPECT_EQ(Read(stream, 1), "d");
  EXPECT_TRUE(stream.add(Gk_String("xyz", 3)));
  EXPECT_EQ(Read(stream, 1), "b");
  EXPECT_TRUE(stream.add(Gk_String()));
  EXPECT_EQ(Read(stream, 1), "c");
  EXPECT_TRUE(stream.add(Gk_String("much more than was read")));
  EXPECT_EQ(Read(stream, 60), "abcdefgh");
  EXPECT_TRUE(stream.add(Gk_String("x", 1)));
  EXPECT_EQ(stream.available(), 1);
  EXPECT_EQ(Read(stream, 60), "h");
}

TEST(VRELStringInputStreamTest, ReadCharCallsReadOfDerivedClass) {
  struct Rotated : VRELStringInputStream {
    using VRELStringInputStream::VRELStringInputStream;
    int read(char* buffer, int count) override {
      int const taken = VRELStringInputStream::read(buffer, count);
      for (int i = 0; i < taken; ++i) ++buffer[i];
      return taken;
    }
  };
  Rotated stream(Gk_String("A\xFE"));
  EXPECT_EQ(stream.readChar(), 'B');
  EXPECT_EQ(stream.readChar(), 255);
  EXPECT_EQ(stream.readChar(), -1);
}

TEST(VRELStringInputStreamTest, SkipReads) {
  VRELStringInputStream stream(Gk_String("abcdef"));
  EXPECT_EQ(stream.skip(2), 2);
  EXPECT_EQ(stream.readChar(), 'c');
  EXPECT_EQ(stream.skip(0), 0);
  EXPECT_EQ(stream.skip(-5), 0);
  EXPECT_EQ(stream.skip(LONG_MAX), 3);
  EXPECT_EQ(stream.skip(1), 0);
  EXPECT_EQ(stream.readChar(), -1);
}

// The base skip would call read forever, since 0 is the end of input here.
TEST(VRELStringInputStreamTest, SkipEndsAtEndOfInput) {
  std::string const bytes(5000, 'x');
  VRELStringInputStream stream(Gk_String(bytes.c_str()));
  EXPECT_EQ(stream.skip(10), 10);
  EXPECT_EQ(stream.skip(4000), 4000);
  EXPECT_EQ(stream.skip(1000000), 990);
  EXPECT_EQ(stream.skip(1), 0);
  EXPECT_EQ(stream.skip(0), 0);
  EXPECT_EQ(stream.skip(-1), 0);
  EXPECT_EQ(stream.skip(std::numeric_limits<long>::min()), 0);
  EXPECT_EQ(stream.skip(std::numeric_limits<long>::max()), 0);
  EXPECT_EQ(stream.readChar(), -1);
}

TEST(VRELStringInputStreamTest, DuplicateIsNotSupported) {
  VRELStringInputStream stream(Gk_String("ab"));
  EXPECT_EQ(stream.duplicate(), nullptr);
  EXPECT_EQ(stream.readChar(), 'a');
}

TEST(VRELStringInputStreamTest, OffsetsRaise) {
  VRELStringInputStream stream(Gk_String("ab"));
  EXPECT_EQ(Raised([&] { stream.getCurrentOffset(); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { stream.setOffset(1); }), "Gk_IOException");
  EXPECT_EQ(stream.readChar(), 'a');
}

TEST(VRELStringInputStreamTest, PollsAbortFlag) {
  Gk_String const text("ab");
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(VRELStringInputStream{text}, VRELAbortException);
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
  VRELStringInputStream stream(text);
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(stream.duplicate(), VRELAbortException);
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

TEST(VRELStringInputStreamTest, CopyHasOwnPosition) {
  VRELStringInputStream stream(Gk_String("abc"));
  EXPECT_EQ(stream.readChar(), 'a');
  VRELStringInputStream copy(stream);
  EXPECT_EQ(copy.readChar(), 'b');
  EXPECT_EQ(stream.readChar(), 'b');
}

// The bytes are shared; a string that became shorter is not read beyond its end.
TEST(VRELStringInputStreamTest, SurvivesShrinkingString) {
  Gk_String text("abcdef");
  VRELStringInputStream stream(text);
  EXPECT_EQ(Read(stream, 4), "abcd");
  text.chop(0);
  EXPECT_EQ(stream.available(), 0);
  EXPECT_EQ(Read(stream, 4), "");
  text.clear();
  EXPECT_EQ(Read(stream, 4), "");
  EXPECT_TRUE(stream.add(Gk_String("abcdefgh")));
  EXPECT_EQ(Read(stream, 4), "");
}

}  // namespace
