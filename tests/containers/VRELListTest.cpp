#include "VRELList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <list>
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

using Values = std::vector<void*>;

// Returns the values from head to tail, and checks ends and size against them.
Values Contents(VRELList const& list) {
  Values contents;
  for (void* value : list) contents.push_back(value);
  EXPECT_EQ(list.GetSize(), static_cast<int>(contents.size()));
  EXPECT_EQ(list.IsEmpty(), contents.empty());
  EXPECT_EQ(list.GetFront(), contents.empty() ? nullptr : contents.front());
  EXPECT_EQ(list.GetBack(), contents.empty() ? nullptr : contents.back());
  EXPECT_EQ(list.GetTop(), list.GetBack());
  return contents;
}

void Fill(VRELList& list, Values const& contents) {
  for (void* value : contents) list.PushBack(value);
}

TEST(VRELListTest, IsDeletedThroughBase) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELList>);
}

TEST(VRELListTest, StartsEmpty) {
  VRELList const list;
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetFront(), nullptr);
  EXPECT_EQ(list.GetBack(), nullptr);
  EXPECT_EQ(list.GetTop(), nullptr);
  EXPECT_TRUE(list.Begin() == list.End());
  EXPECT_TRUE(list.Find(a) == list.End());
}

TEST(VRELListTest, PushAddsAtBothEnds) {
  VRELList list;
  list.PushFront(b);
  EXPECT_EQ(Contents(list), (Values{b}));
  list.PushFront(a);
  EXPECT_EQ(Contents(list), (Values{a, b}));
  list.PushBack(c);
  list.Append(a);
  list.Push(nullptr);
  EXPECT_EQ(Contents(list), (Values{a, b, c, a, nullptr}));
}

TEST(VRELListTest, PopRemovesAtBothEnds) {
  VRELList list;
  Fill(list, {a, b, c, a, b});
  list.PopFront();
  EXPECT_EQ(Contents(list), (Values{b, c, a, b}));
  list.PopBack();
  EXPECT_EQ(Contents(list), (Values{b, c, a}));
  list.Pop();
  EXPECT_EQ(Contents(list), (Values{b, c}));
  list.PopFront();
  list.PopFront();
  EXPECT_EQ(Contents(list), Values());
}

TEST(VRELListTest, PopIgnoresEmptyList) {
  VRELList list;
  list.PopFront();
  list.PopBack();
  list.Pop();
  EXPECT_EQ(Contents(list), Values());
  list.PushBack(a);
  EXPECT_EQ(Contents(list), (Values{a}));
}

TEST(VRELListTest, PushAndPopMakeStack) {
  VRELList list;
  list.Push(a);
  list.Push(b);
  EXPECT_EQ(list.GetTop(), b);
  list.Pop();
  EXPECT_EQ(list.GetTop(), a);
}

TEST(VRELListTest, FindReturnsFirstMatch) {
  VRELList list;
  Fill(list, {a, b, c, b, nullptr});
  VRELList::VRELListNode::VRELListIterator found = list.Find(b);
  ASSERT_TRUE(found != list.End());
  EXPECT_EQ(*found, b);
  EXPECT_EQ(*++found, c);
  EXPECT_TRUE(list.Find(missing) == list.End());
  EXPECT_TRUE(list.Find(nullptr) != list.End());
}

TEST(VRELListTest, IteratesInOrder) {
  VRELList list;
  Fill(list, {a, b});
  VRELList::Iterator place = list.Begin();
  EXPECT_EQ(place.GetValue(), a);
  EXPECT_EQ(*place++, a);
  EXPECT_EQ(*place, b);
  ++place;
  EXPECT_TRUE(place == list.End());
  EXPECT_EQ(*place, nullptr);
  ++place;
  EXPECT_TRUE(place == list.End());
}

TEST(VRELListTest, EraseRemovesAnyNode) {
  struct {
    int index;
    Values left;
  } const rows[] = {{0, {b, c}}, {1, {a, c}}, {2, {a, b}}, {3, {a, b, c}}};
  for (auto const& row : rows) {
    SCOPED_TRACE(row.index);
    VRELList list;
    Fill(list, {a, b, c});
    VRELList::Iterator place = list.Begin();
    for (int i = 0; i < row.index; ++i) ++place;
    list.Erase(place);
    EXPECT_EQ(Contents(list), row.left);
    list.PushFront(nullptr);
    list.PushBack(nullptr);
    EXPECT_EQ(list.GetSize(), static_cast<int>(row.left.size()) + 2);
  }
}

TEST(VRELListTest, EraseRemovesOnlyNode) {
  VRELList list;
  list.PushBack(a);
  list.Erase(list.Find(a));
  EXPECT_EQ(Contents(list), Values());
  list.PushFront(b);
  EXPECT_EQ(Contents(list), (Values{b}));
}

TEST(VRELListTest, EraseIgnoresEndsOfOtherList) {
  VRELList list;
  VRELList other;
  Fill(list, {a, b});
  Fill(other, {a, b});
  list.Erase(other.Find(a));
  list.Erase(other.Find(b));
  EXPECT_EQ(Contents(list), (Values{a, b}));
  EXPECT_EQ(Contents(other), (Values{a, b}));
}

TEST(VRELListTest, RemoveRemovesFirstMatch) {
  VRELList list;
  Fill(list, {a, b, a});
  list.Remove(a);
  EXPECT_EQ(Contents(list), (Values{b, a}));
  list.Remove(missing);
  EXPECT_EQ(Contents(list), (Values{b, a}));
}

TEST(VRELListTest, UniqueRemovesAdjacentDuplicates) {
  struct {
    Values before;
    Values after;
  } const rows[] = {
      {{}, {}},
      {{a}, {a}},
      {{a, a, b, a}, {a, b, a}},
      {{a, a, a}, {a}},
      {{a, b, b}, {a, b}},
      {{a, b, a, b}, {a, b, a, b}},
      {{nullptr, nullptr, a}, {nullptr, a}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.before.size());
    VRELList list;
    Fill(list, row.before);
    list.Unique();
    EXPECT_EQ(Contents(list), row.after);
  }
}

TEST(VRELListTest, ClearLeavesEmptyList) {
  VRELList list;
  Fill(list, {a, b, c});
  list.Clear();
  EXPECT_EQ(Contents(list), Values());
  list.Clear();
  list.PushBack(b);
  EXPECT_EQ(Contents(list), (Values{b}));
}

TEST(VRELListTest, NodeDeletesSuccessors) {
  auto* const first = new VRELList::VRELListNode(a);
  first->next = new VRELList::VRELListNode(b);
  first->next->next = new VRELList::VRELListNode(c);
  EXPECT_EQ(first->value, a);
  EXPECT_EQ(first->previous, nullptr);
  delete first;  // a leak checker sees the others
}

TEST(VRELListTest, DeletesMillionNodesIteratively) {
  VRELList list;
  for (int i = 0; i < 1000000; ++i) list.PushBack(a);
  list.Clear();
  for (int i = 0; i < 1000000; ++i) list.PushFront(a);
  EXPECT_EQ(list.GetSize(), 1000000);
  auto* const first = new VRELList::VRELListNode(a);
  for (int i = 0; i < 1000000; ++i) {
    auto* const next = new VRELList::VRELListNode(b);
    next->next = first->next;
    first->next = next;
  }
  delete first;
}

TEST(VRELListTest, MatchesModel) {
  std::mt19937 random(3);
  VRELList list;
  std::list<void*> model;
  auto const removeFirst = [&](void* value) {
    auto const found = std::find(model.begin(), model.end(), value);
    if (found != model.end()) model.erase(found);
  };
  for (int round = 0; round < 20000; ++round) {
    void* const value = &values[random() % 6];
    switch (random() % 12) {
      case 0:
      case 1:
        list.PushFront(value);
        model.push_front(value);
        break;
      case 2:
        list.PushBack(value);
        model.push_back(value);
        break;
      case 3:
        list.Append(value);
        model.push_back(value);
        break;
      case 4:
        list.Push(value);
        model.push_back(value);
        break;
      case 5:
        list.PopFront();
        if (!model.empty()) model.pop_front();
        break;
      case 6:
        list.PopBack();
        if (!model.empty()) model.pop_back();
        break;
      case 7:
        list.Remove(value);
        removeFirst(value);
        break;
      case 8:
        list.Erase(list.Find(value));
        removeFirst(value);
        break;
      case 9: {
        int const steps = static_cast<int>(random() % 20);
        auto place = list.Begin();
        auto wanted = model.begin();
        for (int i = 0; i < steps && wanted != model.end(); ++i, ++place, ++wanted) ASSERT_EQ(*place, *wanted);
        list.Erase(place);
        if (wanted != model.end()) model.erase(wanted);
        break;
      }
      case 10:
        if (random() % 8 == 0) {
          list.Unique();
          model.unique();
        }
        break;
      default:
        if (random() % 64 == 0) {
          list.Clear();
          model.clear();
        }
    }
    ASSERT_EQ(Contents(list), Values(model.begin(), model.end())) << round;
  }
}

TEST(VRELListTest, MoveLeavesSourceEmpty) {
  VRELList source = {a, b, c};
  VRELList::Iterator const second = source.Find(b);
  VRELList target(std::move(source));
  EXPECT_EQ(Contents(target), (Values{a, b, c}));
  EXPECT_EQ(Contents(source), Values());
  target.Erase(second);
  source.PushBack(c);
  source = std::move(target);
  EXPECT_EQ(Contents(source), (Values{a, c}));
  EXPECT_EQ(Contents(target), Values());
  target.PushFront(b);
  EXPECT_EQ(Contents(target), Values{b});
  VRELList& itself = source;
  source = std::move(itself);
  EXPECT_EQ(Contents(source), (Values{a, c}));
}

TEST(VRELListTest, ComparesInOrder) {
  VRELList const list = {a, b};
  EXPECT_TRUE(list == (VRELList{a, b}));
  EXPECT_FALSE(list != (VRELList{a, b}));
  EXPECT_TRUE(list != (VRELList{b, a}));
  EXPECT_TRUE(list != (VRELList{a}));
  EXPECT_TRUE(list != (VRELList{a, b, c}));
  EXPECT_TRUE(VRELList() == VRELList());
  EXPECT_TRUE((VRELList{nullptr}) != VRELList());
}

TEST(VRELListTest, DeclarationsMatch) {
  static_assert(std::is_same_v<VRELList::value_type, void*>);
  static_assert(std::is_same_v<std::iterator_traits<VRELList::Iterator>::value_type, void*>);
  static_assert(std::is_same_v<VRELList::Iterator, VRELList::VRELListNode::VRELListIterator>);
  static_assert(std::is_same_v<decltype(&VRELList::GetFront), void* (VRELList::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::GetBack), void* (VRELList::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::GetTop), void* (VRELList::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::GetSize), int (VRELList::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::IsEmpty), bool (VRELList::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::PushFront), void (VRELList::*)(void*)>);
  static_assert(std::is_same_v<decltype(&VRELList::PushBack), void (VRELList::*)(void*)>);
  static_assert(std::is_same_v<decltype(&VRELList::Append), void (VRELList::*)(void*)>);
  static_assert(std::is_same_v<decltype(&VRELList::Push), void (VRELList::*)(void*)>);
  static_assert(std::is_same_v<decltype(&VRELList::PopFront), void (VRELList::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::PopBack), void (VRELList::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::Pop), void (VRELList::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::Find), VRELList::Iterator (VRELList::*)(void*) const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::Erase), void (VRELList::*)(VRELList::Iterator) noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::Remove), void (VRELList::*)(void* const&) noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::Unique), void (VRELList::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::Clear), void (VRELList::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELList::End), VRELList::Iterator (VRELList::*)() const noexcept>);
}

// The fields follow the virtual table: head, tail, size.
TEST(VRELListTest, FieldOffsetsMatchLayout) {
  static_assert(sizeof(VRELList) == 32);
  VRELList list = {a, b, c};
  char const* const bytes = reinterpret_cast<char const*>(&list);
  auto const nodeAt = [bytes](std::size_t offset) {
    VRELList::VRELListNode* node;
    std::memcpy(&node, bytes + offset, sizeof node);
    return node;
  };
  EXPECT_EQ(nodeAt(8)->value, a);
  EXPECT_EQ(nodeAt(16)->value, c);
  int size;
  std::memcpy(&size, bytes + 24, sizeof size);
  EXPECT_EQ(size, 3);
  EXPECT_EQ(nodeAt(8)->next->previous, nodeAt(8));
}

}  // namespace
