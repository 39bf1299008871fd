#include "VRINObjectImpl.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <type_traits>

#include "ChildProcess.h"

namespace {

TEST(VRINObjectImplTest, NameHasTypeAndNumber) {
  int const before = VRINObjectImpl::_objectCounter;
  VRINObjectImpl const first("Wheel");
  VRINObjectImpl const second("Axle");
  EXPECT_EQ(VRINObjectImpl::_objectCounter, before + 2);
  EXPECT_EQ(first.GetName().toUtf8(), "Wheel[" + std::to_string(before + 1) + "]");
  EXPECT_EQ(second.GetName().toUtf8(), "Axle[" + std::to_string(before + 2) + "]");
  EXPECT_FALSE(first.GetName().getBadConversion());
}

TEST(VRINObjectImplTest, CounterNeverDecreases) {
  int const before = VRINObjectImpl::_objectCounter;
  { VRINObjectImpl const object("Wheel"); }
  EXPECT_EQ(VRINObjectImpl::_objectCounter, before + 1);
}

TEST(VRINObjectImplTest, CounterWraps) {
  ChildResult const child = RunInChild([] {
    VRINObjectImpl::_objectCounter = INT_MAX;
    VRINObjectImpl const object("Wheel");
    return object.GetName().toUtf8() == "Wheel[-2147483648]" ? 0 : 1;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

TEST(VRINObjectImplTest, NullTypeIsEmpty) {
  VRINObjectImpl const object(nullptr);
  EXPECT_EQ(object.GetName().toUtf8(), "[" + std::to_string(VRINObjectImpl::_objectCounter) + "]");
}

TEST(VRINObjectImplTest, SetNameReplacesName) {
  VRINObjectImpl object("Wheel");
  object.SetName(VRELString(L"R\u00E4der"));
  EXPECT_EQ(object.GetName().toUtf16(), u"R\u00E4der");
}

TEST(VRINObjectImplTest, CountBecomesNegative) {
  VRINObjectImpl object("Wheel");
  EXPECT_EQ(object.Ref(), 1);
  EXPECT_EQ(object.Ref(), 2);
  EXPECT_EQ(object.Unref(), 1);
  EXPECT_EQ(object.Unref(), 0);
  EXPECT_EQ(object.Unref(), -1);
  EXPECT_EQ(object.Ref(), 0);
  EXPECT_TRUE((std::is_same_v<decltype(object.Ref()), long>));
}

TEST(VRINObjectImplTest, CastKeepsPointer) {
  VRINObjectImpl object("Wheel");
  EXPECT_EQ(VRINObjectImpl::Cast(&object), &object);
  EXPECT_EQ(VRINObjectImpl::Cast(nullptr), nullptr);
}

TEST(VRINObjectImplTest, DestructorIsVirtual) {
  struct CountedImpl : VRINObjectImpl {
    explicit CountedImpl(bool& flag) : VRINObjectImpl("Counted"), isDestroyed(flag) {}
    ~CountedImpl() override { isDestroyed = true; }
    bool& isDestroyed;
  };
  bool isDestroyed = false;
  VRINObjectImpl* const object = new CountedImpl(isDestroyed);
  delete object;
  EXPECT_TRUE(isDestroyed);
}

}  // namespace
