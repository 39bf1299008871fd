#include "Gk_PacketOutputStream.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

#include "StreamText.h"
#include "VRELStringOutputStream.h"

namespace {

// Records the calls.
class Recorder : public VRELOutputStream {
 public:
  int writeChar(char c) override {
    calls += std::string("char:") + c + " ";
    return 5;
  }
  int write(char const* buffer, int count) override {
    calls += "write:" + std::string(buffer, static_cast<std::size_t>(count)) + " ";
    return result;
  }
  void flush() override { calls += "flush "; }
  void close() override { calls += "close "; }

  std::string TakeCalls() { return std::exchange(calls, {}); }

  int result = 77;
  std::string calls;
};

TEST(Gk_PacketOutputStreamTest, WriteBuffersUntilPacketIsFull) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  EXPECT_EQ(stream.write("abc", 3), 3);
  EXPECT_EQ(target.TakeCalls(), "");
  EXPECT_EQ(stream.write("de", 2), 2);
  EXPECT_EQ(target.TakeCalls(), "write:abc ");
  stream.flush();
  EXPECT_EQ(target.TakeCalls(), "write:de flush ");
}

TEST(Gk_PacketOutputStreamTest, PacketCanBeFilledCompletely) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  stream.write("abc", 3);
  stream.write("d", 1);
  EXPECT_EQ(target.TakeCalls(), "");
  stream.write("e", 1);
  EXPECT_EQ(target.TakeCalls(), "write:abcd ");
}

TEST(Gk_PacketOutputStreamTest, WriteOfPacketSizeIsDirect) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  stream.write("ab", 2);
  EXPECT_EQ(stream.write("cdef", 4), 77);
  EXPECT_EQ(target.TakeCalls(), "write:ab write:cdef ");
  EXPECT_EQ(stream.write("ghijklm", 7), 77);
  EXPECT_EQ(target.TakeCalls(), "write: write:ghijklm ");
  target.result = -1;
  EXPECT_EQ(stream.write("nopq", 4), -1);
}

TEST(Gk_PacketOutputStreamTest, WriteBuffersSingleBytes) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  for (char const c : {'a', 'b', 'c', 'd'}) EXPECT_EQ(stream.write(c), c);
  EXPECT_EQ(target.TakeCalls(), "");
  EXPECT_EQ(stream.write('\xFF'), '\xFF');
  EXPECT_EQ(target.TakeCalls(), "write:abcd ");
  stream.flushBuffer();
  EXPECT_EQ(target.TakeCalls(), "write:\xFF ");
}

TEST(Gk_PacketOutputStreamTest, FlushBufferWritesWithoutFlush) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  stream.write("ab", 2);
  stream.flushBuffer();
  EXPECT_EQ(target.TakeCalls(), "write:ab ");
}

TEST(Gk_PacketOutputStreamTest, FlushBufferWritesZeroBytes) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  stream.flushBuffer();
  stream.flushBuffer();
  EXPECT_EQ(target.TakeCalls(), "write: write: ");
  stream.flush();
  EXPECT_EQ(target.TakeCalls(), "write: flush ");
}

TEST(Gk_PacketOutputStreamTest, PacketHasRequestedSize) {
  for (int size = 1; size < 70; ++size) {
    Recorder target;
    Gk_PacketOutputStream stream(&target, size);
    for (int i = 0; i < size; ++i) stream.write('x');
    EXPECT_EQ(target.TakeCalls(), "");
    stream.write('y');
    EXPECT_EQ(target.TakeCalls(), "write:" + std::string(static_cast<std::size_t>(size), 'x') + " ");
  }
}

TEST(Gk_PacketOutputStreamTest, FailedWriteIsNotRetried) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  target.result = -1;
  stream.write("ab", 2);
  stream.flush();
  EXPECT_EQ(target.TakeCalls(), "write:ab flush ");
  stream.flush();
  EXPECT_EQ(target.TakeCalls(), "write: flush ");
}

TEST(Gk_PacketOutputStreamTest, WriteCharBypassesPacket) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  stream.write("ab", 2);
  EXPECT_EQ(stream.writeChar('c'), 5);
  stream.flush();
  EXPECT_EQ(target.TakeCalls(), "char:c write:ab flush ");
}

TEST(Gk_PacketOutputStreamTest, CloseAndDestructorDropPending) {
  Recorder target;
  {
    Gk_PacketOutputStream stream(&target, 4);
    stream.write("ab", 2);
    stream.close();
    EXPECT_EQ(target.TakeCalls(), "close ");
  }
  EXPECT_EQ(target.TakeCalls(), "");
}

TEST(Gk_PacketOutputStreamTest, InvalidWritesAreIgnored) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 4);
  stream.write("ab", 2);
  EXPECT_EQ(stream.write("x", 0), 0);
  EXPECT_EQ(stream.write(nullptr, 0), 0);
  EXPECT_EQ(stream.write("x", -1), 0);
  EXPECT_EQ(stream.write("x", INT_MIN), 0);
  EXPECT_EQ(stream.write(nullptr, 3), 0);
  EXPECT_EQ(target.TakeCalls(), "");
  stream.flush();
  EXPECT_EQ(target.TakeCalls(), "write:ab flush ");
}

TEST(Gk_PacketOutputStreamTest, NonPositiveSizeDoesNotBuffer) {
  for (int size : {0, -5, INT_MIN}) {
    Recorder target;
    Gk_PacketOutputStream stream(&target, size);
    EXPECT_EQ(stream.write('a'), 'a');
    EXPECT_EQ(stream.write("bc", 2), 77);
    EXPECT_EQ(target.TakeCalls(), "write: write:a write: write:bc ");
  }
}

TEST(Gk_PacketOutputStreamTest, PacketOfOneByte) {
  Recorder target;
  Gk_PacketOutputStream stream(&target, 1);
  stream.write('a');
  stream.write('b');
  EXPECT_EQ(target.TakeCalls(), "write:a ");
  stream.write("c", 1);
  EXPECT_EQ(target.TakeCalls(), "write:b write:c ");
}

TEST(Gk_PacketOutputStreamTest, IsNotCopyable) {
  EXPECT_FALSE(std::is_copy_constructible_v<Gk_PacketOutputStream>);
  EXPECT_FALSE(std::is_copy_assignable_v<Gk_PacketOutputStream>);
}

TEST(Gk_PacketOutputStreamTest, WritesAllBytesInOrder) {
  std::mt19937 random(22);
  for (int packet : {1, 2, 3, 16, 100}) {
    std::string expected;
    VRELStringOutputStream target;
    Gk_PacketOutputStream stream(&target, packet);
    for (int i = 0; i < 500; ++i) {
      std::string const piece(random() % 40, static_cast<char>('a' + i % 26));
      if (piece.size() == 1) {
        stream.write(piece[0]);
      } else {
        stream.write(piece.data(), static_cast<int>(piece.size()));
      }
      if (i % 50 == 0) stream.flush();
      expected += piece;
    }
    stream.flush();
    EXPECT_EQ(TakeText(target), expected);
  }
}

}  // namespace
