// Tables whose keys collide, which have an index. The slots must be those of a table without.
#include "detail/VRELHashTable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "HashModel.h"
#include "VRELHashList.h"
#include "VRELHashMap.h"
#include "VRELString.h"

namespace {

using StringMap = VRELHashMap<VRELString, int>;
using Entries = std::vector<std::pair<int, int>>;

// The key of a number: 2n and 2n + 1 differ in case only. Every third one is beyond ASCII, where case changes the
// length.
VRELString KeyOf(int number) {
  bool const isUpper = number % 2 == 1;
  std::string key = number % 6 < 2 ? (isUpper ? "STRASSE"
                                              : "stra\xC3\x9F"
                                                "e")
                                   : (isUpper ? "NAME" : "name");
  return VRELString(key + std::to_string(number / 2));
}

int NumberOf(VRELString const& key) {
  std::string const text = key.toUtf8();
  std::size_t const digits = text.find_first_of("0123456789");
  return 2 * std::atoi(text.c_str() + digits) + (text[0] < 'a' ? 1 : 0);
}

// Five homes for all keys.
unsigned int HomeOf(int number) {
  return static_cast<unsigned int>(number % 5) * 900u;
}
unsigned int HashOfKey(VRELString const& key) {
  return HomeOf(NumberOf(key));
}
unsigned int HashOfNone(VRELString const&) {
  return 5;
}
bool EqualWithCase(VRELString const& a, VRELString const& b) {
  return a.compareTo(b) == 0;
}

Entries EntriesOf(StringMap const& map) {
  Entries entries;
  VRELPair<VRELString, int> pair;
  map.InitEnumeration();
  while (map.GetNext(pair)) entries.emplace_back(NumberOf(pair.key), pair.value);
  return entries;
}

Entries EntriesOf(HashModel const& model) {
  Entries entries;
  for (auto const& row : model.rows) {
    if (row.occupied) entries.emplace_back(row.key, row.value);
  }
  return entries;
}

HashModel MakeModel() {
  HashModel model;
  model.hash = HomeOf;
  model.equal = [](int a, int b) { return a / 2 == b / 2; };
  return model;
}

StringMap MakeMap() {
  StringMap map;
  map.SetFunctions(HashOfKey, nullptr);
  return map;
}

TEST(VRELHashTableTest, KeysOfTestDifferInCase) {
  for (int number : {0, 2, 4, 6}) {
    EXPECT_EQ(KeyOf(number).compareToIgnoreCase(KeyOf(number + 1)), 0);
    EXPECT_EQ(NumberOf(KeyOf(number)), number);
    EXPECT_EQ(NumberOf(KeyOf(number + 1)), number + 1);
    EXPECT_EQ(VRELHashTraits<VRELString>::SeededHash(KeyOf(number)),
              VRELHashTraits<VRELString>::SeededHash(KeyOf(number + 1)));
  }
}

TEST(VRELHashTableTest, CollidingKeysMatchModel) {
  for (unsigned int seed = 0; seed < 3; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    StringMap map = MakeMap();
    HashModel model = MakeModel();
    for (int step = 0; step < 6000; ++step) {
      int const number = static_cast<int>(random() % 4000);
      VRELString const key = KeyOf(number);
      switch (random() % 20) {
        case 0:
          ASSERT_EQ(map.Remove(key), model.Remove(number)) << step;
          break;
        case 1:
          ASSERT_EQ(map.Put(key, step), model.Put(number, step)) << step;
          break;
        case 2:
          ASSERT_EQ(map.FindKey(key), model.Find(number)) << step;
          break;
        default:
          ASSERT_EQ(map.Add(key, step), model.Add(number, step)) << step;
          break;
      }
      ASSERT_EQ(map.Size(), model.count) << step;
      if (step % 500 == 0) {
        ASSERT_EQ(EntriesOf(map), EntriesOf(model)) << step;
      }
    }
    ASSERT_EQ(EntriesOf(map), EntriesOf(model));
    for (int number = 0; number < 4000; ++number) {
      VRELString const key = KeyOf(number);
      ASSERT_EQ(map.FindKey(key), model.Find(number)) << number;
      auto const equals = [&](VRELString const& stored) { return stored.compareToIgnoreCase(key) == 0; };
      auto const seededHash = [&] { return VRELHashTraits<VRELString>::SeededHash(key); };
      int const* const plain = map.GetEqual(HomeOf(number), equals);
      ASSERT_EQ(map.GetEqual(HomeOf(number), equals, seededHash), plain) << number;
      ASSERT_EQ(plain != nullptr, model.Find(number) >= 0) << number;
    }
    int const slots = static_cast<int>(model.rows.size());
    for (int rehashed : {slots - 1, slots + 900, 2 * slots}) {
      map.Rehash(rehashed);
      model.Rehash(rehashed);
      ASSERT_EQ(EntriesOf(map), EntriesOf(model)) << rehashed;
    }
  }
}

TEST(VRELHashTableTest, CopiesShareIndexOfCollidingKeys) {
  StringMap map = MakeMap();
  HashModel model = MakeModel();
  auto const add = [&](StringMap& target, int number) {
    ASSERT_EQ(target.Add(KeyOf(number), number), model.Add(number, number)) << number;
  };
  StringMap early(map);  // of the slots before the first rehash
  for (int number = 0; number < 3000; number += 2) add(map, number);
  StringMap copy(map);
  for (int number = 3000; number < 3200; number += 2) add(copy, number);
  ASSERT_EQ(EntriesOf(map), EntriesOf(model));
  EXPECT_EQ(map.Remove(KeyOf(10)), model.Remove(10));
  ASSERT_EQ(EntriesOf(copy), EntriesOf(model));
  for (int number = 0; number < 3200; number += 2) {
    ASSERT_EQ(map.FindKey(KeyOf(number)), model.Find(number)) << number;
    ASSERT_EQ(copy.FindKey(KeyOf(number)), model.Find(number)) << number;
  }
  StringMap const moved(std::move(map));
  EXPECT_EQ(map.FindKey(KeyOf(20)), -1);
  EXPECT_EQ(moved.FindKey(KeyOf(20)), model.Find(20));
  copy.Clear();
  EXPECT_EQ(moved.FindKey(KeyOf(20)), -1);
  EXPECT_TRUE(copy.Add(KeyOf(20), 20));
  EXPECT_EQ(moved.FindKey(KeyOf(20)), copy.FindKey(KeyOf(20)));
  EXPECT_EQ(early.FindKey(KeyOf(2000)), -1);
}

TEST(VRELHashTableTest, OtherEqualityIgnoresIndex) {
  StringMap map;
  map.SetFunctions(HashOfNone, nullptr);
  for (int number = 0; number < 4000; number += 2) EXPECT_TRUE(map.Add(KeyOf(number), number));
  map.SetFunctions(HashOfNone, EqualWithCase);
  EXPECT_TRUE(map.Add(KeyOf(3999), 3999));
  EXPECT_EQ(map.FindKey(KeyOf(3999)), map.FindKey(KeyOf(3998)) + 1);
  EXPECT_EQ(map.FindKey(KeyOf(2001)), -1);
  map.SetFunctions(HashOfNone, nullptr);
  EXPECT_EQ(map.FindKey(KeyOf(3999)), map.FindKey(KeyOf(3998)));
  EXPECT_EQ(map.FindKey(KeyOf(2001)), map.FindKey(KeyOf(2000)));
}

TEST(VRELHashTableTest, ListOfCollidingKeysIsDeepCopied) {
  VRELHashList<VRELString> list;
  list.SetFunctions(HashOfNone, nullptr);
  for (int number = 0; number < 2000; number += 2) EXPECT_TRUE(list.Add(KeyOf(number)));
  VRELHashList<VRELString> copy = list.copy();
  EXPECT_TRUE(copy.Remove(KeyOf(2)));
  EXPECT_TRUE(copy.Add(KeyOf(2000)));
  EXPECT_EQ(copy.Find(KeyOf(2000)), 5 + 999);
  EXPECT_EQ(copy.Find(KeyOf(1998)), 5 + 998);
  EXPECT_EQ(list.Find(KeyOf(1998)), 5 + 999);
  EXPECT_TRUE(list.Get(KeyOf(2)));
  EXPECT_FALSE(list.Get(KeyOf(2000)));
}

// Counts comparisons, which the index saves: with it, a search of one key among many that collide reads a few.
TEST(VRELHashTableTest, CollidingKeysAreRarelyCompared) {
  int compared = 0;
  StringMap map;
  map.SetFunctions(HashOfNone, nullptr);
  for (int number = 0; number < 40000; number += 2) ASSERT_TRUE(map.Add(KeyOf(number), number));
  for (int number = 0; number < 40000; number += 2) {
    VRELString const key = KeyOf(number);
    auto const equals = [&](VRELString const& stored) { return ++compared, stored.compareToIgnoreCase(key) == 0; };
    int const* const value = map.GetEqual(5, equals, [&] { return VRELHashTraits<VRELString>::SeededHash(key); });
    ASSERT_NE(value, nullptr);
    ASSERT_EQ(*value, number);
  }
  EXPECT_LT(compared, 20000 * 20);
}

}  // namespace
