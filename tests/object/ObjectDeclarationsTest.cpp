// Declarations, field offsets and virtual tables of results, counted objects, handles and exceptions.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "Declaration.h"
#include "Gk_Exception.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELArchiveException.h"
#include "VRELObject.h"
#include "VRELReferenceHandle.h"
#include "VRELTypedHandle.h"
#include "VirtualSlot.h"

namespace {

#define DECLARED(member, type) static_assert(std::is_same_v<decltype(&member), type>)

using Counted = VRELReferenceCount;
using Handle = VRELReferenceHandle;
class Face;
using FaceHandle = VRELTypedHandle<Face>;
class Face : public VRELReferenceCount {};

DECLARED(Counted::RaiseReference, unsigned int (Counted::*)());
DECLARED(Counted::LowerReference, unsigned int (Counted::*)());
DECLARED(Counted::IsLastCall, bool (Counted::*)() const noexcept);
DECLARED(Counted::GetReferenceCount, unsigned int (Counted::*)() const noexcept);
DECLARED(Counted::GetName, char const* (Counted::*)());
static_assert(std::is_constructible_v<Counted, unsigned int>);
static_assert(std::is_copy_constructible_v<Counted> && std::is_copy_assignable_v<Counted>);
static_assert(std::has_virtual_destructor_v<Counted>);

DECLARED(Handle::IsValid, bool (Handle::*)() const);
DECLARED(Handle::GetInstance, Counted* (Handle::*)() const noexcept);
DECLARED(Handle::IsLastCall, bool (Handle::*)() const);
static_assert(std::is_same_v<decltype(static_cast<bool (Handle::*)(Handle const&) const>(&Handle::operator==)),
                             bool (Handle::*)(Handle const&) const>);
static_assert(std::is_same_v<decltype(static_cast<Handle& (Handle::*)(Handle const&)>(&Handle::operator=)),
                             Handle& (Handle::*)(Handle const&)>);
DECLARED(Handle::operator<, bool (Handle::*)(Handle const&) const noexcept);
static_assert(std::is_constructible_v<Handle, Counted*> && std::is_copy_constructible_v<Handle>);
static_assert(std::has_virtual_destructor_v<Handle>);

static_assert(std::is_base_of_v<Handle, FaceHandle>);
static_assert(std::is_convertible_v<FaceHandle const, Face*> && std::is_convertible_v<Face*, FaceHandle>);
static_assert(std::is_same_v<decltype(std::declval<FaceHandle&>().operator->()), Face*>);
static_assert(std::is_same_v<decltype(std::declval<FaceHandle const&>().operator->()), Face*>);
static_assert(std::is_same_v<decltype(std::declval<FaceHandle const&>() == std::declval<FaceHandle const&>()), bool>);
static_assert(std::is_same_v<decltype(std::declval<FaceHandle const&>() < std::declval<FaceHandle const&>()), bool>);
static_assert(std::is_same_v<decltype(std::declval<FaceHandle&>() = std::declval<FaceHandle const&>()), FaceHandle&>);

static_assert(std::is_base_of_v<Counted, VRELObject> && std::is_constructible_v<VRELObject, char const*>);
DECLARED(VRELObject::IsKindOf, bool (VRELObject::*)(char const*));
DECLARED(VRELObject::GetTypeName, char const* (VRELObject::*)() const noexcept);

DECLARED(Gk_Marker::token, char const* (Gk_Marker::*)() const noexcept);
DECLARED(Gk_Marker::operator==, bool (Gk_Marker::*)(Gk_Marker const&) const noexcept);
DECLARED(Gk_Marker::operator<, bool (Gk_Marker::*)(Gk_Marker const&) const noexcept);
DECLARED(Gk_Marker::compare, int (Gk_Marker::*)(Gk_Marker const&) const noexcept);
static_assert(std::is_constructible_v<Gk_Exception, char const*, Gk_Exception*>);
static_assert(std::is_base_of_v<Gk_Marker, Gk_Exception> && std::is_copy_constructible_v<Gk_Exception>);
DECLARED(VRELArchiveException::GetCode, eVRELArchiveException (VRELArchiveException::*)() const noexcept);
static_assert(VRELArchiveEndReached == 1 && VRELArchiveNotANumber == 2);

TEST(ObjectDeclarationsTest, FieldsHaveOffsets) {
  Counted const counted(7);
  EXPECT_EQ(sizeof counted, 16u);
  EXPECT_EQ(FieldAt<unsigned int>(counted, 8), 7u);
  FaceHandle const handle(new Face);
  EXPECT_EQ(sizeof handle, 16u);
  EXPECT_EQ(FieldAt<Counted*>(handle, 8), handle.GetInstance());
  VRELObject const object("VRELEvent");
  EXPECT_EQ(sizeof object, 24u);
  EXPECT_EQ(FieldAt<unsigned int>(object, 8), 0u);
  EXPECT_EQ(FieldAt<char const*>(object, 16), object.GetTypeName());
  Gk_Exception const exception("token");
  EXPECT_EQ(sizeof exception, 8u);
  EXPECT_EQ(FieldAt<char const*>(exception, 0), exception.token());
  VRELArchiveException const archive(VRELArchiveNotANumber);
  EXPECT_EQ(sizeof archive, 4u);
  EXPECT_EQ(FieldAt<int>(archive, 0), 2);
  EXPECT_EQ(sizeof(VRELAbortException), 1u);
  EXPECT_EQ(sizeof(VRELAllocException), 1u);
}

TEST(ObjectDeclarationsTest, VirtualFunctionsHaveSlots) {
  EXPECT_EQ(SlotOf(&Counted::RaiseReference), 2u);
  EXPECT_EQ(SlotOf(&Counted::LowerReference), 3u);
  EXPECT_EQ(SlotOf(&Counted::GetName), 4u);
  EXPECT_EQ(SlotOf(&VRELObject::RaiseReference), 2u);
  EXPECT_EQ(SlotOf(&VRELObject::LowerReference), 3u);
  EXPECT_EQ(SlotOf(&VRELObject::GetName), 4u);
  EXPECT_EQ(SlotOf(&VRELObject::IsKindOf), 5u);
  EXPECT_EQ(SlotOf(&Handle::IsValid), 2u);
  EXPECT_EQ(SlotOf(&FaceHandle::IsValid), 2u);
}

}  // namespace
