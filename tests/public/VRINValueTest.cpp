#include "VRINValue.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "PublicObject.h"
#include "VRELValue.h"
#include "VRINValueImpl.h"

namespace {

char const* Narrow(VRINValue const& value) {
  return static_cast<char const*>(value);
}

wchar_t const* Wide(VRINValue const& value) {
  return static_cast<wchar_t const*>(value);
}

void ExpectDefaults(VRINValue const& value) {
  EXPECT_EQ(static_cast<double>(value), 0.0);
  EXPECT_FALSE(static_cast<bool>(value));
  EXPECT_EQ(static_cast<int>(value), 0);
  EXPECT_EQ(value.GetType(), 0);
  EXPECT_EQ(Narrow(value), nullptr);
  EXPECT_EQ(Wide(value), nullptr);
}

TEST(VRINValueTest, TypesHaveNumbers) {
  EXPECT_EQ(VRINValue::BoolType, 0);
  EXPECT_EQ(VRINValue::IntType, 1);
  EXPECT_EQ(VRINValue::DoubleType, 2);
  EXPECT_EQ(VRINValue::StringType, 3);
}

TEST(VRINValueTest, ConvertsToEachType) {
  struct Row {
    VRINValue value;
    int type;
    bool asBool;
    int asInt;
    double asDouble;
    wchar_t const* asText;
  };
  Row const rows[] = {
      {VRINValue(true), 0, true, 1, 1.0, L"true"},
      {VRINValue(false), 0, false, 0, 0.0, L"false"},
      {VRINValue(3), 1, true, 3, 3.0, L"3"},
      {VRINValue(0), 1, false, 0, 0.0, L"0"},
      // Converted to 1 or 0, not truncated.
      {VRINValue(2.5), 2, true, 1, 2.5, L"2.500000"},
      {VRINValue("12"), 3, true, 12, 12.0, L"12"},
      {VRINValue(L"yes"), 3, true, 1, 1.0, L"yes"},
      {VRINValue("no number"), 3, false, 0, 0.0, L"no number"},
      {VRINValue(""), 3, false, 0, 0.0, L""},
      {VRINValue(L""), 3, false, 0, 0.0, L""},
      {VRINValue(static_cast<char const*>(nullptr)), 3, false, 0, 0.0, L""},
      {VRINValue(static_cast<wchar_t const*>(nullptr)), 3, false, 0, 0.0, L""},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(std::to_string(&row - rows));
    EXPECT_TRUE(row.value.IsValid());
    EXPECT_EQ(row.value.GetType(), row.type);
    EXPECT_EQ(static_cast<bool>(row.value), row.asBool);
    EXPECT_EQ(static_cast<int>(row.value), row.asInt);
    EXPECT_EQ(static_cast<double>(row.value), row.asDouble);
    EXPECT_STREQ(Wide(row.value), row.asText);
    EXPECT_EQ(std::string(Narrow(row.value)), VRELString(row.asText).toUtf8());
  }
}

TEST(VRINValueTest, StringTypesBecomeStrings) {
  using namespace std::string_literals;
  using namespace std::string_view_literals;
  wchar_t wide[] = L"text";
  char narrow[] = "text";
  VRINValue const values[] = {"text"s, "text"sv, L"text"s,   L"text"sv,  u"text"sv, u"text", VRINValue(u"text"s),
                              wide,    narrow,   "text\0x"s, "text\0x"sv};
  for (VRINValue const& value : values) {
    SCOPED_TRACE(std::to_string(&value - values));
    EXPECT_EQ(value.GetType(), VRINValue::StringType);
    EXPECT_STREQ(Wide(value), L"text");
  }
  EXPECT_STREQ(Wide("\xC3\x96l"s), L"\u00D6l") << "UTF-8";
  EXPECT_STREQ(Wide(std::string_view()), L"");
  EXPECT_STREQ(Wide(std::wstring_view()), L"");
  EXPECT_STREQ(Wide(std::u16string_view()), L"");
  EXPECT_STREQ(Wide(static_cast<char16_t const*>(nullptr)), L"");
  VRINValue assigned(true);
  assigned = L"text";
  EXPECT_EQ(assigned.GetType(), VRINValue::StringType);
}

TEST(VRINValueTest, OtherPointersDoNotCompile) {
  static_assert(!std::is_constructible_v<VRINValue, void*>);
  static_assert(!std::is_constructible_v<VRINValue, void const*>);
  static_assert(!std::is_constructible_v<VRINValue, int*>);
  static_assert(!std::is_constructible_v<VRINValue, char32_t const*>);
  static_assert(!std::is_constructible_v<VRINValue, unsigned char const*>);
  static_assert(!std::is_constructible_v<VRINValue, void (*)()>);
  static_assert(!std::is_constructible_v<VRINValue, std::nullptr_t>);
  EXPECT_EQ(VRINValue(true).GetType(), VRINValue::BoolType);
  EXPECT_EQ(VRINValue(2.5F).GetType(), VRINValue::DoubleType);
  EXPECT_EQ(VRINValue('a').GetType(), VRINValue::IntType);
}

TEST(VRINValueTest, DefaultValueReadsAsDefaults) {
  VRINValue const value;
  EXPECT_TRUE(value.IsValid());
  ExpectDefaults(value);
}

TEST(VRINValueTest, InvalidHandleReadsAsDefaults) {
  VRINValue value(2.5);
  value.SetData(nullptr);
  EXPECT_FALSE(value.IsValid());
  ExpectDefaults(value);
}

TEST(VRINValueTest, ReadsCallIsValid) {
  struct Closed : VRINValue {
    using VRINValue::VRINValue;
    bool IsValid() const override { return isOpen; }
    bool isOpen = false;
  };
  Closed value(7);
  EXPECT_EQ(static_cast<int>(value), 0);
  EXPECT_EQ(Narrow(value), nullptr);
  // Does not call IsValid().
  EXPECT_EQ(value.GetType(), 1);
  value.isOpen = true;
  EXPECT_EQ(static_cast<int>(value), 7);
  value.SetData(nullptr);
  ExpectDefaults(value);
}

TEST(VRINValueTest, AssignmentShares) {
  VRINValue target(true);
  {
    VRINValue source(2.5);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.GetData(), source.GetData());
    EXPECT_EQ(UseCount(source), 2);
    EXPECT_EQ(static_cast<double>(source), 2.5);
  }
  EXPECT_TRUE(target.IsValid());
  EXPECT_EQ(UseCount(target), 1);
  EXPECT_EQ(static_cast<double>(target), 2.5);
  VRINValue const& same = target;
  target = same;
  EXPECT_EQ(UseCount(target), 1);
  EXPECT_EQ(static_cast<double>(target), 2.5);
}

TEST(VRINValueTest, StringsAreValidWithValue) {
  auto first = std::make_unique<VRINValue>("wheel");
  VRINValue const second(*first);
  char const* const narrow = Narrow(*first);
  wchar_t const* const wide = Wide(*first);
  first.reset();
  EXPECT_STREQ(narrow, "wheel");
  EXPECT_STREQ(wide, L"wheel");
  EXPECT_EQ(Narrow(second), narrow);
  EXPECT_EQ(Wide(second), wide);
}

TEST(VRINValueTest, NumbersObjectsConsecutively) {
  VRINValue const first;
  VRINValue const second(L"text");
  int const last = VRINObjectImpl::_objectCounter;
  EXPECT_EQ(DiagnosticName(first), "VRINValue[" + std::to_string(last - 1) + "]");
  EXPECT_EQ(DiagnosticName(second), "VRINValue[" + std::to_string(last) + "]");
}

TEST(VRINValueImplTest, ReturnsValue) {
  VRINValueImpl const impl(VRELValue(42));
  VRELValue value(true);
  EXPECT_EQ(impl.GetValue(value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(42));
  EXPECT_STREQ(static_cast<char const*>(impl), "42");
  EXPECT_STREQ(static_cast<wchar_t const*>(impl), L"42");
  EXPECT_EQ(static_cast<char const*>(impl), static_cast<char const*>(impl.GetHeldValue()));
}

}  // namespace
