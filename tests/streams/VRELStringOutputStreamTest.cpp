#include "VRELStringOutputStream.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

TEST(VRELStringOutputStreamTest, ContentsIsNullAtFirst) {
  VRELStringOutputStream const out;
  EXPECT_EQ(out.contents(), nullptr);
}

TEST(VRELStringOutputStreamTest, WriteAppendsWithoutTerminator) {
  VRELStringOutputStream out;
  EXPECT_EQ(out.write("ab", 2), 2);
  EXPECT_EQ(out.write("cdef", 3), 3);
  EXPECT_EQ(out.writeChar('x'), 1);
  EXPECT_EQ(std::string_view(out.contents(), 6), "abcdex");
}

// A terminator is kept, also before later bytes.
TEST(VRELStringOutputStreamTest, KeepsZeroBytes) {
  VRELStringOutputStream out;
  EXPECT_EQ(out.write("a\0b", 3), 3);
  EXPECT_EQ(out.writeChar('\0'), 1);
  EXPECT_EQ(out.write("c\0", 2), 2);
  EXPECT_EQ(std::string_view(out.contents(), 6), std::string_view("a\0b\0c\0", 6));
  EXPECT_STREQ(out.contents() + 4, "c");
}

TEST(VRELStringOutputStreamTest, InvalidWritesAppendNothing) {
  VRELStringOutputStream out;
  EXPECT_EQ(out.write("ab", 0), 0);
  EXPECT_EQ(out.write("ab", -1), 0);
  EXPECT_EQ(out.write(nullptr, 2), 0);
  EXPECT_EQ(out.contents(), nullptr);
}

TEST(VRELStringOutputStreamTest, WriteIsImmediate) {
  VRELStringOutputStream out;
  out.flush();
  out.close();
  EXPECT_EQ(out.contents(), nullptr);
  out.write("ab", 3);
  out.flush();
  out.close();
  EXPECT_STREQ(out.contents(), "ab");
  EXPECT_EQ(out.writeChar('c'), 1);
  EXPECT_EQ(out.contents()[3], 'c');
}

TEST(VRELStringOutputStreamTest, WriteAcceptsOwnContents) {
  VRELStringOutputStream out;
  out.write("abc", 3);
  std::string expected = "abc";
  for (int i = 0; i < 10; ++i) {
    out.write(out.contents(), static_cast<int>(expected.size()));
    expected += expected;
  }
  EXPECT_EQ(std::string_view(out.contents(), expected.size()), expected);
}

TEST(VRELStringOutputStreamTest, ManySmallWrites) {
  VRELStringOutputStream out;
  std::string expected;
  for (int i = 0; i < 10000; ++i) {
    std::string const piece(static_cast<std::size_t>(i % 7), static_cast<char>(i));
    EXPECT_EQ(out.write(piece.data(), i % 7), i % 7);
    expected += piece;
  }
  EXPECT_EQ(std::string_view(out.contents(), expected.size()), expected);
}

}  // namespace
