#include "VRELMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <list>
#include <map>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

int values[8];
void* const a = &values[0];
void* const b = &values[1];
void* const c = &values[2];
void* const missing = &values[7];

using Entry = std::pair<long, void*>;
using Entries = std::vector<Entry>;

// Returns the entries from head to tail, and checks ends and size against them.
Entries Contents(VRELMap const& map) {
  Entries contents;
  for (VRELMap::Iterator place = map.Begin(); place != map.End(); ++place)
    contents.emplace_back(place.GetKey(), *place);
  EXPECT_EQ(map.GetSize(), static_cast<int>(contents.size()));
  EXPECT_EQ(map.IsEmpty(), contents.empty());
  Entry const front = contents.empty() ? Entry(0, nullptr) : contents.front();
  Entry const back = contents.empty() ? Entry(0, nullptr) : contents.back();
  EXPECT_EQ(Entry(map.GetFrontKey(), map.GetFront()), front);
  EXPECT_EQ(Entry(map.GetBackKey(), map.GetBack()), back);
  EXPECT_EQ(Entry(map.GetTopKey(), map.GetTop()), back);
  return contents;
}

void Fill(VRELMap& map, Entries const& contents) {
  for (Entry const& entry : contents) map.PushBack(entry.first, entry.second);
}

TEST(VRELMapTest, IsDeletedThroughBase) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELMap>);
}

TEST(VRELMapTest, StartsEmpty) {
  VRELMap const map;
  EXPECT_EQ(Contents(map), Entries());
  EXPECT_TRUE(map.Begin() == map.End());
  EXPECT_TRUE(map.Find(a) == map.End());
  EXPECT_TRUE(map.FindByKey(0) == map.End());
  EXPECT_EQ(map.GetValueByKey(0), nullptr);
}

TEST(VRELMapTest, PushAndPopAtBothEnds) {
  VRELMap map;
  map.PushFront(2, b);
  map.PushFront(1, a);
  map.PushBack(3, c);
  map.Append(4, a);
  map.Push(5, b);
  EXPECT_EQ(Contents(map), (Entries{{1, a}, {2, b}, {3, c}, {4, a}, {5, b}}));
  map.PopFront();
  EXPECT_EQ(Contents(map), (Entries{{2, b}, {3, c}, {4, a}, {5, b}}));
  map.PopBack();
  map.Pop();
  EXPECT_EQ(Contents(map), (Entries{{2, b}, {3, c}}));
  map.Pop();
  map.Pop();
  map.Pop();
  map.PopFront();
  map.PopBack();
  EXPECT_EQ(Contents(map), Entries());
}

TEST(VRELMapTest, AcceptsAnyLongAsKey) {
  long const low = std::numeric_limits<long>::min();
  long const high = std::numeric_limits<long>::max();
  VRELMap map;
  map.PushBack(low, a);
  map.PushBack(high, b);
  map.PushBack(0, c);
  EXPECT_EQ(map.GetValueByKey(low), a);
  EXPECT_EQ(map.GetValueByKey(high), b);
  EXPECT_EQ(map.GetValueByKey(0), c);
}

TEST(VRELMapTest, FindReturnsFirstMatch) {
  VRELMap map;
  Fill(map, {{1, a}, {2, b}, {2, c}, {3, b}});
  EXPECT_EQ(map.Find(b).GetKey(), 2);
  EXPECT_EQ(map.FindByKey(2).GetValue(), b);
  EXPECT_EQ(map.GetValueByKey(2), b);
  EXPECT_TRUE(map.Find(missing) == map.End());
  EXPECT_TRUE(map.FindByKey(9) == map.End());
  EXPECT_EQ(map.GetValueByKey(9), nullptr);
}

TEST(VRELMapTest, RemoveRemovesFirstMatch) {
  VRELMap map;
  Fill(map, {{1, a}, {2, b}, {2, c}, {3, b}});
  map.RemoveByKey(2);
  EXPECT_EQ(Contents(map), (Entries{{1, a}, {2, c}, {3, b}}));
  map.Remove(b);
  EXPECT_EQ(Contents(map), (Entries{{1, a}, {2, c}}));
  map.Remove(missing);
  map.RemoveByKey(9);
  map.Erase(map.End());
  EXPECT_EQ(Contents(map), (Entries{{1, a}, {2, c}}));
  map.Erase(map.FindByKey(2));
  EXPECT_EQ(Contents(map), (Entries{{1, a}}));
  map.Erase(map.Begin());
  EXPECT_EQ(Contents(map), Entries());
}

TEST(VRELMapTest, IteratesInBothDirections) {
  VRELMap map;
  Fill(map, {{1, a}, {2, b}});
  VRELMap::VRELMapNode::VRELMapIterator place = map.Begin();
  EXPECT_EQ((place++).GetKey(), 1);
  EXPECT_EQ(place.GetKey(), 2);
  EXPECT_EQ((place--).GetKey(), 2);
  EXPECT_EQ(place.GetKey(), 1);
  EXPECT_EQ((++place).GetKey(), 2);
  EXPECT_EQ((--place).GetKey(), 1);
  --place;
  EXPECT_TRUE(place == map.End());
  EXPECT_EQ(place.GetKey(), 0);
  EXPECT_EQ(*place, nullptr);
  --place;
  ++place;
  EXPECT_TRUE(place == map.End());
  std::vector<void*> seen;
  for (void* value : map) seen.push_back(value);
  EXPECT_EQ(seen, (std::vector<void*>{a, b}));
}

TEST(VRELMapTest, UniqueIgnoresKeys) {
  VRELMap map;
  Fill(map, {{1, a}, {2, a}, {3, b}, {3, a}});
  map.Unique();
  EXPECT_EQ(Contents(map), (Entries{{1, a}, {3, b}, {3, a}}));
}

TEST(VRELMapTest, ClearLeavesEmptyMap) {
  VRELMap map;
  Fill(map, {{1, a}, {2, b}});
  map.Clear();
  EXPECT_EQ(Contents(map), Entries());
  map.PushFront(3, c);
  EXPECT_EQ(Contents(map), (Entries{{3, c}}));
}

TEST(VRELMapTest, DeletesMillionNodesIteratively) {
  VRELMap map;
  for (int i = 0; i < 1000000; ++i) map.PushBack(i, a);
  EXPECT_EQ(map.GetBackKey(), 999999);
  auto* const first = new VRELMap::VRELMapNode(1, a);
  for (int i = 0; i < 1000000; ++i) {
    auto* const next = new VRELMap::VRELMapNode(2, b);
    next->next = first->next;
    first->next = next;
  }
  delete first;
}

// A multimap keeps the values of one key in order of insertion, and so predicts each search by key.
TEST(VRELMapTest, MatchesMultimap) {
  std::mt19937 random(4);
  VRELMap map;
  std::multimap<long, void*> model;
  for (int round = 0; round < 20000; ++round) {
    long const key = static_cast<long>(random() % 40) - 20;
    void* const value = &values[random() % 6];
    auto const first = model.lower_bound(key);
    bool const present = first != model.end() && first->first == key;
    ASSERT_EQ(map.FindByKey(key) != map.End(), present);
    ASSERT_EQ(map.GetValueByKey(key), present ? first->second : nullptr);
    if (random() % 2 == 0) {
      if (random() % 2 == 0) {
        map.PushBack(key, value);
        model.emplace_hint(model.upper_bound(key), key, value);
      } else {
        map.PushFront(key, value);
        model.emplace_hint(first, key, value);
      }
    } else {
      map.RemoveByKey(key);
      if (present) model.erase(first);
    }
    ASSERT_EQ(map.GetSize(), static_cast<int>(model.size()));
  }
  Entries contents = Contents(map);
  std::stable_sort(contents.begin(), contents.end(), [](Entry const& x, Entry const& y) { return x.first < y.first; });
  EXPECT_EQ(contents, Entries(model.begin(), model.end()));
}

TEST(VRELMapTest, MatchesList) {
  std::mt19937 random(5);
  VRELMap map;
  std::list<Entry> model;
  for (int round = 0; round < 10000; ++round) {
    Entry const entry(static_cast<long>(random() % 5), &values[random() % 4]);
    switch (random() % 7) {
      case 0:
        map.PushFront(entry.first, entry.second);
        model.push_front(entry);
        break;
      case 1:
        map.Append(entry.first, entry.second);
        model.push_back(entry);
        break;
      case 2:
        map.Push(entry.first, entry.second);
        model.push_back(entry);
        break;
      case 3:
        map.PopFront();
        if (!model.empty()) model.pop_front();
        break;
      case 4:
        map.PopBack();
        if (!model.empty()) model.pop_back();
        break;
      case 5: {
        map.Remove(entry.second);
        auto const found =
            std::find_if(model.begin(), model.end(), [&](Entry const& each) { return each.second == entry.second; });
        if (found != model.end()) model.erase(found);
        break;
      }
      default:
        if (random() % 8 != 0) break;
        map.Unique();
        model.unique([](Entry const& x, Entry const& y) { return x.second == y.second; });
    }
    ASSERT_EQ(Contents(map), Entries(model.begin(), model.end())) << round;
  }
}

TEST(VRELMapTest, MoveLeavesSourceEmpty) {
  VRELMap source = {{1, a}, {2, b}};
  VRELMap target(std::move(source));
  EXPECT_TRUE(source.IsEmpty());
  EXPECT_EQ(source.GetBack(), nullptr);
  EXPECT_TRUE(target == (VRELMap{{1, a}, {2, b}}));
  source.PushBack(3, b);
  source = std::move(target);
  EXPECT_TRUE(source == (VRELMap{{1, a}, {2, b}}));
  EXPECT_TRUE(target.IsEmpty());
  VRELMap& itself = source;
  source = std::move(itself);
  EXPECT_EQ(source.GetSize(), 2);
}

TEST(VRELMapTest, EntriesBindKeyAndValue) {
  VRELMap const map = {{5, a}, {-1, b}, {5, nullptr}};
  std::vector<std::pair<long, void*>> entries;
  for (auto [key, value] : map.Entries()) entries.emplace_back(key, value);
  EXPECT_EQ(entries, (std::vector<std::pair<long, void*>>{{5, a}, {-1, b}, {5, nullptr}}));
  VRELMap const empty;
  EXPECT_EQ(empty.Entries().begin(), empty.Entries().end());
}

TEST(VRELMapTest, ComparesInOrder) {
  VRELMap const map = {{1, a}, {2, b}};
  EXPECT_FALSE(map != (VRELMap{{1, a}, {2, b}}));
  EXPECT_TRUE(map != (VRELMap{{2, b}, {1, a}}));
  EXPECT_TRUE(map != (VRELMap{{1, a}, {3, b}}));
  EXPECT_TRUE(map != (VRELMap{{1, a}, {2, a}}));
  EXPECT_TRUE(map != (VRELMap{{1, a}}));
}

TEST(VRELMapTest, DeclarationsMatch) {
  using Iterator = VRELMap::VRELMapNode::VRELMapIterator;
  static_assert(std::is_same_v<decltype(&VRELMap::GetFront), void* (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::GetBack), void* (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::GetTop), void* (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::GetFrontKey), long (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::GetBackKey), long (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::GetTopKey), long (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::GetSize), int (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::IsEmpty), bool (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::PushFront), void (VRELMap::*)(long, void*)>);
  static_assert(std::is_same_v<decltype(&VRELMap::PushBack), void (VRELMap::*)(long, void*)>);
  static_assert(std::is_same_v<decltype(&VRELMap::Append), void (VRELMap::*)(long, void*)>);
  static_assert(std::is_same_v<decltype(&VRELMap::Push), void (VRELMap::*)(long, void*)>);
  static_assert(std::is_same_v<decltype(&VRELMap::PopFront), void (VRELMap::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::PopBack), void (VRELMap::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::Pop), void (VRELMap::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::Find), Iterator (VRELMap::*)(void*) const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::FindByKey), Iterator (VRELMap::*)(long) const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::GetValueByKey), void* (VRELMap::*)(long) const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::Erase), void (VRELMap::*)(Iterator) noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::Remove), void (VRELMap::*)(void* const&) noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::RemoveByKey), void (VRELMap::*)(long) noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::Unique), void (VRELMap::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::Clear), void (VRELMap::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::Begin), Iterator (VRELMap::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELMap::End), Iterator (VRELMap::*)() const noexcept>);
  static_assert(sizeof(VRELMap) == 32);
}

}  // namespace
