#include "VRINName.h"

#include <gtest/gtest.h>

#include <string>

#include "PublicObject.h"
#include "VRINNameImpl.h"

namespace {

TEST(VRINNameTest, StoresString) {
  VRINName name("Step");
  EXPECT_TRUE(name.IsValid());
  EXPECT_EQ(NameText(name), "Step");
  EXPECT_EQ(UseCount(name), 1);
}

TEST(VRINNameTest, EmptyNameIsValid) {
  EXPECT_TRUE(VRINName(nullptr).IsValid());
  EXPECT_EQ(NameText(VRINName(nullptr)), "");
  EXPECT_TRUE(VRINName("").IsValid());
}

TEST(VRINNameTest, NumbersObjectsConsecutively) {
  VRINName const first("a");
  VRINName const second("b");
  int const last = VRINObjectImpl::_objectCounter;
  EXPECT_EQ(DiagnosticName(first), "VRINName[" + std::to_string(last - 1) + "]");
  EXPECT_EQ(DiagnosticName(second), "VRINName[" + std::to_string(last) + "]");
}

TEST(VRINNameImplTest, GetsAndSetsName) {
  VRINNameImpl impl(VRELString(L"first"));
  VRELString text(L"untouched");
  EXPECT_EQ(impl.GetName(text), VREL_S_OK);
  EXPECT_EQ(text.toUtf8(), "first");
  VRELString const diagnostic = impl.GetName();
  EXPECT_EQ(diagnostic.toUtf8(), "VRINName[" + std::to_string(VRINObjectImpl::_objectCounter) + "]");
  EXPECT_EQ(impl.SetName(VRELString(L"second")), VREL_S_OK);
  EXPECT_EQ(impl.GetName(text), VREL_S_OK);
  EXPECT_EQ(text.toUtf8(), "second");
  // The diagnostic name is independent.
  EXPECT_EQ(impl.GetName().toUtf8(), diagnostic.toUtf8());
  static_cast<VRINObjectImpl&>(impl).SetName(VRELString(L"object"));
  EXPECT_EQ(impl.GetName().toUtf8(), "object");
  impl.GetName(text);
  EXPECT_EQ(text.toUtf8(), "second");
}

}  // namespace
