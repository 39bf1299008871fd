#include "StepBlockCache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

#include "StepFixture.h"

namespace {

constexpr std::size_t kSize = 1000000;

// The number of each byte's place, in lines of ten bytes: "#00000010\n#00000020\n"...
std::string NumberedLines() {
  std::string text;
  while (text.size() < kSize) {
    std::string const number = std::to_string(text.size());
    text += "#" + std::string(8 - number.size(), '0') + number + "\n";
  }
  return text;
}

}  // namespace

// Also where blocks meet, and after blocks that have the same slot.
TEST(StepBlockCacheTest, FindsBytes) {
  std::string const text = NumberedLines();
  BytesInFile file(text);
  StepBlockCache cache(file.Buffer());
  auto const expectAt = [&](std::size_t offset) {
    char const* const bytes = cache.BytesAt(offset);
    ASSERT_NE(bytes, nullptr) << offset;
    EXPECT_EQ(std::string_view(bytes, 10), std::string_view(text).substr(offset, 10)) << offset;
  };
  for (std::size_t const offset : {0UL, 10UL, 16380UL, 16390UL, 262140UL, 0UL, 524280UL, 983040UL, 20UL, kSize - 10}) {
    expectAt(offset);
  }
  // Forwards, backwards and at three positions.
  for (std::size_t offset = 0; offset + 10 <= kSize; offset += 990) expectAt(offset);
  for (std::size_t offset = kSize; offset >= 10; offset -= std::min<std::size_t>(offset, 4990)) expectAt(offset - 10);
  for (std::size_t offset = 0; offset < kSize / 3; offset += 1230) {
    for (std::size_t const start : {0UL, 300000UL, 600000UL}) expectAt(start + offset);
  }
  EXPECT_FALSE(cache.HasFailed());
  EXPECT_NO_THROW(cache.RethrowFailure());
}

TEST(StepBlockCacheTest, EndsWithNul) {
  BytesInFile file("abc");
  StepBlockCache cache(file.Buffer());
  EXPECT_STREQ(cache.BytesAt(1), "bc");
  EXPECT_STREQ(cache.BytesAt(3), "");
  EXPECT_STREQ(cache.BytesAt(1000), "");
  EXPECT_STREQ(cache.BytesAt(UINT64_C(1) << 40U), "");
}

TEST(StepBlockCacheTest, ReadsNothingAfterFailure) {
  BytesInFile file(NumberedLines());
  StepBlockCache cache(file.Buffer());
  cache.Fail(std::make_exception_ptr(std::runtime_error("no more")));
  EXPECT_TRUE(cache.HasFailed());
  EXPECT_EQ(cache.BytesAt(0), nullptr);
  EXPECT_THROW(cache.RethrowFailure(), std::runtime_error);
}
