#include "VRELInputStream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "Raised.h"
#include "RecordingListener.h"
#include "VirtualSlot.h"

namespace {

// Returns the given results in order, then the last one repeatedly, and records the requests.
class ScriptedStream : public VRELInputStream {
 public:
  explicit ScriptedStream(std::vector<int> givenResults, char givenByte = 'x')
      : results(std::move(givenResults)), byte(givenByte) {}

  VRELInputStream* duplicate() override { return nullptr; }
  int read(char* buffer, int count) override {
    buffers.push_back(buffer);
    counts.push_back(count);
    int const result = results[std::min(counts.size(), results.size()) - 1];
    if (result > 0) std::memset(buffer, byte, static_cast<std::size_t>(std::min(result, count)));
    return result;
  }

  std::vector<char*> buffers;
  std::vector<int> counts;

 private:
  std::vector<int> results;
  char byte;
};

TEST(VRELInputStreamTest, IsAbstract) {
  EXPECT_TRUE(std::is_abstract_v<VRELInputStream>);
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELInputStream>);
}

// A virtual table pointer and the underlying stream.
TEST(VRELInputStreamTest, HasOneField) {
  EXPECT_EQ(sizeof(VRELInputStream), 2 * sizeof(void*));
}

TEST(VRELInputStreamTest, VirtualSlots) {
  EXPECT_EQ(SlotOf(&VRELInputStream::duplicate), 2u);
  EXPECT_EQ(SlotOf(&VRELInputStream::readChar), 3u);
  EXPECT_EQ(SlotOf(&VRELInputStream::read), 4u);
  EXPECT_EQ(SlotOf(&VRELInputStream::skip), 5u);
  EXPECT_EQ(SlotOf(&VRELInputStream::available), 6u);
  EXPECT_EQ(SlotOf(&VRELInputStream::add), 7u);
  EXPECT_EQ(SlotOf(&VRELInputStream::getCurrentOffset), 8u);
  EXPECT_EQ(SlotOf(&VRELInputStream::setOffset), 9u);
}

TEST(VRELInputStreamTest, ReadCharCallsRead) {
  struct {
    int result;
    char byte;
    int character;
  } const rows[] = {
      {1, 'a', 97}, {1, '\xFF', 255}, {1, '\x80', 128}, {1, '\0', 0}, {0, 'a', -1}, {-1, 'a', -1},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.character);
    ScriptedStream stream({row.result}, row.byte);
    EXPECT_EQ(stream.readChar(), row.character);
    EXPECT_EQ(stream.counts, std::vector<int>{1});
  }
}

TEST(VRELInputStreamTest, SkipReads) {
  struct {
    std::vector<int> results;
    long count;
    long skipped;
    std::vector<int> asked;
  } const rows[] = {
      {{8192, 8192, 3616}, 20000, 20000, {8192, 8192, 3616}},
      {{8192}, 8192, 8192, {8192}},
      {{8192, 1}, 8193, 8193, {8192, 1}},
      // Short reads.
      {{3, 1, 6}, 10, 10, {10, 7, 6}},
      {{3, -1}, 10, 3, {10, 7}},
      {{-1}, 10, 0, {10}},
      // A read of 0 bytes does not end the skip.
      {{0, 4, 0, 0, 6}, 10, 10, {10, 10, 6, 6, 6}},
      {{4, 0, -1}, 10, 4, {10, 6, 6}},
      // Invalid results.
      {{-7}, 10, 0, {10}},
      {{2, -2, 8}, 10, 2, {10, 8}},
      // Nothing to do.
      {{1}, 0, 0, {}},
      {{1}, -1, 0, {}},
      {{1}, -9223372036854775807L - 1, 0, {}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.results) + " for " + std::to_string(row.count));
    ScriptedStream stream(row.results);
    EXPECT_EQ(stream.skip(row.count), row.skipped);
    EXPECT_EQ(stream.counts, row.asked);
  }
}

TEST(VRELInputStreamTest, SkipContinuesWhileReadReturnsZero) {
  std::vector<int> results(100000, 0);
  results.push_back(7);
  results.insert(results.end(), 1000, 0);
  results.push_back(-1);
  ScriptedStream stream(results);
  EXPECT_EQ(stream.skip(10), 7);
  EXPECT_EQ(stream.counts.size(), 101002U);
}

TEST(VRELInputStreamTest, SkipSharesOneBlock) {
  ScriptedStream first({1});
  ScriptedStream second({1});
  first.skip(2);
  second.skip(1);
  ASSERT_EQ(first.buffers.size(), 2u);
  ASSERT_EQ(second.buffers.size(), 1u);
  EXPECT_NE(first.buffers[0], nullptr);
  EXPECT_EQ(first.buffers[0], first.buffers[1]);
  EXPECT_EQ(first.buffers[0], second.buffers[0]);
}

TEST(VRELInputStreamTest, UnsupportedOperationsRaise) {
  RecordingListener const listener;
  ScriptedStream stream({1});
  EXPECT_EQ(Raised([&] { stream.available(); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { stream.add(Gk_String("a")); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { stream.getCurrentOffset(); }), "Gk_IOException");
  EXPECT_EQ(Raised([&] { stream.setOffset(0); }), "Gk_IOException");
  EXPECT_EQ(listener.Texts(), std::vector<std::string>(4, "Gk_IOException"));
  EXPECT_TRUE(stream.counts.empty());
}

}  // namespace
