#include "VRELReferenceCount.h"

#include <gtest/gtest.h>

#include "VirtualSlot.h"

namespace {

TEST(VRELReferenceCountTest, StartsWithGivenCount) {
  EXPECT_EQ(VRELReferenceCount(0).GetReferenceCount(), 0u);
  EXPECT_EQ(VRELReferenceCount(3).GetReferenceCount(), 3u);
}

TEST(VRELReferenceCountTest, RaisesAndLowersCount) {
  VRELReferenceCount object(0);
  EXPECT_EQ(object.RaiseReference(), 1u);
  EXPECT_EQ(object.RaiseReference(), 2u);
  EXPECT_EQ(object.LowerReference(), 1u);
  EXPECT_EQ(object.LowerReference(), 0u);
  EXPECT_EQ(object.LowerReference(), 0u);
  EXPECT_EQ(object.GetReferenceCount(), 0u);
}

TEST(VRELReferenceCountTest, IsLastCallAtOne) {
  VRELReferenceCount object(0);
  EXPECT_FALSE(object.IsLastCall());
  object.RaiseReference();
  EXPECT_TRUE(object.IsLastCall());
  object.RaiseReference();
  EXPECT_FALSE(object.IsLastCall());
}

TEST(VRELReferenceCountTest, CopyStartsAtZero) {
  VRELReferenceCount const source(4);
  VRELReferenceCount const copy(source);
  EXPECT_EQ(copy.GetReferenceCount(), 0u);
  EXPECT_EQ(source.GetReferenceCount(), 4u);
}

TEST(VRELReferenceCountTest, AssignmentClearsCountOfTarget) {
  VRELReferenceCount const source(4);
  VRELReferenceCount target(7);
  EXPECT_EQ(&(target = source), &target);
  EXPECT_EQ(target.GetReferenceCount(), 0u);
  EXPECT_EQ(source.GetReferenceCount(), 4u);
  VRELReferenceCount& itself = target;
  target.RaiseReference();
  target = itself;
  EXPECT_EQ(target.GetReferenceCount(), 0u);
}

TEST(VRELReferenceCountTest, VirtualFunctionsHaveSlots) {
  EXPECT_EQ(SlotOf(&VRELReferenceCount::RaiseReference), 2U);
  EXPECT_EQ(SlotOf(&VRELReferenceCount::LowerReference), 3U);
  EXPECT_EQ(SlotOf(&VRELReferenceCount::GetName), 4U);
}

TEST(VRELReferenceCountTest, GetNameReturnsNull) {
  EXPECT_EQ(VRELReferenceCount(0).GetName(), nullptr);
}

}  // namespace
