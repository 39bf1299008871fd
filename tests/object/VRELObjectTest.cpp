#include "VRELObject.h"

#include <gtest/gtest.h>

#include <string>

#include "VirtualSlot.h"

namespace {

TEST(VRELObjectTest, CopiesTypeName) {
  std::string name = "VRELEvent";
  VRELObject const object(name.c_str());
  name[0] = 'x';
  EXPECT_STREQ(object.GetTypeName(), "VRELEvent");
  EXPECT_EQ(object.GetReferenceCount(), 0u);
}

TEST(VRELObjectTest, IsKindOfHasSlot5) {
  EXPECT_EQ(SlotOf(&VRELObject::IsKindOf), 5U);
}

TEST(VRELObjectTest, EmptyNameBecomesNull) {
  EXPECT_EQ(VRELObject(nullptr).GetTypeName(), nullptr);
  EXPECT_EQ(VRELObject("").GetTypeName(), nullptr);
}

TEST(VRELObjectTest, IsKindOfComparesOwnNameOnly) {
  VRELObject object("VRELEvent");
  EXPECT_TRUE(object.IsKindOf("VRELEvent"));
  EXPECT_FALSE(object.IsKindOf("VRELEvents"));
  EXPECT_FALSE(object.IsKindOf("VRELEven"));
  EXPECT_FALSE(object.IsKindOf("vrelevent"));
  EXPECT_FALSE(object.IsKindOf("VRELObject"));
  EXPECT_FALSE(object.IsKindOf(""));
  EXPECT_FALSE(object.IsKindOf(nullptr));
}

TEST(VRELObjectTest, IsKindOfIsFalseWithoutName) {
  VRELObject object(nullptr);
  EXPECT_FALSE(object.IsKindOf("VRELEvent"));
  EXPECT_FALSE(object.IsKindOf(""));
  EXPECT_FALSE(object.IsKindOf(nullptr));
}

TEST(VRELObjectTest, CopyAndAssignmentCopyName) {
  VRELObject source("VRELEvent");
  source.RaiseReference();
  VRELObject copy(source);
  EXPECT_STREQ(copy.GetTypeName(), "VRELEvent");
  EXPECT_NE(copy.GetTypeName(), source.GetTypeName());
  EXPECT_EQ(copy.GetReferenceCount(), 0u);
  VRELObject assigned("Other");
  assigned.RaiseReference();
  assigned = source;
  EXPECT_STREQ(assigned.GetTypeName(), "VRELEvent");
  EXPECT_NE(assigned.GetTypeName(), source.GetTypeName());
  EXPECT_EQ(assigned.GetReferenceCount(), 0u);
  VRELObject& itself = assigned;
  assigned = itself;
  EXPECT_STREQ(assigned.GetTypeName(), "VRELEvent");
}

}  // namespace
