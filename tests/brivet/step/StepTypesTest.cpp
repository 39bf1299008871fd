#include "StepTypes.h"

#include <gtest/gtest.h>

#include <string>

TEST(StepTypesTest, NumbersTypesInOrder) {
  StepTypes types;
  EXPECT_EQ(types.Size(), 0U);
  EXPECT_EQ(types.Count("LINE"), 0U);
  EXPECT_EQ(types.Count("PLANE"), 1U);
  EXPECT_EQ(types.Count("LINE"), 0U);
  ASSERT_EQ(types.Size(), 2U);
  EXPECT_EQ(types.Name(0), "LINE");
  EXPECT_EQ(types.Instances(0), 2);
  EXPECT_EQ(types.Name(1), "PLANE");
  EXPECT_EQ(types.Instances(1), 1);
}

TEST(StepTypesTest, MergesTypesBeyondLimit) {
  StepTypes types;
  for (std::size_t i = 0; i < StepTypes::kLimit; ++i) ASSERT_EQ(types.Count("T" + std::to_string(i)), i);
  EXPECT_EQ(types.Count("X"), StepTypes::kLimit);
  EXPECT_EQ(types.Count("Y"), StepTypes::kLimit);
  EXPECT_EQ(types.Count("T7"), 7U);
  EXPECT_EQ(types.Size(), StepTypes::kLimit + 1);
  EXPECT_EQ(types.Name(StepTypes::kLimit), "(other types)");
  EXPECT_EQ(types.Instances(StepTypes::kLimit), 2);
}

TEST(StepTypesTest, MergesLongNames) {
  StepTypes types;
  std::string const longest(StepTypes::kNameLimit, 'A');
  EXPECT_EQ(types.Count(longest), 0U);
  EXPECT_EQ(types.Name(0), longest);
  EXPECT_EQ(types.Count(longest + "A"), 1U);
  EXPECT_EQ(types.Count(longest + "B"), 1U);
  EXPECT_EQ(types.Name(1), "(other types)");
}

// More types than the cache has slots, in turn.
TEST(StepTypesTest, CountsManyTypesInTurn) {
  StepTypes types;
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 3000; ++i) EXPECT_EQ(types.Count("TYPE_" + std::to_string(i)), static_cast<std::uint32_t>(i));
  }
  EXPECT_EQ(types.Size(), 3000U);
  EXPECT_EQ(types.Instances(2999), 3);
  EXPECT_EQ(types.Name(2999), "TYPE_2999");
}
