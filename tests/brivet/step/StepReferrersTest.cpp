#include "StepReferrers.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <utility>
#include <vector>

#include "InputError.h"

namespace {

using Pairs = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

// Requires: ascending sources.
StepReferrers::Traversal TraversalOf(Pairs const& pairs, int& passes) {
  return [&pairs, &passes](StepReferrers::Note const& note) {
    ++passes;
    for (auto const& [source, target] : pairs) note(source, target);
  };
}

std::vector<std::uint32_t> Of(StepReferrers& referrers, std::uint32_t target) {
  StepReferrers::Range const range = referrers.Of(target);
  return {range.begin(), range.end()};
}

}  // namespace

TEST(StepReferrersTest, ReturnsEachReferrerOnce) {
  Pairs const pairs = {{0, 2}, {0, 2}, {0, 1}, {0, 2}, {1, 2}, {2, 2}, {2, 0}};
  int passes = 0;
  StepReferrers referrers(3, TraversalOf(pairs, passes));
  EXPECT_EQ(passes, 1);
  EXPECT_EQ(Of(referrers, 0), (std::vector<std::uint32_t>{2}));
  EXPECT_EQ(Of(referrers, 1), (std::vector<std::uint32_t>{0}));
  EXPECT_EQ(Of(referrers, 2), (std::vector<std::uint32_t>{0, 1, 2}));
  EXPECT_EQ(passes, 2);
}

TEST(StepReferrersTest, TakesEmptyDocument) {
  int passes = 0;
  StepReferrers(0, TraversalOf({}, passes));
  Pairs const none;
  StepReferrers referrers(2, TraversalOf(none, passes));
  EXPECT_TRUE(Of(referrers, 0).empty());
  EXPECT_TRUE(Of(referrers, 1).empty());
}

// Each of 1,100 instances refers to all: more than are kept at once.
TEST(StepReferrersTest, ManyReferencesTakeMorePasses) {
  constexpr std::uint32_t kCount = 1100;
  int passes = 0;
  StepReferrers referrers(kCount, [&passes](StepReferrers::Note const& note) {
    ++passes;
    for (std::uint32_t source = 0; source < kCount; ++source) {
      for (std::uint32_t target = 0; target < kCount; ++target) note(source, target);
    }
  });
  for (int round = 1; round <= 2; ++round) {
    for (std::uint32_t target = 0; target < kCount; ++target) {
      StepReferrers::Range const range = referrers.Of(target);
      ASSERT_EQ(range.end() - range.begin(), kCount);
      ASSERT_EQ(range.begin()[0], 0U);
      ASSERT_EQ(range.begin()[kCount - 1], kCount - 1);
    }
    // The referrers of 953 instances are at most 2^20: one pass counts, two collect.
    EXPECT_EQ(passes, 1 + 2 * round);
  }
}

// In a large document two referrers for each instance are kept.
TEST(StepReferrersTest, KeepsTwoReferrersEach) {
  constexpr std::uint32_t kCount = 600'000;
  for (std::uint32_t const each : {2U, 3U}) {
    int passes = 0;
    StepReferrers referrers(kCount, [&passes, each](StepReferrers::Note const& note) {
      ++passes;
      for (std::uint32_t source = 0; source < kCount; ++source) {
        for (std::uint32_t i = 0; i < each; ++i) note(source, (source + i) % kCount);
      }
    });
    for (std::uint32_t target = 0; target < kCount; ++target) {
      StepReferrers::Range const range = referrers.Of(target);
      ASSERT_EQ(range.end() - range.begin(), each);
    }
    EXPECT_EQ(passes, each == 2 ? 2 : 3);
  }
}

// A file can change between two passes.
TEST(StepReferrersTest, DetectsChangedReferences) {
  Pairs const counted = {{0, 0}, {0, 1}, {1, 1}, {2, 2}};
  for (Pairs const& found : {Pairs{}, Pairs{{0, 0}, {0, 1}, {1, 1}}, Pairs{{0, 0}, {0, 1}, {1, 1}, {2, 2}, {3, 2}},
                             Pairs{{0, 0}, {0, 1}, {1, 0}, {2, 2}}, Pairs{{0, 0}, {0, 1}, {0, 1}, {2, 2}},
                             Pairs{{0, 0}, {0, 1}, {1, 1}, {2, 2}, {3, 0}}}) {
    bool isFirst = true;
    bool changes = true;
    StepReferrers referrers(3, [&](StepReferrers::Note const& note) {
      for (auto const& [source, target] : isFirst || !changes ? counted : found) note(source, target);
      isFirst = false;
    });
    try {
      referrers.Of(0);
      ADD_FAILURE() << "no error";
    } catch (InputError const& error) {
      EXPECT_EQ(error.result, VREL_E_INVALID_FILE);
      EXPECT_EQ(error.text, "the references are not those that were counted");
    }
    // The counts are unchanged.
    changes = false;
    EXPECT_EQ(Of(referrers, 1), (std::vector<std::uint32_t>{0, 1}));
  }
}

TEST(StepReferrersTest, AgreesWithModel) {
  std::mt19937 random(7);
  for (std::uint32_t const count : {1U, 5U, 300U, 3000U}) {
    Pairs pairs;
    std::vector<std::set<std::uint32_t>> model(count);
    for (std::uint32_t source = 0; source < count; ++source) {
      for (std::size_t left = random() % 12; left > 0; --left) {
        auto const target = static_cast<std::uint32_t>(random() % 3 == 0 ? 0 : random() % count);
        pairs.emplace_back(source, target);
        model[target].insert(source);
      }
    }
    int passes = 0;
    StepReferrers referrers(count, TraversalOf(pairs, passes));
    for (std::uint32_t target = 0; target < count; ++target) {
      ASSERT_EQ(Of(referrers, target), std::vector<std::uint32_t>(model[target].begin(), model[target].end()));
    }
    // In descending order as well.
    EXPECT_EQ(Of(referrers, 0), std::vector<std::uint32_t>(model[0].begin(), model[0].end()));
  }
}

TEST(StepReferrersTest, KeepsUpToGivenCount) {
  constexpr std::uint32_t kCount = 1100;
  int passes = 0;
  StepReferrers referrers(
      kCount,
      [&passes](StepReferrers::Note const& note) {
        ++passes;
        for (std::uint32_t source = 0; source < kCount; ++source) {
          for (std::uint32_t target = 0; target < kCount; ++target) note(source, target);
        }
      },
      std::uint64_t(kCount) * kCount);
  for (std::uint32_t target = 0; target < kCount; ++target) {
    StepReferrers::Range const range = referrers.Of(target);
    ASSERT_EQ(range.end() - range.begin(), kCount);
  }
  EXPECT_EQ(passes, 2);
}
