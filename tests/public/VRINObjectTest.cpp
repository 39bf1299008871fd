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

class CountedImpl : public VRINObjectImpl {
 public:
  explicit CountedImpl(int& count) : VRINObjectImpl("Counted"), instances(count) { ++instances; }
  ~CountedImpl() override { --instances; }

 private:
  int& instances;
};

void* NewImpl(int& instances) {
  return static_cast<VRINObjectImpl*>(new CountedImpl(instances));
}

TEST(VRINObjectTest, StartsInvalid) {
  VRINObject object("Counted");
  EXPECT_FALSE(object.IsValid());
  EXPECT_EQ(object.GetData(), nullptr);
  EXPECT_EQ(object.Ref(), 0);
  EXPECT_EQ(object.Unref(), 0);
  EXPECT_TRUE((std::is_same_v<decltype(object.Ref()), long>));
  EXPECT_TRUE((std::is_same_v<decltype(object.Unref()), long>));
}

TEST(VRINObjectTest, IsValidNeedsTypeAndData) {
  int instances = 0;
  VRINObject object("Counted");
  object.SetData(NewImpl(instances));
  EXPECT_TRUE(object.IsValid());
  VRINObject nameless(nullptr);
  nameless.SetData(NewImpl(instances));
  EXPECT_FALSE(nameless.IsValid());
  EXPECT_NE(nameless.GetData(), nullptr);
}

TEST(VRINObjectTest, IsValidAndDestructorAreVirtual) {
  int instances = 0;
  struct Derived : VRINObject {
    explicit Derived(int& count) : VRINObject("Derived"), instances(count) { ++instances; }
    ~Derived() override { --instances; }
    bool IsValid() const override { return true; }
    int& instances;
  };
  VRINObject* const object = new Derived(instances);
  EXPECT_TRUE(object->IsValid());
  delete object;
  EXPECT_EQ(instances, 0);
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
  int instances = 0;
  {
    VRINObject first("Counted");
    first.SetData(NewImpl(instances));
    EXPECT_EQ(UseCount(first), 1);
    {
      VRINObject second("Counted");
      second.SetData(first.GetData());
      EXPECT_EQ(UseCount(first), 2);
    }
    EXPECT_EQ(UseCount(first), 1);
    EXPECT_EQ(instances, 1);
  }
  EXPECT_EQ(instances, 0);
}

TEST(VRINObjectTest, SetDataReleasesPrevious) {
  int instances = 0;
  VRINObject object("Counted");
  object.SetData(NewImpl(instances));
  void* const second = NewImpl(instances);
  EXPECT_EQ(instances, 2);
  object.SetData(second);
  EXPECT_EQ(instances, 1);
  EXPECT_EQ(object.GetData(), second);
  object.SetData(second);
  EXPECT_EQ(UseCount(object), 1);
  object.SetData(nullptr);
  EXPECT_EQ(instances, 0);
  EXPECT_FALSE(object.IsValid());
}

TEST(VRINObjectTest, RefAndUnrefReturnCount) {
  int instances = 0;
  VRINObject object("Counted");
  object.SetData(NewImpl(instances));
  EXPECT_EQ(object.Ref(), 2);
  EXPECT_EQ(object.Ref(), 3);
  EXPECT_EQ(object.Unref(), 2);
  EXPECT_EQ(object.Unref(), 1);
  EXPECT_EQ(instances, 1);
  EXPECT_EQ(object.Unref(), 0);
  EXPECT_EQ(instances, 0);
  EXPECT_EQ(object.GetData(), nullptr);
  EXPECT_EQ(object.Unref(), 0);
}

TEST(VRINObjectTest, NegativeCountDeletes) {
  int instances = 0;
  VRINObject object("Counted");
  object.SetData(NewImpl(instances));
  auto* const impl = ImplOf<VRINObjectImpl>(object);
  impl->Unref();
  impl->Unref();
  EXPECT_EQ(object.Unref(), -2);
  EXPECT_EQ(instances, 0);
  EXPECT_FALSE(object.IsValid());
}

TEST(VRINObjectTest, CopiesAndAssignmentsShare) {
  int instances = 0;
  {
    VRINObject first("Counted");
    first.SetData(NewImpl(instances));
    VRINObject copy(first);
    EXPECT_TRUE(copy.IsValid());
    EXPECT_EQ(copy.GetData(), first.GetData());
    EXPECT_EQ(UseCount(first), 2);
    VRINObject assigned("Counted");
    assigned.SetData(NewImpl(instances));
    EXPECT_EQ(&(assigned = first), &assigned);
    EXPECT_EQ(instances, 1);
    EXPECT_EQ(UseCount(first), 3);
    VRINObject const& same = assigned;
    assigned = same;
    EXPECT_EQ(UseCount(first), 3);
    VRINObject const invalid("Counted");
    VRINObject const copyOfInvalid(invalid);
    EXPECT_FALSE(copyOfInvalid.IsValid());
    assigned = invalid;
    EXPECT_FALSE(assigned.IsValid());
    EXPECT_EQ(UseCount(first), 2);
  }
  EXPECT_EQ(instances, 0);
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
