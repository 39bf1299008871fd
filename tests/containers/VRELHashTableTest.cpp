// Tables whose keys collide, which have an index. The slots must be those of a table without.
#include "detail/VRELHashTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <ctime>
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

// No two keys are equal, so that entries are moved after removed ones in one pass. The runs go across the last slot.
TEST(VRELHashTableTest, RemovedKeysMatchModel) {
  for (unsigned int seed = 0; seed < 6; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    StringMap map;
    HashModel model = MakeModel();
    // Homes next to each other, so that keys of one home are between those of another.
    static auto const home = [](int number) { return static_cast<unsigned int>(number / 2 % 3) * 11u + 2100u; };
    model.hash = [](int number) { return home(number); };
    map.SetFunctions([](VRELString const& key) { return home(NumberOf(key)); }, nullptr);
    for (int number = 0; number < 900; number += 2)
      ASSERT_EQ(map.Add(KeyOf(number), number), model.Add(number, number));
    for (int step = 0; step < 250; ++step) {
      int const number = static_cast<int>(random() % 450) * 2;
      VRELString const key = KeyOf(number);
      // Mostly removals and searches of values, which do not need the slots.
      switch (random() % 64) {
        case 0:
          ASSERT_EQ(map.FindKey(key), model.Find(number)) << step;
          break;
        case 1:
          ASSERT_EQ(EntriesOf(map), EntriesOf(model)) << step;
          break;
        case 2:
        case 3:
        case 4:
          ASSERT_EQ(map.Add(key, step), model.Add(number, step)) << step;
          break;
        case 5:
          ASSERT_EQ(map.Put(key, step), model.Put(number, step)) << step;
          break;
        default:
          if (random() % 2 == 0) {
            ASSERT_EQ(map.Remove(key), model.Remove(number)) << step;
          } else {
            int value = -1;
            int const slot = model.Find(number);
            ASSERT_EQ(map.Get(key, value), slot >= 0) << step;
            ASSERT_EQ(value, slot >= 0 ? model.rows[static_cast<std::size_t>(slot)].value : -1) << step;
          }
          break;
      }
      ASSERT_EQ(map.Size(), model.count) << step;
    }
    ASSERT_EQ(EntriesOf(map), EntriesOf(model));
    StringMap const copy(map);
    for (int number = 0; number < 900; number += 3 + static_cast<int>(random() % 2)) {
      ASSERT_EQ(map.Remove(KeyOf(number)), model.Remove(number)) << number;
    }
    // Each operation that depends on slots sees the moved entries.
    switch (seed) {
      case 0:
        ASSERT_EQ(EntriesOf(copy), EntriesOf(model));
        break;
      case 1: {
        Entries entries;
        for (auto [key, value] : map) entries.emplace_back(NumberOf(key), value);
        ASSERT_EQ(entries, EntriesOf(model));
        break;
      }
      case 2:
        map.Rehash(3000);
        model.Rehash(3000);
        ASSERT_EQ(EntriesOf(map), EntriesOf(model));
        break;
      case 3:
        map.InitEnumeration();
        ASSERT_EQ(map.HasNext(), model.count > 0);
        ASSERT_TRUE(map == copy);
        break;
      case 4:
        for (int number = 0; number < 900; ++number) {
          auto const equals = [number](VRELString const& stored) { return NumberOf(stored) / 2 == number / 2; };
          ASSERT_EQ(map.GetEqual(home(number), equals) != nullptr, model.Find(number) >= 0) << number;
        }
        break;
      default:
        map.Clear();
        ASSERT_TRUE(map.Add(KeyOf(2), 2));
        ASSERT_EQ(map.Size(), 1);
        break;
    }
  }
}

TEST(VRELHashTableTest, RemovedKeysOfDeepCopy) {
  VRELHashList<VRELString> list;
  list.SetFunctions(HashOfNone, nullptr);
  for (int number = 0; number < 2000; number += 2) EXPECT_TRUE(list.Add(KeyOf(number)));
  EXPECT_TRUE(list.Remove(KeyOf(0)));
  EXPECT_FALSE(list.Get(KeyOf(0)));
  EXPECT_TRUE(list.Get(KeyOf(1998)));
  VRELHashList<VRELString> const copy = list.copy();
  EXPECT_EQ(copy.Find(KeyOf(2)), 5);
  EXPECT_EQ(copy.Find(KeyOf(1998)), 5 + 998);
  EXPECT_EQ(list.Size(), 999);
}

// Seconds of processor time for an operation, the best of some runs.
template <class Prepare, class Operation>
double SecondsOf(Prepare const& prepare, Operation const& operation) {
  double best = 1e9;
  for (int run = 0; run < 5; ++run) {
    auto object = prepare();
    std::clock_t const start = std::clock();
    operation(object);
    best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return best;
}

// Keys of one length, of which those of the first list have one hash code: 37 * 'A' + 'U' is 37 * 'B' + '0'.
struct EqualHashKeys {
  explicit EqualHashKeys(int count) {
    std::mt19937 random(5);
    for (int i = 0; i < count; ++i) {
      std::string name;
      std::string other;
      for (int bit = 0; bit < 16; ++bit) name += (i >> bit & 1) != 0 ? "AU" : "B0";
      for (int letter = 0; letter < 32; ++letter) other += static_cast<char>('A' + random() % 26);
      colliding.emplace_back(name);
      ordinary.emplace_back(other);
    }
    EXPECT_EQ(colliding.front().hashCode(), colliding.back().hashCode());
  }

  std::vector<VRELString> colliding;
  std::vector<VRELString> ordinary;
};

TEST(VRELHashTableTest, AddAndFindAreLinearForCollidingKeys) {
  EqualHashKeys const all(40000);
  auto const seconds = [](std::vector<VRELString> const& keys) {
    return SecondsOf([] { return StringMap(); },
                     [&](StringMap& map) {
                       int value = 0;
                       for (VRELString const& key : keys) map.Add(key, 1);
                       for (VRELString const& key : keys) EXPECT_TRUE(map.Get(key, value));
                     });
  };
  EXPECT_LE(seconds(all.colliding), 3 * seconds(all.ordinary));
}

TEST(VRELHashTableTest, RemovalIsLinearForCollidingKeys) {
  constexpr int kKeys = 40000;
  EqualHashKeys const all(kKeys);
  auto const seconds = [](std::vector<VRELString> const& keys) {
    auto const prepare = [&] {
      StringMap map;
      for (VRELString const& key : keys) map.Add(key, 1);
      return map;
    };
    return SecondsOf(prepare, [&](StringMap& map) {
      for (int i = 0; i < kKeys - 1; ++i) map.Remove(keys[static_cast<std::size_t>(i * 7919LL % kKeys)]);
      EXPECT_EQ(map.Size(), 1);
      EXPECT_EQ(map.FindKey(keys[static_cast<std::size_t>((kKeys - 1) * 7919LL % kKeys)]) >= 0, true);
    });
  };
  EXPECT_LE(seconds(all.colliding), 3 * seconds(all.ordinary));
}

}  // namespace
