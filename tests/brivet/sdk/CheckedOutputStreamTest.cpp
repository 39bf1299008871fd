#include "CheckedOutputStream.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Accepts up to `room` bytes.
class SmallStream final : public VRELOutputStream {
 public:
  explicit SmallStream(int bytes) : room(bytes) {}
  int write(char const* buffer, int count) override {
    ++writes;
    int const taken = count < room ? count : room;
    text.append(buffer, static_cast<std::size_t>(taken));
    room -= taken;
    return taken;
  }
  void flush() override { ++flushes; }
  void close() override { ++closes; }

  std::string text;
  int room;
  int writes = 0;
  int flushes = 0;
  int closes = 0;
};

}  // namespace

TEST(CheckedOutputStreamTest, WritePassesBytesOn) {
  SmallStream target(100);
  CheckedOutputStream stream(&target);
  EXPECT_EQ(stream.write("abc", 3), 3);
  stream.writeChar('d');
  stream.flush();
  stream.close();
  EXPECT_EQ(target.text, "abcd");
  EXPECT_EQ(target.flushes, 1);
  EXPECT_EQ(target.closes, 1);
  EXPECT_FALSE(stream.HasFailed());
  EXPECT_NO_THROW(stream.Check());
}

TEST(CheckedOutputStreamTest, FirstFailureIsFinal) {
  SmallStream target(5);
  CheckedOutputStream stream(&target);
  EXPECT_EQ(stream.write("abc", 3), 3);
  EXPECT_EQ(stream.write("def", 3), 2);
  EXPECT_TRUE(stream.HasFailed());
  EXPECT_THROW(stream.Check(), CheckedOutputStream::Failure);
  EXPECT_EQ(stream.write("g", 1), -1);
  EXPECT_EQ(target.writes, 2);
}
