#include "StepTypes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

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

// Names in one bucket of a table with std::hash: 2,000 entries have 2,357 buckets in libstdc++.
TEST(StepTypesTest, NamesThatCollideUnderStandardHash) {
  constexpr std::size_t kNames = 2000;
  std::unordered_set<std::string> standard;
  for (std::size_t i = 0; i < kNames; ++i) standard.insert("T" + std::to_string(i));
  std::vector<std::string> colliding;
  for (long i = 0; colliding.size() < kNames; ++i) {
    std::string name = "A" + std::to_string(i);
    if (standard.bucket(name) == 0) colliding.push_back(std::move(name));
  }
  auto const seconds = [](std::vector<std::string> const& names) {
    double best = 1e9;
    for (int run = 0; run < 5; ++run) {
      StepTypes types;
      std::clock_t const start = std::clock();
      for (int round = 0; round < 20; ++round) {
        for (std::string const& name : names) types.Count(name);
      }
      best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
      EXPECT_EQ(types.Size(), names.size());
    }
    return best;
  };
  std::vector<std::string> const ordinary(standard.begin(), standard.end());
  EXPECT_LE(seconds(colliding), 3 * seconds(ordinary));
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

// Names that begin and end alike, or are the bytes of a longer one, are not taken for each other.
TEST(StepTypesTest, DistinguishesSimilarNames) {
  std::vector<std::string> const names = {"A",
                                          "AA",
                                          "AAAAAAA",
                                          "AAAAAAAA",
                                          "AAAAAAAAA",
                                          "ABCDEFGHIJKLMNOP",
                                          "ABCDEFGHABCDEFGH",
                                          "ABCDEFGHXABCDEFGH",
                                          "ABCDEFGHYABCDEFGH",
                                          "ABCDEFGHYYABCDEFGH"};
  StepTypes types;
  for (int round = 0; round < 3; ++round) {
    for (std::uint32_t i = 0; i < names.size(); ++i) EXPECT_EQ(types.Count(names[i]), i) << names[i];
  }
  EXPECT_EQ(types.Size(), names.size());
}

TEST(StepTypesTest, FindAddsTypeWithoutInstances) {
  StepTypes types;
  EXPECT_EQ(types.Find("LINE"), 0U);
  EXPECT_EQ(types.Instances(0), 0);
  types.Count(0);
  EXPECT_EQ(types.Find("LINE"), 0U);
  EXPECT_EQ(types.Instances(0), 1);
}
