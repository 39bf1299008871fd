#include "VRELProperties.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "VRELPair.h"
#include "VirtualSlot.h"

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

std::string TextOf(VRELProperties const& properties, VRELString const& key) {
  VRELValue value(VRELString(L"untouched"));
  VRELString text(L"no text");
  VRINResult const result = properties.Get(key, value);
  value.GetValue(text);
  EXPECT_EQ(result == VREL_S_OK, text.toUtf8() != "untouched");
  return text.toUtf8();
}

// In the order of the enumeration.
Pairs PairsOf(VRELProperties const& properties) {
  Pairs pairs;
  for (int i = 0; i < properties.GetCount(); ++i) {
    VRELString key;
    VRELValue value;
    VRELString text;
    EXPECT_EQ(properties.Get(i, key, value), VREL_S_OK);
    value.GetValue(text);
    pairs.emplace_back(key.toUtf8(), text.toUtf8());
  }
  return pairs;
}

TEST(VRELPropertiesTest, IsEmptyAtFirst) {
  VRELProperties const properties;
  EXPECT_EQ(properties.GetCount(), 0);
  EXPECT_EQ(properties.GetReferenceCount(), 0U);
  EXPECT_EQ(TextOf(properties, L"key"), "untouched");
}

TEST(VRELPropertiesTest, KeepsValuesOfEachKind) {
  VRELProperties properties;
  EXPECT_EQ(properties.Set(L"a", VRELValue(1.5)), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"b", VRELValue(7)), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"c", VRELValue(true)), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"d", VRELValue(VRELString(L"text"))), VREL_S_OK);
  EXPECT_EQ(properties.Set(VRELString(), VRELValue(8)), VREL_S_OK);
  EXPECT_EQ(properties.GetCount(), 5);
  VRELValue value;
  EXPECT_EQ(properties.Get(L"a", value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(1.5));
  EXPECT_EQ(properties.Get(L"b", value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(7));
  EXPECT_EQ(properties.Get(L"c", value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(true));
  EXPECT_EQ(properties.Get(L"d", value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(VRELString(L"text")));
  EXPECT_EQ(properties.Get(VRELString(), value), VREL_S_OK);
  EXPECT_TRUE(value == VRELValue(8));
  EXPECT_EQ(properties.Get(L"e", value), VREL_E_FAIL);
  EXPECT_TRUE(value == VRELValue(8));
}

TEST(VRELPropertiesTest, SetReplacesTheValueOfAKey) {
  VRELProperties properties;
  properties.Set(L"a", VRELValue(1));
  EXPECT_EQ(properties.Set(L"a", VRELValue(VRELString(L"two"))), VREL_S_OK);
  EXPECT_EQ(properties.GetCount(), 1);
  EXPECT_EQ(TextOf(properties, L"a"), "two");
}

TEST(VRELPropertiesTest, ParsesKeyAndValue) {
  struct Row {
    wchar_t const* text;
    wchar_t const* key;
    char const* value;
  };
  Row const rows[] = {
      {L"a=b", L"a", "b"},         {L"a=", L"a", ""},
      {L"a=b=c", L"a", "b=c"},     {L"a==", L"a", "="},
      {L" a = b ", L" a ", " b "}, {L"a\n=\t", L"a\n", "\t"},
      {L" =x", L" ", "x"},         {L"\u00D6=\u4E2D", L"\u00D6", "\xE4\xB8\xAD"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.value);
    VRELProperties properties;
    EXPECT_EQ(properties.Set(row.text), VREL_S_OK);
    EXPECT_EQ(properties.GetCount(), 1);
    EXPECT_EQ(TextOf(properties, row.key), row.value);
    VRELValue value;
    VRELValue::VRELValueType kind = VRELValue::UnknownType;
    properties.Get(row.key, value);
    value.GetValueType(kind);
    EXPECT_EQ(kind, VRELValue::StringType);
  }
}

TEST(VRELPropertiesTest, RefusesTextWithoutAKey) {
  VRELProperties properties;
  for (wchar_t const* text : {L"", L"=", L"=x", L"==x", L"a", L"a:b"}) {
    EXPECT_EQ(properties.Set(text), VREL_E_FAIL);
  }
  EXPECT_EQ(properties.GetCount(), 0);
}

TEST(VRELPropertiesTest, ParsedPairsGoThroughTheVirtualSet) {
  class Refusing : public VRELProperties {
   public:
    using VRELProperties::Set;
    VRINResult Set(VRELString const& key, VRELValue const&) override {
      keys += key.toUtf8();
      return VREL_E_INVALID_ARGUMENT;
    }
    std::string keys;
  };
  Refusing properties;
  EXPECT_EQ(properties.VRELProperties::Set(L"a=b"), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(properties.keys, "a");
}

TEST(VRELPropertiesTest, SpellingsThatDifferInCaseAreTwoKeys) {
  VRELProperties properties;
  properties.Set(L"abc=1");
  properties.Set(L"ABC=2");
  // Whether two spellings meet goes by the hash: in 17 buckets these stand apart.
  ASSERT_NE(VRELString(L"abc").hashCode() % 17, VRELString(L"ABC").hashCode() % 17);
  EXPECT_EQ(properties.GetCount(), 2);
  EXPECT_EQ(TextOf(properties, L"abc"), "1");
  EXPECT_EQ(TextOf(properties, L"ABC"), "2");
}

TEST(VRELPropertiesTest, SpellingsThatMeetInOneBucketAreOneKey) {
  // The shortest run of one letter whose two spellings share one of the 17 buckets.
  std::wstring lower(1, L'a');
  std::wstring upper(1, L'A');
  while (VRELString(lower.c_str()).hashCode() % 17 != VRELString(upper.c_str()).hashCode() % 17) {
    lower += L'a';
    upper += L'A';
    ASSERT_LT(lower.size(), 1000U);
  }
  VRELProperties properties;
  properties.Set(lower.c_str(), VRELValue(1));
  properties.Set(upper.c_str(), VRELValue(2));
  EXPECT_EQ(properties.GetCount(), 1);
  EXPECT_EQ(TextOf(properties, lower.c_str()), "2");
}

TEST(VRELPropertiesTest, EnumeratesInTheOrderOfTheMap) {
  VRELProperties properties;
  VRELHashMap<VRELString, VRELValue> map(17);
  for (int i = 0; i < 40; ++i) {
    VRELString const key = VRELString(L"key ") + VRELString(L'a' + i);
    properties.Set(key, VRELValue(i));
    map.Put(key, VRELValue(i));
  }
  Pairs expected;
  VRELPair<VRELString, VRELValue> pair;
  while (map.GetNext(pair)) {
    VRELString text;
    pair.value.GetValue(text);
    expected.emplace_back(pair.key.toUtf8(), text.toUtf8());
  }
  ASSERT_EQ(expected.size(), 40U);
  EXPECT_EQ(PairsOf(properties), expected);
  // Each call starts anew, so that any order of calls gives the same.
  VRELString key;
  VRELValue value;
  for (int i : {39, 3, 4, 4, 0}) {
    EXPECT_EQ(properties.Get(i, key, value), VREL_S_OK);
    EXPECT_EQ(key.toUtf8(), expected[static_cast<std::size_t>(i)].first);
  }
}

TEST(VRELPropertiesTest, IndexOutOfRangeLeavesTheTargets) {
  VRELProperties properties;
  properties.Set(L"a=b");
  VRELString key(L"key");
  VRELValue value(5);
  for (int i : {-1, 1, 2, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(properties.Get(i, key, value), VREL_E_FAIL);
    EXPECT_EQ(key.toUtf8(), "key");
    EXPECT_TRUE(value == VRELValue(5));
  }
}

TEST(VRELPropertiesTest, AgreesWithAModel) {
  std::mt19937 random(417);
  VRELProperties properties;
  std::map<std::string, std::string> model;
  for (int step = 0; step < 2000; ++step) {
    // Digits have no case.
    std::string const key = std::to_string(random() % 500);
    std::string const value = std::to_string(random() % 1000);
    EXPECT_EQ(properties.Set(VRELString(key + "=" + value)), VREL_S_OK);
    model[key] = value;
  }
  Pairs pairs = PairsOf(properties);
  std::sort(pairs.begin(), pairs.end());
  EXPECT_EQ(pairs, Pairs(model.begin(), model.end()));
}

TEST(VRELPropertiesTest, ACopySharesThePairsSoFar) {
  VRELProperties properties;
  properties.Set(L"a=b");
  VRELProperties const copy(properties);
  EXPECT_EQ(copy.GetCount(), 1);
  EXPECT_EQ(TextOf(copy, L"a"), "b");
}

TEST(VRELPropertiesTest, SlotsStandInOrderBehindThoseOfTheBase) {
  using KeyGet = VRINResult (VRELProperties::*)(VRELString const&, VRELValue&) const;
  using PairSet = VRINResult (VRELProperties::*)(VRELString const&, VRELValue const&);
  using TextSet = VRINResult (VRELProperties::*)(VRELString const&);
  using IndexGet = VRINResult (VRELProperties::*)(int, VRELString&, VRELValue&) const;
  std::size_t const first = SlotOf(&VRELReferenceCount::GetName) + 1;
  EXPECT_EQ(SlotOf(static_cast<KeyGet>(&VRELProperties::Get)), first);
  EXPECT_EQ(SlotOf(static_cast<PairSet>(&VRELProperties::Set)), first + 1);
  EXPECT_EQ(SlotOf(static_cast<TextSet>(&VRELProperties::Set)), first + 2);
  EXPECT_EQ(SlotOf(&VRELProperties::GetCount), first + 3);
  EXPECT_EQ(SlotOf(static_cast<IndexGet>(&VRELProperties::Get)), first + 4);
}

}  // namespace
