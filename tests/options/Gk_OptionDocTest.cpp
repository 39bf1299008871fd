#include "Gk_OptionDoc.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

#include "Gk_Nest.h"
#include "Gk_Option.h"
#include "RecordingListener.h"
#include "VRELOptions.h"

namespace {

// Returns the names in a store with their values as strings.
std::map<std::string, std::string> Contents(VRELOptions const& store) {
  std::map<std::string, std::string> contents;
  VRELOption* option = nullptr;
  store.InitEnumeration();
  while (store.GetNext(option).IsSuccess()) {
    VRELString name;
    VRELString value;
    option->GetName(name);
    option->GetValue(value);
    contents[name.toUtf8()] = value.toUtf8();
  }
  return contents;
}

using Pairs = std::map<std::string, std::string>;

VRELOption* Find(VRELOptions const& store, wchar_t const* name) {
  VRELOption* option = nullptr;
  store.GetOption(name, option);
  return option;
}

TEST(Gk_OptionDocTest, AddOptionByKind) {
  Gk_Option* const text = Gk_OptionDoc::addOption(L"OptionDoc.kinds/g/text", VRELString(L"x"), "remark");
  Gk_Option* const truth = Gk_OptionDoc::addOption(L"OptionDoc.kinds/g/truth", true, "remark");
  Gk_Option* const number = Gk_OptionDoc::addOption(L"OptionDoc.kinds/g/number", 2.5, nullptr);
  Gk_Option* const integer = Gk_OptionDoc::addOption(L"OptionDoc.kinds/g/integer", 7, nullptr);
  EXPECT_STREQ(text->string(), "x");
  EXPECT_TRUE(truth->on());
  EXPECT_EQ(number->value(), 2.5);
  EXPECT_EQ(integer->count(), 7);
  EXPECT_EQ(Gk_OptionDoc::fetchOption(L"OptionDoc.kinds/g/integer"), integer);
  EXPECT_EQ(Gk_OptionDoc::fetchOption(L"/OptionDoc.kinds/g/text"), text);
}

// Paths around the length up to which no memory is allocated.
TEST(Gk_OptionDocTest, FetchOptionByPathOfAnyLength) {
  for (std::size_t const length : {1U, 200U, 239U, 240U, 241U, 242U, 243U, 244U, 255U, 256U, 257U, 300U, 5000U}) {
    VRELString const path(std::u16string_view(u"OptionDoc.len/" + std::u16string(length, u'n')));
    EXPECT_EQ(Gk_OptionDoc::fetchOption(path), nullptr) << length;
    Gk_Option* const added = Gk_OptionDoc::addOption(path, 1, nullptr);
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(Gk_OptionDoc::fetchOption(path), added) << length;
  }
}

TEST(Gk_OptionDocTest, FetchOptionDistinguishesSimilarNames) {
  wchar_t const* const names[] = {L"OptionDoc.like/ab",  L"OptionDoc.like/abc", L"OptionDoc.like/b",
                                  L"OptionDoc.like/acb", L"OptionDoc.lik/abc",  L"OptionDoc.like2/abc"};
  int value = 0;
  for (wchar_t const* const name : names) Gk_OptionDoc::addOption(name, ++value, nullptr);
  value = 0;
  for (wchar_t const* const name : names) {
    Gk_Option* const option = Gk_OptionDoc::fetchOption(name);
    ASSERT_NE(option, nullptr) << VRELString(name);
    EXPECT_EQ(option->count(), ++value) << VRELString(name);
  }
  EXPECT_EQ(Gk_OptionDoc::fetchOption(L"OptionDoc.like/a"), nullptr);
  EXPECT_EQ(Gk_OptionDoc::fetchOption(L"OptionDoc.like/"), nullptr);
  EXPECT_EQ(Gk_OptionDoc::fetchOption(L"OptionDoc.like/xbc"), nullptr);
}

TEST(Gk_OptionDocTest, SecondAddOptionReplacesValue) {
  Gk_Option* const first = Gk_OptionDoc::addOption(L"OptionDoc.twice/n", 1, nullptr);
  Gk_Option* const second = Gk_OptionDoc::addOption(L"OptionDoc.twice/n", 2, nullptr);
  EXPECT_EQ(first, second);
  EXPECT_EQ(second->count(), 2);
  RecordingListener const listener;
  EXPECT_EQ(Gk_OptionDoc::addOption(L"OptionDoc.twice/n", 2.5, nullptr), first);
  EXPECT_EQ(first->count(), 2);
  EXPECT_EQ(listener.events.size(), 1U);
}

TEST(Gk_OptionDocTest, FetchOptionCreatesNoOption) {
  int const folders = Gk_Nest::fetchRoot().getChildren().size();
  EXPECT_EQ(Gk_OptionDoc::fetchOption(L"OptionDoc.unknown/group/name"), nullptr);
  EXPECT_EQ(Gk_OptionDoc::fetchOption(VRELString()), nullptr);
  EXPECT_EQ(Gk_Nest::fetchRoot().getChildren().size(), folders);
}

TEST(Gk_OptionDocTest, FetchOptionsIsEmpty) {
  Gk_OptionDoc::addOption(L"OptionDoc.full/n", 1, nullptr);
  EXPECT_EQ(Gk_OptionDoc::fetchOptions("OptionDoc.full").size(), 0);
  EXPECT_EQ(Gk_OptionDoc::fetchOptions("OptionDoc.full/").size(), 0);
}

TEST(Gk_OptionDocTest, FetchAllComponentOptions) {
  Gk_OptionDoc::addOption(L"OptionDoc.copy/a", 7, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.copy/b", VRELString(L"text"), nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.copy/group/c", true, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.copy/group/deep/d", 2.5, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.copy/next/e", 1, nullptr);
  // The option has no value.
  ASSERT_NE(Gk_Option::fetch(L"OptionDoc.copy/unset", true), nullptr);

  VRELOptions store;
  Gk_OptionDoc::FetchAllComponentOptions("OptionDoc.copy", store);
  EXPECT_EQ(
      Contents(store),
      (Pairs{{"/a", "7"}, {"/b", "text"}, {"/group/c", "true"}, {"/group/deep/d", "2.500000"}, {"/next/e", "1"}}));
  EXPECT_EQ(store.Size(), 5);
  struct {
    wchar_t const* name;
    VRELValue::VRELValueType kind;
  } const rows[] = {{L"/a", VRELValue::IntType},
                    {L"/b", VRELValue::StringType},
                    {L"/group/c", VRELValue::BoolType},
                    {L"/group/deep/d", VRELValue::DoubleType}};
  for (auto const& row : rows) {
    SCOPED_TRACE(VRELString(row.name).toUtf8());
    VRELOption* const option = Find(store, row.name);
    ASSERT_NE(option, nullptr);
    VRELValue::VRELValueType kind = VRELValue::UnknownType;
    EXPECT_EQ(option->GetValueType(kind), VREL_S_OK);
    EXPECT_EQ(kind, row.kind);
  }
}

TEST(Gk_OptionDocTest, CurrentValueBecomesDefault) {
  Gk_OptionDoc::addOption(L"OptionDoc.default/a", 1, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.default/a", 2, nullptr);
  VRELOptions store;
  Gk_OptionDoc::FetchAllComponentOptions("/OptionDoc.default", store);
  VRELOption* const option = Find(store, L"/a");
  ASSERT_NE(option, nullptr);
  int value = 0;
  EXPECT_EQ(option->GetDefaultValue(value), VREL_S_OK);
  EXPECT_EQ(value, 2);
}

// The store ignores case, so that options and folders of the tree can have one name in it: the first one that
// is copied sets the default, and the last one the value.
TEST(Gk_OptionDocTest, CopiesOptionsBeforeFolders) {
  Gk_OptionDoc::addOption(L"OptionDoc.order/A", 1, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.order/a", 2, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.order/G/x", 3, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.order/g/x", 4, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.order/h/x", 5, nullptr);
  Gk_Option* const own = Gk_Option::fetch(L"OptionDoc.order/own", true);
  own->setValue(Gk_String("h/x"));
  own->set(6);
  VRELOptions store;
  Gk_OptionDoc::FetchAllComponentOptions("OptionDoc.order", store);
  struct {
    wchar_t const* name;
    int first;
    int last;
  } const rows[] = {{L"/a", 1, 2}, {L"/g/x", 3, 4}, {L"/h/x", 6, 5}};
  for (auto const& row : rows) {
    SCOPED_TRACE(VRELString(row.name).toUtf8());
    VRELOption* const option = Find(store, row.name);
    ASSERT_NE(option, nullptr);
    int value = 0;
    EXPECT_EQ(option->GetDefaultValue(value), VREL_S_OK);
    EXPECT_EQ(value, row.first);
    EXPECT_EQ(option->GetValue(value), VREL_S_OK);
    EXPECT_EQ(value, row.last);
  }
}

TEST(Gk_OptionDocTest, DotsSeparateTokens) {
  Gk_OptionDoc::addOption(L"OptionDoc.dots/g/a.b", 3, nullptr);
  VRELOptions store;
  Gk_OptionDoc::FetchAllComponentOptions("OptionDoc.dots", store);
  store.AddOption(L"/g/a.*", 4);
  int value = 0;
  // Two tokens, "/g/a" and "b".
  ASSERT_NE(Find(store, L"/g/a.b"), nullptr);
  EXPECT_EQ(Find(store, L"/g/a.b")->GetValue(value), VREL_S_OK);
  EXPECT_EQ(value, 3);
  EXPECT_EQ(Find(store, L"b"), nullptr);
}

TEST(Gk_OptionDocTest, MissingFolderUsesDeepest) {
  Gk_OptionDoc::addOption(L"OptionDoc.deep/a", 1, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.deep/g/b", 2, nullptr);
  struct {
    char const* path;
    Pairs contents;
  } const rows[] = {
      {"OptionDoc.deep/g/", {{"/b", "2"}}},
      // The part after the last "/" names an item in the folder.
      {"OptionDoc.deep/g", {{"/a", "1"}, {"/g/b", "2"}}},
      {"OptionDoc.deep/x/y", {{"/a", "1"}, {"/g/b", "2"}}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    VRELOptions store;
    Gk_OptionDoc::FetchAllComponentOptions(row.path, store);
    EXPECT_EQ(Contents(store), row.contents);
  }
  VRELOptions all;
  Gk_OptionDoc::FetchAllComponentOptions("OptionDoc.unknown", all);
  EXPECT_EQ(Contents(all)["/OptionDoc.deep/g/b"], "2");
}

TEST(Gk_OptionDocTest, GetAllOptionsPrependsPath) {
  Gk_OptionDoc::addOption(L"OptionDoc.walk/g/a", 1, nullptr);
  Gk_ROString path("OptionDoc.walk/");
  Gk_Nest* const folder = Gk_Nest::fetch(&path, false);
  ASSERT_NE(folder, nullptr);
  folder->getChildren().add(nullptr);
  VRELOptions store;
  VRELString start(L"x/y");
  GetAllOptionsUnderNode(folder, start, store);
  EXPECT_EQ(start.toUtf8(), "x/y/");
  EXPECT_EQ(Contents(store), (Pairs{{"x/y/g/a", "1"}}));
}

TEST(Gk_OptionDocTest, NullNodeAppendsSlash) {
  VRELOptions store;
  VRELString path(L"x");
  GetAllOptionsUnderNode(nullptr, path, store);
  EXPECT_EQ(path.toUtf8(), "x/");
  EXPECT_EQ(store.Size(), 0);
}

TEST(Gk_OptionDocTest, PlainNodesAreTraversed) {
  VRELRoloNode node;
  auto* const nest = new Gk_Nest();
  nest->setValue(Gk_String("n"));
  node.getChildren().add(nest);
  VRELOptions store;
  VRELString path;
  GetAllOptionsUnderNode(&node, path, store);
  EXPECT_EQ(store.Size(), 0);
  EXPECT_EQ(path.toUtf8(), "/");
}

TEST(Gk_OptionDocTest, DeepTreeIsTraversedIteratively) {
  std::string folders = "OptionDoc.verydeep/";
  for (int i = 0; i < 100000; ++i) folders += "d/";
  Gk_OptionDoc::addOption(VRELString((folders + "bottom").c_str()), 5, nullptr);
  VRELOptions store;
  Gk_OptionDoc::FetchAllComponentOptions("OptionDoc.verydeep", store);
  EXPECT_EQ(store.Size(), 1);
  EXPECT_EQ(Contents(store)[folders.substr(18) + "bottom"], "5");
}

TEST(Gk_OptionDocTest, SynchCopiesCommonOptions) {
  Gk_OptionDoc::addOption(L"OptionDoc.source/same", 7, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.source/group/text", VRELString(L"new"), nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.source/only", 1, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.source/kind", 2.5, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.source/last", true, nullptr);
  Gk_Option* const same = Gk_OptionDoc::addOption(L"OptionDoc.target/same", 1, nullptr);
  Gk_Option* const text = Gk_OptionDoc::addOption(L"OptionDoc.target/group/text", VRELString(L"old"), nullptr);
  Gk_Option* const kind = Gk_OptionDoc::addOption(L"OptionDoc.target/kind", 3, nullptr);
  Gk_Option* const last = Gk_OptionDoc::addOption(L"OptionDoc.target/last", false, nullptr);
  Gk_Option* const own = Gk_OptionDoc::addOption(L"OptionDoc.target/own", 4, nullptr);
  Gk_Option* const unset = Gk_Option::fetch(L"OptionDoc.target/only2", true);
  RecordingListener const listener;
  Gk_OptionDoc::SynchOptionsBetweenComponents(L"OptionDoc.source", L"OptionDoc.target");
  EXPECT_EQ(same->count(), 7);
  EXPECT_STREQ(text->string(), "new");
  EXPECT_EQ(kind->count(), 3);
  EXPECT_TRUE(last->on());
  EXPECT_EQ(own->count(), 4);
  EXPECT_EQ(unset->string(), nullptr);
  EXPECT_EQ(Gk_OptionDoc::fetchOption(L"OptionDoc.target/only"), nullptr);
  // The mismatch is reported, once.
  EXPECT_EQ(listener.events.size(), 1U);
}

// Independent of the tokens in the store.
TEST(Gk_OptionDocTest, SynchWithAnyName) {
  struct {
    wchar_t const* source;
    wchar_t const* target;
  } const rows[] = {
      {L"OptionDoc.a/Upper", L"OptionDoc.b/Upper"},
      {L"OptionDoc.a/Group/Two.Tokens", L"OptionDoc.b/Group/Two.Tokens"},
      {L"OptionDoc.a/n.i.n.e.t.o.k.e.n", L"OptionDoc.b/n.i.n.e.t.o.k.e.n"},
      {L"OptionDoc.a/*", L"OptionDoc.b/*"},
      {L"OptionDoc.a/last.*", L"OptionDoc.b/last.*"},
  };
  for (auto const& row : rows) {
    Gk_OptionDoc::addOption(row.source, 1, nullptr);
    Gk_OptionDoc::addOption(row.target, 2, nullptr);
  }
  Gk_OptionDoc::SynchOptionsBetweenComponents(L"OptionDoc.a", L"OptionDoc.b");
  for (auto const& row : rows) {
    EXPECT_EQ(Gk_OptionDoc::fetchOption(row.target)->count(), 1) << VRELString(row.target).toUtf8();
  }
}

TEST(Gk_OptionDocTest, SynchConvertsIntegerToBool) {
  Gk_OptionDoc::addOption(L"OptionDoc.from/truth", 5, nullptr);
  Gk_OptionDoc::addOption(L"OptionDoc.from/number", true, nullptr);
  Gk_Option* const truth = Gk_OptionDoc::addOption(L"OptionDoc.to/truth", false, nullptr);
  Gk_Option* const number = Gk_OptionDoc::addOption(L"OptionDoc.to/number", 7, nullptr);
  Gk_Option* const unset = Gk_Option::fetch(L"OptionDoc.to/unset", true);
  Gk_OptionDoc::addOption(L"OptionDoc.from/unset", 2.5, nullptr);
  Gk_OptionDoc::SynchOptionsBetweenComponents(L"OptionDoc.from", L"OptionDoc.to");
  EXPECT_STREQ(truth->string(), "true");
  EXPECT_EQ(number->count(), 7);
  // An unset option takes the type of the source.
  VRELValue::VRELValueType kind = VRELValue::UnknownType;
  EXPECT_EQ(unset->GetValueType(kind), VREL_S_OK);
  EXPECT_EQ(kind, VRELValue::DoubleType);
  EXPECT_EQ(unset->value(), 2.5);
}

TEST(Gk_OptionDocTest, SynchOfUnknownComponent) {
  Gk_Option* const option = Gk_OptionDoc::addOption(L"OptionDoc.single/a", 1, nullptr);
  Gk_OptionDoc::SynchOptionsBetweenComponents(L"OptionDoc.unknown", L"OptionDoc.single");
  Gk_OptionDoc::SynchOptionsBetweenComponents(L"OptionDoc.single", L"OptionDoc.unknown");
  EXPECT_EQ(option->count(), 1);
  EXPECT_EQ(Gk_OptionDoc::fetchOption(L"OptionDoc.unknown/a"), nullptr);
}

TEST(Gk_OptionDocTest, AddOptionAcceptsStrings) {
  EXPECT_STREQ(Gk_OptionDoc::addOption(L"strings/a", "narrow")->string(), "narrow");
  EXPECT_STREQ(Gk_OptionDoc::addOption(L"strings/b", L"wide")->string(), "wide");
  EXPECT_STREQ(Gk_OptionDoc::addOption(L"strings/c", std::string("text"))->string(), "text");
  EXPECT_STREQ(Gk_OptionDoc::addOption(L"strings/d", std::string_view("view and more", 4))->string(), "view");
  EXPECT_STREQ(Gk_OptionDoc::addOption(L"strings/a", "again", "remark")->string(), "again");
  Gk_Option* const option = Gk_OptionDoc::fetchOption(L"strings/a");
  EXPECT_EQ(option->set("b"), VREL_S_OK);
  EXPECT_STREQ(option->string(), "b");
  EXPECT_EQ(option->set(L"c"), VREL_S_OK);
  EXPECT_STREQ(option->string(), "c");
  EXPECT_EQ(option->set(std::string("d")), VREL_S_OK);
  EXPECT_STREQ(option->string(), "d");
  EXPECT_EQ(option->set(std::string_view("efg", 1)), VREL_S_OK);
  EXPECT_STREQ(option->string(), "e");
}

}  // namespace
