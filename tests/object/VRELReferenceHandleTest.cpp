#include "VRELReferenceHandle.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

#include "VRELTypedHandle.h"
#include "VirtualSlot.h"

namespace {

// Counts its deletions and its virtual RaiseReference and LowerReference calls.
class Counter : public VRELReferenceCount {
 public:
  explicit Counter(int& deletions) : VRELReferenceCount(0), deletionCount(deletions) {}
  ~Counter() override { ++deletionCount; }

  unsigned int RaiseReference() override {
    ++raised;
    return VRELReferenceCount::RaiseReference();
  }
  unsigned int LowerReference() override {
    ++lowered;
    return VRELReferenceCount::LowerReference();
  }

  int raised = 0;
  int lowered = 0;
  int value = 42;

 private:
  int& deletionCount;
};

class CounterHandle : public VRELTypedHandle<Counter> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};

TEST(VRELReferenceHandleTest, NullHandleIsInvalid) {
  VRELReferenceHandle const handle(nullptr);
  EXPECT_FALSE(handle.IsValid());
  EXPECT_FALSE(handle.IsLastCall());
  EXPECT_EQ(handle.GetInstance(), nullptr);
  VRELReferenceHandle const copy(handle);
  EXPECT_FALSE(copy.IsValid());
}

TEST(VRELReferenceHandleTest, LastHandleDeletesObject) {
  int deletions = 0;
  auto* object = new Counter(deletions);
  {
    VRELReferenceHandle const first(object);
    EXPECT_TRUE(first.IsValid());
    EXPECT_EQ(first.GetInstance(), object);
    EXPECT_EQ(object->GetReferenceCount(), 1u);
    EXPECT_TRUE(first.IsLastCall());
    {
      VRELReferenceHandle const second(first);
      EXPECT_EQ(object->GetReferenceCount(), 2u);
      EXPECT_FALSE(first.IsLastCall());
      EXPECT_FALSE(second.IsLastCall());
    }
    EXPECT_TRUE(first.IsLastCall());
    EXPECT_EQ(deletions, 0);
    EXPECT_EQ(object->raised, 2);
    EXPECT_EQ(object->lowered, 1);
  }
  EXPECT_EQ(deletions, 1);
}

TEST(VRELReferenceHandleTest, AssignmentOfSameObjectKeepsCount) {
  int deletions = 0;
  auto* object = new Counter(deletions);
  VRELReferenceHandle first(object);
  VRELReferenceHandle const second(object);
  VRELReferenceHandle const& itself = first;
  EXPECT_EQ(&(first = itself), &first);
  first = second;
  EXPECT_EQ(object->GetReferenceCount(), 2u);
  EXPECT_EQ(object->raised, 2);
  EXPECT_EQ(object->lowered, 0);
}

TEST(VRELReferenceHandleTest, AssignmentReleasesPrevious) {
  int oldDeletions = 0;
  int newDeletions = 0;
  VRELReferenceHandle target(new Counter(oldDeletions));
  VRELReferenceHandle const source(new Counter(newDeletions));
  target = source;
  EXPECT_EQ(oldDeletions, 1);
  EXPECT_EQ(newDeletions, 0);
  EXPECT_EQ(target.GetInstance(), source.GetInstance());
  EXPECT_EQ(source.GetInstance()->GetReferenceCount(), 2u);
}

TEST(VRELReferenceHandleTest, AssignmentOfNullReleases) {
  int deletions = 0;
  VRELReferenceHandle handle(new Counter(deletions));
  handle = VRELReferenceHandle(nullptr);
  EXPECT_EQ(deletions, 1);
  EXPECT_FALSE(handle.IsValid());
}

// List node: `next` is a member of the object that an assignment releases.
class Node : public Counter {
 public:
  using Counter::Counter;
  VRELReferenceHandle next;
};

TEST(VRELReferenceHandleTest, AssignsFromMemberOfReleasedObject) {
  int firstDeletions = 0;
  int secondDeletions = 0;
  auto* first = new Node(firstDeletions);
  auto* second = new Node(secondDeletions);
  // Keeps the second node after the first is deleted.
  VRELReferenceHandle const keeper(second);
  first->next = VRELReferenceHandle(second);
  VRELReferenceHandle head(first);
  head = first->next;
  EXPECT_EQ(firstDeletions, 1);
  EXPECT_EQ(head.GetInstance(), second);
  EXPECT_EQ(second->GetReferenceCount(), 2u);
  EXPECT_EQ(secondDeletions, 0);
}

TEST(VRELReferenceHandleTest, AssignmentAlongChainReleasesNodes) {
  int deletions[3] = {};
  auto* last = new Node(deletions[2]);
  auto* middle = new Node(deletions[1]);
  auto* first = new Node(deletions[0]);
  first->next = VRELReferenceHandle(middle);
  middle->next = VRELReferenceHandle(last);
  VRELReferenceHandle node(first);
  node = first->next;
  EXPECT_EQ(deletions[0], 1);
  EXPECT_EQ(deletions[1], 0);
  EXPECT_EQ(node.GetInstance(), middle);
  EXPECT_EQ(middle->GetReferenceCount(), 1u);
  node = middle->next;
  EXPECT_EQ(deletions[1], 1);
  EXPECT_EQ(node.GetInstance(), last);
  EXPECT_EQ(last->GetReferenceCount(), 1u);
  node = last->next;
  EXPECT_EQ(deletions[2], 1);
  EXPECT_FALSE(node.IsValid());
}

// Logs its calls.
class CallLogger : public VRELReferenceCount {
 public:
  CallLogger(char theName, std::string& log) : name(theName), calls(log) {}
  ~CallLogger() override { Write("deleted"); }

  unsigned int RaiseReference() override {
    Write("raised");
    return VRELReferenceCount::RaiseReference();
  }
  unsigned int LowerReference() override {
    Write("lowered");
    return VRELReferenceCount::LowerReference();
  }

 private:
  void Write(char const* what) { calls += std::string(1, name) + " " + what + ", "; }

  char name;
  std::string& calls;
};

TEST(VRELReferenceHandleTest, AssignmentReleasesBeforeRaise) {
  std::string calls;
  VRELReferenceHandle target(new CallLogger('a', calls));
  VRELReferenceHandle const source(new CallLogger('b', calls));
  VRELReferenceHandle const holder(new CallLogger('c', calls));
  calls.clear();
  target = source;
  EXPECT_EQ(calls, "a lowered, a deleted, b raised, ");
  calls.clear();
  target = holder;
  EXPECT_EQ(calls, "b lowered, c raised, ");
}

TEST(VRELReferenceHandleTest, VirtualFunctionsHaveSlots) {
  EXPECT_EQ(SlotOf(&VRELReferenceHandle::IsValid), 2U);
  EXPECT_EQ(sizeof(VRELReferenceHandle), 2 * sizeof(void*));
}

TEST(VRELReferenceHandleTest, LowerReferenceDeletesNothing) {
  int deletions = 0;
  auto* object = new Counter(deletions);
  object->RaiseReference();
  EXPECT_EQ(object->LowerReference(), 0u);
  EXPECT_EQ(deletions, 0);
  delete object;
}

TEST(VRELReferenceHandleTest, ComparesAddresses) {
  int deletions = 0;
  Counter objects[2] = {Counter(deletions), Counter(deletions)};
  objects[0].RaiseReference();
  objects[1].RaiseReference();
  VRELReferenceHandle const low(&objects[0]);
  VRELReferenceHandle const high(&objects[1]);
  VRELReferenceHandle const null(nullptr);
  EXPECT_TRUE(low == VRELReferenceHandle(low));
  EXPECT_FALSE(low == high);
  EXPECT_TRUE(low < high);
  EXPECT_FALSE(high < low);
  EXPECT_FALSE(low < low);
  EXPECT_TRUE(null < low);
}

TEST(VRELReferenceHandleTest, AssignedObjectHasCountZero) {
  int deletions = 0;
  struct Counted : VRELReferenceCount {};
  auto* object = new Counted;
  {
    VRELReferenceHandle const handle(object);
    *object = Counted();
    EXPECT_EQ(object->GetReferenceCount(), 0u);
    EXPECT_EQ(deletions, 0);
  }  // LowerReference returns 0, so the handle deletes the object.
}

TEST(VRELTypedHandleTest, AccessesObject) {
  int deletions = 0;
  auto* object = new Counter(deletions);
  CounterHandle handle(object);
  CounterHandle const constant(handle);
  EXPECT_EQ(handle->value, 42);
  EXPECT_EQ(constant->value, 42);
  Counter* const pointer = handle;
  EXPECT_EQ(pointer, object);
  EXPECT_EQ(static_cast<Counter*>(constant), object);
}

TEST(VRELTypedHandleTest, ComparesAndAssigns) {
  int deletions = 0;
  CounterHandle handle(new Counter(deletions));
  CounterHandle const other(new Counter(deletions));
  EXPECT_FALSE(handle == other);
  EXPECT_TRUE(handle != other);
  EXPECT_NE(handle < other, other < handle);
  EXPECT_EQ(&(handle = other), &handle);
  EXPECT_EQ(deletions, 1);
  EXPECT_TRUE(handle == other);
  EXPECT_FALSE(handle.IsLastCall());
  handle = CounterHandle(nullptr);
  EXPECT_FALSE(handle.IsValid());
  EXPECT_TRUE(other.IsLastCall());
}

TEST(VRELTypedHandleTest, AddsNoField) {
  EXPECT_EQ(sizeof(CounterHandle), sizeof(VRELReferenceHandle));
  EXPECT_FALSE(CounterHandle().IsValid());
}

TEST(VRELReferenceHandleTest, MoveKeepsCount) {
  int deletions = 0;
  auto* object = new Counter(deletions);
  VRELReferenceHandle source(object);
  VRELReferenceHandle target(std::move(source));
  EXPECT_FALSE(source.IsValid());
  EXPECT_EQ(target.GetInstance(), object);
  EXPECT_EQ(object->GetReferenceCount(), 1u);
  EXPECT_EQ(object->raised, 1);
  EXPECT_EQ(object->lowered, 0);
  static_assert(std::is_nothrow_move_constructible_v<VRELReferenceHandle>);
  static_assert(std::is_nothrow_move_assignable_v<VRELReferenceHandle>);
}

TEST(VRELReferenceHandleTest, MoveAssignmentReleasesPrevious) {
  int previousDeletions = 0;
  int deletions = 0;
  VRELReferenceHandle target(new Counter(previousDeletions));
  VRELReferenceHandle source(new Counter(deletions));
  EXPECT_EQ(&(target = std::move(source)), &target);
  EXPECT_EQ(previousDeletions, 1);
  EXPECT_EQ(deletions, 0);
  EXPECT_FALSE(source.IsValid());
  EXPECT_TRUE(target.IsLastCall());
  target = std::move(source);
  EXPECT_EQ(deletions, 1);
  EXPECT_FALSE(target.IsValid());
}

TEST(VRELReferenceHandleTest, MoveAssignmentOfSameObject) {
  int deletions = 0;
  VRELReferenceHandle first(new Counter(deletions));
  VRELReferenceHandle second(first);
  first = std::move(second);
  EXPECT_TRUE(first.IsLastCall());
  EXPECT_FALSE(second.IsValid());
  VRELReferenceHandle& same = first;
  first = std::move(same);
  EXPECT_TRUE(first.IsLastCall());
  EXPECT_EQ(deletions, 0);
}

TEST(VRELReferenceHandleTest, ResetReplacesObject) {
  int deletions = 0;
  auto* object = new Counter(deletions);
  VRELReferenceHandle handle(object);
  handle.reset(object);
  EXPECT_EQ(object->GetReferenceCount(), 1u);
  EXPECT_EQ(deletions, 0);
  handle.reset(new Counter(deletions));
  EXPECT_EQ(deletions, 1);
  handle.reset();
  handle.reset();
  EXPECT_EQ(deletions, 2);
  EXPECT_FALSE(handle.IsValid());
}

TEST(VRELReferenceHandleTest, ComparesWithNullptr) {
  int deletions = 0;
  VRELReferenceHandle const null;
  VRELReferenceHandle const handle(new Counter(deletions));
  EXPECT_TRUE(null == nullptr);
  EXPECT_TRUE(nullptr == null);
  EXPECT_FALSE(null != nullptr);
  EXPECT_FALSE(nullptr != null);
  EXPECT_FALSE(handle == nullptr);
  EXPECT_TRUE(nullptr != handle);
  EXPECT_FALSE(static_cast<bool>(null));
  EXPECT_TRUE(handle ? true : false);
  static_assert(!std::is_convertible_v<VRELReferenceHandle, bool>);
  static_assert(!std::is_convertible_v<VRELReferenceHandle, int>);
}

// A chain of handles: each destructor would call the next one.
TEST(VRELReferenceHandleTest, LoopReleasesLongChain) {
  constexpr int kLength = 1000000;
  int deletions = 0;
  VRELReferenceHandle head;
  for (int i = 0; i < kLength; ++i) {
    auto* const node = new Node(deletions);
    node->next = std::move(head);
    head.reset(node);
  }
  while (head) head = std::move(static_cast<Node*>(head.GetInstance())->next);
  EXPECT_EQ(deletions, kLength);
  for (int i = 0; i < kLength; ++i) {
    auto* const node = new Node(deletions);
    node->next = head;
    head = VRELReferenceHandle(node);
  }
  while (head != nullptr) head = static_cast<Node*>(head.GetInstance())->next;
  EXPECT_EQ(deletions, 2 * kLength);
}

TEST(VRELReferenceHandleTest, LoopKeepsSharedTail) {
  int deletions = 0;
  VRELReferenceHandle head;
  for (int i = 0; i < 3; ++i) {
    auto* const node = new Node(deletions);
    node->next = std::move(head);
    head.reset(node);
  }
  VRELReferenceHandle const second(static_cast<Node*>(head.GetInstance())->next);
  while (head != nullptr) head = static_cast<Node*>(head.GetInstance())->next;
  EXPECT_EQ(deletions, 1);
  EXPECT_TRUE(second.IsLastCall());
  EXPECT_TRUE(static_cast<Node*>(second.GetInstance())->next.IsLastCall());
}

TEST(VRELTypedHandleTest, ComparesWithNullptrAndPointer) {
  int deletions = 0;
  auto* const object = new Counter(deletions);
  Counter const* const constant = object;
  CounterHandle handle(object);
  CounterHandle const null;
  EXPECT_TRUE(null == nullptr);
  EXPECT_TRUE(nullptr == null);
  EXPECT_TRUE(handle != nullptr);
  EXPECT_TRUE(nullptr != handle);
  EXPECT_TRUE(handle == object);
  EXPECT_TRUE(constant == handle);
  EXPECT_FALSE(handle != constant);
  EXPECT_FALSE(object != handle);
  EXPECT_TRUE(null != object);
  EXPECT_FALSE(null ? true : false);
  if (!handle) FAIL();
  bool const isValid = static_cast<bool>(handle);
  EXPECT_TRUE(isValid);
}

TEST(VRELTypedHandleTest, MovesAndResets) {
  int deletions = 0;
  CounterHandle source(new Counter(deletions));
  CounterHandle target(std::move(source));
  EXPECT_TRUE(source == nullptr);
  EXPECT_TRUE(target.IsLastCall());
  source = std::move(target);
  EXPECT_TRUE(target == nullptr);
  EXPECT_EQ(source->raised, 1);
  source.reset(new Counter(deletions));
  EXPECT_EQ(deletions, 1);
  source = nullptr;
  EXPECT_EQ(deletions, 2);
  source.reset();
  EXPECT_FALSE(source.IsValid());
  static_assert(std::is_nothrow_move_constructible_v<CounterHandle>);
  static_assert(std::is_nothrow_move_assignable_v<CounterHandle>);
}

}  // namespace
