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

// Tells what it was asked for.
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

TEST(Gk_PacketOutputStreamTest, GathersUntilThePacketIsFull) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 4);
  EXPECT_EQ(stream.write("abc", 3), 3);
  EXPECT_EQ(beneath.TakeCalls(), "");
  EXPECT_EQ(stream.write("de", 2), 2);
  EXPECT_EQ(beneath.TakeCalls(), "write:abc ");
  stream.flush();
  EXPECT_EQ(beneath.TakeCalls(), "write:de flush ");
}

TEST(Gk_PacketOutputStreamTest, APacketMayBeFilledToTheBrim) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 4);
  stream.write("abc", 3);
  stream.write("d", 1);
  EXPECT_EQ(beneath.TakeCalls(), "");
  stream.write("e", 1);
  EXPECT_EQ(beneath.TakeCalls(), "write:abcd ");
}

TEST(Gk_PacketOutputStreamTest, APacketsLengthGoesStraightThrough) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 4);
  stream.write("ab", 2);
  EXPECT_EQ(stream.write("cdef", 4), 77);
  EXPECT_EQ(beneath.TakeCalls(), "write:ab write:cdef ");
  EXPECT_EQ(stream.write("ghijklm", 7), 77);
  EXPECT_EQ(beneath.TakeCalls(), "write:ghijklm ");
  beneath.result = -1;
  EXPECT_EQ(stream.write("nopq", 4), -1);
}

TEST(Gk_PacketOutputStreamTest, SingleBytesAreGathered) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 4);
  for (char const c : {'a', 'b', 'c', 'd'}) EXPECT_EQ(stream.write(c), c);
  EXPECT_EQ(beneath.TakeCalls(), "");
  EXPECT_EQ(stream.write('\xFF'), '\xFF');
  EXPECT_EQ(beneath.TakeCalls(), "write:abcd ");
  stream.flushBuffer();
  EXPECT_EQ(beneath.TakeCalls(), "write:\xFF ");
}

TEST(Gk_PacketOutputStreamTest, FlushBufferFlushesNothingBeneath) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 4);
  stream.write("ab", 2);
  stream.flushBuffer();
  EXPECT_EQ(beneath.TakeCalls(), "write:ab ");
  stream.flushBuffer();
  EXPECT_EQ(beneath.TakeCalls(), "");
}

TEST(Gk_PacketOutputStreamTest, AFailedWriteIsNotTriedAgain) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 4);
  beneath.result = -1;
  stream.write("ab", 2);
  stream.flush();
  EXPECT_EQ(beneath.TakeCalls(), "write:ab flush ");
  stream.flush();
  EXPECT_EQ(beneath.TakeCalls(), "flush ");
}

TEST(Gk_PacketOutputStreamTest, WriteCharOvertakesWhatWaits) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 4);
  stream.write("ab", 2);
  EXPECT_EQ(stream.writeChar('c'), 5);
  stream.flush();
  EXPECT_EQ(beneath.TakeCalls(), "char:c write:ab flush ");
}

TEST(Gk_PacketOutputStreamTest, CloseAndDestructionWriteNothing) {
  Recorder beneath;
  {
    Gk_PacketOutputStream stream(&beneath, 4);
    stream.write("ab", 2);
    stream.close();
    EXPECT_EQ(beneath.TakeCalls(), "close ");
  }
  EXPECT_EQ(beneath.TakeCalls(), "");
}

TEST(Gk_PacketOutputStreamTest, NothingToWrite) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 4);
  stream.write("ab", 2);
  EXPECT_EQ(stream.write("x", 0), 0);
  EXPECT_EQ(stream.write(nullptr, 0), 0);
  EXPECT_EQ(stream.write("x", -1), 0);
  EXPECT_EQ(stream.write("x", INT_MIN), 0);
  EXPECT_EQ(stream.write(nullptr, 3), 0);
  EXPECT_EQ(beneath.TakeCalls(), "");
  stream.flush();
  EXPECT_EQ(beneath.TakeCalls(), "write:ab flush ");
}

TEST(Gk_PacketOutputStreamTest, WithoutRoomForAPacketNothingWaits) {
  for (int size : {0, -5, INT_MIN}) {
    Recorder beneath;
    Gk_PacketOutputStream stream(&beneath, size);
    EXPECT_EQ(stream.write('a'), 'a');
    EXPECT_EQ(stream.write("bc", 2), 77);
    EXPECT_EQ(beneath.TakeCalls(), "write:a write:bc ");
  }
}

TEST(Gk_PacketOutputStreamTest, APacketOfOneByte) {
  Recorder beneath;
  Gk_PacketOutputStream stream(&beneath, 1);
  stream.write('a');
  stream.write('b');
  EXPECT_EQ(beneath.TakeCalls(), "write:a ");
  stream.write("c", 1);
  EXPECT_EQ(beneath.TakeCalls(), "write:b write:c ");
}

TEST(Gk_PacketOutputStreamTest, CannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<Gk_PacketOutputStream>);
  EXPECT_FALSE(std::is_copy_assignable_v<Gk_PacketOutputStream>);
}

TEST(Gk_PacketOutputStreamTest, NothingIsAddedOrLost) {
  std::mt19937 random(22);
  for (int packet : {1, 2, 3, 16, 100}) {
    std::string expected;
    VRELStringOutputStream beneath;
    Gk_PacketOutputStream stream(&beneath, packet);
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
    EXPECT_EQ(TakeText(beneath), expected);
  }
}

}  // namespace
