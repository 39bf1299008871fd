#include "VRELArraySort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "VRELString.h"

namespace {

// An element with an identity in addition to its key.
struct Keyed {
  int key = 0;
  int identity = 0;

  bool operator>(Keyed const& other) const { return key > other.key; }
  bool operator<=(Keyed const& other) const { return key <= other.key; }
  bool operator==(Keyed const& other) const { return key == other.key && identity == other.identity; }
};

using Keys = std::vector<int>;

std::vector<Keyed> Identified(Keys const& keys) {
  std::vector<Keyed> elements;
  for (int key : keys) elements.push_back({key, static_cast<int>(elements.size())});
  return elements;
}

// The steps of the sort as a recursive function, until they end or the number of partitions is reached.
class SortModel {
 public:
  SortModel(std::vector<Keyed> start, int limit) : elements(std::move(start)), partitionsLeft(limit) {}

  bool Sort(int low, int high) {
    if (high == -1) high = static_cast<int>(elements.size()) - 1;
    if (low >= high) return true;
    if (high - 1 == low) {
      if (At(low) > At(high)) std::swap(At(low), At(high));
      return true;
    }
    if (partitionsLeft-- == 0) return false;
    std::swap(At((low + high) / 2), At(low));
    int m = low;
    for (int i = low + 1; i <= high; ++i) {
      if (At(i) <= At(low)) std::swap(At(i), At(++m));
    }
    std::swap(At(low), At(m));
    return Sort(low, m - 1) && Sort(m + 1, high);
  }

  std::vector<Keyed> elements;

 private:
  Keyed& At(int index) { return elements[static_cast<std::size_t>(index)]; }

  int partitionsLeft;
};

template <class T>
VRELDynamicArray<T> ArrayOf(std::vector<T> const& elements) {
  VRELDynamicArray<T> array;
  for (T const& element : elements) array.add(element);
  return array;
}

template <class T>
std::vector<T> Elements(VRELDynamicArray<T> const& array) {
  return {array.begin(), array.end()};
}

std::vector<Keyed> Sorted(Keys const& keys, int low = 0, int high = -1) {
  VRELDynamicArray<Keyed> array = ArrayOf(Identified(keys));
  qsort<Keyed>(array, low, high);
  return Elements(array);
}

bool IsOrderOf(std::vector<Keyed> const& elements, Keys const& keys) {
  std::vector<Keyed> sorted = elements;
  auto const byIdentity = [](Keyed const& a, Keyed const& b) { return a.identity < b.identity; };
  std::sort(sorted.begin(), sorted.end(), byIdentity);
  auto const byKey = [](Keyed const& a, Keyed const& b) { return a.key < b.key; };
  return sorted == Identified(keys) && std::is_sorted(elements.begin(), elements.end(), byKey);
}

// Returns whether the steps end.
bool CheckAgainstModel(Keys const& keys, int low = 0, int high = -1) {
  SortModel model(Identified(keys), 1000 + 200 * static_cast<int>(keys.size()));
  bool const ends = model.Sort(low, high);
  std::vector<Keyed> const sorted = Sorted(keys, low, high);
  if (ends) {
    EXPECT_EQ(sorted, model.elements) << testing::PrintToString(keys);
  } else {
    EXPECT_TRUE(IsOrderOf(sorted, keys)) << testing::PrintToString(keys);
  }
  return ends;
}

TEST(VRELArraySortTest, SortsStringsByCodePoint) {
  VRELDynamicArray<VRELString> array;
  for (wchar_t const* text : {L"rim", L"Hub", L"hub", L"\U0001F600", L"\uFFFD", L"", L"axle", L"hub"}) {
    array.add(VRELString(text));
  }
  qsort<VRELString>(array, 0, -1);
  std::vector<std::string> texts;
  for (VRELString const& text : array) texts.push_back(text.toUtf8());
  EXPECT_EQ(texts,
            (std::vector<std::string>{"", "Hub", "axle", "hub", "hub", "rim", "\xEF\xBF\xBD", "\xF0\x9F\x98\x80"}));
}

TEST(VRELArraySortTest, SortsRanges) {
  auto const sorted = [](Keys const& keys, int low, int high) {
    VRELDynamicArray<int> array = ArrayOf(keys);
    qsort<int>(array, low, high);
    return Elements(array);
  };
  EXPECT_EQ(sorted({9, 8, 7, 6, 5}, 1, 3), (Keys{9, 6, 7, 8, 5}));
  EXPECT_EQ(sorted({9, 8, 7, 6, 5}, 2, -1), (Keys{9, 8, 5, 6, 7}));
  EXPECT_EQ(sorted({9, 8, 7}, 0, 1), (Keys{8, 9, 7}));
  EXPECT_EQ(sorted({9, 8, 7}, 1, 1), (Keys{9, 8, 7}));
  EXPECT_EQ(sorted({9, 8, 7}, 2, 0), (Keys{9, 8, 7}));
  EXPECT_EQ(sorted({9, 8}, 0, -1), (Keys{8, 9}));
  EXPECT_EQ(sorted({9}, 0, -1), Keys{9});
  EXPECT_EQ(sorted({}, 0, -1), Keys{});
}

TEST(VRELArraySortTest, PivotAtFrontSortsWholeArray) {
  VRELDynamicArray<int> array = ArrayOf(Keys{1, 0, 2, 9, 8, 7});
  qsort<int>(array, 0, 2);
  EXPECT_EQ(Elements(array), (Keys{0, 1, 2, 7, 8, 9}));
  array = ArrayOf(Keys{0, 1, 2, 9, 8, 7});  // where 1 is the pivot and lands at index 1
  qsort<int>(array, 0, 2);
  EXPECT_EQ(Elements(array), (Keys{0, 1, 2, 9, 8, 7}));
}

TEST(VRELArraySortTest, ClipsIndexes) {
  struct {
    int low;
    int high;
  } const cases[] = {{-5, -1}, {0, 100}, {-2147483647 - 1, 2147483647}};
  for (auto const& row : cases) {
    VRELDynamicArray<int> array = ArrayOf(Keys{3, 1, 2, 0});
    qsort<int>(array, row.low, row.high);
    EXPECT_EQ(Elements(array), (Keys{0, 1, 2, 3}));
  }
  VRELDynamicArray<int> array = ArrayOf(Keys{3, 1});
  qsort<int>(array, 5, 9);
  qsort<int>(array, 0, -2);
  qsort<int>(array, 5, -1);
  EXPECT_EQ(Elements(array), (Keys{3, 1}));
}

TEST(VRELArraySortTest, EndsIfReferenceStepsNeverEnd) {
  EXPECT_FALSE(CheckAgainstModel({0, 1, 1, 1}));
  EXPECT_TRUE(IsOrderOf(Sorted({0, 1, 1, 1}), {0, 1, 1, 1}));
  EXPECT_FALSE(CheckAgainstModel({1, 1, 1, 1, 0, 1}));
  EXPECT_FALSE(CheckAgainstModel({1, 1, 1, 1, 1, 1, 0, 1}));
}

TEST(VRELArraySortTest, SmallArraysMatchSteps) {
  int endless = 0;
  for (int size = 1; size <= 6; ++size) {
    int const total = static_cast<int>(std::lround(std::pow(size, size)));
    for (int code = 0; code < total; ++code) {
      Keys keys;
      for (int rest = code, i = 0; i < size; ++i, rest /= size) keys.push_back(rest % size);
      if (!CheckAgainstModel(keys)) ++endless;
      if (HasFailure()) return;
    }
  }
  EXPECT_EQ(endless, 20 + 882);  // of 4 and of 6 elements; counted by a model that looks for repeated arrangements
}

TEST(VRELArraySortTest, RandomArraysMatchSteps) {
  std::mt19937 random(24);
  for (int round = 0; round < 20000; ++round) {
    int const size = 1 + static_cast<int>(random() % 40);
    std::size_t const range = 1 + random() % 50;
    Keys keys;
    for (int i = 0; i < size; ++i) keys.push_back(static_cast<int>(random() % range));
    CheckAgainstModel(keys);
    if (HasFailure()) return;
  }
}

TEST(VRELArraySortTest, RandomRangesMatchSteps) {
  std::mt19937 random(25);
  for (int round = 0; round < 20000; ++round) {
    int const size = 2 + static_cast<int>(random() % 20);
    Keys keys;
    for (int i = 0; i < size; ++i) keys.push_back(static_cast<int>(random() % 1000));
    int const low = static_cast<int>(random() % 3);
    int const high = static_cast<int>(random() % static_cast<unsigned int>(size));
    CheckAgainstModel(keys, low, high);
    if (HasFailure()) return;
  }
}

TEST(VRELArraySortTest, SortsLargeArraysIteratively) {
  std::mt19937 random(26);
  std::vector<Keys> cases(4);
  for (int i = 0; i < 50000; ++i) {
    cases[0].push_back(i);
    cases[1].push_back(-i);
    cases[2].push_back(static_cast<int>(random()));
  }
  cases[3] = Keys(5000, 7);  // each partition removes one
  cases[3][2000] = 0;
  for (Keys& keys : cases) {
    EXPECT_TRUE(IsOrderOf(Sorted(keys), keys));
  }
}

TEST(VRELArraySortTest, EndsWithUnorderedElements) {
  double const none = std::numeric_limits<double>::quiet_NaN();
  for (int size = 3; size < 60; ++size) {
    VRELDynamicArray<double> array(size, none);
    qsort<double>(array, 0, -1);
    for (int i = 0; i < size; i += 2) array[i] = size - i;
    qsort<double>(array, 0, -1);
    EXPECT_EQ(array.size(), size);
  }
}

// Every comparison fails, and no two elements are equal.
struct Unordered {
  int identity = 0;
  bool operator>(Unordered const&) const { return false; }
  bool operator<=(Unordered const&) const { return false; }
};

TEST(VRELArraySortTest, EndsWithContradictoryOperators) {
  for (int size = 3; size < 60; ++size) {
    VRELDynamicArray<Unordered> array;
    for (int i = 0; i < size; ++i) array.add({i});
    qsort<Unordered>(array, 0, -1);
    std::vector<int> identities;
    for (Unordered const& each : array) identities.push_back(each.identity);
    std::sort(identities.begin(), identities.end());
    for (int i = 0; i < size; ++i) EXPECT_EQ(identities[static_cast<std::size_t>(i)], i);
  }
}

}  // namespace
