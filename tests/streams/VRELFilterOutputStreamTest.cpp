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

TEST(VRELFilterOutputStreamTest, ForwardsEverything) {
  RecordingStream beneath;
  VRELFilterOutputStream filter(&beneath);
  VRELOutputStream& stream = filter;
  EXPECT_EQ(stream.writeChar('a'), 1);
  EXPECT_EQ(stream.write("bc", 2), 2);
  stream.flush();
  stream.close();
  EXPECT_EQ(beneath.calls, "writeChara writebc flush close ");
}

TEST(VRELFilterOutputStreamTest, CopiesShareStream) {
  RecordingStream beneath;
  RecordingStream::destroyed = 0;
  {
    Filter filter(&beneath);
    Filter const copy(filter);
    EXPECT_EQ(copy.Target(), &beneath);
    EXPECT_EQ(filter.Target(), &beneath);
  }
  EXPECT_EQ(RecordingStream::destroyed, 0);
  EXPECT_EQ(beneath.calls, "");
  EXPECT_EQ(sizeof(VRELFilterOutputStream), sizeof(VRELOutputStream));
}

}  // namespace
