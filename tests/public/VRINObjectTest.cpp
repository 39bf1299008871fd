#include "VRINObject.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "PublicObject.h"
#include "VRELFileHandle.h"
#include "VRELString.h"
#include "VRELValue.h"
#include "VRINFile.h"
#include "VRINFileImpl.h"
#include "VRINName.h"
#include "VRINNameImpl.h"
#include "VRINOptionName.h"
#include "VRINUnit.h"
#include "VRINUnitImpl.h"
#include "VRINValue.h"
#include "VRINValueImpl.h"
#include "VirtualSlot.h"

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

TEST(VRINObjectTest, StartsInvalid) {
  VRINObject object("Watched");
  EXPECT_FALSE(object.IsValid());
  EXPECT_EQ(object.GetData(), nullptr);
  EXPECT_EQ(object.Ref(), 0);
  EXPECT_EQ(object.Unref(), 0);
  EXPECT_TRUE((std::is_same_v<decltype(object.Ref()), long>));
  EXPECT_TRUE((std::is_same_v<decltype(object.Unref()), long>));
}

TEST(VRINObjectTest, IsValidNeedsTypeAndData) {
  int alive = 0;
  VRINObject object("Watched");
  object.SetData(NewImpl(alive));
  EXPECT_TRUE(object.IsValid());
  VRINObject nameless(nullptr);
  nameless.SetData(NewImpl(alive));
  EXPECT_FALSE(nameless.IsValid());
  EXPECT_NE(nameless.GetData(), nullptr);
}

TEST(VRINObjectTest, IsValidAndDestructorAreVirtual) {
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

// Virtual table pointer, type name and data; derived handles add no field.
TEST(VRINObjectTest, HandlesHaveThreeWords) {
  EXPECT_EQ(SlotOf(&VRINObject::IsValid), 0U);
  EXPECT_EQ(sizeof(VRINObject), 3 * sizeof(void*));
  EXPECT_EQ(sizeof(VRINName), sizeof(VRINObject));
  EXPECT_EQ(sizeof(VRINOptionName), sizeof(VRINObject));
  EXPECT_EQ(sizeof(VRINComponentName), sizeof(VRINObject));
  EXPECT_EQ(sizeof(VRINReaderWriterName), sizeof(VRINObject));
  EXPECT_EQ(sizeof(VRINRepresentationName), sizeof(VRINObject));
  EXPECT_EQ(sizeof(VRINValue), sizeof(VRINObject));
  EXPECT_EQ(sizeof(VRINFile), sizeof(VRINObject));
  EXPECT_EQ(sizeof(VRINUnit), sizeof(VRINObject));
}

TEST(VRINObjectTest, ImplementationsAddOneField) {
  struct Root {
    virtual ~Root() = default;
    long count;
    VRELString name;
  };
  struct WithName : Root {
    VRELString text;
  };
  struct WithValue : Root {
    VRELValue value;
  };
  struct WithFile : Root {
    VRELFileHandle file;
  };
  struct WithUnit : Root {
    VRELUnit unit;
  };
  EXPECT_EQ(sizeof(VRINObjectImpl), sizeof(Root));
  EXPECT_EQ(sizeof(VRINNameImpl), sizeof(WithName));
  EXPECT_EQ(sizeof(VRINValueImpl), sizeof(WithValue));
  EXPECT_EQ(sizeof(VRINFileImpl), sizeof(WithFile));
  EXPECT_EQ(sizeof(VRINUnitImpl), sizeof(WithUnit));
}

TEST(VRINObjectTest, LastHandleDeletesImplementation) {
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

TEST(VRINObjectTest, SetDataReleasesPrevious) {
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

TEST(VRINObjectTest, RefAndUnrefReturnCount) {
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

TEST(VRINObjectTest, NegativeCountDeletes) {
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

TEST(VRINObjectTest, DerivedClassesShareOnCopy) {
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
