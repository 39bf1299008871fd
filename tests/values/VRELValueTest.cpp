#include "VRELValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

#include "StreamText.h"
#include "VRELDynamicArray.h"
#include "VRELStreamFormatter.h"

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

VRELValue::VRELValueType kindOf(VRELValue const& value) {
  VRELValue::VRELValueType kind = VRELValue::UnknownType;
  EXPECT_TRUE(value.GetValueType(kind) == VREL_S_OK);
  return kind;
}

std::string textOf(VRELValue const& value) {
  VRELString text(L"untouched");
  value.GetValue(text);
  return text.toUtf8();
}

VRELValue textValue(wchar_t const* text) {
  return VRELValue(VRELString(text));
}

TEST(VRELValueTest, NamesOfKinds) {
  EXPECT_STREQ(VRELValue::VRELValueTypeNames[0], "unknown");
  EXPECT_STREQ(VRELValue::VRELValueTypeNames[1], "double");
  EXPECT_STREQ(VRELValue::VRELValueTypeNames[2], "int");
  EXPECT_STREQ(VRELValue::VRELValueTypeNames[3], "bool");
  EXPECT_STREQ(VRELValue::VRELValueTypeNames[4], "string");
  EXPECT_EQ(VRELValue::VRELValueTypeNames[5], nullptr);
}

TEST(VRELValueTest, ConstructorsSetKind) {
  EXPECT_EQ(kindOf(VRELValue()), 0);
  EXPECT_EQ(kindOf(VRELValue(1.5)), 1);
  EXPECT_EQ(kindOf(VRELValue(7)), 2);
  EXPECT_EQ(kindOf(VRELValue(true)), 3);
  EXPECT_EQ(kindOf(VRELValue(VRELString(L"x"))), 4);
  EXPECT_EQ(kindOf(VRELValue("x")), 4);
  EXPECT_EQ(textOf(VRELValue("x")), "x");
  EXPECT_EQ(textOf(VRELValue(static_cast<char const*>(nullptr))), "");
  EXPECT_EQ(textOf(VRELValue("")), "");
}

TEST(VRELValueTest, LiteralsAndStandardStringsBecomeStrings) {
  std::string const utf8 =
      "gr\xC3\xB6\xC3\x9F"
      "er";
  struct {
    VRELValue value;
    char const* text;
  } const rows[] = {
      {L"gr\u00F6\u00DFer", utf8.c_str()},
      {u"gr\u00F6\u00DFer", utf8.c_str()},
      {utf8, utf8.c_str()},
      {std::string_view(utf8).substr(0, 2), "gr"},
      {std::wstring_view(L"flag", 2), "fl"},
      {L"", ""},
      {static_cast<wchar_t const*>(nullptr), ""},
      {static_cast<char16_t const*>(nullptr), ""},
      {std::string(), ""},
      {std::string_view(), ""},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(kindOf(row.value), VRELValue::StringType);
    EXPECT_EQ(textOf(row.value), row.text);
  }
}

TEST(VRELValueTest, SetValueStoresLiteralsAsStrings) {
  std::string const utf8 = "\xC3\xA9";
  char narrow[] = "array";
  wchar_t wide[] = L"wide";
  VRELValue value;
  auto const expect = [&value](VRINResult result, char const* text) {
    EXPECT_EQ(static_cast<long>(result), 0);
    EXPECT_EQ(kindOf(value), VRELValue::StringType);
    EXPECT_EQ(textOf(value), text);
    value.SetValue(true);
  };
  expect(value.SetValue("text"), "text");
  expect(value.SetValue(narrow), "array");
  expect(value.SetValue(L"text"), "text");
  expect(value.SetValue(wide), "wide");
  expect(value.SetValue(u"text"), "text");
  expect(value.SetValue(utf8), utf8.c_str());
  expect(value.SetValue(std::string_view(utf8)), utf8.c_str());
  expect(value.SetValue(std::wstring_view(wide, 2)), "wi");
  expect(value.SetValue(static_cast<char const*>(nullptr)), "");
  expect(value.SetValue(static_cast<wchar_t const*>(nullptr)), "");
  expect(value.SetValue(VRELString(L"x")), "x");
}

TEST(VRELValueTest, PointersDoNotConvertToBool) {
  EXPECT_FALSE((std::is_constructible_v<VRELValue, int*>));
  EXPECT_FALSE((std::is_constructible_v<VRELValue, VRELString const*>));
  EXPECT_FALSE((std::is_constructible_v<VRELValue, void*>));
  EXPECT_TRUE((std::is_constructible_v<VRELValue, char*>));
  EXPECT_TRUE((std::is_convertible_v<wchar_t const*, VRELValue>));
}

TEST(VRELValueTest, IsValidAndIsInteger) {
  EXPECT_FALSE(VRELValue().IsValid());
  EXPECT_FALSE(VRELValue().IsInteger());
  EXPECT_TRUE(VRELValue(0.0).IsValid());
  EXPECT_FALSE(VRELValue(1.0).IsInteger());
  EXPECT_TRUE(VRELValue(0).IsValid());
  EXPECT_TRUE(VRELValue(0).IsInteger());
  EXPECT_TRUE(VRELValue(false).IsValid());
  EXPECT_FALSE(VRELValue(true).IsInteger());
  EXPECT_TRUE(VRELValue("").IsValid());
  EXPECT_FALSE(VRELValue("1").IsInteger());
}

TEST(VRELValueTest, SetValueChangesKind) {
  VRELValue value;
  EXPECT_TRUE(value.SetValue(2.5) == VREL_S_OK);
  EXPECT_EQ(kindOf(value), 1);
  EXPECT_EQ(textOf(value), "2.500000");
  EXPECT_TRUE(value.SetValue(VRELString(L"abc")) == VREL_S_OK);
  EXPECT_EQ(kindOf(value), 4);
  EXPECT_EQ(textOf(value), "abc");
  EXPECT_TRUE(value.SetValue(true) == VREL_S_OK);
  EXPECT_EQ(kindOf(value), 3);
  EXPECT_EQ(textOf(value), "true");
  EXPECT_TRUE(value.SetValue(-3) == VREL_S_OK);
  EXPECT_EQ(kindOf(value), 2);
  EXPECT_EQ(textOf(value), "-3");
}

TEST(VRELValueTest, UnsetValueFails) {
  VRELValue const value;
  double real = 4.5;
  int integer = 45;
  bool truth = true;
  VRELString text(L"kept");
  EXPECT_TRUE(value.GetValue(real) == VREL_E_INVALID_ARGUMENT);
  EXPECT_TRUE(value.GetValue(integer) == VREL_E_INVALID_ARGUMENT);
  EXPECT_TRUE(value.GetValue(truth) == VREL_E_INVALID_ARGUMENT);
  EXPECT_TRUE(value.GetValue(text) == VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(real, 4.5);
  EXPECT_EQ(integer, 45);
  EXPECT_TRUE(truth);
  EXPECT_EQ(text.toUtf8(), "kept");
  EXPECT_EQ(static_cast<char const*>(value), nullptr);
  EXPECT_EQ(static_cast<wchar_t const*>(value), nullptr);
}

TEST(VRELValueTest, ReadsAsDouble) {
  struct {
    VRELValue value;
    double expected;
  } const rows[] = {
      {VRELValue(2.5), 2.5},       {VRELValue(-0.25), -0.25}, {VRELValue(infinity), infinity},
      {VRELValue(7), 7.0},         {VRELValue(-7), -7.0},     {VRELValue(true), 1.0},
      {VRELValue(false), 0.0},     {textValue(L"Yes"), 1.0},  {textValue(L"true"), 1.0},
      {textValue(L"ON"), 1.0},     {textValue(L"No"), 0.0},   {textValue(L"FALSE"), 0.0},
      {textValue(L"off"), 0.0},    {textValue(L"2.5"), 2.5},  {textValue(L"1e3"), 1000.0},
      {textValue(L"12abc"), 12.0}, {textValue(L"0"), 0.0},    {textValue(L"0abc"), 0.0},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(textOf(row.value));
    double number = -99.0;
    EXPECT_TRUE(row.value.GetValue(number) == VREL_S_OK);
    EXPECT_EQ(number, row.expected);
  }
  double number = 0.0;
  EXPECT_TRUE(VRELValue(notANumber).GetValue(number) == VREL_S_OK);
  EXPECT_TRUE(std::isnan(number));
}

TEST(VRELValueTest, ReadsAsInteger) {
  struct {
    VRELValue value;
    int expected;
  } const rows[] = {
      {VRELValue(2.5), 1},      {VRELValue(0.25), 1},       {VRELValue(-3.0), 1},     {VRELValue(0.0), 0},
      {VRELValue(-0.0), 0},     {VRELValue(notANumber), 1}, {VRELValue(infinity), 1}, {VRELValue(7), 7},
      {VRELValue(-7), -7},      {VRELValue(true), 1},       {VRELValue(false), 0},    {textValue(L"Yes"), 1},
      {textValue(L"on"), 1},    {textValue(L"True"), 1},    {textValue(L"no"), 0},    {textValue(L"Off"), 0},
      {textValue(L"False"), 0}, {textValue(L"42"), 42},     {textValue(L"-42"), -42}, {textValue(L"12x"), 12},
      {textValue(L"0"), 0},     {textValue(L"2.9"), 2},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(textOf(row.value));
    int number = -99;
    EXPECT_TRUE(row.value.GetValue(number) == VREL_S_OK);
    EXPECT_EQ(number, row.expected);
  }
}

TEST(VRELValueTest, ReadsAsBool) {
  struct {
    VRELValue value;
    bool expected;
  } const rows[] = {
      {VRELValue(2.5), true},     {VRELValue(0.25), true},       {VRELValue(0.0), false},
      {VRELValue(-0.0), false},   {VRELValue(notANumber), true}, {VRELValue(7), true},
      {VRELValue(-1), true},      {VRELValue(0), false},         {VRELValue(true), true},
      {VRELValue(false), false},  {textValue(L"Yes"), true},     {textValue(L"TRUE"), true},
      {textValue(L"on"), true},   {textValue(L"No"), false},     {textValue(L"false"), false},
      {textValue(L"OFF"), false}, {textValue(L"7"), true},       {textValue(L"0"), false},
      {textValue(L"-1"), true},   {textValue(L"12x"), true},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(textOf(row.value));
    bool truth = !row.expected;
    EXPECT_TRUE(row.value.GetValue(truth) == VREL_S_OK);
    EXPECT_EQ(truth, row.expected);
  }
}

TEST(VRELValueTest, ReadsAsString) {
  struct {
    VRELValue value;
    char const* expected;
  } const rows[] = {
      {VRELValue(0.0), "0.000000"}, {VRELValue(1.5), "1.500000"}, {VRELValue(-1e3), "-1000.000000"},
      {VRELValue(0), "0"},          {VRELValue(-42), "-42"},      {VRELValue(true), "true"},
      {VRELValue(false), "false"},  {VRELValue("Yes"), "Yes"},    {VRELValue(VRELString(L"\u00D6l")), "\u00D6l"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.expected);
    VRELString text(L"untouched");
    EXPECT_TRUE(row.value.GetValue(text) == VREL_S_OK);
    EXPECT_EQ(text.toUtf8(), row.expected);
  }
}

TEST(VRELValueTest, InvalidNumberKeepsTarget) {
  for (wchar_t const* text : {L"abc", L"", L" Yes", L"-0", L"maybe"}) {
    VRELValue const value = textValue(text);
    SCOPED_TRACE(textOf(value));
    double real = 4.5;
    int integer = 45;
    bool truth = true;
    EXPECT_TRUE(value.GetValue(real) == VREL_E_FAIL);
    EXPECT_TRUE(value.GetValue(integer) == VREL_E_FAIL);
    EXPECT_TRUE(value.GetValue(truth) == VREL_E_FAIL);
    EXPECT_EQ(real, 4.5);
    EXPECT_EQ(integer, 45);
    EXPECT_TRUE(truth);
    truth = false;
    EXPECT_TRUE(value.GetValue(truth) == VREL_E_FAIL);
    EXPECT_FALSE(truth);
  }
}

TEST(VRELValueTest, ConvertsToCStrings) {
  struct {
    VRELValue value;
    char const* narrow;
    wchar_t const* wide;
  } const rows[] = {
      {VRELValue(1.5), "1.500000", L"1.500000"}, {VRELValue(5), "5", L"5"}, {VRELValue(true), "true", L"true"},
      {VRELValue("abc"), "abc", L"abc"},         {VRELValue(""), "", L""},  {textValue(L"wide"), "wide", L"wide"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.narrow);
    EXPECT_STREQ(static_cast<char const*>(row.value), row.narrow);
    EXPECT_STREQ(static_cast<wchar_t const*>(row.value), row.wide);
  }
}

TEST(VRELValueTest, CStringsAreCached) {
  VRELValue value(5);
  char const* const narrow = value;
  wchar_t const* const wide = value;
  value.SetValue(6);
  EXPECT_EQ(static_cast<char const*>(value), narrow);
  EXPECT_STREQ(narrow, "5");
  EXPECT_EQ(static_cast<wchar_t const*>(value), wide);
  EXPECT_STREQ(wide, L"5");
  EXPECT_EQ(textOf(value), "6");

  value.SetValue(2.5);
  value.SetValue(true);
  value.SetValue(VRELString(L"x"));
  EXPECT_EQ(static_cast<char const*>(value), narrow);

  // Each C string is created by the first conversion.
  VRELValue late(1);
  EXPECT_STREQ(static_cast<char const*>(late), "1");
  late.SetValue(2);
  EXPECT_STREQ(static_cast<wchar_t const*>(late), L"2");
}

TEST(VRELValueTest, ConstructorFromCStringFillsCache) {
  VRELValue value("abc");
  value.SetValue(7);
  EXPECT_STREQ(static_cast<char const*>(value), "abc");
  EXPECT_STREQ(static_cast<wchar_t const*>(value), L"7");
}

TEST(VRELValueTest, UnsetValueHasNoCString) {
  VRELValue value;
  EXPECT_EQ(static_cast<char const*>(value), nullptr);
  value.SetValue(1);
  EXPECT_STREQ(static_cast<char const*>(value), "1");
}

TEST(VRELValueTest, AssignmentCopiesNoCStrings) {
  VRELValue const sources[] = {VRELValue(2.5), VRELValue(7), VRELValue(true), VRELValue("abc")};
  char const* const forms[] = {"2.500000", "7", "true", "abc"};
  for (int i = 0; i < 4; ++i) {
    SCOPED_TRACE(forms[i]);
    char const* const given = sources[i];
    VRELValue target("old");
    char* old = const_cast<char*>(static_cast<char const*>(target));
    EXPECT_EQ(&(target = sources[i]), &target);
    EXPECT_EQ(kindOf(target), kindOf(sources[i]));
    EXPECT_TRUE(target == sources[i]);
    EXPECT_STREQ(static_cast<char const*>(target), forms[i]);
    EXPECT_NE(static_cast<char const*>(target), given);
    EXPECT_STREQ(old, "old");  // still valid, since it was not released
    VRELReleaseChars(old);
  }
}

TEST(VRELValueTest, AssignmentClearsCache) {
  VRELValue value(5);
  char* narrow = const_cast<char*>(static_cast<char const*>(value));
  wchar_t* wide = const_cast<wchar_t*>(static_cast<wchar_t const*>(value));
  value.SetValue(6);
  value = VRELValue(7);
  EXPECT_STREQ(static_cast<char const*>(value), "7");
  EXPECT_STREQ(static_cast<wchar_t const*>(value), L"7");
  EXPECT_STREQ(narrow, "5");
  EXPECT_STREQ(wide, L"5");
  VRELReleaseChars(narrow);
  VRELReleaseWideChars(wide);
}

TEST(VRELValueTest, AssignmentDoesNotReleaseCStrings) {
  // The three C strings are not released by the value.
  VRELValue value("first");
  value = VRELValue(1);
  EXPECT_STREQ(static_cast<char const*>(value), "1");
  EXPECT_STREQ(static_cast<wchar_t const*>(value), L"1");
  value = VRELValue(2);
  EXPECT_STREQ(static_cast<char const*>(value), "2");
}

TEST(VRELValueTest, AssignmentOfUnsetValue) {
  VRELValue value(7);
  value = VRELValue();
  EXPECT_FALSE(value.IsValid());
  EXPECT_EQ(static_cast<char const*>(value), nullptr);
  int number = 45;
  EXPECT_TRUE(value.GetValue(number) == VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(number, 45);
}

TEST(VRELValueTest, SelfAssignmentKeepsValue) {
  VRELValue const originals[] = {VRELValue(2.5), VRELValue(7), VRELValue(true), textValue(L"abc")};
  for (VRELValue const& original : originals) {
    SCOPED_TRACE(textOf(original));
    VRELValue value("stale");
    char* stale = const_cast<char*>(static_cast<char const*>(value));
    switch (kindOf(original)) {
      case VRELValue::DoubleType:
        value.SetValue(2.5);
        break;
      case VRELValue::IntType:
        value.SetValue(7);
        break;
      case VRELValue::BoolType:
        value.SetValue(true);
        break;
      default:
        value.SetValue(VRELString(L"abc"));
        break;
    }
    VRELValue const& itself = value;
    value = itself;
    EXPECT_TRUE(value == original);
    EXPECT_STREQ(static_cast<char const*>(value), textOf(original).c_str());
    VRELReleaseChars(stale);
  }
}

TEST(VRELValueTest, CopyHasNoCachedCStrings) {
  VRELValue original(5);
  EXPECT_STREQ(static_cast<char const*>(original), "5");
  original.SetValue(6);
  VRELValue const copy(original);
  EXPECT_STREQ(static_cast<char const*>(copy), "6");
  EXPECT_STREQ(static_cast<char const*>(original), "5");
  EXPECT_EQ(kindOf(copy), 2);
  EXPECT_FALSE(VRELValue(VRELValue()).IsValid());
}

TEST(VRELValueTest, EqualityRequiresSameKind) {
  EXPECT_TRUE(VRELValue(1.5) == VRELValue(1.5));
  EXPECT_FALSE(VRELValue(1.5) == VRELValue(1.25));
  EXPECT_TRUE(VRELValue(0.0) == VRELValue(-0.0));
  EXPECT_FALSE(VRELValue(notANumber) == VRELValue(notANumber));
  EXPECT_TRUE(VRELValue(7) == VRELValue(7));
  EXPECT_FALSE(VRELValue(7) == VRELValue(8));
  EXPECT_TRUE(VRELValue(true) == VRELValue(true));
  EXPECT_FALSE(VRELValue(true) == VRELValue(false));
  EXPECT_TRUE(VRELValue("abc") == VRELValue(VRELString(L"abc")));
  EXPECT_FALSE(VRELValue("abc") == VRELValue("ABC"));
  EXPECT_FALSE(VRELValue() == VRELValue());
  EXPECT_FALSE(VRELValue(1) == VRELValue(1.0));
  EXPECT_FALSE(VRELValue(1) == VRELValue(true));
  EXPECT_FALSE(VRELValue("1") == VRELValue(1));
  EXPECT_FALSE(VRELValue() == VRELValue(0));
  EXPECT_TRUE(VRELValue() != VRELValue());
  EXPECT_FALSE(VRELValue(7) != VRELValue(7));
  VRELValue const unset;
  EXPECT_FALSE(unset == unset);
}

TEST(VRELValueTest, MixesIntegers) {
  struct {
    int key;
    int hash;
  } const rows[] = {
      {0, 0},
      {1, 594824081},
      {-1, 594805658},
      {2, 1189697323},
      {5, 1325071767},
      {-3, 1782355083},
      {123456789, 1216876281},
      {2147483647, 2141659318},
      {std::numeric_limits<int>::min(), 1558502628},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.key);
    EXPECT_EQ(VRELValue::GetHashCode(row.key), row.hash);
    EXPECT_EQ(VRELValue(row.key).GetHashCode(), row.hash);
    EXPECT_EQ(VRELValue(static_cast<double>(row.key)).GetHashCode(), row.hash);
  }
}

TEST(VRELValueTest, HashesByKind) {
  EXPECT_EQ(VRELValue().GetHashCode(), 0);
  EXPECT_EQ(VRELValue(true).GetHashCode(), 594824081);
  EXPECT_EQ(VRELValue(true).GetHashCode(), VRELValue(1).GetHashCode());
  EXPECT_EQ(VRELValue(false).GetHashCode(), 0);
  EXPECT_EQ(VRELValue(2.9).GetHashCode(), 1189697323);
  EXPECT_EQ(VRELValue(-3.9).GetHashCode(), 1782355083);
  EXPECT_EQ(VRELValue(0.9).GetHashCode(), 0);
  EXPECT_EQ(VRELValue("abc").GetHashCode(), VRELString(L"abc").hashCode());
  EXPECT_NE(VRELValue("abc").GetHashCode(), VRELValue("abd").GetHashCode());
  // Values outside the range of int.
  for (double number : {1e300, -1e300, infinity, notANumber, 2147483648.0}) {
    SCOPED_TRACE(number);
    EXPECT_EQ(VRELValue(number).GetHashCode(), 1558502628);
  }
}

TEST(VRELValueTest, CanBeHashKey) {
  EXPECT_EQ(VRELHashTraits<VRELValue>::Hash(VRELValue(-1)), 594805658u);
  EXPECT_TRUE(VRELHashTraits<VRELValue>::Equal(VRELValue("a"), VRELValue("a")));
  EXPECT_FALSE(VRELHashTraits<VRELValue>::Equal(VRELValue("a"), VRELValue("A")));
  EXPECT_FALSE(VRELHashTraits<VRELValue>::Equal(VRELValue(true), VRELValue(1)));
}

TEST(VRELValueTest, CanBeArrayElement) {
  VRELDynamicArray<VRELValue> values;
  for (int i = 0; i < 40; ++i) {
    values.add(i % 2 == 0 ? VRELValue(i) : VRELValue(VRELString(L"text")));
    EXPECT_NE(static_cast<char const*>(values[i]), nullptr);
  }
  EXPECT_STREQ(static_cast<char const*>(values[38]), "38");
  EXPECT_STREQ(static_cast<char const*>(values[39]), "text");
  EXPECT_TRUE(values[4] == VRELValue(4));
}

// The formats are those of the formatter.
TEST(VRELValueTest, DumpsValue) {
  std::string const text = TextOf([](VRELOutputStream* stream) {
    VRELStreamFormatter out(stream);
    out.setIntFormat("i%d");
    out.setDoubleFormat("d%.2f", false, 0);
    for (VRELValue const& value : {VRELValue(1.5), VRELValue(-7), VRELValue(true), VRELValue(false), VRELValue(),
                                   VRELValue(VRELString(L"text")), VRELValue("")}) {
      value.Dump(out);
      out << '|';
    }
  });
  EXPECT_EQ(text, "d1.50|i-7|i1|i0||text||");
}

}  // namespace
