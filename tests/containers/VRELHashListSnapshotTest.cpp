#include "VRELHashListSnapshot.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

using List = VRELHashList<int>;
using Snapshot = VRELHashListSnapshot<int>;

std::vector<int> Enumerated(List const& list) {
  std::vector<int> all;
  int element = 0;
  list.InitEnumeration();
  while (list.GetNext(element)) all.push_back(element);
  return all;
}

std::vector<int> Elements(Snapshot const& snapshot) {
  std::vector<int> all;
  for (auto const& entry : snapshot) all.push_back(entry.element);
  return all;
}

TEST(VRELHashListSnapshotTest, HasElementsInOrderOfEnumeration) {
  for (int count : {0, 1, 2, 12, 13, 25, 26, 40, 1000}) {
    List list;
    for (int i = 0; i < count; ++i) list.Add(i * 7919);
    EXPECT_EQ(Elements(Snapshot(list)), Enumerated(list)) << count;
    EXPECT_EQ(Elements(Snapshot(list)).size(), static_cast<std::size_t>(count));
  }
}

TEST(VRELHashListSnapshotTest, HasZero) {
  EXPECT_EQ(Elements(Snapshot(List({0}))), std::vector<int>{0});
}

TEST(VRELHashListSnapshotTest, HasNoElementsWithoutSlots) {
  EXPECT_EQ(Elements(Snapshot(List(0))), std::vector<int>());
}

TEST(VRELHashListSnapshotTest, KeepsCursor) {
  List const list({1, 2, 3});
  int element = 0;
  list.InitEnumeration();
  ASSERT_TRUE(list.GetNext(element));
  Snapshot const snapshot(list);
  for (auto const& entry : snapshot) EXPECT_TRUE(snapshot.IsInList(entry));
  EXPECT_TRUE(list.GetNext(element));
  EXPECT_TRUE(list.GetNext(element));
  EXPECT_FALSE(list.GetNext(element));
}

TEST(VRELHashListSnapshotTest, ReportsRemovedElements) {
  List list({1, 2, 3});
  Snapshot const snapshot(list);
  list.Remove(2);
  for (auto const& entry : snapshot) EXPECT_EQ(snapshot.IsInList(entry), entry.element != 2);
  list.Add(2);
  for (auto const& entry : snapshot) EXPECT_TRUE(snapshot.IsInList(entry));
}

// A removal moves the elements of the probe run, and a rehash all elements.
TEST(VRELHashListSnapshotTest, FindsMovedElements) {
  for (int removed = 0; removed < 24; ++removed) {
    List list;
    for (int i = 0; i < 24; ++i) list.Add(i * 7919);
    Snapshot const snapshot(list);
    list.Remove(removed * 7919);
    std::set<int> expected;
    for (int const each : Enumerated(list)) expected.insert(each);
    std::set<int> found;
    for (auto const& entry : snapshot) {
      if (snapshot.IsInList(entry)) found.insert(entry.element);
    }
    EXPECT_EQ(found, expected);
    list.Rehash(1001);
    for (auto const& entry : snapshot) EXPECT_EQ(snapshot.IsInList(entry), entry.element != removed * 7919);
  }
}

// The list has fewer slots than the snapshot afterwards.
TEST(VRELHashListSnapshotTest, ReportsClearedList) {
  List list;
  for (int i = 0; i < 100; ++i) list.Add(i);
  Snapshot const snapshot(list);
  list.Clear();
  for (auto const& entry : snapshot) EXPECT_FALSE(snapshot.IsInList(entry));
  list.Add(99);
  for (auto const& entry : snapshot) EXPECT_EQ(snapshot.IsInList(entry), entry.element == 99);
}

// A vacant slot has a default element.
TEST(VRELHashListSnapshotTest, ZeroIsNotInVacantSlot) {
  List list({0});
  Snapshot const snapshot(list);
  list.Remove(0);
  ASSERT_EQ(snapshot.end() - snapshot.begin(), 1);
  EXPECT_FALSE(snapshot.IsInList(*snapshot.begin()));
}

}  // namespace
