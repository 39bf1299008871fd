#include "VRELProperties.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <ctime>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "Gk_Source.h"
#include "LocaleProcess.h"
#include "StreamText.h"
#include "TurkishLocale.h"
#include "VRELPair.h"
#include "VRELStreamFormatter.h"
#include "VRELStringConversions.h"
#include "VRELStringInputStream.h"
#include "VRELStringOutputStream.h"
#include "VirtualSlot.h"

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

std::string ValueOf(VRELProperties const& properties, VRELString const& key) {
  VRELValue value(VRELString(L"untouched"));
  VRELString text(L"no text");
  VRINResult const result = properties.Get(key, value);
  value.GetValue(text);
  EXPECT_EQ(result == VREL_S_OK, text.toUtf8() != "untouched");
  return text.toUtf8();
}

// Returns the pairs in enumeration order.
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

std::string Written(VRELProperties& properties) {
  return TextOf([&](VRELOutputStream* stream) {
    VRELStreamFormatter formatter(stream);
    EXPECT_EQ(&(formatter << properties), &formatter);
  });
}

// Reads the string with these initial delimiters.
void Read(std::string const& text, VRELProperties& properties, char const* delimiters = "\r\n") {
  VRELStringInputStream stream(Gk_String(text.c_str(), static_cast<int>(text.size()) + 1));
  Gk_Source source(&stream);
  source.setWhiteSpace(delimiters);
  EXPECT_EQ(&(source >> properties), &source);
  EXPECT_TRUE(source.isEmpty());
}

// Returns the pairs that are read, sorted.
Pairs PairsIn(std::string const& text, char const* delimiters = "\r\n") {
  VRELProperties properties;
  Read(text, properties, delimiters);
  Pairs pairs = PairsOf(properties);
  std::sort(pairs.begin(), pairs.end());
  return pairs;
}

TEST(VRELPropertiesTest, StartsEmpty) {
  VRELProperties const properties;
  EXPECT_EQ(properties.GetCount(), 0);
  EXPECT_EQ(properties.GetReferenceCount(), 0U);
  EXPECT_EQ(ValueOf(properties, L"key"), "untouched");
}

TEST(VRELPropertiesTest, HasOneField) {
  struct Fields : VRELReferenceCount {
    VRELHashMap<VRELString, VRELValue> values{17};
  };
  EXPECT_EQ(sizeof(VRELProperties), sizeof(Fields));
}

TEST(VRELPropertiesTest, ValuesOfEveryKind) {
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

TEST(VRELPropertiesTest, SetReplacesValueOfKey) {
  VRELProperties properties;
  properties.Set(L"a", VRELValue(1));
  EXPECT_EQ(properties.Set(L"a", VRELValue(VRELString(L"two"))), VREL_S_OK);
  EXPECT_EQ(properties.GetCount(), 1);
  EXPECT_EQ(ValueOf(properties, L"a"), "two");
}

TEST(VRELPropertiesTest, SetParsesPair) {
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
    EXPECT_EQ(ValueOf(properties, row.key), row.value);
    VRELValue value;
    VRELValue::VRELValueType kind = VRELValue::UnknownType;
    properties.Get(row.key, value);
    value.GetValueType(kind);
    EXPECT_EQ(kind, VRELValue::StringType);
  }
}

TEST(VRELPropertiesTest, SetWithoutKeyFails) {
  VRELProperties properties;
  for (wchar_t const* text : {L"", L"=", L"=x", L"==x", L"a", L"a:b"}) {
    EXPECT_EQ(properties.Set(text), VREL_E_FAIL);
  }
  EXPECT_EQ(properties.GetCount(), 0);
}

TEST(VRELPropertiesTest, SetCallsVirtualSet) {
  class FailingProperties : public VRELProperties {
   public:
    using VRELProperties::Set;
    VRINResult Set(VRELString const& key, VRELValue const&) override {
      keys += key.toUtf8();
      return VREL_E_INVALID_ARGUMENT;
    }
    std::string keys;
  };
  FailingProperties properties;
  EXPECT_EQ(properties.VRELProperties::Set(L"a=b"), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(properties.keys, "a");
}

TEST(VRELPropertiesTest, CaseVariantsAreTwoKeys) {
  VRELProperties properties;
  properties.Set(L"abc=1");
  properties.Set(L"ABC=2");
  // With 17 slots, these spellings have different slots.
  ASSERT_NE(VRELString(L"abc").hashCode() % 17, VRELString(L"ABC").hashCode() % 17);
  EXPECT_EQ(properties.GetCount(), 2);
  EXPECT_EQ(ValueOf(properties, L"abc"), "1");
  EXPECT_EQ(ValueOf(properties, L"ABC"), "2");
}

TEST(VRELPropertiesTest, CaseVariantsInOneSlotAreOneKey) {
  // The shortest repetition of one letter whose two spellings share one of 17 slots.
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
  EXPECT_EQ(ValueOf(properties, lower.c_str()), "2");
}

TEST(VRELPropertiesTest, EnumeratesInSlotOrder) {
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
  // Each call restarts, so that the order of calls does not matter.
  VRELString key;
  VRELValue value;
  for (int i : {39, 3, 4, 4, 0}) {
    EXPECT_EQ(properties.Get(i, key, value), VREL_S_OK);
    EXPECT_EQ(key.toUtf8(), expected[static_cast<std::size_t>(i)].first);
  }
}

TEST(VRELPropertiesTest, IndexOutOfRangeFails) {
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

TEST(VRELPropertiesTest, AgreesWithModel) {
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

TEST(VRELPropertiesTest, CopySharesPairs) {
  VRELProperties properties;
  properties.Set(L"a=b");
  VRELProperties const copy(properties);
  EXPECT_EQ(copy.GetCount(), 1);
  EXPECT_EQ(ValueOf(copy, L"a"), "b");
}

TEST(VRELPropertiesTest, VirtualSlots) {
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

TEST(VRELPropertiesTest, OutputIsSorted) {
  VRELProperties properties;
  EXPECT_EQ(Written(properties), "");
  for (wchar_t const* text : {L"pear=1", L"apple=2", L"Zebra=3", L"apples= 4 ", L"app=", L"10=5", L"9=a=b"}) {
    properties.Set(text);
  }
  EXPECT_EQ(Written(properties), "10=5\n9=a=b\nZebra=3\napp=\napple=2\napples= 4 \npear=1\n");
}

TEST(VRELPropertiesTest, OutputIsSortedByCodePoints) {
  VRELProperties properties;
  // In the order of UTF-16 units, the second would be first. Neither has an ASCII form.
  properties.Set(L"\uFF21", VRELValue(1));
  properties.Set(L"\U0001F600", VRELValue(2));
  EXPECT_EQ(Written(properties), "\x1A=1\n\x1A=2\n");
}

TEST(VRELPropertiesTest, OutputByKind) {
  VRELProperties properties;
  properties.Set(L"a", VRELValue(-2.5));
  properties.Set(L"b", VRELValue(-7));
  properties.Set(L"c", VRELValue(true));
  properties.Set(L"d", VRELValue(false));
  properties.Set(L"e", VRELValue(VRELString(L"text")));
  properties.Set(L"f", VRELValue());
  EXPECT_EQ(Written(properties), "a=-2.500000\nb=-7\nc=1\nd=0\ne=text\nf=\n");
}

TEST(VRELPropertiesTest, OutputSkipsEmptyKey) {
  VRELProperties properties;
  properties.Set(VRELString(), VRELValue(1));
  properties.Set(L"a=b");
  EXPECT_EQ(Written(properties), "a=b\n");
}

TEST(VRELPropertiesTest, OutputUsesEndline) {
  class Stop : public VRELStreamFormatter::VRELStreamFormatterObject {
   public:
    Stop() : VRELStreamFormatterObject(" | ") {}
  };
  VRELProperties properties;
  properties.Set(L"a=1");
  properties.Set(L"b", VRELValue(2.0));
  EXPECT_EQ(TextOf([&](VRELOutputStream* stream) {
              VRELStreamFormatter formatter(stream);
              formatter.endline() = VRELStreamFormatter::VRELStreamFormatterObjectHandle(new Stop);
              formatter.setDoubleFormat("%.1f", false, 0);
              formatter << properties << "end";
            }),
            "a=1 | b=2.0 | end");
}

TEST(VRELPropertiesTest, OutputWithoutStream) {
  VRELProperties properties;
  properties.Set(L"a=b");
  VRELStreamFormatter formatter(nullptr);
  formatter << properties;
  EXPECT_EQ(properties.GetCount(), 1);
}

TEST(VRELPropertiesTest, OutputCallsVirtualGet) {
  class Counting : public VRELProperties {
   public:
    VRINResult Get(VRELString const& key, VRELValue& value) const override {
      value = VRELValue(VRELString(L"value of ") + key);
      return VREL_S_OK;
    }
    int GetCount() const override { return 5; }
    VRINResult Get(int index, VRELString& key, VRELValue&) const override {
      key = VRELString('e' - index);
      return index == 2 ? VREL_E_FAIL : VREL_S_OK;
    }
  };
  Counting properties;
  EXPECT_EQ(Written(properties), "a=value of a\nb=value of b\nd=value of d\ne=value of e\n");
}

TEST(VRELPropertiesTest, OutputOfUnreadableValue) {
  class UnreadableProperties : public VRELProperties {
   public:
    using VRELProperties::Get;
    VRINResult Get(VRELString const& key, VRELValue& value) const override {
      return key.length() == 2 ? VRINResult(VREL_E_FAIL) : VRELProperties::Get(key, value);
    }
  };
  UnreadableProperties properties;
  for (wchar_t const* text : {L"a=1", L"aa=2", L"b=3"}) properties.Set(text);
  EXPECT_EQ(Written(properties), "a=1\naa=\nb=3\n");
}

TEST(VRELPropertiesTest, OutputIgnoresLocale) {
  ChildResult const child = RunInTurkishLocale([] {
    VRELProperties properties;
    properties.Set(L"a", VRELValue(1.5));
    properties.Set(L"b", VRELValue(2.5));
    if (std::localeconv()->decimal_point != std::string(",")) return 2;
    if (Written(properties) != "a=1.500000\nb=2.500000\n") return 3;
    // The locale is restored.
    return std::localeconv()->decimal_point == std::string(",") ? 0 : 4;
  });
  if (child.exitStatus == noTurkishLocale) GTEST_SKIP() << "localedef cannot make tr_TR.UTF-8 here";
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

TEST(VRELPropertiesTest, ReadsLines) {
  struct Row {
    char const* text;
    Pairs pairs;
  };
  Row const rows[] = {
      {"", {}},
      {"\n\r\n\r", {}},
      {"a=b", {{"a", "b"}}},
      {"a=b\n", {{"a", "b"}}},
      {"\r\n\r\na=b\r\n\r\n\nc=d\r", {{"a", "b"}, {"c", "d"}}},
      {" a = b \n\tc=\t", {{"\tc", "\t"}, {" a ", " b "}}},
      // Without "=", or with several.
      {"a\nb=1\nc=2=3\nd==\n==\n \n", {{"b", "1"}}},
      // An empty value, and an empty key, which Set of a string refuses.
      {"a=\n=b\n", {{"", "b"}, {"a", ""}}},
      {"=\n", {{"", ""}}},
      // The last one wins.
      {"a=1\na=2\n", {{"a", "2"}}},
      {"# a=1\n[b]=2", {{"# a", "1"}, {"[b]", "2"}}},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(PairsIn(row.text), row.pairs);
  }
}

TEST(VRELPropertiesTest, LineEndsAtZeroByte) {
  EXPECT_EQ(PairsIn(std::string("a=b\0=c\nd=e", 11)), (Pairs{{"a", "b"}, {"d", "e"}}));
}

TEST(VRELPropertiesTest, InputSkipsPreviousDelimiters) {
  EXPECT_EQ(PairsIn("  a=1\n  b=2", " "), (Pairs{{"  b", "2"}, {"a", "1"}}));
  // Line ends that were not delimiters before belong to the first line.
  EXPECT_EQ(PairsIn("\na=1\nb=2", ""), (Pairs{{"\na", "1"}, {"b", "2"}}));
  EXPECT_EQ(PairsIn("xxxx", "x"), Pairs());
}

TEST(VRELPropertiesTest, InputSetsLineEndDelimiters) {
  VRELProperties properties;
  VRELStringInputStream stream(Gk_String("a=1"));
  Gk_Source source(&stream);
  source.setWhiteSpace(" ");
  source >> properties;
  EXPECT_TRUE(source.setWhiteSpace("").isSpace('\r'));
  // Nothing is set if nothing is read.
  source.setWhiteSpace(" ");
  source >> properties;
  EXPECT_TRUE(source.setWhiteSpace("").isSpace(' '));
}

TEST(VRELPropertiesTest, InputCallsVirtualSet) {
  class Recording : public VRELProperties {
   public:
    using VRELProperties::Set;
    VRINResult Set(VRELString const& key, VRELValue const& value) override {
      VRELValue::VRELValueType kind = VRELValue::UnknownType;
      value.GetValueType(kind);
      seen += key.toUtf8() + ":" + VRELValue::VRELValueTypeNames[kind] + " ";
      return VREL_E_FAIL;
    }
    std::string seen;
  };
  Recording properties;
  Read("b=1\na=true\nc\n", properties);
  EXPECT_EQ(properties.seen, "b:string a:string ");
}

TEST(VRELPropertiesTest, InputIsInDefaultCodepage) {
  RunTestInLocale("C.UTF-8", [] {
    EXPECT_EQ(PairsIn("\xC3\x96=\xE4\xB8\xAD\n"), (Pairs{{"\xC3\x96", "\xE4\xB8\xAD"}}));
    EXPECT_EQ(PairsIn("a=\xFF\n"), (Pairs{{"a", "\xEF\xBF\xBD"}}));
  });
}

TEST(VRELPropertiesTest, InputEndsAtShortStream) {
  class OverreportingStream : public VRELInputStream {
   public:
    VRELInputStream* duplicate() override { return nullptr; }
    int read(char*, int) override { return 0; }
    long available() const override { return 1; }
  };
  OverreportingStream stream;
  Gk_Source source(&stream);
  VRELProperties properties;
  source >> properties;
  EXPECT_EQ(properties.GetCount(), 0);
  Gk_Source nothing(nullptr);
  nothing >> properties;
  EXPECT_EQ(properties.GetCount(), 0);
}

TEST(VRELPropertiesTest, RoundTrip) {
  std::mt19937 random(2280);
  for (int run = 0; run < 50; ++run) {
    std::map<std::string, std::string> model;
    VRELProperties properties;
    for (std::size_t count = random() % 60; count > 0; --count) {
      std::string const key = std::to_string(random() % 1000);
      std::string const value = std::to_string(random());
      model[key] = value;
      properties.Set(VRELString(key), VRELValue(VRELString(value)));
    }
    std::string expected;
    for (auto const& [key, value] : model) expected += key + "=" + value + "\n";
    EXPECT_EQ(Written(properties), expected);
    EXPECT_EQ(PairsIn(expected), Pairs(model.begin(), model.end()));
  }
}

TEST(VRELPropertiesTest, SetAcceptsEveryKindOfValue) {
  VRELProperties properties;
  EXPECT_EQ(properties.Set(L"a", "narrow"), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"b", L"wide"), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"c", std::string("text")), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"d", std::string_view("view and more", 4)), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"e", 0), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"f", true), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"g", 1.5), VREL_S_OK);
  EXPECT_EQ(properties.Set(L"h", VRELString(L"string")), VREL_S_OK);
  struct {
    wchar_t const* key;
    VRELValue::VRELValueType type;
    char const* text;
  } const rows[] = {{L"a", VRELValue::StringType, "narrow"},   {L"b", VRELValue::StringType, "wide"},
                    {L"c", VRELValue::StringType, "text"},     {L"d", VRELValue::StringType, "view"},
                    {L"e", VRELValue::IntType, "0"},           {L"f", VRELValue::BoolType, "true"},
                    {L"g", VRELValue::DoubleType, "1.500000"}, {L"h", VRELValue::StringType, "string"}};
  for (auto const& row : rows) {
    VRELValue value;
    VRELValue::VRELValueType type = VRELValue::UnknownType;
    VRELString text;
    ASSERT_EQ(properties.Get(row.key, value), VREL_S_OK);
    value.GetValueType(type);
    value.GetValue(text);
    EXPECT_EQ(type, row.type);
    EXPECT_EQ(text.toUtf8(), row.text);
  }
}

// The output of n pairs takes n log n steps, not n squared.
TEST(VRELPropertiesTest, OutputTimeIsNotQuadratic) {
  auto const secondsFor = [](int count) {
    VRELProperties properties;
    for (int i = 0; i < count; ++i) properties.Set(VRELStringFromInteger(i), 1);
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
      VRELStringOutputStream out;
      VRELStreamFormatter formatter(&out);
      std::clock_t const start = std::clock();
      formatter << properties;
      best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return best;
  };
  // Quadratic time would be 64 times as long.
  EXPECT_LE(secondsFor(64000), 32 * secondsFor(8000));
}

}  // namespace
