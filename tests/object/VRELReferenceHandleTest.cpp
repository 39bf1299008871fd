#include "VRELReferenceHandle.h"

#include <gtest/gtest.h>

#include <string>

#include "VRELTypedHandle.h"
#include "VirtualSlot.h"

namespace {

// Tells when it dies, and how often its count was moved through the virtual table.
class Watched : public VRELReferenceCount {
 public:
  explicit Watched(int& deaths) : VRELReferenceCount(0), deathCount(deaths) {}
  ~Watched() override { ++deathCount; }

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
  int& deathCount;
};

class WatchedHandle : public VRELTypedHandle<Watched> {
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

TEST(VRELReferenceHandleTest, FirstHandleTakesTheObjectAndLastOneDeletesIt) {
  int deaths = 0;
  auto* object = new Watched(deaths);
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
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(object->raised, 2);
    EXPECT_EQ(object->lowered, 1);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(VRELReferenceHandleTest, AssignmentBetweenHandlesOnOneObjectLeavesTheCountAlone) {
  int deaths = 0;
  auto* object = new Watched(deaths);
  VRELReferenceHandle first(object);
  VRELReferenceHandle const second(object);
  VRELReferenceHandle const& itself = first;
  EXPECT_EQ(&(first = itself), &first);
  first = second;
  EXPECT_EQ(object->GetReferenceCount(), 2u);
  EXPECT_EQ(object->raised, 2);
  EXPECT_EQ(object->lowered, 0);
}

TEST(VRELReferenceHandleTest, AssignmentReleasesTheOldObject) {
  int oldDeaths = 0;
  int newDeaths = 0;
  VRELReferenceHandle target(new Watched(oldDeaths));
  VRELReferenceHandle const source(new Watched(newDeaths));
  target = source;
  EXPECT_EQ(oldDeaths, 1);
  EXPECT_EQ(newDeaths, 0);
  EXPECT_EQ(target.GetInstance(), source.GetInstance());
  EXPECT_EQ(source.GetInstance()->GetReferenceCount(), 2u);
}

TEST(VRELReferenceHandleTest, AssigningANullHandleReleases) {
  int deaths = 0;
  VRELReferenceHandle handle(new Watched(deaths));
  handle = VRELReferenceHandle(nullptr);
  EXPECT_EQ(deaths, 1);
  EXPECT_FALSE(handle.IsValid());
}

// A list node: the next handle stands inside the object that an assignment releases.
class Node : public Watched {
 public:
  using Watched::Watched;
  VRELReferenceHandle next;
};

TEST(VRELReferenceHandleTest, TakesOverFromAHandleInsideTheReleasedObject) {
  int firstDeaths = 0;
  int secondDeaths = 0;
  auto* first = new Node(firstDeaths);
  auto* second = new Node(secondDeaths);
  // A second use keeps the object alive past the release of its owner.
  VRELReferenceHandle const keeper(second);
  first->next = VRELReferenceHandle(second);
  VRELReferenceHandle head(first);
  head = first->next;
  EXPECT_EQ(firstDeaths, 1);
  EXPECT_EQ(head.GetInstance(), second);
  EXPECT_EQ(second->GetReferenceCount(), 2u);
  EXPECT_EQ(secondDeaths, 0);
}

TEST(VRELReferenceHandleTest, WalksAlongAChainAndDropsItBehind) {
  int deaths[3] = {};
  auto* last = new Node(deaths[2]);
  auto* middle = new Node(deaths[1]);
  auto* first = new Node(deaths[0]);
  first->next = VRELReferenceHandle(middle);
  middle->next = VRELReferenceHandle(last);
  VRELReferenceHandle place(first);
  place = first->next;
  EXPECT_EQ(deaths[0], 1);
  EXPECT_EQ(deaths[1], 0);
  EXPECT_EQ(place.GetInstance(), middle);
  EXPECT_EQ(middle->GetReferenceCount(), 1u);
  place = middle->next;
  EXPECT_EQ(deaths[1], 1);
  EXPECT_EQ(place.GetInstance(), last);
  EXPECT_EQ(last->GetReferenceCount(), 1u);
  place = last->next;
  EXPECT_EQ(deaths[2], 1);
  EXPECT_FALSE(place.IsValid());
}

// Writes down what happens to it.
class Diarist : public VRELReferenceCount {
 public:
  Diarist(char theName, std::string& theDiary) : name(theName), diary(theDiary) {}
  ~Diarist() override { Write("dies"); }

  unsigned int RaiseReference() override {
    Write("raised");
    return VRELReferenceCount::RaiseReference();
  }
  unsigned int LowerReference() override {
    Write("lowered");
    return VRELReferenceCount::LowerReference();
  }

 private:
  void Write(char const* what) { diary += std::string(1, name) + " " + what + ", "; }

  char name;
  std::string& diary;
};

TEST(VRELReferenceHandleTest, AssignmentLowersAndDeletesBeforeItRaises) {
  std::string diary;
  VRELReferenceHandle target(new Diarist('a', diary));
  VRELReferenceHandle const source(new Diarist('b', diary));
  VRELReferenceHandle const holder(new Diarist('c', diary));
  diary.clear();
  target = source;
  EXPECT_EQ(diary, "a lowered, a dies, b raised, ");
  diary.clear();
  target = holder;
  EXPECT_EQ(diary, "b lowered, c raised, ") << "the source keeps b alive";
}

TEST(VRELReferenceHandleTest, VirtualOperationsKeepTheirSlots) {
  EXPECT_EQ(SlotOf(&VRELReferenceHandle::IsValid), 2U);
  EXPECT_EQ(sizeof(VRELReferenceHandle), 2 * sizeof(void*));
}

TEST(VRELReferenceHandleTest, LoweringByHandDeletesNothing) {
  int deaths = 0;
  auto* object = new Watched(deaths);
  object->RaiseReference();
  EXPECT_EQ(object->LowerReference(), 0u);
  EXPECT_EQ(deaths, 0);
  delete object;
}

TEST(VRELReferenceHandleTest, ComparesAndOrdersByAddress) {
  int deaths = 0;
  Watched objects[2] = {Watched(deaths), Watched(deaths)};
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

TEST(VRELReferenceHandleTest, AssignedObjectForgetsItsHandles) {
  int deaths = 0;
  struct Counted : VRELReferenceCount {};
  auto* object = new Counted;
  {
    VRELReferenceHandle const handle(object);
    *object = Counted();
    EXPECT_EQ(object->GetReferenceCount(), 0u);
    EXPECT_EQ(deaths, 0);
  }  // The count is 0 already, so the handle's lowering gives 0 and deletes the object.
}

TEST(VRELTypedHandleTest, ReachesItsObject) {
  int deaths = 0;
  auto* object = new Watched(deaths);
  WatchedHandle handle(object);
  WatchedHandle const constant(handle);
  EXPECT_EQ(handle->value, 42);
  EXPECT_EQ(constant->value, 42);
  Watched* const pointer = handle;
  EXPECT_EQ(pointer, object);
  EXPECT_EQ(static_cast<Watched*>(constant), object);
}

TEST(VRELTypedHandleTest, ForwardsToTheGenericHandle) {
  int deaths = 0;
  WatchedHandle handle(new Watched(deaths));
  WatchedHandle const other(new Watched(deaths));
  EXPECT_FALSE(handle == other);
  EXPECT_TRUE(handle != other);
  EXPECT_NE(handle < other, other < handle);
  EXPECT_EQ(&(handle = other), &handle);
  EXPECT_EQ(deaths, 1);
  EXPECT_TRUE(handle == other);
  EXPECT_FALSE(handle.IsLastCall());
  handle = WatchedHandle(nullptr);
  EXPECT_FALSE(handle.IsValid());
  EXPECT_TRUE(other.IsLastCall());
}

TEST(VRELTypedHandleTest, AddsNoField) {
  EXPECT_EQ(sizeof(WatchedHandle), sizeof(VRELReferenceHandle));
  EXPECT_FALSE(WatchedHandle().IsValid());
}

}  // namespace
