#include "VRELFilterInputStream.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "Raised.h"

namespace {

// Records all calls, and returns a different value for each.
class RecordingStream : public VRELInputStream {
 public:
  ~RecordingStream() override { ++destroyed; }

  VRELInputStream* duplicate() override {
    calls += "duplicate ";
    return nullptr;
  }
  int readChar() override {
    calls += "readChar ";
    return 65;
  }
  int read(char* buffer, int count) override {
    calls += "read" + std::to_string(count) + " ";
    buffer[0] = 'b';
    return 2;
  }
  long skip(long count) override {
    calls += "skip" + std::to_string(count) + " ";
    return 3;
  }
  long available() const override {
    calls += "available ";
    return 4;
  }
  bool add(Gk_String const& text) override {
    calls += "add" + std::to_string(text.len()) + " ";
    return addResult;
  }
  long getCurrentOffset() const override {
    calls += "getCurrentOffset ";
    return 5;
  }
  long setOffset(long offset) override {
    calls += "setOffset" + std::to_string(offset) + " ";
    return 6;
  }

  static int destroyed;
  mutable std::string calls;
  bool addResult = true;
};

int RecordingStream::destroyed = 0;

class Filter : public VRELFilterInputStream {
 public:
  using VRELFilterInputStream::VRELFilterInputStream;
  VRELInputStream* duplicate() override { return new Filter(*this); }
  VRELInputStream* Source() const { return source; }
};

TEST(VRELFilterInputStreamTest, DuplicateIsPure) {
  EXPECT_TRUE(std::is_abstract_v<VRELFilterInputStream>);
  EXPECT_EQ(sizeof(VRELFilterInputStream), sizeof(VRELInputStream));
}

TEST(VRELFilterInputStreamTest, ForwardsAllOperations) {
  RecordingStream underlying;
  Filter filter(&underlying);
  VRELInputStream& stream = filter;
  char buffer[8] = {};
  EXPECT_EQ(stream.readChar(), 65);
  EXPECT_EQ(stream.read(buffer, 7), 2);
  EXPECT_EQ(buffer[0], 'b');
  EXPECT_EQ(stream.skip(8), 3);
  EXPECT_EQ(stream.available(), 4);
  EXPECT_TRUE(stream.add(Gk_String("xyz", 3)));
  underlying.addResult = false;
  EXPECT_FALSE(stream.add(Gk_String("xyz")));
  EXPECT_EQ(stream.getCurrentOffset(), 5);
  EXPECT_EQ(stream.setOffset(-9), 6);
  EXPECT_EQ(underlying.calls, "readChar read7 skip8 available add3 add4 getCurrentOffset setOffset-9 ");
}

TEST(VRELFilterInputStreamTest, CopiesShareStream) {
  RecordingStream underlying;
  RecordingStream::destroyed = 0;
  {
    Filter filter(&underlying);
    VRELInputStream* const copy = filter.duplicate();
    EXPECT_EQ(static_cast<Filter*>(copy)->Source(), &underlying);
    copy->readChar();
    delete copy;
    EXPECT_EQ(filter.Source(), &underlying);
  }
  EXPECT_EQ(RecordingStream::destroyed, 0);
  EXPECT_EQ(underlying.calls, "readChar ");
}

TEST(VRELFilterInputStreamTest, PropagatesExceptions) {
  struct MinimalStream : VRELInputStream {
    VRELInputStream* duplicate() override { return nullptr; }
    int read(char* /*buffer*/, int /*count*/) override { return -1; }
  };
  MinimalStream underlying;
  Filter filter(&underlying);
  EXPECT_EQ(filter.readChar(), -1);
  EXPECT_EQ(filter.skip(5), 0);
  EXPECT_EQ(Raised([&] { filter.available(); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { filter.add(Gk_String("a")); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { filter.getCurrentOffset(); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { filter.setOffset(0); }), "Gk_IOException");
}

}  // namespace
