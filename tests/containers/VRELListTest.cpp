#include "VRELList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <list>
#include <random>
#include <type_traits>
#include <vector>

namespace {

int values[8];
void* const a = &values[0];
void* const b = &values[1];
void* const c = &values[2];
void* const missing = &values[7];

using Values = std::vector<void*>;

// The values from head to tail, after a check that the ends and the size agree with them.
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

TEST(VRELListTest, IsDeletedThroughItsBase) {
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

TEST(VRELListTest, PushesAtEitherEnd) {
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

TEST(VRELListTest, PopsAtEitherEnd) {
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

TEST(VRELListTest, PopsNothingFromAnEmptyList) {
  VRELList list;
  list.PopFront();
  list.PopBack();
  list.Pop();
  EXPECT_EQ(Contents(list), Values());
  list.PushBack(a);
  EXPECT_EQ(Contents(list), (Values{a}));
}

TEST(VRELListTest, IsAStackAtItsTail) {
  VRELList list;
  list.Push(a);
  list.Push(b);
  EXPECT_EQ(list.GetTop(), b);
  list.Pop();
  EXPECT_EQ(list.GetTop(), a);
}

TEST(VRELListTest, FindsTheFirstNodeWithAValue) {
  VRELList list;
  Fill(list, {a, b, c, b, nullptr});
  VRELList::VRELListNode::VRELListIterator found = list.Find(b);
  ASSERT_TRUE(found != list.End());
  EXPECT_EQ(*found, b);
  EXPECT_EQ(*++found, c);
  EXPECT_TRUE(list.Find(missing) == list.End());
  EXPECT_TRUE(list.Find(nullptr) != list.End());
}

TEST(VRELListTest, IteratesUpToTheEnd) {
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

TEST(VRELListTest, ErasesAnywhere) {
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

TEST(VRELListTest, ErasesTheOnlyNode) {
  VRELList list;
  list.PushBack(a);
  list.Erase(list.Find(a));
  EXPECT_EQ(Contents(list), Values());
  list.PushFront(b);
  EXPECT_EQ(Contents(list), (Values{b}));
}

TEST(VRELListTest, DoesNotEraseTheEndsOfAnotherList) {
  VRELList list;
  VRELList other;
  Fill(list, {a, b});
  Fill(other, {a, b});
  list.Erase(other.Find(a));
  list.Erase(other.Find(b));
  EXPECT_EQ(Contents(list), (Values{a, b}));
  EXPECT_EQ(Contents(other), (Values{a, b}));
}

TEST(VRELListTest, RemovesTheFirstMatchOnly) {
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

TEST(VRELListTest, ClearLeavesAnEmptyList) {
  VRELList list;
  Fill(list, {a, b, c});
  list.Clear();
  EXPECT_EQ(Contents(list), Values());
  list.Clear();
  list.PushBack(b);
  EXPECT_EQ(Contents(list), (Values{b}));
}

TEST(VRELListTest, ANodeDeletesWhatFollows) {
  auto* const first = new VRELList::VRELListNode(a);
  first->next = new VRELList::VRELListNode(b);
  first->next->next = new VRELList::VRELListNode(c);
  EXPECT_EQ(first->value, a);
  EXPECT_EQ(first->previous, nullptr);
  delete first;  // the leak checker sees the rest
}

TEST(VRELListTest, ALongListIsDeletedWithinTheCallStack) {
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

TEST(VRELListTest, AgreesWithAModel) {
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

}  // namespace
