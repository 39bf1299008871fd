#include "VRELPair.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(VRELPairTest, DefaultsAreZero) {
  VRELPair<int, void*> const pair;
  EXPECT_EQ(pair.key, 0);
  EXPECT_EQ(pair.value, nullptr);
}

TEST(VRELPairTest, StoresCopies) {
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

TEST(VRELPairTest, AssignsBothParts) {
  VRELPair<int, std::string> const source(7, "value");
  VRELPair<int, std::string> target;
  EXPECT_EQ(&(target = source), &target);
  EXPECT_EQ(target.key, 7);
  EXPECT_EQ(target.value, "value");
  VRELPair<int, std::string> const copy(source);
  EXPECT_EQ(copy.value, "value");
}

TEST(VRELPairTest, ComparesBothParts) {
  VRELPair<std::string, int> const pair("a", 1);
  EXPECT_TRUE(pair == (VRELPair<std::string, int>("a", 1)));
  EXPECT_FALSE(pair != (VRELPair<std::string, int>("a", 1)));
  EXPECT_TRUE(pair != (VRELPair<std::string, int>("b", 1)));
  EXPECT_TRUE(pair != (VRELPair<std::string, int>("a", 2)));
}

TEST(VRELPairTest, BindsKeyAndValue) {
  VRELPair<std::string, int> const pair("a", 1);
  auto const& [key, value] = pair;
  EXPECT_EQ(&key, &pair.GetKey());
  EXPECT_EQ(&value, &pair.GetValue());
}

}  // namespace
