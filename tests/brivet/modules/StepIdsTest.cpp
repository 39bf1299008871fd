#include "StepIds.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

DocumentVisitor::Id IdOf(std::string const& digits) {
  DocumentVisitor::Id id;
  id.digits = digits;
  if (digits.size() <= 18) id.number = std::stoll(digits);
  return id;
}

// Ids in the order of instances, and the pairs that were told as used twice.
struct Filled {
  explicit Filled(std::vector<std::string> const& digits) {
    for (std::string const& each : digits) kept.push_back(ids.Add(ids.NumberOf(IdOf(each))));
    Sort();
  }
  void Sort() {
    ids.Sort([this](std::uint32_t i) { return kept[i]; },
             [this](std::uint32_t instance, std::uint32_t first) { twice.emplace_back(instance, first); });
  }
  StepIds ids;
  std::vector<int> kept;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> twice;
};

}  // namespace

TEST(StepIdsTest, KeepsShortIdsWithTheInstanceAndLongOnesItself) {
  std::vector<std::string> const digits = {
      "5", "2147483647", "2147483648", "999999999999999999", "9223372036854775808", "123456789012345678901234567890"};
  Filled filled(digits);
  EXPECT_EQ(filled.kept, (std::vector<int>{5, 2147483647, -1, -1, -1, -1}));
  for (std::uint32_t i = 0; i < digits.size(); ++i) {
    EXPECT_EQ(filled.ids.DigitsOf(filled.ids.NumberAt(i, filled.kept[i])), digits[i]);
    EXPECT_EQ(filled.ids.Find(IdOf(digits[i])), i);
  }
  EXPECT_EQ(filled.ids.Count(), 6U);
  EXPECT_EQ(filled.ids.Find(IdOf("4")), StepIds::NONE);
  EXPECT_EQ(filled.ids.Find(IdOf("123456789012345678901234567891")), StepIds::NONE);
}

TEST(StepIdsTest, TellsOfIdsThatAreUsedTwice) {
  for (std::string const& far : {std::string("3"), std::string("4000000000"), std::string("12345678901234567890")}) {
    Filled filled({"1", far, "2", far, "1", far});
    EXPECT_EQ(filled.twice, (std::vector<std::pair<std::uint32_t, std::uint32_t>>{{3, 1}, {4, 0}, {5, 1}})) << far;
    EXPECT_EQ(filled.ids.Find(IdOf(far)), 1U);
  }
}

TEST(StepIdsTest, LeavesInstancesOut) {
  for (std::string const& far : {std::string("3"), std::string("4000000000")}) {
    StepIds ids;
    int const kept = ids.Add(ids.NumberOf(IdOf(far)));
    ids.Add(ids.NumberOf(IdOf(far)));
    int calls = 0;
    ids.Sort([&](std::uint32_t i) { return i == 0 ? StepIds::LEFT_OUT : kept; },
             [&](std::uint32_t, std::uint32_t) { ++calls; });
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(ids.Find(IdOf(far)), 1U);
  }
}

TEST(StepIdsTest, FindsNothingInNothing) {
  Filled filled({});
  EXPECT_EQ(filled.ids.Find(IdOf("0")), StepIds::NONE);
  EXPECT_EQ(filled.ids.Find(IdOf("5000")), StepIds::NONE);
}

TEST(StepIdsTest, AgreesWithAMap) {
  std::mt19937_64 random(20261120);
  for (std::uint64_t const range : {std::uint64_t(3000), std::uint64_t(1) << 31, std::uint64_t(1) << 40}) {
    std::map<std::string, std::uint32_t> model;
    std::vector<std::string> digits;
    for (std::uint32_t i = 0; i < 2000; ++i) {
      std::string id = std::to_string(random() % range);
      if (range > 3000 && i % 50 == 0) id += "00000000000000000000";
      model.emplace(id, i);
      digits.push_back(id);
    }
    Filled filled(digits);
    EXPECT_EQ(filled.twice.size(), 2000 - model.size());
    for (auto const& [id, instance] : model) ASSERT_EQ(filled.ids.Find(IdOf(id)), instance) << id;
    for (int i = 0; i < 2000; ++i) {
      std::string const id = std::to_string(random() % range);
      auto const place = model.find(id);
      ASSERT_EQ(filled.ids.Find(IdOf(id)), place == model.end() ? StepIds::NONE : place->second) << id;
    }
  }
}
