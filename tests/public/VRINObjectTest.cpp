#include "VRINObject.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "PublicObject.h"
#include "VRINName.h"

namespace {

class WatchedImpl : public VRINObjectImpl {
 public:
  explicit WatchedImpl(int& count) : VRINObjectImpl("Watched"), alive(count) { ++alive; }
  ~WatchedImpl() override { --alive; }

 private:
  int& alive;
};

void* NewImpl(int& alive) {
  return static_cast<VRINObjectImpl*>(new WatchedImpl(alive));
}

TEST(VRINObjectTest, BeginsInvalid) {
  VRINObject object("Watched");
  EXPECT_FALSE(object.IsValid());
  EXPECT_EQ(object.GetData(), nullptr);
  EXPECT_EQ(object.Ref(), 0);
  EXPECT_EQ(object.Unref(), 0);
  EXPECT_TRUE((std::is_same_v<decltype(object.Ref()), long>));
  EXPECT_TRUE((std::is_same_v<decltype(object.Unref()), long>));
}

TEST(VRINObjectTest, IsValidWithATypeAndData) {
  int alive = 0;
  VRINObject object("Watched");
  object.SetData(NewImpl(alive));
  EXPECT_TRUE(object.IsValid());
  VRINObject nameless(nullptr);
  nameless.SetData(NewImpl(alive));
  EXPECT_FALSE(nameless.IsValid());
  EXPECT_NE(nameless.GetData(), nullptr);
}

TEST(VRINObjectTest, IsValidAndTheDestructorAreVirtual) {
  int alive = 0;
  struct Derived : VRINObject {
    explicit Derived(int& count) : VRINObject("Derived"), alive(count) { ++alive; }
    ~Derived() override { --alive; }
    bool IsValid() const override { return true; }
    int& alive;
  };
  VRINObject* const object = new Derived(alive);
  EXPECT_TRUE(object->IsValid());
  delete object;
  EXPECT_EQ(alive, 0);
}

TEST(VRINObjectTest, TheLastHandleDeletesTheImplementation) {
  int alive = 0;
  {
    VRINObject first("Watched");
    first.SetData(NewImpl(alive));
    EXPECT_EQ(UseCount(first), 1);
    {
      VRINObject second("Watched");
      second.SetData(first.GetData());
      EXPECT_EQ(UseCount(first), 2);
    }
    EXPECT_EQ(UseCount(first), 1);
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
}

TEST(VRINObjectTest, SetDataLetsGoOfTheOldImplementation) {
  int alive = 0;
  VRINObject object("Watched");
  object.SetData(NewImpl(alive));
  void* const second = NewImpl(alive);
  EXPECT_EQ(alive, 2);
  object.SetData(second);
  EXPECT_EQ(alive, 1);
  EXPECT_EQ(object.GetData(), second);
  object.SetData(second);
  EXPECT_EQ(UseCount(object), 1);
  object.SetData(nullptr);
  EXPECT_EQ(alive, 0);
  EXPECT_FALSE(object.IsValid());
}

TEST(VRINObjectTest, RefAndUnrefGiveTheCount) {
  int alive = 0;
  VRINObject object("Watched");
  object.SetData(NewImpl(alive));
  EXPECT_EQ(object.Ref(), 2);
  EXPECT_EQ(object.Ref(), 3);
  EXPECT_EQ(object.Unref(), 2);
  EXPECT_EQ(object.Unref(), 1);
  EXPECT_EQ(alive, 1);
  EXPECT_EQ(object.Unref(), 0);
  EXPECT_EQ(alive, 0);
  EXPECT_EQ(object.GetData(), nullptr);
  EXPECT_EQ(object.Unref(), 0);
}

TEST(VRINObjectTest, ACountBelowZeroDeletesToo) {
  int alive = 0;
  VRINObject object("Watched");
  object.SetData(NewImpl(alive));
  auto* const impl = ImplOf<VRINObjectImpl>(object);
  impl->Unref();
  impl->Unref();
  EXPECT_EQ(object.Unref(), -2);
  EXPECT_EQ(alive, 0);
  EXPECT_FALSE(object.IsValid());
}

TEST(VRINObjectTest, CopiesAndAssignmentsShare) {
  int alive = 0;
  {
    VRINObject first("Watched");
    first.SetData(NewImpl(alive));
    VRINObject copy(first);
    EXPECT_TRUE(copy.IsValid());
    EXPECT_EQ(copy.GetData(), first.GetData());
    EXPECT_EQ(UseCount(first), 2);
    VRINObject assigned("Watched");
    assigned.SetData(NewImpl(alive));
    EXPECT_EQ(&(assigned = first), &assigned);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(UseCount(first), 3);
    VRINObject const& same = assigned;
    assigned = same;
    EXPECT_EQ(UseCount(first), 3);
    VRINObject const invalid("Watched");
    VRINObject const copyOfInvalid(invalid);
    EXPECT_FALSE(copyOfInvalid.IsValid());
    assigned = invalid;
    EXPECT_FALSE(assigned.IsValid());
    EXPECT_EQ(UseCount(first), 2);
  }
  EXPECT_EQ(alive, 0);
}

TEST(VRINObjectTest, DerivedClassesCopyRightToo) {
  VRINName first("a");
  {
    VRINName const copy(first);
    VRINName assigned("b");
    assigned = first;
    EXPECT_EQ(UseCount(first), 3);
    EXPECT_EQ(NameText(copy), "a");
    EXPECT_EQ(NameText(assigned), "a");
  }
  EXPECT_EQ(UseCount(first), 1);
}

}  // namespace
