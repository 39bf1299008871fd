#include "StepLosses.h"

#include <gtest/gtest.h>

TEST(StepLossesTest, AddsLosses) {
  std::vector<Loss> document;
  StepLosses losses(document);
  EXPECT_EQ(losses.Count(), 0);
  EXPECT_FALSE(losses.IsIncomplete());
  losses.Add({3, 4, {"#5"}, "r"});
  losses.AddIncomplete(9, "end");
  EXPECT_EQ(losses.Count(), 1);
  EXPECT_TRUE(losses.IsIncomplete());
  ASSERT_EQ(document.size(), 2U);
  EXPECT_EQ(document[0].instances, std::vector<std::string>{"#5"});
  EXPECT_EQ(document[1].firstLine, 9);
  EXPECT_EQ(document[1].lastLine, 9);
  EXPECT_EQ(document[1].reason, "end");
}

TEST(StepLossesTest, LastLossCoversThoseBeyondLimit) {
  std::vector<Loss> document;
  StepLosses losses(document);
  for (long line = 1; line <= 100'003; ++line) losses.Add({line, line, {"#" + std::to_string(line)}, "r"});
  EXPECT_EQ(losses.Count(), 100'003);
  ASSERT_EQ(document.size(), 100'000U);
  EXPECT_EQ(document.back().firstLine, 100'000);
  EXPECT_EQ(document.back().lastLine, 100'003);
  EXPECT_EQ(document.back().instances, (std::vector<std::string>{"#100000", "#100001", "#100002", "#100003"}));
}
