// Declarations, field offsets and virtual tables of results and public handles.
#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "Declaration.h"
#include "VRELFilePath.h"
#include "VRINFile.h"
#include "VRINFileImpl.h"
#include "VRINNameImpl.h"
#include "VRINOptionName.h"
#include "VRINResult.h"
#include "VRINUnit.h"
#include "VRINUnitImpl.h"
#include "VRINValue.h"
#include "VRINValueImpl.h"
#include "VirtualSlot.h"

namespace {

#define DECLARED(member, type) static_assert(std::is_same_v<decltype(&member), type>)
#define OVERLOADED(member, type) static_assert(std::is_same_v<decltype(static_cast<type>(&member)), type>)

using Result = VRINResult;
using Object = VRINObject;
using Impl = VRINObjectImpl;

static_assert(std::is_convertible_v<long, Result> && std::is_convertible_v<Result, long>);
OVERLOADED(Result::operator=, Result& (Result::*)(long) noexcept);
OVERLOADED(Result::operator==, bool (Result::*)(long) const noexcept);
OVERLOADED(Result::operator!=, bool (Result::*)(long) const noexcept);
DECLARED(Result::operator&=, Result (Result::*)(Result) noexcept);
DECLARED(Result::operator|=, Result (Result::*)(Result) noexcept);
DECLARED(Result::IsSuccess, bool (Result::*)() const noexcept);
DECLARED(Result::IsFailure, bool (Result::*)() const noexcept);
DECLARED(Result::IsPartialSuccess, bool (Result::*)() const noexcept);
DECLARED(Result::IsCompleteSuccess, bool (Result::*)() const noexcept);
DECLARED(Result::IsUndetermined, bool (Result::*)() const noexcept);
DECLARED(Result::IsDeterminedFailure, bool (Result::*)() const noexcept);
DECLARED(Result::GetCriticity, long (Result::*)() const noexcept);
DECLARED(Result::GetDomain, long (Result::*)() const noexcept);
DECLARED(Result::GetNumber, long (Result::*)() const noexcept);
DECLARED(Result::GetMessage, char const* (Result::*)() const noexcept);
OVERLOADED(Result::GetReturnCode, long (Result::*)() const noexcept);
OVERLOADED(Result::GetReturnCode, long (*)(bool) noexcept);
DECLARED(Result::GetOKKOString, char const* (*)(bool) noexcept);
DECLARED(Result::E_FAIL_RESULT, Result*);

static_assert(std::is_constructible_v<Object, char const*> && std::has_virtual_destructor_v<Object>);
DECLARED(Object::IsValid, bool (Object::*)() const);
DECLARED(Object::GetData, void* (Object::*)() const noexcept);
DECLARED(Object::SetData, void (Object::*)(void*));
DECLARED(Object::Ref, long (Object::*)() noexcept);
DECLARED(Object::Unref, long (Object::*)());

static_assert(std::is_constructible_v<Impl, char const*> && std::has_virtual_destructor_v<Impl>);
DECLARED(Impl::Ref, long (Impl::*)() noexcept);
DECLARED(Impl::Unref, long (Impl::*)() noexcept);
DECLARED(Impl::Cast, Impl* (*)(void*) noexcept);
DECLARED(Impl::GetName, VRELString (Impl::*)() const);
DECLARED(Impl::SetName, void (Impl::*)(VRELString const&));
DECLARED(Impl::_objectCounter, int*);

static_assert(std::is_base_of_v<Object, VRINName> && std::is_base_of_v<VRINName, VRINOptionName>);
static_assert(std::is_base_of_v<VRINName, VRINComponentName> && std::is_base_of_v<VRINName, VRINReaderWriterName>);
static_assert(std::is_base_of_v<VRINName, VRINRepresentationName> && std::is_convertible_v<char const*, VRINName>);
static_assert(std::is_base_of_v<Impl, VRINNameImpl> &&
              std::is_convertible_v<VRELString const&, VRINNameImpl*> == false);
OVERLOADED(VRINNameImpl::GetName, Result (VRINNameImpl::*)(VRELString&) const);
DECLARED(VRINNameImpl::SetName, Result (VRINNameImpl::*)(VRELString const&));

static_assert(std::is_convertible_v<bool, VRINValue> && std::is_convertible_v<int, VRINValue>);
static_assert(std::is_convertible_v<double, VRINValue> && std::is_convertible_v<char const*, VRINValue>);
static_assert(std::is_convertible_v<wchar_t const*, VRINValue> && std::is_default_constructible_v<VRINValue>);
OVERLOADED(VRINValue::operator=, VRINValue& (VRINValue::*)(VRINValue const&));
DECLARED(VRINValue::operator bool, bool (VRINValue::*)() const);
DECLARED(VRINValue::operator int, int (VRINValue::*)() const);
DECLARED(VRINValue::operator double, double (VRINValue::*)() const);
DECLARED(VRINValue::operator char const*, char const* (VRINValue::*)() const);
DECLARED(VRINValue::operator wchar_t const*, wchar_t const* (VRINValue::*)() const);
DECLARED(VRINValueImpl::GetValue, Result (VRINValueImpl::*)(VRELValue&) const);
static_assert(std::is_constructible_v<VRINValueImpl, VRELValue const&>);

static_assert(std::is_convertible_v<char const*, VRINFile> && std::is_convertible_v<wchar_t const*, VRINFile>);
static_assert(std::is_convertible_v<int, VRINFile>);
static_assert(std::is_constructible_v<VRINFile, std::FILE const*, char const*>);
DECLARED(VRINFileImpl::GetPath, Result (VRINFileImpl::*)(VRELFilePath&) const);
DECLARED(VRINFileImpl::HasPath, bool (VRINFileImpl::*)() const);
DECLARED(VRINFileImpl::GetFile, VRELFileHandle (VRINFileImpl::*)() const);

static_assert(std::is_convertible_v<VRINUnitValue, VRINUnit> && std::is_convertible_v<char const*, VRINUnit>);
OVERLOADED(VRINUnit::operator=, VRINUnit& (VRINUnit::*)(VRINUnit const&));
DECLARED(VRINUnit::operator char const*, char const* (VRINUnit::*)() const);
DECLARED(VRINUnit::operator VRINUnitValue, VRINUnitValue (VRINUnit::*)() const);
static_assert(std::is_constructible_v<VRINUnitImpl, VRELUnit&>);
DECLARED(VRINUnitImpl::GetUnit, Result (VRINUnitImpl::*)(VRELUnit&) const);
DECLARED(VRINUnitImpl::SetUnit, Result (VRINUnitImpl::*)(VRELUnit const&));

TEST(PublicDeclarationsTest, FieldsHaveOffsets) {
  EXPECT_EQ(FieldAt<std::uint32_t>(VRINResult(0x2000003), 0), 0x2000003u);
  VRINUnit unit(VRINUnitInch);
  EXPECT_EQ(sizeof unit, 24u);
  EXPECT_STREQ(FieldAt<char const*>(unit, 8), "VRINUnit");
  EXPECT_EQ(FieldAt<void*>(unit, 16), unit.GetData());
  auto const* const impl = static_cast<VRINUnitImpl*>(VRINObjectImpl::Cast(unit.GetData()));
  EXPECT_EQ(FieldAt<long>(*impl, 8), 1);
  EXPECT_EQ(FieldAt<int>(*impl, 16 + sizeof(VRELString)), 8);
  VRINValue value(3);
  EXPECT_STREQ(FieldAt<char const*>(value, 8), "VRINValue");
  auto const* const valueImpl = static_cast<VRINValueImpl*>(VRINObjectImpl::Cast(value.GetData()));
  EXPECT_EQ(OffsetOf(*valueImpl, valueImpl->GetHeldValue()), 16 + sizeof(VRELString));
  EXPECT_STREQ(FieldAt<char const*>(VRINOptionName("x"), 8), "VRINName");
  EXPECT_STREQ(FieldAt<char const*>(VRINFile(1), 8), "VRINFile");
}

TEST(PublicDeclarationsTest, VirtualFunctionsHaveSlots) {
  EXPECT_EQ(SlotOf(&VRINObject::IsValid), 0u);
  EXPECT_EQ(SlotOf(&VRINFile::IsValid), 0u);
  EXPECT_EQ(SlotOf(&VRINValue::IsValid), 0u);
  EXPECT_EQ(SlotOf(&VRINUnit::IsValid), 0u);
  EXPECT_EQ(SlotOf(&VRINName::IsValid), 0u);
  EXPECT_EQ(SlotOf(&VRINOptionName::IsValid), 0u);
}

}  // namespace
