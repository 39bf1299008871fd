#include "VRELHashList.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

#include "HashModel.h"
#include "VRELString.h"

namespace {

using IntList = VRELHashList<int>;

unsigned int Itself(int const& element) {
  return static_cast<unsigned int>(element);
}
bool Same(int const& a, int const& b) {
  return a == b;
}
bool HaveEqualHalves(int const& a, int const& b) {
  return a / 2 == b / 2;
}

IntList ListOf(std::initializer_list<int> elements) {
  IntList list(17);
  list.SetFunctions(Itself, Same);
  for (int element : elements) list.Add(element);
  return list;
}

std::vector<int> ElementsOf(IntList const& list) {
  std::vector<int> elements;
  int element = 0;
  list.InitEnumeration();
  while (list.GetNext(element)) elements.push_back(element);
  return elements;
}

TEST(VRELHashListTest, AddRejectsDuplicate) {
  VRELHashList<void*> list(17);
  int numbers[3];
  EXPECT_TRUE(list.Add(&numbers[0]));
  EXPECT_TRUE(list.Add(nullptr));
  EXPECT_FALSE(list.Add(&numbers[0]));
  EXPECT_EQ(list.Size(), 2);
  EXPECT_TRUE(list.Get(&numbers[0]));
  EXPECT_TRUE(list.Get(nullptr));
  EXPECT_FALSE(list.Get(&numbers[1]));
  EXPECT_GE(list.Find(&numbers[0]), 0);
  EXPECT_EQ(list.Find(&numbers[1]), -1);
  EXPECT_TRUE(list.Remove(&numbers[0]));
  EXPECT_FALSE(list.Remove(&numbers[0]));
  EXPECT_EQ(list.Size(), 1);
}

TEST(VRELHashListTest, PutReplacesEqualElement) {
  IntList list(17);
  list.SetFunctions(Itself, HaveEqualHalves);
  EXPECT_TRUE(list.Put(4));
  EXPECT_FALSE(list.Add(4));
  list.Rehash(1);
  EXPECT_TRUE(list.Put(5));
  EXPECT_EQ(ElementsOf(list), std::vector<int>{5});
  EXPECT_EQ(list.Size(), 1);
}

TEST(VRELHashListTest, DoublesAboveLoadFactor) {
  IntList list = ListOf({20, 0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11});
  EXPECT_EQ(list.Find(20), 3);
  EXPECT_FALSE(list.Add(0));
  EXPECT_EQ(list.Find(20), 20);
  list.Add(12);
  EXPECT_EQ(list.Size(), 13);
}

TEST(VRELHashListTest, RemoveKeepsProbeRunReachable) {
  IntList list = ListOf({15, 32, 49, 0, 66});
  EXPECT_TRUE(list.Remove(32));
  EXPECT_EQ(ElementsOf(list), (std::vector<int>{0, 66, 15, 49}));
  EXPECT_EQ(list.Size(), 4);
}

TEST(VRELHashListTest, ClearLeavesSeventeenSlotsAndCursor) {
  IntList list = ListOf({});
  for (int element = 0; element < 20; ++element) list.Add(element);
  int out = 0;
  list.GetNext(out);
  list.GetNext(out);
  EXPECT_EQ(out, 1);
  list.Clear();
  EXPECT_EQ(list.Size(), 0);
  list.Add(18);
  EXPECT_EQ(list.Find(18), 1);  // of 17
  EXPECT_FALSE(list.HasNext());
  list.Add(19);
  EXPECT_TRUE(list.GetNext(out));
  EXPECT_EQ(out, 19);
}

TEST(VRELHashListTest, EnumeratesInSlotOrderWithOneCursor) {
  IntList const list = ListOf({9, 3});
  int out = 0;
  EXPECT_TRUE(list.HasNext());
  EXPECT_TRUE(list.HasNext());
  EXPECT_TRUE(list.GetNext(out));
  EXPECT_EQ(out, 3);
  EXPECT_TRUE(list.GetNext(out));
  EXPECT_EQ(out, 9);
  EXPECT_FALSE(list.HasNext());
  EXPECT_FALSE(list.GetNext(out));
  EXPECT_EQ(out, 9);
}

TEST(VRELHashListTest, DeepCopyKeepsSlots) {
  // 20 and 3 collide in slot 3 of 17, so that their order shows the slots.
  IntList source = ListOf({20, 3, 16});
  IntList own = source.copy();
  EXPECT_EQ(ElementsOf(own), (std::vector<int>{20, 3, 16}));
  EXPECT_EQ(own.Size(), 3);
  own.Add(5);
  source.Remove(20);
  EXPECT_EQ(ElementsOf(own), (std::vector<int>{20, 3, 5, 16}));
  EXPECT_EQ(ElementsOf(source), (std::vector<int>{3, 16}));
  EXPECT_EQ(own.Size(), 4);
  EXPECT_EQ(source.Size(), 2);
}

TEST(VRELHashListTest, DeepCopyWithMarksIsIndependent) {
  VRELHashList<VRELString> source;
  source.Add(VRELString(L"hub"));
  VRELHashList<VRELString> own = source.copy();
  own.Add(VRELString(L"rim"));
  source.Remove(VRELString(L"hub"));
  EXPECT_TRUE(own.Get(VRELString(L"hub")));
  EXPECT_TRUE(own.Get(VRELString(L"rim")));
  EXPECT_FALSE(source.Get(VRELString(L"hub")));
  EXPECT_FALSE(source.Get(VRELString(L"rim")));
}

TEST(VRELHashListTest, CopySharesSlotsButNotCount) {
  IntList source = ListOf({1, 2});
  int out = 0;
  source.GetNext(out);
  IntList copy(source);
  EXPECT_TRUE(copy.GetNext(out));
  EXPECT_EQ(out, 2);
  copy.Add(3);
  EXPECT_TRUE(source.Get(3));
  EXPECT_EQ(source.Size(), 2);
  EXPECT_EQ(copy.Size(), 3);
}

TEST(VRELHashListTest, AssignmentSharesAndKeepsCursor) {
  IntList source = ListOf({1, 2, 3});
  int out = 0;
  source.GetNext(out);
  IntList target(17);
  target.Add(9);
  EXPECT_EQ(&(target = source), &target);
  EXPECT_EQ(target.Size(), 3);
  EXPECT_EQ(target.GetHashCode(7), 7u);
  EXPECT_TRUE(target.GetNext(out));
  EXPECT_EQ(out, 1);
  target.Add(4);
  EXPECT_TRUE(source.Get(4));
  EXPECT_EQ(source.Size(), 3);
}

TEST(VRELHashListTest, CopyAndAssignmentCopyFunctions) {
  IntList source(17);
  source.SetFunctions(Itself, HaveEqualHalves);
  IntList const copy(source);
  IntList assigned(17);
  assigned = source;
  for (IntList const* each : {&copy, static_cast<IntList const*>(&assigned)}) {
    EXPECT_EQ(each->GetHashCode(7), 7u);
    EXPECT_TRUE(each->CheckEqual(4, 5));
  }
}

TEST(VRELHashListTest, UsesFunctionsOfSetFunctions) {
  IntList list(17);
  EXPECT_EQ(list.GetHashCode(1), 0x23744B91u);
  EXPECT_FALSE(list.CheckEqual(4, 5));
  list.SetFunctions(Itself, HaveEqualHalves);
  EXPECT_EQ(list.GetHashCode(1), 1u);
  EXPECT_TRUE(list.CheckEqual(4, 5));
}

TEST(VRELHashListTest, ListWithoutSlotsGrowsOnAdd) {
  IntList list(0);
  EXPECT_EQ(list.Find(1), -1);
  EXPECT_FALSE(list.Get(1));
  EXPECT_FALSE(list.Remove(1));
  EXPECT_FALSE(list.HasNext());
  EXPECT_TRUE(list.Add(1));
  EXPECT_TRUE(list.Get(1));
}

TEST(VRELHashListTest, StoresStrings) {
  VRELHashList<VRELString> list(17);
  EXPECT_TRUE(list.Add(VRELString(L"hub")));
  EXPECT_FALSE(list.Add(VRELString(L"hub")));
  EXPECT_TRUE(list.Get(VRELString(L"hub")));
  EXPECT_FALSE(list.Get(VRELString(L"rim")));
}

TEST(VRELHashListTest, SlotsMatchModel) {
  for (unsigned int seed = 0; seed < 10; ++seed) {
    std::mt19937 random(seed);
    IntList list(17);
    list.SetFunctions(Itself, Same);
    HashModel model;
    for (int step = 0; step < 2000; ++step) {
      int const element = static_cast<int>(random() % 60);
      if (random() % 2 == 0) {
        ASSERT_EQ(list.Add(element), model.Add(element, 0));
      } else {
        ASSERT_EQ(list.Remove(element), model.Remove(element));
      }
      ASSERT_EQ(list.Size(), model.count);
      ASSERT_EQ(list.Find(element), model.Find(element));
      std::vector<int> expected;
      for (auto const& row : model.rows) {
        if (row.occupied) expected.push_back(row.key);
      }
      ASSERT_EQ(ElementsOf(list), expected);
    }
  }
}

TEST(VRELHashListTest, PointersMatchModel) {
  std::mt19937 random(23);
  VRELHashList<void*> list(17);
  std::set<void*> model;
  for (int step = 0; step < 50000; ++step) {
    void* const element = reinterpret_cast<void*>(static_cast<std::uintptr_t>(random() % 2000) * 16);
    switch (random() % 3) {
      case 0:
        ASSERT_EQ(list.Add(element), model.insert(element).second);
        break;
      case 1:
        ASSERT_EQ(list.Remove(element), model.erase(element) == 1);
        break;
      default:
        ASSERT_EQ(list.Get(element), model.count(element) == 1);
        break;
    }
    ASSERT_EQ(list.Size(), static_cast<int>(model.size()));
  }
}

// Puts each pointer into the first vacant slot from its home on.
std::vector<void*> PlaceByLinearProbing(std::vector<void*> const& pointers, std::size_t slots) {
  std::vector<void*> placed(slots);
  for (void* const pointer : pointers) {
    std::size_t slot = VRELHashList<void*>::GetHashValue(pointer) % slots;
    while (placed[slot] != nullptr) slot = (slot + 1) % slots;
    placed[slot] = pointer;
  }
  return placed;
}

// Returns different addresses that are not null. A hundred of them collide in the last slots of a table of this size.
std::vector<void*> MakeWrappingAddresses(std::size_t count, unsigned int slots) {
  std::vector<void*> addresses;
  std::size_t crowd = 100;
  for (std::uintptr_t address = 0x10000; addresses.size() < count; address += 16) {
    void* const pointer = reinterpret_cast<void*>(address);
    bool const isLast = VRELHashList<void*>::GetHashValue(pointer) % slots > slots - 20;
    if (!isLast && addresses.size() >= count - crowd) continue;
    if (isLast && crowd > 0) --crowd;
    addresses.push_back(pointer);
  }
  return addresses;
}

TEST(VRELHashListTest, LargeTableProbesLinearly) {
  constexpr unsigned int slots = 8191;
  std::vector<void*> const all = MakeWrappingAddresses(6000, slots);
  std::vector<void*> const present(all.begin(), all.begin() + 5900);
  VRELHashList<void*> list(slots);
  for (void* const pointer : present) EXPECT_TRUE(list.Add(pointer));
  std::vector<void*> const placed = PlaceByLinearProbing(present, slots);
  for (std::size_t slot = 0; slot < slots; ++slot) {
    if (placed[slot] == nullptr) continue;
    ASSERT_EQ(list.Find(placed[slot]), static_cast<int>(slot));
  }
  for (std::size_t i = present.size(); i < all.size(); ++i) EXPECT_EQ(list.Find(all[i]), -1);
  EXPECT_EQ(list.Find(nullptr), -1);
  EXPECT_TRUE(list.Add(nullptr));
  EXPECT_GE(list.Find(nullptr), 0);
  for (std::size_t i = 0; i < present.size(); i += 2) EXPECT_TRUE(list.Remove(present[i]));
  for (std::size_t i = 0; i < present.size(); ++i) ASSERT_EQ(list.Get(present[i]), i % 2 == 1) << i;
}

TEST(VRELHashListTest, SearchOfFullLargeTableEnds) {
  std::vector<void*> const all = MakeWrappingAddresses(5100, 5000);
  VRELHashList<void*> list(8000);
  for (std::size_t i = 0; i < 5000; ++i) list.Add(all[i]);
  list.Rehash(5000);
  for (std::size_t i = 0; i < all.size(); ++i) ASSERT_EQ(list.Get(all[i]), i < 5000) << i;
}

TEST(VRELHashListTest, LargeTableUsesFunctionsOfSetFunctions) {
  VRELHashList<void*> list(8191);
  list.SetFunctions(
      [](void* const& pointer) { return static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(pointer) / 64); },
      [](void* const& a, void* const& b) {
        return reinterpret_cast<std::uintptr_t>(a) / 64 == reinterpret_cast<std::uintptr_t>(b) / 64;
      });
  EXPECT_TRUE(list.Add(reinterpret_cast<void*>(640)));
  for (std::uintptr_t address = 640; address < 704; ++address) {
    EXPECT_TRUE(list.Get(reinterpret_cast<void*>(address))) << address;
  }
  EXPECT_FALSE(list.Get(reinterpret_cast<void*>(704)));
}

TEST(VRELHashListTest, IteratesIndependentlyOfCursor) {
  VRELHashList<int> list = {5, 9, 5, 2};
  EXPECT_EQ(list.Size(), 3);
  int first = 0;
  EXPECT_TRUE(list.GetNext(first));
  std::set<int> elements;
  for (int const& each : list) {
    for (int const& other : list) elements.insert(each * 100 + other);
  }
  EXPECT_EQ(elements, (std::set<int>{202, 205, 209, 502, 505, 509, 902, 905, 909}));
  int left = 0;
  for (int next = 0; list.GetNext(next); ++left) EXPECT_NE(next, first);
  EXPECT_EQ(left, 2);
  VRELHashList<int> const empty;
  EXPECT_EQ(empty.begin(), empty.end());
  EXPECT_EQ(*list.begin().operator->(), *list.begin());
  VRELHashList<int>::Iterator iterator = list.begin();
  EXPECT_EQ(iterator++, list.begin());
  EXPECT_NE(iterator, list.begin());
}

TEST(VRELHashListTest, MoveLeavesSourceEmpty) {
  VRELHashList<int> source(17);
  source.SetFunctions([](int const& key) { return static_cast<unsigned int>(key); }, nullptr);
  for (int key : {3, 4}) source.Add(key);
  VRELHashList<int> target(std::move(source));
  EXPECT_EQ(target.Find(4), 4);
  EXPECT_EQ(target.Size(), 2);
  EXPECT_EQ(source.Size(), 0);
  EXPECT_FALSE(source.Get(3));
  EXPECT_FALSE(source.HasNext());
  EXPECT_FALSE(source.Remove(3));
  EXPECT_TRUE(source.Add(20));
  EXPECT_EQ(source.Find(20), 3);  // of 17, by the same function
  EXPECT_FALSE(target.Get(20));
  source = std::move(target);
  EXPECT_EQ(source.Size(), 2);
  EXPECT_EQ(target.Size(), 0);
  VRELHashList<int>& itself = source;
  source = std::move(itself);
  EXPECT_EQ(source.Find(3), 3);
}

TEST(VRELHashListTest, ComparesElements) {
  VRELHashList<int> const list = {1, 2, 3};
  VRELHashList<int> large(100);
  for (int element : {3, 2, 1}) large.Add(element);
  EXPECT_TRUE(list == large);
  EXPECT_FALSE(list != large);
  large.Add(4);
  EXPECT_TRUE(list != large);
  EXPECT_TRUE(list != (VRELHashList<int>{1, 2, 4}));
  EXPECT_TRUE(VRELHashList<int>() == VRELHashList<int>(0));
}

TEST(VRELHashListTest, DeclarationsMatch) {
  using List = VRELHashList<double>;
  static_assert(std::is_same_v<List::value_type, double>);
  static_assert(std::is_same_v<decltype(&List::GetHashValue), unsigned int (*)(double const&)>);
  static_assert(std::is_same_v<decltype(&List::HashEqualFunction), bool (*)(double const&, double const&)>);
  static_assert(std::is_same_v<decltype(&List::Size), int (List::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&List::GetHashCode), unsigned int (List::*)(double const&) const>);
  static_assert(std::is_same_v<decltype(&List::CheckEqual), bool (List::*)(double const&, double const&) const>);
  static_assert(std::is_same_v<decltype(&List::Find), int (List::*)(double const&) const>);
  static_assert(std::is_same_v<decltype(&List::Get), bool (List::*)(double const&) const>);
  static_assert(std::is_same_v<decltype(&List::Add), bool (List::*)(double const&)>);
  static_assert(std::is_same_v<decltype(&List::Put), bool (List::*)(double const&)>);
  static_assert(std::is_same_v<decltype(&List::Remove), bool (List::*)(double const&)>);
  static_assert(std::is_same_v<decltype(&List::Clear), void (List::*)()>);
  static_assert(std::is_same_v<decltype(&List::Rehash), void (List::*)(int)>);
  static_assert(std::is_same_v<decltype(&List::InitEnumeration), void (List::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&List::HasNext), bool (List::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&List::GetNext), bool (List::*)(double&) const>);
  static_assert(sizeof(List) == 48 && sizeof(VRELHashList<VRELString>) == 48 && !std::is_polymorphic_v<List>);
}

}  // namespace
