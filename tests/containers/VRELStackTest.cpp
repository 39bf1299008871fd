#include "VRELStack.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

#include "VirtualSlot.h"

namespace {

int values[4];

TEST(VRELStackTest, StartsEmpty) {
  VRELStack stack;
  EXPECT_EQ(stack.Size(), 0);
  EXPECT_TRUE(stack.IsEmpty());
  EXPECT_EQ(stack.GetTop(), nullptr);
  EXPECT_EQ(stack.Pop(), nullptr);
  EXPECT_EQ(stack.Size(), 0);
}

TEST(VRELStackTest, VirtualSlotsMatchOrder) {
  EXPECT_EQ(SlotOf(&VRELStack::Size), 0U);
  EXPECT_EQ(SlotOf(&VRELStack::Push), 1U);
  EXPECT_EQ(SlotOf(&VRELStack::Pop), 2U);
  EXPECT_EQ(SlotOf(&VRELStack::GetTop), 3U);
}

TEST(VRELStackTest, PopReturnsLastElement) {
  VRELStack stack;
  EXPECT_EQ(stack.Push(&values[0]), 1);
  EXPECT_EQ(stack.Push(&values[1]), 2);
  EXPECT_EQ(stack.Push(nullptr), 3);
  EXPECT_FALSE(stack.IsEmpty());
  EXPECT_EQ(stack.Pop(), nullptr);
  EXPECT_EQ(stack.GetTop(), &values[1]);
  EXPECT_EQ(stack.Size(), 2);
  EXPECT_EQ(stack.Pop(), &values[1]);
  EXPECT_EQ(stack.Pop(), &values[0]);
  EXPECT_EQ(stack.Pop(), nullptr);
  EXPECT_TRUE(stack.IsEmpty());
}

TEST(VRELStackTest, ElementAtChecksIndex) {
  VRELStack stack;
  stack.Push(&values[0]);
  stack.Push(&values[1]);
  EXPECT_EQ(stack.ElementAt(0), &values[0]);
  EXPECT_EQ(stack.ElementAt(1), &values[1]);
  for (int index : {-1, 2, 9, 1000000, INT_MIN, INT_MAX}) EXPECT_EQ(stack.ElementAt(index), nullptr) << index;
}

TEST(VRELStackTest, CopyIsIndependent) {
  VRELStack source;
  source.Push(&values[0]);
  VRELStack copy(source);
  VRELStack assigned;
  assigned.Push(&values[3]);
  EXPECT_EQ(&(assigned = source), &assigned);
  source.Push(&values[1]);
  for (VRELStack* each : {&copy, &assigned}) {
    EXPECT_EQ(each->Size(), 1);
    EXPECT_EQ(each->GetTop(), &values[0]);
    each->Pop();
  }
  EXPECT_EQ(source.Size(), 2);
  EXPECT_EQ(source.ElementAt(0), &values[0]);
  VRELStack const& itself = source;
  source = itself;
  EXPECT_EQ(source.Size(), 2);
  EXPECT_EQ(source.GetTop(), &values[1]);
}

TEST(VRELStackTest, DerivedClassCanOverride) {
  struct Counting : VRELStack {
    int Push(void* element) override {
      ++pushes;
      return VRELStack::Push(element);
    }
    int pushes = 0;
  } counting;
  VRELStack& stack = counting;
  EXPECT_EQ(stack.Push(&values[0]), 1);
  EXPECT_EQ(counting.pushes, 1);
}

TEST(VRELStackTest, MatchesVector) {
  std::mt19937 random(6);
  VRELStack stack;
  std::vector<void*> model;
  for (int round = 0; round < 20000; ++round) {
    if (random() % 5 < 3) {
      void* const value = &values[random() % 4];
      model.push_back(value);
      ASSERT_EQ(stack.Push(value), static_cast<int>(model.size()));
    } else {
      ASSERT_EQ(stack.Pop(), model.empty() ? nullptr : model.back());
      if (!model.empty()) model.pop_back();
    }
    ASSERT_EQ(stack.GetTop(), model.empty() ? nullptr : model.back());
    ASSERT_EQ(stack.Size(), static_cast<int>(model.size()));
  }
  for (std::size_t i = 0; i < model.size(); ++i) ASSERT_EQ(stack.ElementAt(static_cast<int>(i)), model[i]);
}

TEST(VRELStackTest, MoveLeavesSourceEmpty) {
  VRELStack source = {&values[0], &values[1]};
  VRELStack target(std::move(source));
  EXPECT_EQ(source.Size(), 0);
  EXPECT_EQ(source.Pop(), nullptr);
  EXPECT_EQ(target.GetTop(), &values[1]);
  EXPECT_EQ(source.Push(&values[2]), 1);
  source = std::move(target);
  EXPECT_EQ(source.Size(), 2);
  EXPECT_EQ(target.Size(), 0);
  EXPECT_TRUE(source == (VRELStack{&values[0], &values[1]}));
  EXPECT_TRUE(source != (VRELStack{&values[1], &values[0]}));
  EXPECT_TRUE(source != target);
}

TEST(VRELStackTest, DeclarationsMatch) {
  static_assert(std::is_same_v<decltype(&VRELStack::Size), int (VRELStack::*)() const>);
  static_assert(std::is_same_v<decltype(&VRELStack::Push), int (VRELStack::*)(void*)>);
  static_assert(std::is_same_v<decltype(&VRELStack::Pop), void* (VRELStack::*)()>);
  static_assert(std::is_same_v<decltype(&VRELStack::GetTop), void* (VRELStack::*)() const>);
  static_assert(std::is_same_v<decltype(&VRELStack::IsEmpty), bool (VRELStack::*)() const>);
  static_assert(std::is_same_v<decltype(&VRELStack::ElementAt), void* (VRELStack::*)(int) const>);
  static_assert(sizeof(VRELStack) == 16);
}

}  // namespace
