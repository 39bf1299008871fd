#include "VRELOutputStream.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "VirtualSlot.h"

namespace {

// Records each call and returns a given result.
class RecordingStream : public VRELOutputStream {
 public:
  explicit RecordingStream(int givenResult) : result(givenResult) {}

  int write(char const* buffer, int count) override {
    calls += "write(" + std::string(buffer, static_cast<std::size_t>(count)) + ")";
    return result;
  }
  void flush() override { calls += "flush"; }
  void close() override { calls += "close"; }

  std::string calls;

 private:
  int result;
};

TEST(VRELOutputStreamTest, IsAbstract) {
  EXPECT_TRUE(std::is_abstract_v<VRELOutputStream>);
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELOutputStream>);
}

// A virtual table pointer and the underlying stream.
TEST(VRELOutputStreamTest, HasOneField) {
  EXPECT_EQ(sizeof(VRELOutputStream), 2 * sizeof(void*));
}

TEST(VRELOutputStreamTest, VirtualSlots) {
  EXPECT_EQ(SlotOf(&VRELOutputStream::writeChar), 2u);
  EXPECT_EQ(SlotOf(&VRELOutputStream::write), 3u);
  EXPECT_EQ(SlotOf(&VRELOutputStream::flush), 4u);
  EXPECT_EQ(SlotOf(&VRELOutputStream::close), 5u);
}

TEST(VRELOutputStreamTest, WriteCharCallsWrite) {
  for (int const result : {1, 0, -1, 7}) {
    SCOPED_TRACE(result);
    RecordingStream stream(result);
    EXPECT_EQ(stream.writeChar('x'), result);
    EXPECT_EQ(stream.calls, "write(x)");
  }
}

TEST(VRELOutputStreamTest, WriteCharWritesEveryByte) {
  RecordingStream stream(1);
  stream.writeChar('\xFF');
  stream.writeChar('\0');
  EXPECT_EQ(stream.calls, std::string("write(\xFF)write(\0)", 16));
}

}  // namespace
