#include "VRELFilterOutputStream.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class RecordingStream : public VRELOutputStream {
 public:
  ~RecordingStream() override { ++destroyed; }

  int writeChar(char c) override {
    calls += std::string("writeChar") + c + " ";
    return 1;
  }
  int write(char const* buffer, int count) override {
    calls += "write" + std::string(buffer, static_cast<std::size_t>(count)) + " ";
    return 2;
  }
  void flush() override { calls += "flush "; }
  void close() override { calls += "close "; }

  static int destroyed;
  std::string calls;
};

int RecordingStream::destroyed = 0;

class Filter : public VRELFilterOutputStream {
 public:
  using VRELFilterOutputStream::VRELFilterOutputStream;
  VRELOutputStream* Target() const { return target; }
};

TEST(VRELFilterOutputStreamTest, ForwardsAllOperations) {
  RecordingStream underlying;
  VRELFilterOutputStream filter(&underlying);
  VRELOutputStream& stream = filter;
  EXPECT_EQ(stream.writeChar('a'), 1);
  EXPECT_EQ(stream.write("bc", 2), 2);
  stream.flush();
  stream.close();
  EXPECT_EQ(underlying.calls, "writeChara writebc flush close ");
}

TEST(VRELFilterOutputStreamTest, CopiesShareStream) {
  RecordingStream underlying;
  RecordingStream::destroyed = 0;
  {
    Filter filter(&underlying);
    Filter const copy(filter);
    EXPECT_EQ(copy.Target(), &underlying);
    EXPECT_EQ(filter.Target(), &underlying);
  }
  EXPECT_EQ(RecordingStream::destroyed, 0);
  EXPECT_EQ(underlying.calls, "");
  EXPECT_EQ(sizeof(VRELFilterOutputStream), sizeof(VRELOutputStream));
}

}  // namespace
