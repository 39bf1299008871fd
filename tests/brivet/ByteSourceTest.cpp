#include "ByteSource.h"

#include <gtest/gtest.h>

#include "TextSource.h"

TEST(ByteSourceTest, GivesEachByteAcrossBlocksAndThenTheEnd) {
  ByteSource source = TextSource("ab\xFF", 2);
  EXPECT_EQ(source.Peek(), 'a');
  EXPECT_EQ(source.Take(), 'a');
  EXPECT_EQ(source.Take(), 'b');
  EXPECT_EQ(source.Peek(), 255);
  EXPECT_EQ(source.Take(), 255);
  EXPECT_EQ(source.Peek(), ByteSource::END);
  EXPECT_EQ(source.Take(), ByteSource::END);
}

TEST(ByteSourceTest, AsksForNothingBehindTheEnd) {
  int calls = 0;
  ByteSource source([&calls](char*, std::size_t) {
    ++calls;
    return std::size_t{0};
  });
  EXPECT_EQ(source.Take(), ByteSource::END);
  EXPECT_EQ(source.Take(), ByteSource::END);
  EXPECT_EQ(calls, 1);
}
