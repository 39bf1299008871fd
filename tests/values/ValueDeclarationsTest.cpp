// Declarations, field offsets and sizes of the value classes, which clients compile against.
#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "Declaration.h"
#include "VRELTable.h"
#include "VRELValue.h"

namespace {

using V = VRELValue;
using Table = VRELTable;

static_assert(std::is_convertible_v<bool, V> && std::is_convertible_v<int, V> && std::is_convertible_v<double, V>);
static_assert(std::is_convertible_v<VRELString const&, V> && std::is_convertible_v<char const*, V>);
static_assert(std::is_enum_v<V::VRELValueType> && std::is_convertible_v<V::VRELValueType, int>);
static_assert(IsDeclared<V& (V::*)(V const&)>(&V::operator=));
static_assert(IsDeclared<VRINResult (V::*)(double)>(&V::SetValue));
static_assert(IsDeclared<VRINResult (V::*)(bool)>(&V::SetValue));
static_assert(IsDeclared<VRINResult (V::*)(int)>(&V::SetValue));
static_assert(IsDeclared<VRINResult (V::*)(VRELString const&)>(&V::SetValue));
static_assert(IsDeclared<VRINResult (V::*)(V::VRELValueType&) const>(&V::GetValueType));
static_assert(IsDeclared<bool (V::*)() const>(&V::IsValid));
static_assert(IsDeclared<bool (V::*)() const>(&V::IsInteger));
static_assert(IsDeclared<VRINResult (V::*)(double&) const>(&V::GetValue));
static_assert(IsDeclared<VRINResult (V::*)(bool&) const>(&V::GetValue));
static_assert(IsDeclared<VRINResult (V::*)(int&) const>(&V::GetValue));
static_assert(IsDeclared<VRINResult (V::*)(VRELString&) const>(&V::GetValue));
static_assert(IsDeclared<char const* (V::*)() const>(&V::operator char const*));
static_assert(IsDeclared<wchar_t const* (V::*)() const>(&V::operator wchar_t const*));
static_assert(IsDeclared<bool (V::*)(V const&) const>(&V::operator==));
static_assert(IsDeclared<int (V::*)() const>(&V::GetHashCode));
static_assert(IsDeclared<int (*)(int)>(&V::GetHashCode));
static_assert(!std::is_polymorphic_v<V> && sizeof(V) == 56);
static_assert(std::is_same_v<decltype(V::VRELValueTypeNames), char const* const[6]>);

static_assert(std::is_base_of_v<VRELReferenceCount, Table>);
static_assert(IsDeclared<VRINResult (Table::*)(V const*, ...)>(&Table::Add));
static_assert(IsDeclared<VRINResult (Table::*)(V const*, ...)>(&Table::Set));
static_assert(IsDeclared<VRINResult (Table::*)(V*, ...) const>(&Table::Get));
static_assert(IsDeclared<VRINResult (Table::*)(int, V*, ...) const>(&Table::Get));
static_assert(IsDeclared<int (Table::*)() const>(&Table::GetRowsCount));

TEST(ValueDeclarationsTest, FieldsKeepOffsets) {
  V const value(VRELString(L"7"));
  EXPECT_EQ(reinterpret_cast<VRELString const*>(&value)->length(), 1);
  EXPECT_EQ(FieldAt<char*>(value, 24), nullptr);
  EXPECT_EQ(FieldAt<wchar_t*>(value, 32), nullptr);
  EXPECT_EQ(FieldAt<std::int32_t>(value, 48), 4);
  EXPECT_STREQ(static_cast<char const*>(value), "7");
  EXPECT_STREQ(static_cast<wchar_t const*>(value), L"7");
  EXPECT_STREQ(FieldAt<char*>(value, 24), "7");
  EXPECT_STREQ(FieldAt<wchar_t*>(value, 32), L"7");

  EXPECT_EQ(FieldAt<double>(V(2.5), 40), 2.5);
  EXPECT_EQ(FieldAt<std::int32_t>(V(-7), 40), -7);
  EXPECT_TRUE(FieldAt<bool>(V(true), 40));
  EXPECT_EQ(FieldAt<std::int32_t>(V(2.5), 48), 1);
  EXPECT_EQ(FieldAt<std::int32_t>(V(-7), 48), 2);
  EXPECT_EQ(FieldAt<std::int32_t>(V(true), 48), 3);
  EXPECT_EQ(FieldAt<std::int32_t>(V(), 48), 0);
}

TEST(ValueDeclarationsTest, TableRowsKeepOffset) {
  Table const table;
  EXPECT_EQ(FieldAt<std::uint32_t>(table, 8), 0U);
  using Rows = VRELDynamicArray<VRELDynamicArray<V>>;
  V const key(1);
  Table filled;
  filled.Add(&key, nullptr);
  EXPECT_EQ(reinterpret_cast<Rows const*>(reinterpret_cast<char const*>(&filled) + 16)->size(), 1);
}

}  // namespace
