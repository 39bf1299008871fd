#include "StepIds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "StepHash.h"

namespace {

DocumentVisitor::Id IdOf(std::string const& digits) {
  DocumentVisitor::Id id;
  id.digits = digits;
  if (digits.size() <= 18) id.number = std::stoll(digits);
  return id;
}

using Pairs = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

// Ids in the order of instances, each at its own offset, and the duplicates that were reported.
struct Indexed {
  explicit Indexed(std::vector<std::string> digits) : texts(std::move(digits)) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      numbers.push_back(StepIds::NumberOf(IdOf(texts[i]), 1000 + i));
      ids.Add(numbers.back());
    }
    Index();
  }
  Indexed(Indexed const&) = delete;
  Indexed& operator=(Indexed const&) = delete;
  void Index() {
    duplicates.clear();
    auto const indexed = static_cast<std::uint32_t>(
        numbers.size() - static_cast<std::size_t>(std::count(numbers.begin(), numbers.end(), StepIds::kLeftOut)));
    ids.Index(indexed,
              [this](std::uint32_t instance, std::uint32_t first) { duplicates.emplace_back(instance, first); });
  }

  std::vector<std::string> texts;
  std::vector<std::uint64_t> numbers;
  Pairs duplicates;
  StepIds ids{[this](std::uint32_t instance) { return numbers[instance]; },
              [this](std::uint64_t offset, std::size_t limit) { return texts.at(offset - 1000).substr(0, limit); }};
};

}  // namespace

TEST(StepIdsTest, NumberIsIdOrOffset) {
  EXPECT_EQ(StepIds::NumberOf(IdOf("0"), 77), 0U);
  EXPECT_EQ(StepIds::NumberOf(IdOf("999999999999999999"), 77), 999999999999999999U);
  EXPECT_EQ(StepIds::NumberOf(IdOf("1000000000000000000"), 77), 9223372036854775885U);
}

TEST(StepIdsTest, LongestRunIsThatOfFoundIds) {
  Indexed const runs({"40", "5", "6", "7", "20", "21"});
  EXPECT_EQ(runs.ids.LongestRun().id, 5U);
  EXPECT_EQ(runs.ids.LongestRun().instance, 1U);
  EXPECT_EQ(runs.ids.LongestRun().length, 3U);
  // The index of other forms decides which instance of a duplicate is found.
  Indexed const duplicate({"1", "2", "3", "2"});
  EXPECT_EQ(duplicate.ids.LongestRun().length, 0U);
}

TEST(StepIdsTest, AcceptsIdsOfAnyLength) {
  std::vector<std::string> const digits = {
      "5", "2147483647", "2147483648", "999999999999999999", "9223372036854775808", "123456789012345678901234567890"};
  Indexed indexed(digits);
  std::string text;
  for (std::uint32_t i = 0; i < digits.size(); ++i) {
    DocumentVisitor::Id const id = indexed.ids.IdOf(indexed.numbers[i], text);
    EXPECT_EQ(id.digits, digits[i]);
    EXPECT_EQ(id.number, i < 4 ? std::stoll(digits[i]) : -1);
    EXPECT_EQ(indexed.ids.Find(id), i);
  }
  EXPECT_EQ(indexed.ids.Count(), 6U);
  EXPECT_EQ(indexed.ids.Find(IdOf("4")), StepIds::kNone);
  EXPECT_EQ(indexed.ids.Find(IdOf("123456789012345678901234567891")), StepIds::kNone);
}

TEST(StepIdsTest, IndexReportsDuplicates) {
  for (std::string const& far : {std::string("3"), std::string("4000000000"), std::string("12345678901234567890")}) {
    Indexed indexed({"1", far, "2", far, "1", far});
    Pairs const expected = {{3, 1}, {4, 0}, {5, 1}};
    EXPECT_EQ(indexed.duplicates, expected) << far;
    EXPECT_EQ(indexed.ids.Find(IdOf(far)), 1U);
    // Repeated.
    indexed.Index();
    EXPECT_EQ(indexed.duplicates, expected) << far;
  }
}

TEST(StepIdsTest, IndexSkipsLeftOutInstances) {
  for (std::string const& far : {std::string("1"), std::string("4000000000"), std::string("12345678901234567890")}) {
    Indexed indexed({far, far});
    EXPECT_EQ(indexed.duplicates.size(), 1U);
    indexed.numbers[0] = StepIds::kLeftOut;
    indexed.Index();
    EXPECT_TRUE(indexed.duplicates.empty());
    EXPECT_EQ(indexed.ids.Find(IdOf(far)), 1U);
  }
}

TEST(StepIdsTest, EmptyIndexFindsNothing) {
  Indexed indexed({});
  for (char const* id : {"0", "5000", "12345678901234567890"}) EXPECT_EQ(indexed.ids.Find(IdOf(id)), StepIds::kNone);
}

TEST(StepIdsTest, FindBeforeIndexReturnsNone) {
  StepIds ids([](std::uint32_t) { return 1U; }, [](std::uint64_t, std::size_t) { return std::string(); });
  ids.Add(1);
  EXPECT_EQ(ids.Find(IdOf("1")), StepIds::kNone);
  EXPECT_EQ(ids.Find(IdOf("12345678901234567890")), StepIds::kNone);
}

// Ids that would all have slot 0 of the 4,001 slots if the hash function had no seed.
TEST(StepIdsTest, IdsThatCollideWithoutSeed) {
  constexpr std::size_t kIds = 3000;
  std::vector<std::string> colliding;
  for (std::uint64_t id = 1; colliding.size() < kIds; ++id) {
    if (MixBits(id) % 4001 == 0) colliding.push_back(std::to_string(id));
  }
  std::mt19937_64 random(7);
  std::vector<std::string> ordinary;
  for (std::size_t i = 0; i < kIds; ++i) ordinary.push_back(std::to_string(random() % std::stoull(colliding.back())));
  auto const seconds = [](std::vector<std::string> const& digits) {
    Indexed indexed(digits);
    double best = 1e9;
    for (int run = 0; run < 5; ++run) {
      std::clock_t const start = std::clock();
      for (int round = 0; round < 10; ++round) indexed.Index();
      for (int round = 0; round < 10; ++round) {
        for (std::string const& each : digits) EXPECT_NE(indexed.ids.Find(IdOf(each)), StepIds::kNone);
      }
      best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return best;
  };
  EXPECT_LE(seconds(colliding), 3 * seconds(ordinary));
}

TEST(StepIdsTest, AgreesWithMap) {
  std::mt19937_64 random(20261120);
  for (std::uint64_t const range : {std::uint64_t(2000), std::uint64_t(1) << 31U, std::uint64_t(1) << 40U}) {
    std::map<std::string, std::uint32_t> model;
    std::vector<std::string> digits;
    for (std::uint32_t i = 0; i < 2000; ++i) {
      std::string id = std::to_string(random() % range);
      if (range > 2000 && i % 50 == 0) id += "00000000000000000000";
      model.emplace(id, i);
      digits.push_back(id);
    }
    Indexed indexed(digits);
    EXPECT_EQ(indexed.duplicates.size(), 2000 - model.size());
    for (auto const& [id, instance] : model) ASSERT_EQ(indexed.ids.Find(IdOf(id)), instance) << id;
    for (int i = 0; i < 2000; ++i) {
      std::string const id = std::to_string(random() % (2 * range));
      auto const place = model.find(id);
      ASSERT_EQ(indexed.ids.Find(IdOf(id)), place == model.end() ? StepIds::kNone : place->second) << id;
    }
  }
}

namespace {

// Ids in runs: pairs of the first id and the length.
std::vector<std::string> Runs(std::vector<std::pair<long, long>> const& runs) {
  std::vector<std::string> ids;
  for (auto const& [first, length] : runs) {
    for (long i = 0; i < length; ++i) ids.push_back(std::to_string(first + i));
  }
  return ids;
}

}  // namespace

TEST(StepIdsTest, FindsInRuns) {
  for (std::vector<std::pair<long, long>> const& runs : {std::vector<std::pair<long, long>>{{1, 100}},
                                                         {{0, 3}},
                                                         {{5, 1}},
                                                         {{500, 10}, {1, 14}, {16, 300}, {15, 1}},
                                                         {{4294967290, 20}, {7, 2}},
                                                         {{1, 5}, {10, 5}, {20, 5}}}) {
    std::vector<std::string> const digits = Runs(runs);
    Indexed indexed(digits);
    EXPECT_TRUE(indexed.duplicates.empty());
    std::map<long, std::uint32_t> model;
    for (std::uint32_t i = 0; i < digits.size(); ++i) model.emplace(std::stol(digits[i]), i);
    for (auto const& [first, length] : runs) {
      for (long id = std::max(0L, first - 3); id < first + length + 3; ++id) {
        auto const place = model.find(id);
        ASSERT_EQ(indexed.ids.Find(IdOf(std::to_string(id))), place == model.end() ? StepIds::kNone : place->second)
            << id;
      }
    }
    EXPECT_EQ(indexed.ids.Find(IdOf("12345678901234567890")), StepIds::kNone);
    EXPECT_EQ(indexed.ids.Find(IdOf("999999999999999999")), StepIds::kNone);
  }
}

TEST(StepIdsTest, RunsThatOverlapHaveDuplicates) {
  // Instances 0 to 4 have the ids 10 to 14, 5 to 7 the ids 1 to 3, 8 to 10 the ids 14 to 16, and 11 the id 2.
  Indexed indexed(Runs({{10, 5}, {1, 3}, {14, 3}, {2, 1}}));
  EXPECT_EQ(indexed.duplicates, (Pairs{{8, 4}, {11, 6}}));
  EXPECT_EQ(indexed.ids.Find(IdOf("14")), 4U);
  EXPECT_EQ(indexed.ids.Find(IdOf("2")), 6U);
  EXPECT_EQ(indexed.ids.Find(IdOf("16")), 10U);
}

TEST(StepIdsTest, LeftOutInstanceOfRunIsNotFound) {
  Indexed indexed(Runs({{1, 10}}));
  indexed.numbers[4] = StepIds::kLeftOut;
  indexed.Index();
  EXPECT_EQ(indexed.ids.Find(IdOf("5")), StepIds::kNone);
  EXPECT_EQ(indexed.ids.Find(IdOf("6")), 5U);
}

// More runs than are kept.
TEST(StepIdsTest, FindsInManyRuns) {
  for (long const step : {2L, 1000L}) {
    std::vector<std::pair<long, long>> runs;
    for (long i = 0; i < 200; ++i) runs.emplace_back((200 - i) * step, 1);
    Indexed indexed(Runs(runs));
    for (long i = 0; i < 200; ++i) {
      EXPECT_EQ(indexed.ids.Find(IdOf(std::to_string((200 - i) * step))), static_cast<std::uint32_t>(i));
      EXPECT_EQ(indexed.ids.Find(IdOf(std::to_string((200 - i) * step + 1))), StepIds::kNone);
    }
  }
}
