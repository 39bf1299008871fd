#include "VRELSelectionSet.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <random>
#include <set>
#include <type_traits>
#include <vector>

namespace {

std::vector<void*> MembersOf(VRELSelectionSet const& set) {
  std::vector<void*> members;
  void* member = nullptr;
  for (int i = 0; set.GetMemberAtIndex(i, member); ++i) members.push_back(member);
  return members;
}

// Addresses that are never dereferenced.
void* Entity(std::size_t number) {
  static char entities[4096];
  return entities + number;
}

TEST(VRELSelectionSetTest, HasVirtualDestructor) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELSelectionSet>);
}

TEST(VRELSelectionSetTest, ConstructorSetsNameAndFlag) {
  VRELSelectionSet const set(L"Fasteners", true);
  EXPECT_EQ(set.GetName().toUtf8(), "Fasteners");
  EXPECT_TRUE(set.IsCurrent());
  EXPECT_EQ(set.SelectionSetLength(), 0);
  EXPECT_TRUE(MembersOf(set).empty());
  EXPECT_FALSE(VRELSelectionSet(L"", false).IsCurrent());
  EXPECT_EQ(VRELSelectionSet(L"", false).GetName().length(), 0);
}

TEST(VRELSelectionSetTest, AddMember) {
  VRELSelectionSet set(L"s", false);
  EXPECT_EQ(set.AddMember(Entity(1)), VREL_S_OK);
  EXPECT_EQ(set.AddMember(Entity(2)), VREL_S_OK);
  EXPECT_EQ(set.SelectionSetLength(), 2);
  EXPECT_TRUE(set.IsMember(Entity(1)));
  EXPECT_TRUE(set.IsMember(Entity(2)));
  EXPECT_FALSE(set.IsMember(Entity(3)));
}

TEST(VRELSelectionSetTest, AddMemberFailsForNull) {
  VRELSelectionSet set(L"s", false);
  set.AddMember(Entity(1));
  EXPECT_EQ(set.AddMember(nullptr), 0x1000001);
  EXPECT_EQ(set.SelectionSetLength(), 1);
  EXPECT_FALSE(set.IsMember(nullptr));
}

TEST(VRELSelectionSetTest, AddMemberTwice) {
  VRELSelectionSet set(L"s", false);
  EXPECT_EQ(set.AddMember(Entity(1)), VREL_S_OK);
  EXPECT_EQ(set.AddMember(Entity(1)), VREL_S_OK);
  EXPECT_EQ(set.SelectionSetLength(), 1);
}

TEST(VRELSelectionSetTest, IndexOutOfRangeFails) {
  VRELSelectionSet set(L"s", false);
  set.AddMember(Entity(1));
  void* member = Entity(9);
  EXPECT_FALSE(set.GetMemberAtIndex(1, member));
  EXPECT_FALSE(set.GetMemberAtIndex(std::numeric_limits<int>::max(), member));
  EXPECT_EQ(member, Entity(9));
}

TEST(VRELSelectionSetTest, NegativeIndexIsFirst) {
  VRELSelectionSet set(L"s", false);
  for (std::size_t i = 0; i < 5; ++i) set.AddMember(Entity(i));
  void* first = nullptr;
  ASSERT_TRUE(set.GetMemberAtIndex(0, first));
  for (int index : {-1, -7, std::numeric_limits<int>::min()}) {
    void* member = nullptr;
    EXPECT_TRUE(set.GetMemberAtIndex(index, member));
    EXPECT_EQ(member, first);
  }
}

TEST(VRELSelectionSetTest, NegativeIndexOfEmptyFails) {
  VRELSelectionSet const set(L"s", false);
  void* member = Entity(9);
  EXPECT_FALSE(set.GetMemberAtIndex(-1, member));
  EXPECT_FALSE(set.GetMemberAtIndex(0, member));
  EXPECT_EQ(member, Entity(9));
}

TEST(VRELSelectionSetTest, MembersInOrderOf17Slots) {
  VRELSelectionSet set(L"s", false);
  VRELHashList<void*> list(17);
  for (std::size_t i = 0; i < 60; ++i) {
    set.AddMember(Entity(8 * i));
    list.Add(Entity(8 * i));
    std::vector<void*> listed;
    void* element = nullptr;
    list.InitEnumeration();
    while (list.GetNext(element)) listed.push_back(element);
    ASSERT_EQ(MembersOf(set), listed);
  }
}

TEST(VRELSelectionSetTest, EachIndexRestartsEnumeration) {
  VRELSelectionSet set(L"s", false);
  for (std::size_t i = 0; i < 5; ++i) set.AddMember(Entity(i));
  std::vector<void*> const members = MembersOf(set);
  for (int index : {3, 0, 4, 4, 1}) {
    void* member = nullptr;
    EXPECT_TRUE(set.GetMemberAtIndex(index, member));
    EXPECT_EQ(member, members[static_cast<std::size_t>(index)]);
  }
}

TEST(VRELSelectionSetTest, CopyIsDeep) {
  VRELSelectionSet source(L"source", true);
  source.AddMember(Entity(1));
  source.AddMember(Entity(2));
  VRELSelectionSet copy(source);
  VRELSelectionSet assigned(L"other", false);
  assigned.AddMember(Entity(3));
  EXPECT_EQ(&(assigned = source), &assigned);
  for (VRELSelectionSet* each : {&copy, &assigned}) {
    EXPECT_EQ(each->GetName().toUtf8(), "source");
    EXPECT_TRUE(each->IsCurrent());
    EXPECT_EQ(MembersOf(*each), MembersOf(source));
    each->AddMember(Entity(4));
    EXPECT_EQ(each->SelectionSetLength(), 3);
    EXPECT_FALSE(source.IsMember(Entity(4)));
  }
  source.AddMember(Entity(5));
  EXPECT_FALSE(copy.IsMember(Entity(5)));
  EXPECT_FALSE(assigned.IsMember(Entity(5)));
  EXPECT_EQ(source.SelectionSetLength(), 3);
}

TEST(VRELSelectionSetTest, CopyOutlivesSource) {
  auto* const source = new VRELSelectionSet(L"source", true);
  source->AddMember(Entity(1));
  VRELSelectionSet const copy(*source);
  delete source;
  EXPECT_EQ(MembersOf(copy), std::vector<void*>{Entity(1)});
  EXPECT_EQ(copy.GetName().toUtf8(), "source");
}

TEST(VRELSelectionSetTest, SelfAssignment) {
  VRELSelectionSet set(L"s", true);
  set.AddMember(Entity(1));
  VRELSelectionSet const& same = set;
  set = same;
  EXPECT_EQ(set.GetName().toUtf8(), "s");
  EXPECT_TRUE(set.IsCurrent());
  EXPECT_EQ(MembersOf(set), std::vector<void*>{Entity(1)});
}

TEST(VRELSelectionSetTest, EqualsModel) {
  std::mt19937 random(1002);
  VRELSelectionSet set(L"s", false);
  std::set<void*> model;
  for (int step = 0; step < 4000; ++step) {
    void* const entity = random() % 50 == 0 ? nullptr : Entity(random() % 1024);
    EXPECT_EQ(set.IsMember(entity), model.count(entity) == 1);
    EXPECT_EQ(set.AddMember(entity), entity == nullptr ? VREL_E_FAIL : VREL_S_OK);
    if (entity != nullptr) model.insert(entity);
    ASSERT_EQ(set.SelectionSetLength(), static_cast<int>(model.size()));
    if (step % 500 != 0) continue;
    std::vector<void*> const members = MembersOf(set);
    ASSERT_EQ(members.size(), model.size());
    ASSERT_EQ(std::set<void*>(members.begin(), members.end()), model);
    VRELSelectionSet const copy(set);
    ASSERT_EQ(MembersOf(copy), members);
    if (random() % 2 == 0) set = copy;
  }
}

}  // namespace
