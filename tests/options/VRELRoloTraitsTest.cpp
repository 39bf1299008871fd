#include "VRELRoloTraits.h"

#include <gtest/gtest.h>

#include <string>

#include "Gk_Nest.h"
#include "Gk_ROString.h"

namespace {

// Returns the path of a folder, searched from the root.
VRELRoloNode* Child(VRELRoloNode& parent, char const* name) {
  for (VRELRoloNode* child : parent.getChildren()) {
    if (child->getValue() == name) return child;
  }
  return nullptr;
}

TEST(VRELRoloTraitsTest, FetchLeavesRestOfPath) {
  VRELRoloNode& root = Gk_Nest::fetchRoot();
  Gk_ROString made("VRELRoloTraitsTest/a/b/name");
  VRELRoloNode* const b = VRELRoloTraits::fetch(&made, true, true);
  EXPECT_EQ(made.text(), "name");
  VRELRoloNode* const top = Child(root, "VRELRoloTraitsTest");
  ASSERT_NE(top, nullptr);
  VRELRoloNode* const a = Child(*top, "a");
  ASSERT_NE(a, nullptr);
  ASSERT_EQ(Child(*a, "b"), b);
  struct {
    char const* path;
    bool leaf;
    VRELRoloNode* folder;
    char const* left;
  } const rows[] = {
      {"VRELRoloTraitsTest/a/b/name", true, b, "name"},
      {"/VRELRoloTraitsTest/a/b/name", true, b, "name"},
      {"VRELRoloTraitsTest", true, top, ""},
      {"VRELRoloTraitsTest/a", true, top, "a"},
      {"VRELRoloTraitsTest/a", false, a, ""},
      {"VRELRoloTraitsTest/a/", true, a, ""},
      {"VRELRoloTraitsTest/x/name", true, top, "x/name"},
      {"unknown/name", true, &root, "unknown/name"},
      {"/unknown/name", true, &root, "unknown/name"},
      {"", true, &root, ""},
      {"/", true, &root, ""},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.path) + (row.leaf ? " leaf" : ""));
    Gk_ROString path(row.path);
    EXPECT_EQ(VRELRoloTraits::fetch(&path, false, row.leaf), row.folder);
    EXPECT_EQ(path.text(), row.left);
  }
  EXPECT_EQ(VRELRoloTraits::fetch(nullptr, false, true), &root);
  EXPECT_EQ(VRELRoloTraits::fetch(nullptr, true, true), &root);
  EXPECT_EQ(Child(root, "unknown"), nullptr);
}

TEST(VRELRoloTraitsTest, FetchCreatesFolders) {
  Gk_ROString path("/VRELRoloTraitsTest.create/a/name");
  VRELRoloNode* const a = VRELRoloTraits::fetch(&path, true, true);
  EXPECT_TRUE(a->getValue() == "a");
  EXPECT_EQ(path.text(), "name");
  Gk_ROString again("VRELRoloTraitsTest.create/a/other");
  EXPECT_EQ(VRELRoloTraits::fetch(&again, true, true), a);
  Gk_ROString further("VRELRoloTraitsTest.create/a/b/c");
  VRELRoloNode* const c = VRELRoloTraits::fetch(&further, true, false);
  EXPECT_TRUE(c->getValue() == "c");
  EXPECT_EQ(further.text(), "");
  // A name without a folder is in the root.
  Gk_ROString plain("VRELRoloTraitsTest.plain");
  EXPECT_EQ(VRELRoloTraits::fetch(&plain, true, true), &Gk_Nest::fetchRoot());
  EXPECT_EQ(plain.text(), "VRELRoloTraitsTest.plain");
}

}  // namespace
