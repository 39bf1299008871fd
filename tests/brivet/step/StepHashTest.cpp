#include "StepHash.h"

#include <gtest/gtest.h>

#include <set>

TEST(StepHashTest, DependsOnSeedAndString) {
  EXPECT_EQ(HashString("LINE", 1), HashString("LINE", 1));
  EXPECT_NE(HashString("LINE", 1), HashString("LINE", 2));
  EXPECT_NE(HashString("LINE", 1), HashString("LIME", 1));
  EXPECT_NE(HashString("", 1), HashString(std::string_view("\0", 1), 1));
  EXPECT_NE(HashString("12345678", 1), HashString(std::string_view("12345678\0", 9), 1));
}

// Keys that collide in one table do not collide in another.
TEST(StepHashTest, EachObjectHasItsSeed) {
  std::set<std::size_t> hashes;
  for (int i = 0; i < 10; ++i) hashes.insert(SeededStringHash()("LINE"));
  EXPECT_GT(hashes.size(), 1U);
}
