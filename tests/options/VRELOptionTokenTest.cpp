#include "VRELOptionToken.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "TurkishLocale.h"
#include "VRELHashMap.h"
#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELStringConversions.h"

namespace {

// A root that is cleared on destruction.
struct Root {
  ~Root() { node.RemoveAll(); }

  VRELOptionToken node{nullptr};
};

VRELOptionToken* Add(VRELOptionToken& node, wchar_t const* key) {
  VRELOptionToken* child = nullptr;
  EXPECT_EQ(node.AddToken(key, child), VREL_S_OK);
  return child;
}

std::vector<VRELOptionToken*> Children(VRELOptionToken const& node) {
  std::vector<VRELOptionToken*> children;
  EXPECT_EQ(node.InitEnumeration(), VREL_S_OK);
  VRELOptionToken* child = nullptr;
  while (node.GetNextChild(child).IsSuccess()) children.push_back(child);
  EXPECT_EQ(child, nullptr);
  return children;
}

TEST(VRELOptionTokenTest, GetTokenFindsAddedToken) {
  Root root;
  VRELOptionToken* const step = Add(root.node, L"Step");
  VRELOptionToken* const wildcard = Add(root.node, L"*");
  ASSERT_NE(step, nullptr);
  ASSERT_NE(wildcard, nullptr);
  EXPECT_NE(step, wildcard);
  EXPECT_EQ(Add(root.node, L"sTEP"), step);
  EXPECT_EQ(Add(root.node, L"*"), wildcard);

  VRELOptionToken* found = &root.node;
  EXPECT_EQ(root.node.GetToken(L"STEP", found), VREL_S_OK);
  EXPECT_EQ(found, step);
  EXPECT_EQ(root.node.GetToken(L"*", found), VREL_S_OK);
  EXPECT_EQ(found, wildcard);
  EXPECT_EQ(root.node.GetToken(L"Iges", found), VREL_E_FAIL);
  EXPECT_EQ(found, nullptr);
  found = &root.node;
  EXPECT_EQ(step->GetToken(L"*", found), VREL_E_FAIL);
  EXPECT_EQ(found, nullptr);
}

TEST(VRELOptionTokenTest, FindOrAddAcceptsViews) {
  Root root;
  std::u16string_view const name = u"Step.*.Step..X";
  std::u16string_view const step = name.substr(0, 4);
  std::u16string_view const wildcard = name.substr(5, 1);
  std::u16string_view const empty = name.substr(12, 0);
  EXPECT_EQ(root.node.Find(step), nullptr);
  EXPECT_EQ(root.node.Find(wildcard), nullptr);
  EXPECT_EQ(root.node.FindWildcard(), nullptr);
  VRELOptionToken* const added = root.node.FindOrAdd(step);
  VRELOptionToken* const wild = root.node.FindOrAdd(wildcard);
  ASSERT_NE(added, nullptr);
  ASSERT_NE(wild, nullptr);
  EXPECT_NE(added, wild);
  EXPECT_EQ(root.node.FindOrAdd(name.substr(7, 4)), added);
  EXPECT_EQ(root.node.FindOrAdd(wildcard), wild);
  EXPECT_EQ(root.node.FindWildcard(), wild);
  EXPECT_EQ(root.node.Find(wildcard), wild);
  EXPECT_EQ(root.node.Find(u"sTEP"), added);
  EXPECT_EQ(root.node.Find(u"Ste"), nullptr);
  EXPECT_EQ(root.node.Find(empty), nullptr);
  EXPECT_EQ(root.node.FindOrAdd(empty), nullptr);
  EXPECT_EQ(Children(root.node), (std::vector<VRELOptionToken*>{added, wild}));
  VRELOptionToken* parent = nullptr;
  EXPECT_EQ(added->GetParent(parent), VREL_S_OK);
  EXPECT_EQ(parent, &root.node);
  for (wchar_t const* key : {L"Stra\u00DFe", L"\u00D6l", L"HealBodyPostProcess|XIges", L"\U0001F529"}) {
    VRELString const text(key);
    EXPECT_EQ(root.node.Find(text.view()), nullptr);
    EXPECT_EQ(root.node.FindOrAdd(text.view()), Add(root.node, key));
    EXPECT_EQ(root.node.Find(text.view()), Add(root.node, key));
  }
  EXPECT_TRUE(VRELOptionToken::IsWildcard(VREL_OPTION_WILDCARD.view()));
  for (std::u16string_view const key : {u"", u"**", u"?", u"*a"}) EXPECT_FALSE(VRELOptionToken::IsWildcard(key));
}

TEST(VRELOptionTokenTest, EmptyKeyFails) {
  Root root;
  VRELOptionToken* found = &root.node;
  EXPECT_EQ(root.node.GetToken(L"", found), VREL_E_FAIL);
  EXPECT_EQ(found, nullptr);
  found = &root.node;
  EXPECT_EQ(root.node.AddToken(L"", found), VREL_E_FAIL);
  EXPECT_EQ(found, nullptr);
  EXPECT_TRUE(Children(root.node).empty());
}

TEST(VRELOptionTokenTest, KeysAreNotSplit) {
  Root root;
  std::vector<VRELOptionToken*> const added = {Add(root.node, L"true/Free"), Add(root.node, L"**"),
                                               Add(root.node, L"HealBodyPostProcess|XIges"), Add(root.node, L"!"),
                                               Add(root.node, L"a.b")};
  EXPECT_EQ(Children(root.node).size(), added.size());
}

TEST(VRELOptionTokenTest, GetParent) {
  Root root;
  VRELOptionToken* parent = &root.node;
  EXPECT_EQ(root.node.GetParent(parent), VREL_E_FAIL);
  EXPECT_EQ(parent, nullptr);
  for (wchar_t const* key : {L"Step", L"*"}) {
    EXPECT_EQ(Add(root.node, key)->GetParent(parent), VREL_S_OK);
    EXPECT_EQ(parent, &root.node);
  }
}

TEST(VRELOptionTokenTest, SetOptionReplacesOption) {
  Root root;
  auto* const first = new VRELOption(VRELString(L"first"));
  VRELOption* stored = first;
  EXPECT_EQ(root.node.GetOption(stored), VREL_E_OPTION_UNSET);
  EXPECT_EQ(stored, nullptr);
  EXPECT_EQ(root.node.SetOption(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(root.node.GetOption(stored), VREL_E_OPTION_UNSET);

  EXPECT_EQ(root.node.SetOption(first), VREL_S_OK);
  EXPECT_EQ(root.node.GetOption(stored), VREL_S_OK);
  EXPECT_EQ(stored, first);
  EXPECT_EQ(root.node.SetOption(first), VREL_S_OK);
  EXPECT_EQ(root.node.SetOption(nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(root.node.GetOption(stored), VREL_S_OK);
  EXPECT_EQ(stored, first);

  // The node deletes the first option; the leak check would report it.
  auto* const second = new VRELOption(VRELString(L"second"));
  EXPECT_EQ(root.node.SetOption(second), VREL_S_OK);
  EXPECT_EQ(root.node.GetOption(stored), VREL_S_OK);
  EXPECT_EQ(stored, second);
}

TEST(VRELOptionTokenTest, EnumeratesSlotsThenWildcard) {
  Root root;
  EXPECT_TRUE(Children(root.node).empty());
  // Their slots of 17 are 8, 11, 14, 0 and 3.
  VRELOptionToken* const wildcard = Add(root.node, L"*");
  VRELOptionToken* const a = Add(root.node, L"a");
  VRELOptionToken* const b = Add(root.node, L"B");
  VRELOptionToken* const c = Add(root.node, L"C");
  VRELOptionToken* const d = Add(root.node, L"d");
  VRELOptionToken* const e = Add(root.node, L"E");
  std::vector<VRELOptionToken*> const expected = {d, e, a, b, c, wildcard};
  EXPECT_EQ(Children(root.node), expected);
  EXPECT_EQ(Children(root.node), expected);

  VRELOptionToken* child = a;
  EXPECT_EQ(root.node.GetNextChild(child), VREL_E_FAIL);
  EXPECT_EQ(child, nullptr);
  root.node.InitEnumeration();
  EXPECT_EQ(root.node.GetNextChild(child), VREL_S_OK);
  EXPECT_EQ(child, d);
}

TEST(VRELOptionTokenTest, EnumeratesSingleChild) {
  Root root;
  VRELOptionToken* const wildcard = Add(root.node, L"*");
  EXPECT_EQ(Children(root.node), std::vector<VRELOptionToken*>{wildcard});
  Root named;
  VRELOptionToken* const child = Add(named.node, L"a");
  EXPECT_EQ(Children(named.node), std::vector<VRELOptionToken*>{child});
}

// The table of children must be indistinguishable from a VRELHashMap with the two functions of the class.
TEST(VRELOptionTokenTest, AgreesWithHashMap) {
  std::mt19937 random(7);
  char16_t const* const letters[] = {u"a", u"A", u"b", u"B0", u"AU", u"\u00DF", u"ss", u"k", u"\u212A", u"\u0130"};
  for (int round = 0; round < 300; ++round) {
    Root root;
    VRELHashMap<VRELString, VRELOptionToken*> map(17);
    map.SetFunctions(VRELOptionToken::GetHashValue, VRELOptionToken::HashEqualFunction);
    std::size_t const keys = random() % (round % 10 == 0 ? 2000 : 60);
    for (unsigned i = 0; i < keys; ++i) {
      std::u16string key;
      for (unsigned length = random() % 8 + 1; length > 0; --length) key += letters[random() % std::size(letters)];
      VRELString const text{std::u16string_view(key)};
      VRELOptionToken* expected = nullptr;
      bool const isKnown = map.Get(text, expected);
      VRELOptionToken* const token = root.node.FindOrAdd(key);
      ASSERT_NE(token, nullptr);
      if (isKnown) {
        ASSERT_EQ(token, expected);
      } else if (!map.Add(text, token)) {
        // The map has grown, and the key has met an equal one.
        ASSERT_TRUE(map.Get(text, expected));
        ASSERT_EQ(token, expected);
      }
      ASSERT_EQ(root.node.Find(key), token);
    }
    std::vector<VRELOptionToken*> expected;
    map.InitEnumeration();
    VRELPair<VRELString, VRELOptionToken*> pair;
    while (map.GetNext(pair)) expected.push_back(pair.value);
    ASSERT_EQ(Children(root.node), expected);
  }
}

// 16384 keys with one hash code form one probe run.
TEST(VRELOptionTokenTest, CollidingKeysAreFound) {
  Root root;
  std::vector<VRELOptionToken*> tokens;
  auto const keyOf = [](unsigned number) {
    std::u16string key;
    for (int bit = 0; bit < 14; ++bit) key += (number >> bit & 1) != 0 ? u"AU" : u"B0";
    return key;
  };
  for (unsigned i = 0; i < 16384; ++i) tokens.push_back(root.node.FindOrAdd(keyOf(i)));
  EXPECT_EQ(VRELOptionToken::GetHashValue(VRELString(std::u16string_view(keyOf(0)))),
            VRELOptionToken::GetHashValue(VRELString(std::u16string_view(keyOf(16383)))));
  for (unsigned i = 0; i < 16384; ++i) {
    std::u16string lower = keyOf(i);
    for (char16_t& unit : lower) unit = unit == u'A' ? u'a' : unit;
    ASSERT_EQ(root.node.Find(lower), tokens[i]);
  }
  EXPECT_EQ(root.node.Find(keyOf(5) + u"B0"), nullptr);
  EXPECT_EQ(std::set<VRELOptionToken*>(tokens.begin(), tokens.end()).size(), 16384U);
  EXPECT_EQ(Children(root.node).size(), 16384U);
}

TEST(VRELOptionTokenTest, EnumerationContinuesAfterSecondChild) {
  // Slots of 17: a has 11, d has 3, B has 14.
  for (bool const isPassed : {false, true}) {
    Root root;
    VRELOptionToken* const a = Add(root.node, L"a");
    VRELOptionToken* child = nullptr;
    if (isPassed) {
      EXPECT_EQ(root.node.GetNextChild(child), VREL_S_OK);
    }
    VRELOptionToken* const d = Add(root.node, L"d");
    VRELOptionToken* const b = Add(root.node, L"B");
    std::vector<VRELOptionToken*> rest;
    while (root.node.GetNextChild(child).IsSuccess()) rest.push_back(child);
    EXPECT_EQ(rest, isPassed ? (std::vector<VRELOptionToken*>{b}) : (std::vector<VRELOptionToken*>{d, a, b}));
  }
}

TEST(VRELOptionTokenTest, KeyEndsAtFirstZero) {
  Root root;
  std::u16string_view const key(u"ab\0cd", 5);
  VRELOptionToken* const token = root.node.FindOrAdd(key);
  ASSERT_NE(token, nullptr);
  EXPECT_EQ(root.node.Find(u"ab"), token);
  EXPECT_EQ(root.node.FindOrAdd(key), token);
  EXPECT_EQ(root.node.FindOrAdd(key.substr(2)), nullptr);
}

TEST(VRELOptionTokenTest, RemoveAllDeletesDescendants) {
  VRELOptionToken root(nullptr);
  for (wchar_t const* key : {L"a", L"b", L"*"}) {
    VRELOptionToken* const child = Add(root, key);
    child->SetOption(new VRELOption);
    Add(*child, L"c")->SetOption(new VRELOption);
    Add(*child, L"*")->SetOption(new VRELOption);
  }
  root.SetOption(new VRELOption);
  EXPECT_EQ(root.RemoveAll(), VREL_S_OK);
  VRELOption* option = nullptr;
  EXPECT_EQ(root.GetOption(option), VREL_E_OPTION_UNSET);
  VRELOptionToken* child = nullptr;
  for (wchar_t const* key : {L"a", L"b", L"*"}) EXPECT_EQ(root.GetToken(key, child), VREL_E_FAIL);
  EXPECT_EQ(root.GetNextChild(child), VREL_E_FAIL);
  // The root can be used again.
  VRELOptionToken* const again = Add(root, L"b");
  EXPECT_EQ(Children(root), std::vector<VRELOptionToken*>{again});
  EXPECT_EQ(root.RemoveAll(), VREL_S_OK);
}

// Two keys that are equal and hash differently can meet when the table grows, which then drops one of them.
TEST(VRELOptionTokenTest, RemoveAllDeletesDroppedChildren) {
  std::mt19937 random(1);
  std::size_t dropped = 0;
  for (int round = 0; round < 500; ++round) {
    Root root;
    std::set<VRELOptionToken*> made;
    for (int i = 0; i < 7; ++i) {
      std::u16string const number = VRELStringFromInteger(static_cast<int>(random() % 1000)).toUtf16();
      for (std::u16string const& word : {u"x\u00DF" + number, u"xSS" + number}) {
        VRELOptionToken* const child = root.node.FindOrAdd(word);
        ASSERT_EQ(root.node.Find(word), child);
        if (made.insert(child).second) child->SetOption(new VRELOption);
      }
    }
    dropped += made.size() - Children(root.node).size();
  }
  EXPECT_GT(dropped, 0U);
}

// The first numbered word whose slot of 34 is `slot`.
std::u16string WordOfSlot(std::u16string const& word, unsigned int slot) {
  for (int number = 0;; ++number) {
    std::u16string const numbered = word + VRELStringFromInteger(number).toUtf16();
    if (VRELOptionToken::GetHashValue(VRELString(std::u16string_view(numbered))) % 34 == slot) return numbered;
  }
}

// The table can also refuse the new key; the child of the equal key is then found.
TEST(VRELOptionTokenTest, EqualKeyAfterRehashIsFound) {
  std::u16string mine;
  std::u16string equal;
  for (int number = 0; mine.empty(); ++number) {
    std::u16string const tail = VRELStringFromInteger(number).toUtf16();
    equal = WordOfSlot(u"x\u00DF" + tail, 16);
    std::u16string const other = u"xSS" + equal.substr(2);
    if (VRELOptionToken::GetHashValue(VRELString(std::u16string_view(other))) % 34 == 17) mine = other;
  }
  Root root;
  // With 17 slots, the first key takes the last slot, and the second, with the same hash slot, wraps to the first slot.
  VRELOptionToken* const first = root.node.FindOrAdd(equal);
  ASSERT_NE(root.node.FindOrAdd(WordOfSlot(u"y", 16)), nullptr);
  for (unsigned int slot = 3; slot < 13; ++slot) ASSERT_NE(root.node.FindOrAdd(WordOfSlot(u"z", slot)), nullptr);
  ASSERT_EQ(root.node.Find(mine), nullptr);
  // With 34 slots they are neighbours, in reverse order.
  VRELOptionToken* const child = root.node.FindOrAdd(mine);
  EXPECT_EQ(child, first);
  EXPECT_EQ(root.node.Find(mine), child);
  EXPECT_EQ(Children(root.node).size(), 12U);
}

TEST(VRELOptionTokenTest, RemoveAllKeepsSiblings) {
  Root root;
  VRELOptionToken* const a = Add(root.node, L"a");
  VRELOptionToken* const b = Add(root.node, L"b");
  Add(*a, L"x");
  Add(*b, L"y");
  EXPECT_EQ(a->RemoveAll(), VREL_S_OK);
  EXPECT_TRUE(Children(*a).empty());
  EXPECT_EQ(Children(*b).size(), 1U);
  EXPECT_EQ(Children(root.node).size(), 2U);
}

TEST(VRELOptionTokenTest, DestructorKeepsChildren) {
  VRELOption option(VRELString(L"mine"));
  VRELOptionToken* named = nullptr;
  VRELOptionToken* wildcard = nullptr;
  {
    VRELOptionToken node(nullptr);
    named = Add(node, L"a");
    wildcard = Add(node, L"*");
    node.SetOption(&option);
  }
  EXPECT_EQ(option.SetValue(7), VREL_S_OK);
  Add(*named, L"b");
  EXPECT_EQ(Children(*named).size(), 1U);
  EXPECT_TRUE(Children(*wildcard).empty());
  named->RemoveAll();
  delete named;
  delete wildcard;
}

TEST(VRELOptionTokenTest, HashEqualsHashOfUpperCase) {
  // 65 * 37, for the letter and the terminator.
  EXPECT_EQ(VRELOptionToken::GetHashValue(L"A"), 2405U);
  EXPECT_EQ(VRELOptionToken::GetHashValue(L"a"), 2405U);
  EXPECT_EQ(VRELOptionToken::GetHashValue(L"-"), 45U * 37U);
  EXPECT_EQ(VRELOptionToken::GetHashValue(L"ab"), (65U * 37U + 66U) * 37U);
  for (std::size_t length : {0U, 1U, 7U, 31U, 32U, 62U, 63U, 64U, 65U, 300U}) {
    VRELString const text(std::string(length, 'q') + "R");
    EXPECT_EQ(VRELOptionToken::GetHashValue(text),
              static_cast<unsigned int>(VRELStringConvertToUpperCase(text).hashCode()));
  }
  for (wchar_t const* key : {L"", L"ConvertAttributes", L"HealBodyPostProcess|XIges", L"Schraube \u00F6\u00DF",
                             L"\u0131i\u0130", L"\uFFFD\uFF41", L"\U0001F529", L"a\U00010428"}) {
    EXPECT_EQ(VRELOptionToken::GetHashValue(key),
              static_cast<unsigned int>(VRELStringConvertToUpperCase(VRELString(key)).hashCode()))
        << VRELString(key);
  }
  std::u16string lone = u"ab";
  lone += static_cast<char16_t>(0xD800);
  VRELString const broken{std::u16string_view(lone)};
  EXPECT_EQ(VRELOptionToken::GetHashValue(broken),
            static_cast<unsigned int>(VRELStringConvertToUpperCase(broken).hashCode()));
}

TEST(VRELOptionTokenTest, HashFollowsLocale) {
  ChildResult const child = RunInTurkishLocale([] {
    // 304 * 37: the capital of "i" has a dot there.
    return VRELOptionToken::GetHashValue(L"i") == 11248U && VRELOptionToken::GetHashValue(L"I") == 73U * 37U ? 0 : 1;
  });
  if (child.exitStatus == noTurkishLocale) GTEST_SKIP() << "no locale";
  EXPECT_EQ(child.exitStatus, 0);
}

TEST(VRELOptionTokenTest, EqualityIgnoresCase) {
  EXPECT_TRUE(VRELOptionToken::HashEqualFunction(L"Step", L"sTEP"));
  EXPECT_TRUE(VRELOptionToken::HashEqualFunction(L"", L""));
  EXPECT_TRUE(VRELOptionToken::HashEqualFunction(L"\u00D6l", L"\u00F6L"));
  EXPECT_FALSE(VRELOptionToken::HashEqualFunction(L"Step", L"Steps"));
  EXPECT_FALSE(VRELOptionToken::HashEqualFunction(L"*", L"Step"));
}

}  // namespace
