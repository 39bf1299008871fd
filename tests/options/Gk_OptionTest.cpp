#include "Gk_Option.h"

#include <gtest/gtest.h>

#include <string>

#include "RecordingListener.h"

namespace {

// Returns the name as VRELOption reports it; "(unset)" for an unset option.
std::string NameOf(VRELOption const& option) {
  VRELString name(L"(unset)");
  option.GetName(name);
  return name.toUtf8();
}

VRELValue::VRELValueType KindOf(VRELOption const& option) {
  VRELValue::VRELValueType kind = VRELValue::UnknownType;
  option.GetValueType(kind);
  return kind;
}

TEST(Gk_OptionTest, StartsUnset) {
  Gk_Option option;
  EXPECT_EQ(option.getValue().dataLen(), 0);
  EXPECT_EQ(KindOf(option), VRELValue::UnknownType);
  EXPECT_EQ(option.value(), 0.0);
  EXPECT_EQ(option.count(), 0);
  EXPECT_FALSE(option.on());
  EXPECT_EQ(option.string(), nullptr);
  EXPECT_EQ(option.getVRELString().length(), 0);
}

TEST(Gk_OptionTest, HasTwoFields) {
  EXPECT_EQ(sizeof(Gk_Option), sizeof(VRELOption) + 2 * sizeof(Gk_String));
}

TEST(Gk_OptionTest, SetValueSetsName) {
  Gk_Option option;
  option.getValue();
  option.setValue(Gk_String("first"));
  EXPECT_STREQ(option.getValue(), "first");
  // The cached name is kept.
  option.setValue(Gk_String("second"));
  EXPECT_STREQ(option.getValue(), "first");
  option.set(1);
  EXPECT_EQ(NameOf(option), "second");
  EXPECT_STREQ(option.getValue(), "first");
  Gk_Option unterminated;
  unterminated.setValue(Gk_String("ab", 2));
  EXPECT_STREQ(unterminated.getValue(), "ab");
  EXPECT_EQ(NameOf(unterminated), "(unset)");
}

TEST(Gk_OptionTest, SetAndReadByKind) {
  Gk_Option number;
  EXPECT_EQ(number.set(2.5, "a remark"), VREL_S_OK);
  EXPECT_EQ(KindOf(number), VRELValue::DoubleType);
  EXPECT_EQ(number.value(), 2.5);
  EXPECT_EQ(number.count(), 1);
  EXPECT_TRUE(number.on());
  EXPECT_STREQ(number.string(), "2.500000");

  Gk_Option integer;
  EXPECT_EQ(integer.set(7, nullptr), VREL_S_OK);
  EXPECT_EQ(KindOf(integer), VRELValue::IntType);
  EXPECT_EQ(integer.value(), 7.0);
  EXPECT_EQ(integer.count(), 7);
  EXPECT_TRUE(integer.on());
  EXPECT_STREQ(integer.string(), "7");

  Gk_Option truth;
  EXPECT_EQ(truth.set(true, nullptr), VREL_S_OK);
  EXPECT_EQ(KindOf(truth), VRELValue::BoolType);
  EXPECT_EQ(truth.value(), 1.0);
  EXPECT_EQ(truth.count(), 1);
  EXPECT_TRUE(truth.on());
  EXPECT_STREQ(truth.string(), "true");

  Gk_Option text;
  EXPECT_EQ(text.set(VRELString(L"12 mm"), nullptr), VREL_S_OK);
  EXPECT_EQ(KindOf(text), VRELValue::StringType);
  EXPECT_EQ(text.count(), 12);
  EXPECT_STREQ(text.string(), "12 mm");
  EXPECT_EQ(text.getVRELString().toUtf8(), "12 mm");
}

TEST(Gk_OptionTest, SetOfOtherKindFails) {
  Gk_Option option;
  option.setValue(Gk_String("n"));
  option.set(7);
  RecordingListener const listener;
  EXPECT_EQ(option.set(2.5), VREL_E_ERROR);
  EXPECT_EQ(option.count(), 7);
  EXPECT_EQ(listener.events.size(), 1U);
}

TEST(Gk_OptionTest, StringIsCached) {
  Gk_Option option;
  option.set(VRELString(L"one"));
  EXPECT_STREQ(option.string(), "one");
  option.set(VRELString(L"two"));
  EXPECT_STREQ(option.string(), "two");
}

TEST(Gk_OptionTest, CopyHasNameAndValue) {
  Gk_Option option;
  option.setValue(Gk_String("name"));
  option.set(7);
  option.string();
  Gk_Option copy(option);
  EXPECT_EQ(NameOf(copy), "name");
  EXPECT_STREQ(copy.getValue(), "name");
  EXPECT_EQ(copy.count(), 7);
  // The copy has the current name, not the cached one.
  option.setValue(Gk_String("other"));
  Gk_Option renamed(option);
  EXPECT_EQ(NameOf(renamed), "other");
  EXPECT_STREQ(renamed.getValue(), "name");
}

TEST(Gk_OptionTest, AssignmentCopiesCaches) {
  Gk_Option source;
  source.setValue(Gk_String("source"));
  source.getValue();
  source.set(VRELString(L"text"));
  char const* const text = source.string();
  Gk_Option target;
  target.set(VRELString(L"before"));
  Gk_Option& same = (target = source);
  EXPECT_EQ(&same, &target);
  EXPECT_EQ(NameOf(target), "source");
  EXPECT_STREQ(target.getValue(), "source");
  EXPECT_STREQ(target.string(), "text");
  // The strings are not shared.
  EXPECT_NE(target.string(), text);
  target.set(VRELString(L"after"));
  target.string();
  EXPECT_STREQ(text, "text");
  target = *&target;
  EXPECT_STREQ(target.getValue(), "source");
}

TEST(Gk_OptionTest, FetchByPath) {
  EXPECT_EQ(Gk_Option::fetch(L"Gk_OptionTest/group/name", false), nullptr);
  Gk_Option* const option = Gk_Option::fetch(L"Gk_OptionTest/group/name", true);
  ASSERT_NE(option, nullptr);
  EXPECT_STREQ(option->getValue(), "name");
  EXPECT_EQ(Gk_Option::fetch(L"Gk_OptionTest/group/name", false), option);
  EXPECT_EQ(Gk_Option::fetch(L"/Gk_OptionTest/group/name", true), option);
}

}  // namespace
