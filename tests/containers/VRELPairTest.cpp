#include "VRELPair.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(VRELPairTest, StartsWithDefaults) {
  VRELPair<int, void*> const pair;
  EXPECT_EQ(pair.key, 0);
  EXPECT_EQ(pair.value, nullptr);
}

TEST(VRELPairTest, HoldsCopiesOfKeyAndValue) {
  std::string text = "value";
  VRELPair<int, std::string> pair(7, text);
  text = "changed";
  EXPECT_EQ(pair.GetKey(), 7);
  EXPECT_EQ(pair.GetValue(), "value");
  VRELPair<int, std::string> const& constant = pair;
  EXPECT_EQ(&constant.GetKey(), &pair.key);
  EXPECT_EQ(&constant.GetValue(), &pair.value);
  pair.GetKey() = 8;
  pair.GetValue() += "s";
  EXPECT_EQ(pair.key, 8);
  EXPECT_EQ(pair.value, "values");
}

TEST(VRELPairTest, IsAssigned) {
  VRELPair<int, std::string> const source(7, "value");
  VRELPair<int, std::string> target;
  EXPECT_EQ(&(target = source), &target);
  EXPECT_EQ(target.key, 7);
  EXPECT_EQ(target.value, "value");
  VRELPair<int, std::string> const copy(source);
  EXPECT_EQ(copy.value, "value");
}

}  // namespace
