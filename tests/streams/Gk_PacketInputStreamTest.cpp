#include "Gk_PacketInputStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

#include "Gk_Source.h"
#include "Raised.h"
#include "ScratchDirectory.h"
#include "VRELFileInputStream.h"
#include "VRELFilePath.h"
#include "VirtualSlot.h"

namespace {

// Reads from memory and records the calls.
class Bytes : public VRELInputStream {
 public:
  explicit Bytes(std::string bytes) : text(std::move(bytes)) {}

  VRELInputStream* duplicate() override { return new Bytes(*this); }
  int read(char* buffer, int count) override {
    calls += "read" + std::to_string(count) + " ";
    if (mustFail) return -1;
    int const taken = static_cast<int>(std::min<long>(count, static_cast<long>(text.size()) - offset));
    std::memcpy(buffer, text.data() + offset, static_cast<std::size_t>(taken));
    offset += taken;
    return taken;
  }
  long available() const override { return static_cast<long>(text.size()) - offset; }
  bool add(Gk_String const& pushed) override {
    calls += "add" + std::string(pushed.begin(), pushed.end()) + " ";
    offset -= pushed.len();
    return false;
  }
  long getCurrentOffset() const override { return offset; }
  long setOffset(long place) override {
    calls += "set" + std::to_string(place) + " ";
    return offset = place;
  }

  std::string TakeCalls() { return std::exchange(calls, {}); }

  std::string text;
  long offset = 0;
  bool mustFail = false;
  std::string calls;
};

TEST(Gk_PacketInputStreamTest, ReadCharReadsOncePerPacket) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(underlying.TakeCalls(), "");
  EXPECT_EQ(stream.readChar(), 'a');
  EXPECT_EQ(underlying.TakeCalls(), "read4 ");
  EXPECT_EQ(stream.readChar(), 'b');
  EXPECT_EQ(stream.readChar(), 'c');
  EXPECT_EQ(stream.readChar(), 'd');
  EXPECT_EQ(underlying.TakeCalls(), "");
  EXPECT_EQ(stream.readChar(), 'e');
  EXPECT_EQ(underlying.TakeCalls(), "read4 ");
  EXPECT_EQ(stream.readChar(), 'f');
  EXPECT_EQ(underlying.TakeCalls(), "");
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(underlying.TakeCalls(), "read4 read4 ");
}

TEST(Gk_PacketInputStreamTest, BytesAreUnsigned) {
  Bytes underlying("\xFF\x80");
  Gk_PacketInputStream stream(&underlying, 16);
  EXPECT_EQ(stream.readChar(), 255);
  EXPECT_EQ(stream.readChar(), 128);
  EXPECT_EQ(stream.readChar(), -1);
}

TEST(Gk_PacketInputStreamTest, ReadCrossesPackets) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  char target[8] = {};
  EXPECT_EQ(stream.read(target, 6), 6);
  EXPECT_STREQ(target, "abcdef");
  EXPECT_EQ(underlying.TakeCalls(), "read4 read4 ");
  EXPECT_EQ(stream.read(target, 6), -1);
}

TEST(Gk_PacketInputStreamTest, ReadReturnsRemainingBytes) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(stream.readChar(), 'a');
  char target[20] = {};
  EXPECT_EQ(stream.read(target, 20), 5);
  EXPECT_STREQ(target, "bcdef");
  EXPECT_EQ(stream.read(target, 1), -1);
}

TEST(Gk_PacketInputStreamTest, ReadWithinPacket) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  char target[8] = {};
  EXPECT_EQ(stream.read(target, 3), 3);
  EXPECT_EQ(stream.read(target, 1), 1);
  EXPECT_EQ(target[0], 'd');
  EXPECT_EQ(underlying.TakeCalls(), "read4 ");
}

TEST(Gk_PacketInputStreamTest, ReadOfZeroBytes) {
  Bytes underlying("abcde");
  Gk_PacketInputStream stream(&underlying, 4);
  char target = 'x';
  EXPECT_EQ(stream.read(&target, 0), 0);
  EXPECT_EQ(underlying.TakeCalls(), "read4 ");  // a packet was fetched first
  EXPECT_EQ(stream.read(&target, 0), 0);
  EXPECT_EQ(stream.skip(0), 0);
  EXPECT_EQ(underlying.TakeCalls(), "");
  EXPECT_EQ(stream.skip(5), 5);
  EXPECT_EQ(underlying.TakeCalls(), "read4 ");
  EXPECT_EQ(stream.read(&target, 0), -1);
  EXPECT_EQ(stream.skip(0), -1);
  EXPECT_EQ(underlying.TakeCalls(), "read4 read4 ");
  EXPECT_EQ(target, 'x');
}

TEST(Gk_PacketInputStreamTest, SkipCrossesPackets) {
  Bytes underlying("abcdefghij");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(stream.readChar(), 'a');
  EXPECT_EQ(stream.skip(2), 2);
  EXPECT_EQ(stream.readChar(), 'd');
  EXPECT_EQ(stream.skip(5), 5);
  EXPECT_EQ(stream.readChar(), 'j');
  EXPECT_EQ(underlying.TakeCalls(), "read4 read4 read4 ");
  EXPECT_EQ(stream.skip(1), -1);
}

TEST(Gk_PacketInputStreamTest, SkipReturnsRemainingBytes) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(stream.skip(LONG_MAX), 6);
  EXPECT_EQ(stream.skip(LONG_MAX), -1);
}

TEST(Gk_PacketInputStreamTest, NegativeCountFails) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(stream.readChar(), 'a');
  char target[4] = {};
  EXPECT_EQ(stream.read(target, -1), -1);
  EXPECT_EQ(stream.read(target, INT_MIN), -1);
  EXPECT_EQ(stream.skip(-1), -1);
  EXPECT_EQ(stream.skip(LONG_MIN), -1);
  EXPECT_EQ(stream.read(nullptr, 2), -1);
  EXPECT_EQ(stream.readChar(), 'b');
}

TEST(Gk_PacketInputStreamTest, AvailableAddsBoth) {
  Bytes underlying("abcdefg");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(stream.available(), 7);
  stream.readChar();
  EXPECT_EQ(underlying.available(), 3);
  EXPECT_EQ(stream.available(), 6);
}

TEST(Gk_PacketInputStreamTest, GetCurrentOffset) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(stream.getCurrentOffset(), 0);
  for (int i = 0; i < 3; ++i) stream.readChar();
  EXPECT_EQ(stream.getCurrentOffset(), 3);
  EXPECT_EQ(underlying.getCurrentOffset(), 4);
}

TEST(Gk_PacketInputStreamTest, SetOffsetPushesBack) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  stream.readChar();
  underlying.TakeCalls();
  EXPECT_EQ(stream.setOffset(5), 5);
  EXPECT_EQ(underlying.TakeCalls(), "addbcd set5 ");
  EXPECT_EQ(stream.getCurrentOffset(), 5);
  EXPECT_EQ(stream.readChar(), 'f');
  EXPECT_EQ(underlying.TakeCalls(), "read4 ");
}

TEST(Gk_PacketInputStreamTest, SetOffsetPushesBackZeroBytes) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(stream.setOffset(1), 1);
  EXPECT_EQ(underlying.TakeCalls(), "add set1 ");
  EXPECT_EQ(stream.skip(4), 4);
  underlying.TakeCalls();
  EXPECT_TRUE(stream.add(Gk_String("abcde", 5)));
  EXPECT_EQ(underlying.TakeCalls(), "add addabcde ");
  EXPECT_EQ(stream.readChar(), 'a');
}

TEST(Gk_PacketInputStreamTest, SetOffsetOnFile) {
  ScratchDirectory const scratch;
  VRELFilePath const path(VRELString(scratch.Write("letters", "abcdefghij")));
  VRELFileInputStream file(path);
  Gk_PacketInputStream stream(&file, 4);
  EXPECT_EQ(stream.readChar(), 'a');
  EXPECT_EQ(stream.readChar(), 'b');
  stream.setOffset(0);
  EXPECT_EQ(stream.getCurrentOffset(), 0);
  EXPECT_EQ(stream.readChar(), 'a');
  stream.setOffset(8);
  EXPECT_EQ(stream.readChar(), 'i');
  EXPECT_EQ(stream.available(), 1);
}

TEST(Gk_PacketInputStreamTest, AddWithinPacket) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  for (int i = 0; i < 3; ++i) stream.readChar();
  underlying.TakeCalls();
  EXPECT_TRUE(stream.add(Gk_String("??", 2)));  // the content is not compared
  EXPECT_EQ(stream.readChar(), 'b');
  EXPECT_TRUE(stream.add(Gk_String("b")));  // two bytes with the terminator
  EXPECT_EQ(stream.readChar(), 'a');
  EXPECT_TRUE(stream.add(Gk_String()));
  EXPECT_EQ(stream.readChar(), 'b');
  EXPECT_EQ(underlying.TakeCalls(), "");
}

TEST(Gk_PacketInputStreamTest, AddBeyondPacket) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  for (int i = 0; i < 5; ++i) stream.readChar();
  underlying.TakeCalls();
  EXPECT_TRUE(stream.add(Gk_String("de", 2)));
  EXPECT_EQ(underlying.TakeCalls(), "addf addde ");
  EXPECT_EQ(stream.getCurrentOffset(), 3);
  EXPECT_EQ(stream.readChar(), 'd');
  EXPECT_EQ(stream.readChar(), 'e');
  EXPECT_EQ(stream.readChar(), 'f');
  EXPECT_EQ(stream.readChar(), -1);
}

TEST(Gk_PacketInputStreamTest, IsNotCopyable) {
  Bytes underlying("abc");
  Gk_PacketInputStream stream(&underlying, 4);
  EXPECT_EQ(stream.duplicate(), nullptr);
  EXPECT_FALSE(std::is_copy_constructible_v<Gk_PacketInputStream>);
  EXPECT_FALSE(std::is_copy_assignable_v<Gk_PacketInputStream>);
}

TEST(Gk_PacketInputStreamTest, FailedReadIsRetried) {
  Bytes underlying("abcdef");
  Gk_PacketInputStream stream(&underlying, 4);
  underlying.mustFail = true;
  char target[8];
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(stream.read(target, 3), -1);
  EXPECT_EQ(stream.skip(3), -1);
  EXPECT_EQ(underlying.TakeCalls(), "read4 read4 read4 ");
  EXPECT_EQ(stream.available(), 6);
  EXPECT_EQ(stream.getCurrentOffset(), 0);
  underlying.mustFail = false;
  EXPECT_EQ(stream.read(target, 5), 5);
  underlying.mustFail = true;
  EXPECT_EQ(stream.read(target, 5), 1);
  EXPECT_EQ(target[0], 'f');
  stream.setOffset(2);
  underlying.mustFail = false;
  EXPECT_EQ(stream.readChar(), 'c');
}

TEST(Gk_PacketInputStreamTest, ExcessiveReadResultIsClipped) {
  struct OverreportingStream : VRELInputStream {
    VRELInputStream* duplicate() override { return nullptr; }
    int read(char* buffer, int count) override {
      std::memset(buffer, 'x', static_cast<std::size_t>(count));
      return isFirst ? (isFirst = false, count + 1000) : 0;
    }
    bool isFirst = true;
  };
  OverreportingStream boaster;
  Gk_PacketInputStream stream(&boaster, 4);
  char target[100];
  EXPECT_EQ(stream.read(target, 100), 4);
}

TEST(Gk_PacketInputStreamTest, NonPositiveSizeIsAtEnd) {
  for (int size : {0, -1, INT_MIN}) {
    Bytes underlying("abc");
    Gk_PacketInputStream stream(&underlying, size);
    char target = 0;
    EXPECT_EQ(stream.readChar(), -1);
    EXPECT_EQ(stream.read(&target, 1), -1);
    EXPECT_EQ(stream.skip(1), -1);
    EXPECT_EQ(stream.available(), 3);
    EXPECT_EQ(underlying.TakeCalls(), "");
  }
}

TEST(Gk_PacketInputStreamTest, PacketOfOneByte) {
  Bytes underlying("ab");
  Gk_PacketInputStream stream(&underlying, 1);
  EXPECT_EQ(stream.readChar(), 'a');
  EXPECT_TRUE(stream.add(Gk_String("a", 1)));
  EXPECT_EQ(stream.readChar(), 'a');
  EXPECT_EQ(stream.readChar(), 'b');
  EXPECT_EQ(stream.readChar(), -1);
  EXPECT_EQ(underlying.TakeCalls(), "read1 read1 read1 ");
}

TEST(Gk_PacketInputStreamTest, PropagatesExceptions) {
  struct MinimalStream : VRELInputStream {
    VRELInputStream* duplicate() override { return nullptr; }
    int read(char* buffer, int /*count*/) override {
      *buffer = 'p';
      return 1;
    }
  };
  MinimalStream poor;
  Gk_PacketInputStream stream(&poor, 4);
  EXPECT_EQ(Raised([&] { stream.available(); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { stream.getCurrentOffset(); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { stream.setOffset(0); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { stream.add(Gk_String("abc")); }), "Gk_IOException");
  EXPECT_EQ(stream.readChar(), 'p');
  EXPECT_TRUE(stream.add(Gk_String("p", 1)));
}

// All reading goes through fetchPacket, which a derived class can override.
TEST(Gk_PacketInputStreamTest, FetchPacketIsVirtual) {
  struct Counting : Gk_PacketInputStream {
    using Gk_PacketInputStream::Gk_PacketInputStream;
    void fetchPacket() override {
      ++fetched;
      Gk_PacketInputStream::fetchPacket();
    }
    int fetched = 0;
  };
  Bytes underlying("abcdefghi");
  Counting stream(&underlying, 2);
  char target[4];
  stream.readChar();
  EXPECT_EQ(stream.fetched, 1);
  stream.read(target, 3);
  EXPECT_EQ(stream.fetched, 2);
  stream.skip(3);
  EXPECT_EQ(stream.fetched, 4);
  stream.fetchPacket();  // drops the rest of the packet
  EXPECT_EQ(stream.readChar(), 'i');
  EXPECT_EQ(SlotOf(&Gk_PacketInputStream::setOffset), 9U);
  EXPECT_EQ(SlotOf(&Gk_PacketInputStream::fetchPacket), 10U);
}

// Compares all operations in random order with a model.
TEST(Gk_PacketInputStreamTest, AgreesWithModel) {
  std::mt19937 random(21);
  std::string text;
  for (int i = 0; i < 500; ++i) text.push_back(static_cast<char>(random()));
  long const size = static_cast<long>(text.size());
  for (int packet : {1, 2, 3, 7, 64, 499, 500, 501, 1000}) {
    SCOPED_TRACE(packet);
    Bytes underlying(text);
    Gk_PacketInputStream stream(&underlying, packet);
    long place = 0;
    for (int step = 0; step < 3000; ++step) {
      int const count = static_cast<int>(random() % 40);
      switch (random() % 5) {
        case 0: {
          int const c = stream.readChar();
          ASSERT_EQ(c, place < size ? static_cast<unsigned char>(text[static_cast<std::size_t>(place)]) : -1);
          if (place < size) ++place;
          break;
        }
        case 1: {
          char target[40];
          long const expected = place < size ? std::min<long>(count, size - place) : -1;
          ASSERT_EQ(stream.read(target, count), expected);
          if (expected > 0) {
            ASSERT_EQ(std::memcmp(target, text.data() + place, static_cast<std::size_t>(expected)), 0);
            place += expected;
          }
          break;
        }
        case 2: {
          long const expected = place < size ? std::min<long>(count, size - place) : -1;
          ASSERT_EQ(stream.skip(count), expected);
          if (expected > 0) place += expected;
          break;
        }
        case 3: {
          int const back = static_cast<int>(std::min<long>(count, place));
          ASSERT_TRUE(stream.add(Gk_String(text.data() + place - back, back)));
          place -= back;
          break;
        }
        default:
          if (step % 7 == 0) {
            place = static_cast<long>(random() % text.size());
            stream.setOffset(place);
          }
      }
      ASSERT_EQ(stream.getCurrentOffset(), place);
      ASSERT_EQ(stream.available(), size - place);
    }
  }
}

TEST(Gk_PacketInputStreamTest, ServesSource) {
  ScratchDirectory const scratch;
  std::string text;
  for (int i = 0; i < 200; ++i) text += "token" + std::to_string(i) + (i % 3 == 0 ? "  \n" : " ");
  VRELFilePath const path(VRELString(scratch.Write("tokens", text)));
  for (int packet : {1, 2, 5, 4096}) {
    VRELFileInputStream file(path);
    Gk_PacketInputStream stream(&file, packet);
    Gk_Source source(&stream);
    source.setWhiteSpace(" \n");
    for (int i = 0; i < 200; ++i) {
      std::string const token = "token" + std::to_string(i);
      ASSERT_EQ(source.peek(), token.c_str());
      ASSERT_EQ(source.next(), token.c_str());
    }
    EXPECT_TRUE(source.isEmpty());
  }
}

}  // namespace
