#include "VRELRoloNode.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

VRELRoloNode* AddTo(VRELRoloNode& parent, char const* segment) {
  auto* const node = new VRELRoloNode();
  node->setValue(segment);
  parent.getChildren().add(node);
  return node;
}

TEST(VRELRoloNodeTest, InitiallyEmpty) {
  VRELRoloNode node;
  EXPECT_EQ(node.getValue().len(), 0);
  EXPECT_EQ(node.getChildren().size(), 0);
}

TEST(VRELRoloNodeTest, SetValueCopies) {
  VRELRoloNode node;
  Gk_String value("bolts");
  node.setValue(value);
  value[0] = 'v';
  EXPECT_TRUE(node.getValue() == "bolts");
}

TEST(VRELRoloNodeTest, MatchesStartOfPath) {
  struct {
    char const* value;
    char const* path;
    bool matches;
    char const* left;
  } const rows[] = {
      {"abc", "abc/def", true, "def"},     {"abc", "abc", true, ""},   {"abc", "abc/", true, ""},
      {"ab", "abc/def", false, "abc/def"}, {"abc", "ab", false, "ab"}, {"abc", "/abc", false, "/abc"},
      {"/", "/abc", true, "abc"},          {"/", "abc", true, "abc"},  {"abc", "", false, ""},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.value) + " " + row.path);
    VRELRoloNode node;
    node.setValue(row.value);
    Gk_ROString path(row.path);
    EXPECT_EQ(node.matchNode(&path), row.matches);
    EXPECT_EQ(path.text(), row.left);
  }
  EXPECT_FALSE(VRELRoloNode().matchNode(nullptr));
}

// a -> { x -> y, z }, b
struct SmallTree {
  VRELRoloNode root;
  VRELRoloNode* a = AddTo(root, "a");
  VRELRoloNode* b = AddTo(root, "b");
  VRELRoloNode* x = AddTo(*a, "x");
  VRELRoloNode* z = AddTo(*a, "z");
  VRELRoloNode* y = AddTo(*x, "y");
};

TEST(VRELRoloNodeTest, FindsDeepestNode) {
  SmallTree tree;
  struct {
    char const* path;
    bool leaf;
    VRELRoloNode* found;
    char const* left;
  } const rows[] = {
      {"", true, &tree.root, ""},
      {"c", true, &tree.root, "c"},
      {"c/a", true, &tree.root, "c/a"},
      {"a", true, tree.a, ""},
      {"a/", true, tree.a, ""},
      {"b", false, tree.b, ""},
      // The rest is the name of a leaf, although a child has that name.
      {"a/x", true, tree.a, "x"},
      {"a/x", false, tree.x, ""},
      {"a/x/", true, tree.x, ""},
      {"a/x/y", true, tree.x, "y"},
      {"a/x/y", false, tree.y, ""},
      {"a/x/y/name", true, tree.y, "name"},
      {"a/q/name", true, tree.a, "q/name"},
      {"a/q", false, tree.a, "q"},
      {"a//x", true, tree.a, "/x"},
      {"b/x/name", true, tree.b, "x/name"},
      {"a/z/name", true, tree.z, "name"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.path) + (row.leaf ? " leaf" : ""));
    Gk_ROString path(row.path);
    EXPECT_EQ(tree.root.findChildNode(&path, row.leaf), row.found);
    EXPECT_EQ(path.text(), row.left);
  }
  EXPECT_EQ(tree.root.findChildNode(nullptr, true), &tree.root);
}

TEST(VRELRoloNodeTest, EmptyRestEndsSearch) {
  VRELRoloNode root;
  VRELRoloNode* const a = AddTo(root, "a");
  AddTo(*a, "");
  for (bool leaf : {false, true}) {
    Gk_ROString path("a");
    EXPECT_EQ(root.findChildNode(&path, leaf), a);
  }
}

TEST(VRELRoloNodeTest, FindsFirstMatchingChild) {
  VRELRoloNode root;
  root.getChildren().add(nullptr);
  VRELRoloNode* const first = AddTo(root, "a");
  AddTo(root, "a");
  Gk_ROString path("a/name");
  EXPECT_EQ(root.findChildNode(&path, true), first);
  EXPECT_EQ(path.text(), "name");
}

// Returns the values of the only child, of its only child, and so on.
std::vector<std::string> OnlyBranch(VRELRoloNode const& root) {
  std::vector<std::string> values;
  for (VRELRoloNode const* node = &root; node->getChildren().size() > 0;) {
    EXPECT_EQ(node->getChildren().size(), 1);
    node = node->getChildren()[0];
    values.emplace_back(node->getValue().text());
  }
  return values;
}

VRELRoloNode* Deepest(VRELRoloNode& root) {
  VRELRoloNode* node = &root;
  while (node->getChildren().size() > 0) node = node->getChildren()[0];
  return node;
}

TEST(VRELRoloNodeTest, CreatesNodeForEachSegment) {
  struct {
    char const* path;
    bool leaf;
    std::vector<std::string> made;
    char const* left;
  } const rows[] = {
      {"", true, {}, ""},
      {"/", true, {}, "/"},
      {"/a/b", true, {}, "/a/b"},
      {"name", true, {}, "name"},
      {"a/name", true, {"a"}, "name"},
      {"a/b/name", true, {"a", "b"}, "name"},
      {"a/b/", true, {"a", "b"}, ""},
      {"a//b/name", true, {"a"}, "/b/name"},
      {"a/b/", false, {"a", "b"}, ""},
      {"a/b", false, {"a", "b"}, ""},
      {"a", false, {"a"}, ""},
      {"a/b//", false, {"a", "b"}, "/"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(std::string(row.path) + (row.leaf ? " leaf" : ""));
    VRELRoloNode root;
    Gk_ROString path(row.path);
    VRELRoloNode* const node = root.createNode(&path, row.leaf);
    EXPECT_EQ(OnlyBranch(root), row.made);
    EXPECT_EQ(node, row.made.empty() ? nullptr : Deepest(root));
    EXPECT_EQ(path.text(), row.left);
  }
  VRELRoloNode root;
  EXPECT_EQ(root.createNode(nullptr, true), nullptr);
  EXPECT_EQ(root.getChildren().size(), 0);
}

TEST(VRELRoloNodeTest, CreatesAfterOtherChildren) {
  SmallTree tree;
  Gk_ROString path("a/new/name");
  VRELRoloNode* const made = tree.root.createNode(&path, true);
  // Existing children are not searched, so that two have the name now.
  ASSERT_EQ(tree.root.getChildren().size(), 3);
  EXPECT_TRUE(tree.root.getChildren()[2]->getValue() == "a");
  EXPECT_EQ(tree.root.getChildren()[2]->getChildren()[0], made);
}

TEST(VRELRoloNodeTest, ValueOfCreatedNodeIsTerminated) {
  VRELRoloNode root;
  Gk_ROString path("bolts/name");
  Gk_String const& value = root.createNode(&path, true)->getValue();
  EXPECT_EQ(value.len(), 6);
  EXPECT_STREQ(value, "bolts");
}

TEST(VRELRoloNodeTest, DerivedClassCreatesOwnNodes) {
  struct Folder : VRELRoloNode {
    explicit Folder(int& theAlive) : alive(theAlive) { ++alive; }
    ~Folder() override { --alive; }
    VRELRoloNode* newNode() const override { return new Folder(alive); }
    int& alive;
  };
  int alive = 0;
  {
    Folder root(alive);
    Gk_ROString path("a/b/c/name");
    EXPECT_NE(dynamic_cast<Folder*>(root.createNode(&path, true)), nullptr);
    root.getChildren().add(nullptr);
    EXPECT_EQ(alive, 4);
  }
  EXPECT_EQ(alive, 0);
}

TEST(VRELRoloNodeTest, DeepTreeIsDeletedIteratively) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "a/";
  VRELRoloNode root;
  Gk_ROString path(text.c_str());
  VRELRoloNode* const made = root.createNode(&path, true);
  EXPECT_EQ(path.text(), "");
  Gk_ROString again(text.c_str());
  EXPECT_EQ(root.findChildNode(&again, true), made);
}

// Finds or creates folders for random paths, as the folder tree does, and compares them with the set of their paths.
TEST(VRELRoloNodeTest, EqualsSetOfPaths) {
  std::mt19937 random(8);
  VRELRoloNode root;
  std::set<std::string> model;
  int made = 0;
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    std::string deepest;
    int const depth = 1 + static_cast<int>(random() % 4);
    for (int i = 0; i < depth; ++i) {
      text += std::string(1, static_cast<char>('a' + random() % 3)) + "/";
      if (model.count(text) != 0) deepest = text;
    }
    Gk_ROString path((text + "name").c_str());
    VRELRoloNode* const node = root.findChildNode(&path, true);
    ASSERT_EQ(path.text(), (text + "name").substr(deepest.size()));
    if (node->createNode(&path, true) != nullptr) ++made;
    ASSERT_EQ(path.text(), "name");
    for (std::size_t i = 2; i <= text.size(); i += 2) model.insert(text.substr(0, i));
  }
  // There are at most 3 + 9 + 27 + 81 folders.
  ASSERT_EQ(model.size(), 120U);
  EXPECT_GE(made, 27);
  VRELDynamicArray<VRELRoloNode*> nodes = root.getChildren().copy();
  for (int i = 0; i < nodes.size(); ++i) nodes.append(nodes[i]->getChildren());
  EXPECT_EQ(nodes.size(), 120);
}

// The model asks each child in turn, by matchNode.
VRELRoloNode* FindByMatchNode(VRELRoloNode& start, Gk_ROString& path, bool leaf) {
  VRELRoloNode* node = &start;
  while (true) {
    VRELRoloNode* next = nullptr;
    for (int i = 0; i < node->getChildren().size() && next == nullptr; ++i) {
      VRELRoloNode* const child = node->getChildren()[i];
      if (child != nullptr && child->matchNode(&path)) next = child;
    }
    if (next == nullptr) return node;
    node = next;
    if (path.text().empty() || (leaf && path.text().find('/') == std::string_view::npos)) return node;
  }
}

// Segments and paths of few letters, "/" included, with and without terminator or with zero bytes.
TEST(VRELRoloNodeTest, FindChildNodeAgreesWithMatchNode) {
  std::mt19937 random(29);
  char const letters[] = {'a', 'b', '/', '\0'};
  auto const text = [&](unsigned longest, unsigned kinds) {
    std::string made;
    for (std::size_t count = random() % (longest + 1); count > 0; --count) made += letters[random() % kinds];
    return made;
  };
  int found = 0;
  for (int round = 0; round < 3000; ++round) {
    VRELRoloNode root;
    std::vector<VRELRoloNode*> nodes = {&root};
    for (int i = 0; i < 12; ++i) {
      std::string const segment = text(3, 4);
      bool const isTerminated = random() % 2 == 0;
      auto* const node = new VRELRoloNode();
      node->setValue(isTerminated ? Gk_String(segment.c_str()) : Gk_String(segment.data(), int(segment.size())));
      nodes[random() % nodes.size()]->getChildren().add(node);
      nodes.push_back(node);
    }
    for (int i = 0; i < 10; ++i) {
      std::string const bytes = text(8, 3);
      bool const leaf = random() % 2 == 0;
      Gk_ROString path(bytes.c_str());
      Gk_ROString expectedPath(bytes.c_str());
      VRELRoloNode* const expected = FindByMatchNode(root, expectedPath, leaf);
      ASSERT_EQ(root.findChildNode(&path, leaf), expected) << bytes;
      ASSERT_EQ(path.text(), expectedPath.text()) << bytes;
      found += expected != &root ? 1 : 0;
    }
  }
  EXPECT_GT(found, 3000);
}

}  // namespace
