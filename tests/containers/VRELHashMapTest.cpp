#include "VRELHashMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "HashModel.h"
#include "VRELString.h"

// A key type of a client, with specialized hash and equality.
struct ClientKey {
  int number = 0;
  int ignored = 0;
};
template <>
unsigned int VRELHashList<ClientKey>::GetHashValue(ClientKey const& key) {
  return static_cast<unsigned int>(key.number);
}
template <>
bool VRELHashList<ClientKey>::HashEqualFunction(ClientKey const& a, ClientKey const& b) {
  return a.number == b.number;
}

// The same with specialized traits.
struct TraitsKey {
  int number = 0;
};
template <>
struct VRELHashTraits<TraitsKey> {
  static unsigned int Hash(TraitsKey const& key) { return static_cast<unsigned int>(key.number) + 1; }
  static bool Equal(TraitsKey const& a, TraitsKey const& b) { return a.number == b.number; }
};

namespace {

using IntMap = VRELHashMap<int, int>;
using Entries = std::vector<std::pair<int, int>>;

// A simple hash: the home of a key is its remainder.
unsigned int Itself(int const& key) {
  return static_cast<unsigned int>(key);
}
bool Same(int const& a, int const& b) {
  return a == b;
}
bool HaveEqualHalves(int const& a, int const& b) {
  return a / 2 == b / 2;
}

IntMap MapOf(std::initializer_list<int> keys, int slots = 17) {
  IntMap map(slots);
  map.SetFunctions(Itself, Same);
  for (int key : keys) map.Add(key, 10 * key);
  return map;
}

Entries EntriesOf(IntMap const& map) {
  Entries entries;
  VRELPair<int, int> pair;
  map.InitEnumeration();
  while (map.GetNext(pair)) entries.emplace_back(pair.key, pair.value);
  return entries;
}

std::vector<int> KeysOf(IntMap const& map) {
  std::vector<int> keys;
  for (auto const& entry : EntriesOf(map)) keys.push_back(entry.first);
  return keys;
}

// Returns what GetEqual finds, or -1. Sets `met` to the keys that it compared.
int FindEqual(IntMap const& map, int key, std::vector<int>& met) {
  met.clear();
  int const* const value = map.GetEqual(static_cast<unsigned int>(key), [&](int const& stored) {
    met.push_back(stored);
    return stored == key;
  });
  return value != nullptr ? *value : -1;
}

TEST(VRELHashMapTest, GetEqualFindsKeyInOtherForm) {
  std::vector<int> met;
  // The home of 33, 50 and 67 is the last slot; the last two of them wrap to the front.
  IntMap map = MapOf({33, 5, 50, 22, 67});
  EXPECT_EQ(FindEqual(map, 33, met), 330);
  EXPECT_EQ(met, std::vector<int>{33});
  EXPECT_EQ(FindEqual(map, 67, met), 670);
  EXPECT_EQ(met, (std::vector<int>{33, 50, 67}));
  EXPECT_EQ(FindEqual(map, 22, met), 220);
  EXPECT_EQ(met, (std::vector<int>{5, 22}));
  EXPECT_EQ(FindEqual(map, 84, met), -1);
  EXPECT_EQ(met, (std::vector<int>{33, 50, 67}));
  EXPECT_EQ(FindEqual(map, 7, met), -1);
  EXPECT_TRUE(met.empty());
  map.Remove(50);
  EXPECT_EQ(FindEqual(map, 67, met), 670);
  EXPECT_EQ(met, (std::vector<int>{33, 67}));

  EXPECT_EQ(FindEqual(IntMap(0), 7, met), -1);
  // A search of a full table ends after one round.
  IntMap full = MapOf({0, 1, 2});
  full.Rehash(3);
  EXPECT_EQ(FindEqual(full, 4, met), -1);
  EXPECT_EQ(met, (std::vector<int>{1, 2, 0}));

  VRELHashMap<VRELString, int> texts(17);
  texts.Put(L"hub", 3);
  int const* const value = texts.GetEqual(static_cast<unsigned int>(VRELString(L"hub").hashCode()),
                                          [](VRELString const& stored) { return stored.view() == u"hub"; });
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(*value, 3);
}

TEST(VRELHashMapTest, StartsEmpty) {
  IntMap const map(17);
  EXPECT_EQ(map.Size(), 0);
  EXPECT_EQ(map.FindKey(0), -1);
  EXPECT_FALSE(map.HasNext());
  VRELPair<int, int> pair(1, 2);
  EXPECT_FALSE(map.GetNext(pair));
  EXPECT_EQ(pair.key, 1);
  EXPECT_EQ(pair.value, 2);
}

TEST(VRELHashMapTest, AddThenGetReturnsValue) {
  IntMap map(17);
  EXPECT_TRUE(map.Add(5, 50));
  EXPECT_TRUE(map.Add(-1, -10));
  EXPECT_EQ(map.Size(), 2);
  int out = 99;
  EXPECT_FALSE(map.Get(6, out));
  EXPECT_EQ(out, 99);
  EXPECT_TRUE(map.Get(5, out));
  EXPECT_EQ(out, 50);
  EXPECT_TRUE(map.Get(-1, out));
  EXPECT_EQ(out, -10);
}

TEST(VRELHashMapTest, AddKeepsAndPutReplacesValue) {
  IntMap map(17);
  int out = 0;
  EXPECT_TRUE(map.Add(5, 50));
  EXPECT_FALSE(map.Add(5, 51));
  EXPECT_TRUE(map.Get(5, out));
  EXPECT_EQ(out, 50);
  EXPECT_EQ(map.Size(), 1);
  EXPECT_TRUE(map.Put(5, 52));
  EXPECT_TRUE(map.Get(5, out));
  EXPECT_EQ(out, 52);
  EXPECT_EQ(map.Size(), 1);
  EXPECT_TRUE(map.Put(6, 60));
  EXPECT_EQ(map.Size(), 2);
}

TEST(VRELHashMapTest, DoublesAboveLoadFactor) {
  IntMap map = MapOf({20, 0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11});
  EXPECT_EQ(map.Size(), 12);
  EXPECT_EQ(map.FindKey(20), 3);  // of 17
  EXPECT_TRUE(map.Add(12, 120));
  EXPECT_EQ(map.FindKey(20), 20);  // of 34
  for (int key : {13, 14, 15, 17, 18, 19, 21, 22, 23, 24, 25, 50}) map.Add(key, 0);
  EXPECT_EQ(map.Size(), 25);
  EXPECT_EQ(map.FindKey(50), 16);  // of 34
  EXPECT_TRUE(map.Add(67, 0));
  EXPECT_EQ(map.Size(), 26);
  EXPECT_EQ(map.FindKey(50), 50);  // of 68
  EXPECT_EQ(map.FindKey(67), 67);
}

TEST(VRELHashMapTest, RejectedAddCanDoubleSlots) {
  IntMap map = MapOf({20, 0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11});
  EXPECT_FALSE(map.Add(20, 1));
  EXPECT_EQ(map.Size(), 12);
  EXPECT_EQ(map.FindKey(20), 20);
}

TEST(VRELHashMapTest, ProbesLinearlyAndWraps) {
  IntMap const map = MapOf({15, 32, 49, 0, 66});  // 15, 15, 15, 0, 15
  EXPECT_EQ(map.FindKey(15), 15);
  EXPECT_EQ(map.FindKey(32), 16);
  EXPECT_EQ(map.FindKey(49), 0);
  EXPECT_EQ(map.FindKey(0), 1);
  EXPECT_EQ(map.FindKey(66), 2);
  EXPECT_EQ(map.FindKey(83), -1);
  EXPECT_EQ(map.FindKey(1), -1);
  EXPECT_EQ(EntriesOf(map), (Entries{{49, 490}, {0, 0}, {66, 660}, {15, 150}, {32, 320}}));
}

TEST(VRELHashMapTest, RemoveKeepsProbeRunReachable) {
  for (int removed : {15, 32, 49, 0, 66}) {
    SCOPED_TRACE(removed);
    IntMap map = MapOf({15, 32, 49, 0, 66});
    EXPECT_TRUE(map.Remove(removed));
    EXPECT_EQ(map.Size(), 4);
    EXPECT_FALSE(map.Remove(removed));
    EXPECT_EQ(map.Size(), 4);
    int out = 0;
    for (int key : {15, 32, 49, 0, 66}) {
      EXPECT_EQ(map.Get(key, out), key != removed) << key;
      EXPECT_TRUE(key == removed || out == 10 * key) << key;
    }
  }
  IntMap map = MapOf({15, 32, 49, 0, 66});
  map.Remove(32);
  EXPECT_EQ(EntriesOf(map), (Entries{{0, 0}, {66, 660}, {15, 150}, {49, 490}}));
}

TEST(VRELHashMapTest, RemoveOfOnlyEntryLeavesEmptyMap) {
  IntMap map = MapOf({5});
  EXPECT_TRUE(map.Remove(5));
  EXPECT_EQ(map.Size(), 0);
  VRELPair<int, int> pair;
  map.InitEnumeration();
  EXPECT_FALSE(map.GetNext(pair));
  EXPECT_FALSE(map.HasNext());
}

TEST(VRELHashMapTest, VacantSlotsHaveDefaults) {
  VRELHashMap<int, VRELDynamicArray<int>> map(17);
  VRELDynamicArray<int> watched;
  struct Header {
    VRELArrayHeader* header;
  };
  auto const owners = [&] { return reinterpret_cast<Header&>(watched).header->shareCount; };
  map.Add(3, watched);
  map.Add(4, watched);
  EXPECT_EQ(owners(), 2);
  map.Remove(3);
  EXPECT_EQ(owners(), 1);
  map.Clear();
  EXPECT_EQ(owners(), 0);
  map.Add(3, watched);
  map.Rehash(100);
  EXPECT_EQ(owners(), 1);
}

TEST(VRELHashMapTest, ClearLeavesSeventeenSlotsAndCursor) {
  IntMap map = MapOf({});
  for (int key = 0; key < 20; ++key) map.Add(key, 0);
  VRELPair<int, int> pair;
  map.InitEnumeration();
  for (int i = 0; i < 5; ++i) map.GetNext(pair);
  map.Clear();
  EXPECT_EQ(map.Size(), 0);
  EXPECT_EQ(map.FindKey(3), -1);
  map.Add(20, 200);
  EXPECT_EQ(map.FindKey(20), 3);  // of 17
  EXPECT_FALSE(map.HasNext());    // the cursor is at 5
  map.Add(5, 50);
  EXPECT_TRUE(map.GetNext(pair));
  EXPECT_EQ(pair.key, 5);
  map.Clear();
  map.Clear();
  map.Add(20, 200);
  EXPECT_EQ(map.FindKey(20), 3);
}

TEST(VRELHashMapTest, CursorAfterLastSlotFindsNothing) {
  IntMap map = MapOf({33}, 34);
  VRELPair<int, int> pair;
  EXPECT_TRUE(map.GetNext(pair));
  map.Clear();
  map.Add(1, 1);
  EXPECT_FALSE(map.HasNext());
  EXPECT_FALSE(map.GetNext(pair));
  map.InitEnumeration();
  EXPECT_TRUE(map.HasNext());
}

TEST(VRELHashMapTest, EnumeratesInSlotOrderWithOneCursor) {
  IntMap const map = MapOf({9, 3, 20});
  EXPECT_TRUE(map.HasNext());
  EXPECT_TRUE(map.HasNext());
  VRELPair<int, int> pair;
  EXPECT_TRUE(map.GetNext(pair));
  EXPECT_EQ(pair.key, 3);
  EXPECT_EQ(pair.value, 30);
  EXPECT_TRUE(map.GetNext(pair));
  EXPECT_EQ(pair.key, 20);
  EXPECT_TRUE(map.HasNext());
  EXPECT_TRUE(map.GetNext(pair));
  EXPECT_EQ(pair.key, 9);
  EXPECT_FALSE(map.HasNext());
  EXPECT_FALSE(map.GetNext(pair));
  EXPECT_EQ(pair.key, 9);
  map.InitEnumeration();
  EXPECT_TRUE(map.HasNext());
}

TEST(VRELHashMapTest, RehashKeepsCountAndCursor) {
  IntMap map = MapOf({1, 2, 40});
  VRELPair<int, int> pair;
  map.GetNext(pair);
  map.GetNext(pair);
  EXPECT_EQ(pair.key, 2);
  map.Rehash(50);
  EXPECT_EQ(map.Size(), 3);
  EXPECT_EQ(map.FindKey(40), 40);
  EXPECT_TRUE(map.GetNext(pair));
  EXPECT_EQ(pair.key, 40);
}

TEST(VRELHashMapTest, RehashDropsEqualKey) {
  IntMap map(17);
  map.SetFunctions(Itself, [](int const& a, int const& b) { return a % 10 == b % 10; });
  EXPECT_TRUE(map.Add(5, 50));
  EXPECT_TRUE(map.Add(15, 150));  // does not probe slot 5
  map.Rehash(10);
  EXPECT_EQ(EntriesOf(map), (Entries{{5, 50}}));
  EXPECT_EQ(map.Size(), 2);  // the dropped entry stays counted
}

TEST(VRELHashMapTest, RemoveDropsEqualKey) {
  IntMap map = MapOf({16, 0, 17, 34, 1});  // in the slots 16, 0, 1, 2, 3
  // They were not equal when they were added.
  map.SetFunctions(Itself, [](int const& a, int const& b) { return a % 17 == b % 17; });
  EXPECT_TRUE(map.Remove(16));
  EXPECT_EQ(EntriesOf(map), (Entries{{0, 0}, {1, 10}}));
  EXPECT_EQ(map.Size(), 2);  // dropped entries are not counted
  EXPECT_EQ(map.FindKey(1), 1);
}

bool equalityIsLoose = false;

TEST(VRELHashMapTest, RemoveDropsEqualKeyInProbeRun) {
  IntMap map(17);
  map.SetFunctions(Itself, [](int const& a, int const& b) { return equalityIsLoose ? a % 10 == b % 10 : a == b; });
  for (int key : {3, 20, 37, 173}) EXPECT_TRUE(map.Add(key, 10 * key));  // slots 3 to 6
  equalityIsLoose = true;
  EXPECT_TRUE(map.Remove(20));
  EXPECT_EQ(EntriesOf(map), (Entries{{3, 30}, {37, 370}}));
  EXPECT_EQ(map.Size(), 2);  // unlike after a rehash
  equalityIsLoose = false;
  EXPECT_EQ(map.FindKey(37), 4);
  EXPECT_EQ(map.FindKey(173), -1);
}

TEST(VRELHashMapTest, UsesFunctionsOfSetFunctions) {
  IntMap map(17);
  EXPECT_EQ(map.GetHashCode(1), 0x23744B91u);
  EXPECT_FALSE(map.CheckEqual(4, 5));
  map.SetFunctions(Itself, HaveEqualHalves);
  EXPECT_EQ(map.GetHashCode(1), 1u);
  EXPECT_TRUE(map.CheckEqual(4, 5));
  map.SetFunctions(nullptr, nullptr);
  EXPECT_EQ(map.GetHashCode(1), 0x23744B91u);
  EXPECT_FALSE(map.CheckEqual(4, 5));
}

TEST(VRELHashMapTest, CopySharesSlotsButNotCount) {
  IntMap source = MapOf({1, 2});
  VRELPair<int, int> pair;
  source.GetNext(pair);
  IntMap copy(source);
  EXPECT_TRUE(copy.GetNext(pair));  // the cursor was copied
  EXPECT_EQ(pair.key, 2);
  EXPECT_TRUE(source.GetNext(pair));
  EXPECT_EQ(pair.key, 2);
  EXPECT_EQ(copy.GetHashCode(7), 7u);
  EXPECT_TRUE(copy.Add(3, 30));
  EXPECT_EQ(copy.Size(), 3);
  EXPECT_EQ(source.Size(), 2);
  int out = 0;
  EXPECT_TRUE(source.Get(3, out));
  EXPECT_EQ(out, 30);
  EXPECT_TRUE(source.Remove(1));
  EXPECT_EQ(copy.FindKey(1), -1);
  EXPECT_EQ(copy.Size(), 3);
}

TEST(VRELHashMapTest, RehashOfCopyKeepsSource) {
  VRELHashMap<int, VRELString> source(17);
  for (int key = 0; key < 10; ++key) source.Add(key, VRELString(L"value"));
  VRELHashMap<int, VRELString> copy(source);
  for (int key = 10; key < 40; ++key) copy.Add(key, VRELString(L"more"));
  VRELString out;
  for (int key = 0; key < 10; ++key) {
    EXPECT_TRUE(source.Get(key, out));
    EXPECT_EQ(out.toUtf8(), "value");
    EXPECT_TRUE(copy.Get(key, out));
    EXPECT_EQ(out.toUtf8(), "value");
  }
  EXPECT_FALSE(source.Get(39, out));
}

TEST(VRELHashMapTest, AssignmentSharesAndKeepsCursor) {
  IntMap const source = MapOf({1, 2, 3});
  VRELPair<int, int> pair;
  source.GetNext(pair);
  IntMap target(17);
  for (int key = 0; key < 5; ++key) target.Add(key, 0);
  target.GetNext(pair);
  target.GetNext(pair);
  target.InitEnumeration();
  EXPECT_EQ(&(target = source), &target);
  EXPECT_EQ(target.Size(), 3);
  EXPECT_EQ(target.GetHashCode(7), 7u);
  EXPECT_TRUE(target.GetNext(pair));
  EXPECT_EQ(pair.key, 1);  // the source's cursor would return 2
  target.Add(4, 40);
  EXPECT_EQ(source.FindKey(4), 4);
  EXPECT_EQ(source.Size(), 3);
}

TEST(VRELHashMapTest, CopyAndAssignmentCopyFunctions) {
  IntMap source(17);
  source.SetFunctions(Itself, HaveEqualHalves);
  IntMap const copy(source);
  IntMap assigned(17);
  assigned = source;
  for (IntMap const* each : {&copy, static_cast<IntMap const*>(&assigned)}) {
    EXPECT_EQ(each->GetHashCode(7), 7u);
    EXPECT_TRUE(each->CheckEqual(4, 5));
  }
}

TEST(VRELHashMapTest, CopiesCanFillSharedSlots) {
  IntMap first = MapOf({});
  IntMap second(first);
  IntMap third(first);
  for (int key = 0; key < 12; ++key) EXPECT_TRUE(first.Add(key, key));
  for (int key = 12; key < 17; ++key) EXPECT_TRUE(second.Add(key, key));
  // Every slot is occupied; a search and a removal end after one round.
  EXPECT_EQ(second.FindKey(100), -1);
  EXPECT_EQ(first.FindKey(16), 16);
  EXPECT_TRUE(third.Remove(3));
  EXPECT_TRUE(third.Add(3, 3));
  EXPECT_EQ(KeysOf(third).size(), 17u);
  // There is room after a rehash only.
  EXPECT_TRUE(third.Add(100, 100));
  for (int key = 0; key < 17; ++key) EXPECT_NE(third.FindKey(key), -1) << key;
  EXPECT_NE(third.FindKey(100), -1);
  EXPECT_EQ(first.FindKey(100), -1);
}

TEST(VRELHashMapTest, RehashKeepsSlotsForAllEntries) {
  for (int slots : {4, 3, 0, -5}) {
    SCOPED_TRACE(slots);
    IntMap map = MapOf({8, 1, 5, 7});
    map.Rehash(slots);
    EXPECT_EQ(map.Size(), 4);
    EXPECT_EQ(EntriesOf(map), (Entries{{8, 80}, {1, 10}, {5, 50}, {7, 70}}));
    EXPECT_EQ(map.FindKey(9), -1);
    EXPECT_TRUE(map.Remove(1));
    for (int key : {8, 5, 7}) EXPECT_NE(map.FindKey(key), -1) << key;
    EXPECT_EQ(map.Size(), 3);
    EXPECT_TRUE(map.Add(9, 90));
    EXPECT_EQ(map.Size(), 4);
  }
}

TEST(VRELHashMapTest, MapWithoutSlotsGrowsOnAdd) {
  for (int slots : {0, -1, -17}) {
    SCOPED_TRACE(slots);
    IntMap map(slots);
    map.SetFunctions(Itself, Same);
    int out = 0;
    EXPECT_EQ(map.FindKey(1), -1);
    EXPECT_FALSE(map.Get(1, out));
    EXPECT_FALSE(map.Remove(1));
    EXPECT_FALSE(map.HasNext());
    map.Rehash(0);
    EXPECT_TRUE(map.Add(20, 200));
    EXPECT_EQ(map.FindKey(20), 3);  // of 17
    EXPECT_EQ(map.Size(), 1);
  }
  IntMap map(0);
  EXPECT_TRUE(map.Put(1, 10));
  EXPECT_EQ(map.Size(), 1);
  IntMap cleared(0);
  cleared.Clear();
  EXPECT_TRUE(cleared.Add(1, 10));
}

TEST(VRELHashMapTest, StartsWithOneSlot) {
  IntMap map = MapOf({1, 2, 3, 4, 5}, 1);
  EXPECT_EQ(map.Size(), 5);
  for (int key = 1; key < 6; ++key) EXPECT_NE(map.FindKey(key), -1);
}

// Records where its copies are.
struct TrackedKey {
  TrackedKey() = default;
  explicit TrackedKey(int number) : value(number) {}
  int value = 0;
  static inline TrackedKey const* stored = nullptr;
};
bool EqualTrackedKeys(TrackedKey const& a, TrackedKey const& b) {
  if (a.value == b.value) TrackedKey::stored = &b;
  return a.value == b.value;
}
unsigned int HashOfTrackedKey(TrackedKey const& key) {
  return static_cast<unsigned int>(key.value);
}

TEST(VRELHashMapTest, ArgumentsCanBeInTable) {
  VRELHashMap<TrackedKey, TrackedKey> map(17);
  map.SetFunctions(HashOfTrackedKey, EqualTrackedKeys);
  for (int i = 0; i < 12; ++i) map.Add(TrackedKey(i), TrackedKey(i));
  EXPECT_EQ(map.FindKey(TrackedKey(7)), 7);
  TrackedKey const* const inside = TrackedKey::stored;
  EXPECT_EQ(inside->value, 7);
  // The key follows it in the array that the rehash frees.
  EXPECT_FALSE(map.Add(*inside, inside[1]));
  EXPECT_TRUE(map.Remove(TrackedKey(7)));
  for (int i = 12; i < 26; ++i) EXPECT_TRUE(map.Add(TrackedKey(i), TrackedKey(i)));
  EXPECT_EQ(map.FindKey(TrackedKey(9)), 9);
  EXPECT_TRUE(map.Add(TrackedKey(100), *TrackedKey::stored));
  TrackedKey out;
  EXPECT_TRUE(map.Get(TrackedKey(100), out));
  EXPECT_EQ(out.value, 9);
}

// Its copies fail while `fails` is set.
struct FailingValue {
  FailingValue() = default;
  explicit FailingValue(int number) : value(number) {}
  FailingValue(FailingValue const& other) : value(other.value) { Fail(); }
  FailingValue& operator=(FailingValue const& other) {
    Fail();
    value = other.value;
    return *this;
  }
  static void Fail() {
    if (fails) throw std::runtime_error("no copy");
  }

  int value = 0;
  static inline bool fails = false;
};

class VRELHashMapFailureTest : public testing::Test {
 protected:
  VRELHashMapFailureTest() {
    for (int i = 0; i < 10; ++i) map.Add(KeyOf(i), FailingValue(i));
  }
  ~VRELHashMapFailureTest() override { FailingValue::fails = false; }

  static VRELString KeyOf(int number) { return VRELString("key" + std::to_string(number)); }

  static void ExpectWhole(VRELHashMap<VRELString, FailingValue> const& whole) {
    FailingValue::fails = false;
    EXPECT_EQ(whole.Size(), 10);
    FailingValue out;
    for (int i = 0; i < 10; ++i) {
      ASSERT_TRUE(whole.Get(KeyOf(i), out)) << i;
      EXPECT_EQ(out.value, i);
    }
  }

  VRELHashMap<VRELString, FailingValue> map{17};
};

TEST_F(VRELHashMapFailureTest, RehashCopiesNothing) {
  FailingValue::fails = true;
  EXPECT_NO_THROW(map.Rehash(100));
  ExpectWhole(map);
}

TEST_F(VRELHashMapFailureTest, FailedRehashChangesNothing) {
  VRELHashMap<VRELString, FailingValue> const copy(map);
  FailingValue::fails = true;
  EXPECT_THROW(map.Rehash(100), std::runtime_error);
  ExpectWhole(map);
  ExpectWhole(copy);
}

TEST_F(VRELHashMapFailureTest, FailedValueCopyAddsNothing) {
  VRELHashMap<int, FailingValue> numbers(17);
  FailingValue const value(5);
  FailingValue::fails = true;
  EXPECT_THROW(numbers.Add(5, value), std::runtime_error);
  EXPECT_THROW(map.Add(KeyOf(99), value), std::runtime_error);
  EXPECT_EQ(numbers.Size(), 0);
  EXPECT_EQ(numbers.FindKey(5), -1);
  EXPECT_FALSE(numbers.HasNext());
  EXPECT_EQ(map.FindKey(KeyOf(99)), -1);
  ExpectWhole(map);
  EXPECT_TRUE(numbers.Add(5, value));
  EXPECT_EQ(numbers.Size(), 1);
}

TEST(VRELHashMapTest, UsesClientHashAndEquality) {
  VRELHashMap<ClientKey, int> map(17);
  EXPECT_TRUE(map.Add({3, 1}, 30));
  EXPECT_FALSE(map.Add({3, 2}, 31));
  EXPECT_EQ(map.FindKey({3, 9}), 3);
  VRELHashMap<TraitsKey, int> other(17);
  EXPECT_TRUE(other.Add({3}, 30));
  EXPECT_FALSE(other.Add({3}, 31));
  EXPECT_EQ(other.FindKey({3}), 4);
}

TEST(VRELHashMapTest, FindsOtherCaseOnCollisionOnly) {
  bool found = false;
  bool missed = false;
  VRELString const lower(L"key");
  VRELString const upper(L"KEY");
  for (int slots = 2; slots < 200; ++slots) {
    bool const meet = lower.hashCode() % slots == upper.hashCode() % slots;
    VRELHashMap<VRELString, int> map(slots);
    map.Add(lower, 1);
    int out = 0;
    EXPECT_TRUE(map.Get(lower, out));
    EXPECT_EQ(map.Get(upper, out), meet) << slots;
    EXPECT_TRUE(slots == 2 || map.Add(upper, 2) != meet) << slots;
    (meet ? found : missed) = true;
  }
  EXPECT_TRUE(found);
  EXPECT_TRUE(missed);
}

unsigned int HashOfNone(VRELString const&) {
  return 1;
}
bool EqualWithoutCase(VRELString const& a, VRELString const& b) {
  return a.compareToIgnoreCase(b) == 0;
}
bool EqualLength(VRELString const& a, VRELString const& b) {
  return a.length() == b.length();
}

TEST(VRELHashMapTest, FindsOtherCaseWithCaselessFunctions) {
  VRELHashMap<VRELString, int> map(17);
  map.SetFunctions(HashOfNone, EqualWithoutCase);
  EXPECT_TRUE(map.Add(VRELString(L"stra\u00DFe"), 1));
  EXPECT_TRUE(map.Add(VRELString(L"Option"), 2));
  int out = 0;
  EXPECT_TRUE(map.Get(VRELString(L"OPTION"), out));
  EXPECT_EQ(out, 2);
  EXPECT_TRUE(map.Get(VRELString(L"STRASSE"), out));
  EXPECT_EQ(out, 1);
}

TEST(VRELHashMapTest, UsesAnyEqualityOfStrings) {
  VRELHashMap<VRELString, int> map(17);
  map.SetFunctions(HashOfNone, EqualLength);
  EXPECT_TRUE(map.Add(VRELString(L"abc"), 1));
  EXPECT_FALSE(map.Add(VRELString(L"xyz"), 2));
  EXPECT_EQ(map.FindKey(VRELString(L"ABQ")), 1);
}

// Strings that fold to ASCII or grow when folded, and the same in ASCII letters. All have the same hash.
TEST(VRELHashMapTest, ComparesCollidingStringsByFullFolding) {
  struct {
    wchar_t const* stored;
    wchar_t const* sought;
    bool same;
  } const rows[] = {
      {L"Key", L"kEY", true},
      {L"key", L"kez", false},
      {L"\u212A", L"k", true},
      {L"k", L"\u212A", true},
      {L"ma\u00DF", L"MASS", true},
      {L"MASS", L"ma\u00DF", true},
      {L"\uFB03", L"ffi", true},
      {L"\u017Fet", L"SET", true},
      {L"\u00C4", L"\u00E4", true},
      {L"\u00C4", L"A", false},
      {L"[", L"{", false},
      {L"@", L"`", false},
      {L"", L"", true},
      {L"", L"a", false},
      {L"abcdefgh", L"ABCDEFGH", true},
      {L"abcdefghi", L"ABCDEFGHI", true},
      {L"abcdefgh", L"abcdefgj", false},
      {L"abcd", L"abcde", false},
      {L"ab\u00E9defghij", L"AB\u00C9DEFGHIJ", true},
      {L"\u2126mega", L"\u03C9MEGA", true},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(VRELString(row.stored).toUtf8() + " " + VRELString(row.sought).toUtf8());
    VRELHashMap<VRELString, int> map(17);
    map.SetFunctions(HashOfNone, nullptr);
    map.Add(VRELString(row.stored), 1);
    EXPECT_EQ(map.FindKey(VRELString(row.sought)), row.same ? 1 : -1);
    EXPECT_EQ(map.Add(VRELString(row.sought), 2), !row.same);
  }
}

TEST(VRELHashMapTest, UninitializedStringEqualsNone) {
  VRELString uninitialized(L"x");
  VRELString const taken(std::move(uninitialized));
  VRELHashMap<VRELString, int> map(17);
  EXPECT_TRUE(map.Add(uninitialized, 1));
  EXPECT_EQ(map.FindKey(uninitialized), -1);
  EXPECT_EQ(map.FindKey(taken), -1);
  EXPECT_TRUE(map.Add(VRELString(L""), 2));
}

// Applies random operations to both and compares every slot after every step.
void FollowModel(IntMap& map, HashModel& model, unsigned int seed, int steps, int range) {
  std::mt19937 random(seed);
  for (int step = 0; step < steps; ++step) {
    int const key = static_cast<int>(random() % static_cast<unsigned int>(range));
    int const kind = static_cast<int>(random() % 1000);
    if (kind < 450) {
      ASSERT_EQ(map.Add(key, step), model.Add(key, step)) << step;
    } else if (kind < 500) {
      ASSERT_EQ(map.Put(key, step), model.Put(key, step)) << step;
    } else if (kind < 990) {
      ASSERT_EQ(map.Remove(key), model.Remove(key)) << step;
    } else if (kind < 998) {
      int const slots = 2 * static_cast<int>(model.rows.size()) - kind % 5;
      if (slots < 300) map.Rehash(slots), model.Rehash(slots);
    } else {
      map.Clear();
      model.Clear();
    }
    ASSERT_EQ(map.Size(), model.count) << step;
    ASSERT_EQ(map.FindKey(key), model.Find(key)) << step;
    Entries expected;
    for (auto const& row : model.rows) {
      if (row.occupied) expected.emplace_back(row.key, row.value);
    }
    ASSERT_EQ(EntriesOf(map), expected) << step;
    for (auto const& entry : expected) ASSERT_EQ(map.FindKey(entry.first), model.Find(entry.first)) << step;
  }
}

TEST(VRELHashMapTest, SlotsMatchModel) {
  for (unsigned int seed = 0; seed < 10; ++seed) {
    IntMap map(17);
    map.SetFunctions(Itself, Same);
    HashModel model;
    FollowModel(map, model, seed, 2000, 20 + static_cast<int>(seed) * 10);
  }
}

TEST(VRELHashMapTest, SlotsMatchModelWithPoorHashes) {
  for (unsigned int seed = 0; seed < 10; ++seed) {
    IntMap map(17);
    map.SetFunctions([](int const& key) { return static_cast<unsigned int>(key * key) / 7u + 10u; }, Same);
    HashModel model;
    model.hash = [](int key) { return static_cast<unsigned int>(key * key) / 7u + 10u; };
    FollowModel(map, model, seed, 2000, 60);
  }
}

TEST(VRELHashMapTest, SlotsMatchModelWithUnequalHashes) {
  for (unsigned int seed = 0; seed < 20; ++seed) {
    IntMap map(17);
    map.SetFunctions([](int const& key) { return static_cast<unsigned int>(key % 5); }, HaveEqualHalves);
    HashModel model;
    model.hash = [](int key) { return static_cast<unsigned int>(key % 5); };
    model.equal = [](int a, int b) { return a / 2 == b / 2; };
    FollowModel(map, model, seed, 2000, 40);
  }
}

TEST(VRELHashMapTest, StringsMatchModel) {
  std::mt19937 random(22);
  VRELHashMap<VRELString, int> map(17);
  std::map<std::string, int> model;
  for (int step = 0; step < 20000; ++step) {
    std::string const name = "name." + std::to_string(random() % 300) + (step % 3 == 0 ? "\xC3\xA4" : "");
    VRELString const key(name);
    int out = -1;
    switch (random() % 4) {
      case 0:
        ASSERT_EQ(map.Add(key, step), model.emplace(name, step).second);
        break;
      case 1:
        ASSERT_TRUE(map.Put(key, step));
        model[name] = step;
        break;
      case 2:
        ASSERT_EQ(map.Remove(key), model.erase(name) == 1);
        break;
      default:
        ASSERT_EQ(map.Get(key, out), model.count(name) == 1);
        ASSERT_TRUE(out < 0 || out == model[name]);
        break;
    }
    ASSERT_EQ(map.Size(), static_cast<int>(model.size()));
  }
  VRELPair<VRELString, int> pair;
  std::map<std::string, int> found;
  map.InitEnumeration();
  while (map.GetNext(pair)) found[pair.key.toUtf8()] = pair.value;
  EXPECT_EQ(found, model);
}

TEST(VRELHashMapTest, SkipNextMovesCursor) {
  VRELHashMap<int, int> map(17);
  EXPECT_FALSE(map.SkipNext());
  for (int key : {5, 2, 9}) map.Add(key, key * 10);
  VRELPair<int, int> pair;
  EXPECT_TRUE(map.SkipNext());
  EXPECT_TRUE(map.GetNext(pair));
  VRELPair<int, int> again;
  map.InitEnumeration();
  map.GetNext(again);
  EXPECT_NE(pair.key, again.key);
  map.GetNext(again);
  EXPECT_EQ(pair.key, again.key);
  EXPECT_TRUE(map.SkipNext());
  EXPECT_FALSE(map.SkipNext());
}

TEST(VRELHashMapTest, IteratesIndependentlyOfCursor) {
  IntMap map = MapOf({9, 3, 20});
  VRELPair<int, int> first;
  EXPECT_TRUE(map.GetNext(first));
  Entries entries;
  for (auto [key, value] : map) {
    entries.emplace_back(key, value);
    value += 1;
    for (auto const& [other, number] : std::as_const(map)) EXPECT_EQ(number / 10, other);
  }
  EXPECT_EQ(entries, (Entries{{3, 30}, {20, 200}, {9, 90}}));
  EXPECT_TRUE(map.GetNext(first));
  EXPECT_EQ(first.key, 20);
  EXPECT_EQ(EntriesOf(map), (Entries{{3, 31}, {20, 201}, {9, 91}}));
  IntMap const empty(0);
  EXPECT_EQ(empty.begin(), empty.end());
  IntMap::iterator iterator = map.begin();
  EXPECT_EQ(iterator++, map.begin());
  EXPECT_EQ((*iterator).key, 20);
}

// An iterator that a change has invalidated ends, in any case.
TEST(VRELHashMapTest, IteratorEndsAfterChange) {
  IntMap map = MapOf({1, 2, 3, 16});
  IntMap::iterator iterator = map.begin();
  for (int i = 0; i < 3; ++i) ++iterator;
  map.Rehash(5);
  ++iterator;
  EXPECT_EQ(iterator, map.end());
  int visited = 0;
  for ([[maybe_unused]] auto const& row : map) {
    if (++visited == 2) map.Clear();
  }
  EXPECT_EQ(visited, 2);
}

TEST(VRELHashMapTest, ConstructsFromInitializerList) {
  VRELHashMap<VRELString, int> const map = {{L"hub", 1}, {L"rim", 2}, {L"hub", 3}};
  EXPECT_EQ(map.Size(), 2);
  int value = 0;
  EXPECT_TRUE(map.Get(L"hub", value));
  EXPECT_EQ(value, 1);
  VRELHashMap<int, int> const slots{40};
  EXPECT_EQ(slots.Size(), 0);
}

TEST(VRELHashMapTest, MoveLeavesSourceEmpty) {
  IntMap source = MapOf({3, 4});
  VRELPair<int, int> pair;
  source.GetNext(pair);
  IntMap target(std::move(source));
  EXPECT_EQ(target.Size(), 2);
  EXPECT_TRUE(target.GetNext(pair));
  EXPECT_EQ(pair.key, 4);
  EXPECT_EQ(source.Size(), 0);
  EXPECT_EQ(source.FindKey(3), -1);
  EXPECT_FALSE(source.HasNext());
  EXPECT_TRUE(source.Put(20, 200));
  EXPECT_EQ(source.FindKey(20), 3);  // of 17, by the same function
  EXPECT_EQ(target.FindKey(20), -1);
  source = std::move(target);
  EXPECT_EQ(EntriesOf(source), (Entries{{3, 30}, {4, 40}}));
  EXPECT_EQ(target.Size(), 0);
  target.Clear();
  EXPECT_TRUE(target.Add(20, 200));
  IntMap& itself = source;
  source = std::move(itself);
  EXPECT_EQ(source.Size(), 2);
}

TEST(VRELHashMapTest, ReserveDoublesSlots) {
  IntMap map = MapOf({50});
  for (int entries : {0, -1, -2147483647 - 1, 1, 12}) map.reserve(entries);
  EXPECT_EQ(map.FindKey(50), 50 % 17);
  map.reserve(13);
  EXPECT_EQ(map.FindKey(50), 50 % 34);
  map.reserve(51);
  EXPECT_EQ(map.FindKey(50), 50);  // of 68
  map.reserve(1);
  EXPECT_EQ(map.FindKey(50), 50);
  IntMap none(0);
  none.reserve(20);
  none.SetFunctions(Itself, Same);
  none.Add(50, 0);
  EXPECT_EQ(none.FindKey(50), 50 % 34);
}

TEST(VRELHashMapTest, ComparesKeysAndValues) {
  IntMap const map = MapOf({1, 2});
  EXPECT_TRUE(map == MapOf({2, 1}, 100));
  EXPECT_FALSE(map != MapOf({2, 1}, 100));
  EXPECT_TRUE(map != MapOf({1}));
  EXPECT_TRUE(map != MapOf({1, 3}));
  IntMap other = MapOf({1, 2});
  other.Put(2, 0);
  EXPECT_TRUE(map != other);
  EXPECT_TRUE(IntMap() == IntMap(0));
  // One key of `loose` equals both of the other map.
  IntMap loose = MapOf({2, 5});
  loose.SetFunctions([](int const&) { return 2u; }, HaveEqualHalves);
  IntMap strict(17);
  strict.SetFunctions([](int const&) { return 2u; }, Same);
  strict.Add(2, 20);
  strict.Add(3, 20);
  EXPECT_TRUE(strict != loose);
  EXPECT_TRUE(loose != strict);
}

TEST(VRELHashMapTest, DeclarationsMatch) {
  using Map = VRELHashMap<char, double>;
  using Pair = VRELPair<char, double>;
  static_assert(std::is_same_v<Map::key_type, char> && std::is_same_v<Map::mapped_type, double>);
  static_assert(std::is_same_v<Map::value_type, Pair>);
  static_assert(std::is_same_v<decltype(&Map::Size), int (Map::*)() const noexcept>);
  static_assert(
      std::is_same_v<decltype(&Map::SetFunctions),
                     void (Map::*)(unsigned int (*)(char const&), bool (*)(char const&, char const&)) noexcept>);
  static_assert(std::is_same_v<decltype(&Map::GetHashCode), unsigned int (Map::*)(char const&) const>);
  static_assert(std::is_same_v<decltype(&Map::CheckEqual), bool (Map::*)(char const&, char const&) const>);
  static_assert(std::is_same_v<decltype(&Map::FindKey), int (Map::*)(char const&) const>);
  static_assert(std::is_same_v<decltype(&Map::Get), bool (Map::*)(char const&, double&) const>);
  static_assert(std::is_same_v<decltype(&Map::Add), bool (Map::*)(char const&, double const&)>);
  static_assert(std::is_same_v<decltype(&Map::Put), bool (Map::*)(char const&, double const&)>);
  static_assert(std::is_same_v<decltype(&Map::Remove), bool (Map::*)(char const&)>);
  static_assert(std::is_same_v<decltype(&Map::Clear), void (Map::*)()>);
  static_assert(std::is_same_v<decltype(&Map::Rehash), void (Map::*)(int)>);
  static_assert(std::is_same_v<decltype(&Map::InitEnumeration), void (Map::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&Map::HasNext), bool (Map::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&Map::GetNext), bool (Map::*)(Pair&) const>);
}

// keys, values, occupied, hashFunction, equalFunction, loadFactor, count, cursor
TEST(VRELHashMapTest, FieldOffsetsMatchLayout) {
  static_assert(sizeof(IntMap) == 56 && sizeof(VRELHashMap<VRELString, int>) == 56 && !std::is_polymorphic_v<IntMap>);
  IntMap map = MapOf({1, 2, 3});
  map.SkipNext();
  char const* const bytes = reinterpret_cast<char const*>(&map);
  auto const read = [bytes](auto& target, std::size_t offset) { std::memcpy(&target, bytes + offset, sizeof target); };
  for (std::size_t offset : {0u, 8u, 16u}) {
    VRELArrayHeader* header = nullptr;
    read(header, offset);
    EXPECT_EQ(vrelArrayCount(header), 17) << offset;
    EXPECT_EQ(header->elementSize, offset == 16 ? 1 : 4);
  }
  unsigned int (*hash)(int const&) = nullptr;
  bool (*equal)(int const&, int const&) = nullptr;
  float loadFactor = 0;
  int count = 0;
  int cursor = 0;
  read(hash, 24);
  read(equal, 32);
  read(loadFactor, 40);
  read(count, 44);
  read(cursor, 48);
  EXPECT_EQ(hash, Itself);
  EXPECT_EQ(equal, Same);
  EXPECT_EQ(loadFactor, 0.75F);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(cursor, 2);
}

}  // namespace
