#include "VRELTree.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "ChildProcess.h"

namespace {

using Node = VRELTree::VRELTreeNode;
using Iterator = VRELTree::VRELTreeNode::VRELTreeNodeIterator;
using Nodes = std::vector<Node*>;

// An object that is never dereferenced.
void* Object(std::intptr_t number) {
  return reinterpret_cast<void*>(number);
}

std::intptr_t NumberOf(void* object) {
  return reinterpret_cast<std::intptr_t>(object);
}

Nodes ToVector(VRELDynamicArray<Node*> const& array) {
  return Nodes(array.begin(), array.end());
}

// Returns the nodes that an iterator visits after its start.
Nodes VisitedFrom(Node* start) {
  Iterator iterator(start);
  Nodes visited;
  while (Node* const node = iterator.GetNextNode()) visited.push_back(node);
  EXPECT_EQ(iterator.GetCurrentNode(), nullptr);
  return visited;
}

TEST(VRELTreeTest, StartsWithoutRoot) {
  VRELTree tree;
  EXPECT_EQ(tree.GetRoot(), nullptr);
  EXPECT_EQ(tree.GetChildCount(), 0);
  EXPECT_EQ(tree.GetChildCount(Object(1)), 0);
  EXPECT_EQ(tree.GetChildCount(nullptr), 0);
  tree.SetRoot(Object(1));
  EXPECT_EQ(tree.GetRoot(), nullptr);
}

TEST(VRELTreeTest, ConstructorCreatesRoot) {
  VRELTree tree(Object(1));
  ASSERT_NE(tree.GetRoot(), nullptr);
  EXPECT_EQ(tree.GetRoot()->GetObjectPtr(), Object(1));
  EXPECT_EQ(tree.GetRoot()->GetChildren().size(), 0);
  EXPECT_EQ(tree.GetRoot()->GetParents().size(), 0);
  EXPECT_EQ(tree.GetChildCount(), 1);
  Node* const root = tree.GetRoot();
  tree.SetRoot(Object(2));
  EXPECT_EQ(tree.GetRoot(), root);
  EXPECT_EQ(root->GetObjectPtr(), Object(2));
}

TEST(VRELTreeTest, SetRootDeletesNothing) {
  VRELTree tree(Object(1));
  std::unique_ptr<Node> const first(tree.GetRoot());
  auto second = std::make_unique<Node>(Object(2));
  tree.SetRoot(second.get());
  EXPECT_EQ(tree.GetRoot(), second.get());
  EXPECT_EQ(first->GetObjectPtr(), Object(1));
  tree.ClearRoot();
  EXPECT_EQ(tree.GetRoot(), nullptr);
  EXPECT_EQ(second->GetObjectPtr(), Object(2));
  tree.SetRoot(second.release());
}

TEST(VRELTreeTest, NodeStoresObject) {
  Node node;
  EXPECT_EQ(node.GetObjectPtr(), nullptr);
  node.SetObjectPtr(Object(3));
  EXPECT_EQ(node.GetObjectPtr(), Object(3));
}

TEST(VRELTreeTest, AddChildLinksNewNode) {
  Node parent(Object(1));
  EXPECT_EQ(parent.AddChild(nullptr), nullptr);
  EXPECT_EQ(parent.GetChildren().size(), 0);
  Node* const child = parent.AddChild(Object(2));
  ASSERT_NE(child, nullptr);
  EXPECT_EQ(child->GetObjectPtr(), Object(2));
  EXPECT_EQ(ToVector(parent.GetChildren()), (Nodes{child}));
  EXPECT_EQ(ToVector(child->GetParents()), (Nodes{&parent}));
  Node* const second = parent.AddChild(Object(2));
  EXPECT_EQ(ToVector(parent.GetChildren()), (Nodes{child, second}));
}

TEST(VRELTreeTest, AddChildPtrLinksNode) {
  Node parent(Object(1));
  auto* const child = new Node(Object(2));
  parent.AddChildPtr(child);
  parent.AddChildPtr(nullptr);
  EXPECT_EQ(ToVector(parent.GetChildren()), (Nodes{child, nullptr}));
  EXPECT_EQ(ToVector(child->GetParents()), (Nodes{&parent}));
}

TEST(VRELTreeTest, AddParentKeepsChildrenOfParent) {
  Node child(Object(2));
  {
    Node parent(Object(1));
    child.AddParent(&parent);
    child.AddParent(nullptr);
    EXPECT_EQ(ToVector(child.GetParents()), (Nodes{&parent, nullptr}));
    EXPECT_EQ(parent.GetChildren().size(), 0);
    Node other(Object(3));
    other.AddParent(&parent);
  }
  EXPECT_EQ(ToVector(child.GetParents()), (Nodes{nullptr}));
}

// 1 -> 2 -> 4, 1 -> 3 -> 5
struct SmallTree {
  Node root{Object(1)};
  Node* two = root.AddChild(Object(2));
  Node* three = root.AddChild(Object(3));
  Node* four = two->AddChild(Object(4));
  Node* five = three->AddChild(Object(5));
};

TEST(VRELTreeTest, VisitsDepthFirstInChildOrder) {
  SmallTree tree;
  Iterator iterator(&tree.root);
  EXPECT_EQ(iterator.GetCurrentNode(), &tree.root);
  EXPECT_EQ(iterator.GetCurrentObject(), Object(1));
  EXPECT_EQ(iterator.GetNextNode(), tree.two);
  EXPECT_EQ(iterator.GetCurrentNode(), tree.two);
  EXPECT_EQ(iterator.GetCurrentObject(), Object(2));
  EXPECT_EQ(iterator.GetNextObject(), Object(4));
  EXPECT_EQ(iterator.GetNextNode(), tree.three);
  EXPECT_EQ(iterator.GetNextNode(), tree.five);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
  EXPECT_EQ(iterator.GetCurrentNode(), nullptr);
  EXPECT_EQ(iterator.GetCurrentObject(), nullptr);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
  EXPECT_EQ(iterator.GetNextObject(), nullptr);
}

TEST(VRELTreeTest, IteratorOfNullIsAtEnd) {
  Iterator iterator(nullptr);
  EXPECT_EQ(iterator.GetCurrentNode(), nullptr);
  EXPECT_EQ(iterator.GetCurrentObject(), nullptr);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
  EXPECT_EQ(iterator.GetNextObject(), nullptr);
}

TEST(VRELTreeTest, IteratorsAreIndependent) {
  SmallTree tree;
  Iterator one(&tree.root);
  Iterator two(&tree.root);
  EXPECT_EQ(one.GetNextNode(), tree.two);
  EXPECT_EQ(one.GetNextNode(), tree.four);
  EXPECT_EQ(two.GetNextNode(), tree.two);
  EXPECT_EQ(one.GetNextNode(), tree.three);
  EXPECT_EQ(two.GetNextNode(), tree.four);
}

TEST(VRELTreeTest, SetNodeKeepsVisitedAndPath) {
  SmallTree tree;
  Iterator iterator(&tree.root);
  EXPECT_EQ(iterator.GetNextNode(), tree.two);
  iterator.SetNode(tree.three);
  EXPECT_EQ(iterator.GetCurrentNode(), tree.three);
  EXPECT_EQ(iterator.GetNextNode(), tree.five);
  // Returns over three to root, whose child after two is three, not yet visited.
  EXPECT_EQ(iterator.GetNextNode(), tree.three);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
  iterator.SetNode(&tree.root);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
}

TEST(VRELTreeTest, ClearForgetsVisitedAndPath) {
  SmallTree tree;
  Iterator iterator(&tree.root);
  EXPECT_EQ(iterator.GetNextNode(), tree.two);
  EXPECT_EQ(iterator.GetNextNode(), tree.four);
  iterator.SetNode(tree.two);
  EXPECT_EQ(iterator.GetNextNode(), tree.three);
  iterator.SetNode(tree.two);
  iterator.Clear();
  EXPECT_EQ(iterator.GetCurrentNode(), tree.two);
  EXPECT_EQ(iterator.GetNextNode(), tree.four);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
  iterator.SetNode(&tree.root);
  iterator.Clear();
  EXPECT_EQ(iterator.GetNextNode(), tree.two);
  // Without the path, three is not reached.
  iterator.Clear();
  EXPECT_EQ(iterator.GetNextNode(), tree.four);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
}

TEST(VRELTreeTest, ChildrenCanBeAddedDuringIteration) {
  SmallTree tree;
  Iterator iterator(&tree.root);
  EXPECT_EQ(iterator.GetNextNode(), tree.two);
  Node* const six = tree.two->AddChild(Object(6));
  EXPECT_EQ(iterator.GetNextNode(), tree.four);
  EXPECT_EQ(iterator.GetNextNode(), six);
  EXPECT_EQ(iterator.GetNextNode(), tree.three);
}

TEST(VRELTreeTest, VisitsNodeOfTwoParentsOnce) {
  SmallTree tree;
  tree.three->AddChildPtr(tree.four);
  EXPECT_EQ(VisitedFrom(&tree.root), (Nodes{tree.two, tree.four, tree.three, tree.five}));
  EXPECT_EQ(VisitedFrom(tree.three), (Nodes{tree.five, tree.four}));
}

TEST(VRELTreeTest, VisitsStartThroughCycleOnce) {
  VRELTree tree(Object(1));
  Node* const root = tree.GetRoot();
  Node* const two = root->AddChild(Object(2));
  Node* const three = two->AddChild(Object(3));
  three->AddChildPtr(root);
  EXPECT_EQ(VisitedFrom(root), (Nodes{two, three, root}));
  EXPECT_EQ(VisitedFrom(two), (Nodes{three, root, two}));
  EXPECT_EQ(tree.GetChildCount(), 4);
}

TEST(VRELTreeTest, NodeCanBeItsOwnChild) {
  VRELTree tree(Object(1));
  tree.GetRoot()->AddChildPtr(tree.GetRoot());
  EXPECT_EQ(VisitedFrom(tree.GetRoot()), (Nodes{tree.GetRoot()}));
}

TEST(VRELTreeTest, IterationEndsAtNullChild) {
  VRELTree tree(Object(1));
  Node* const two = tree.GetRoot()->AddChild(Object(2));
  tree.GetRoot()->AddChildPtr(nullptr);
  tree.GetRoot()->AddChild(Object(3));
  EXPECT_EQ(VisitedFrom(tree.GetRoot()), (Nodes{two}));
  EXPECT_EQ(tree.GetChildCount(), 2);
}

TEST(VRELTreeTest, SetNodeContinuesAfterNullChild) {
  VRELTree tree(Object(1));
  Node* const two = tree.GetRoot()->AddChild(Object(2));
  tree.GetRoot()->AddChildPtr(nullptr);
  Node* const three = tree.GetRoot()->AddChild(Object(3));
  Iterator iterator(tree.GetRoot());
  EXPECT_EQ(iterator.GetNextNode(), two);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
  iterator.SetNode(two);
  EXPECT_EQ(iterator.GetNextNode(), three);
  EXPECT_EQ(iterator.GetNextNode(), nullptr);
}

TEST(VRELTreeTest, ClassesAreDeletedThroughBase) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELTree>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Node>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Iterator>);
}

TEST(VRELTreeTest, NodeKeyUsesAddressHashAndObjectEquality) {
  using List = VRELHashList<Node*>;
  Node one(Object(7));
  Node equal(Object(7));
  Node other(Object(8));
  EXPECT_TRUE(List::HashEqualFunction(&one, &one));
  EXPECT_TRUE(List::HashEqualFunction(&one, &equal));
  EXPECT_FALSE(List::HashEqualFunction(&one, &other));
  EXPECT_FALSE(List::HashEqualFunction(&one, nullptr));
  EXPECT_FALSE(List::HashEqualFunction(nullptr, &one));
  EXPECT_FALSE(List::HashEqualFunction(nullptr, nullptr));
  EXPECT_EQ(List::GetHashValue(&one), VRELHashList<void*>::GetHashValue(&one));
  EXPECT_NE(List::GetHashValue(&one), List::GetHashValue(&equal));
}

TEST(VRELTreeTest, GetChildCountCountsReachedNodes) {
  VRELTree tree(Object(1));
  Node* const two = tree.GetRoot()->AddChild(Object(2));
  Node* const three = tree.GetRoot()->AddChild(Object(3));
  Node* const four = two->AddChild(Object(4));
  three->AddChildPtr(four);
  four->AddChild(Object(5));
  EXPECT_EQ(tree.GetChildCount(), 5);
  struct {
    int object;
    int count;
  } const rows[] = {{1, 5}, {2, 3}, {3, 3}, {4, 2}, {5, 1}, {6, 0}};
  for (auto const& row : rows) EXPECT_EQ(tree.GetChildCount(Object(row.object)), row.count) << row.object;
}

TEST(VRELTreeTest, GetChildCountStartsAtFirstMatch) {
  VRELTree tree(Object(1));
  Node* const two = tree.GetRoot()->AddChild(Object(2));
  Node* const first = two->AddChild(Object(9));
  tree.GetRoot()->AddChild(Object(9));
  first->AddChild(Object(4));
  EXPECT_EQ(tree.GetChildCount(Object(9)), 2);
}

bool IsBelow(void* key, void* object) {
  return NumberOf(object) < NumberOf(key);
}

TEST(VRELTreeTest, FindReturnsTraversalOrder) {
  VRELTree tree(Object(3));
  Node* const one = tree.GetRoot()->AddChild(Object(1));
  Node* const nine = tree.GetRoot()->AddChild(Object(9));
  Node* const two = one->AddChild(Object(2));
  Node* const four = nine->AddChild(Object(4));
  VRELDynamicArray<Node*> found;
  EXPECT_EQ(tree.Find(Object(5), IsBelow, &found), VREL_S_OK);
  EXPECT_EQ(ToVector(found), (Nodes{tree.GetRoot(), one, two, four}));
}

TEST(VRELTreeTest, FindAppendsToArray) {
  VRELTree tree(Object(3));
  VRELDynamicArray<Node*> found;
  EXPECT_EQ(tree.Find(Object(0), IsBelow, &found), VREL_S_NO_ENTITY);
  EXPECT_EQ(found.size(), 0);
  EXPECT_EQ(tree.Find(Object(4), IsBelow, &found), VREL_S_OK);
  EXPECT_EQ(tree.Find(Object(4), IsBelow, &found), VREL_S_OK);
  EXPECT_EQ(ToVector(found), (Nodes{tree.GetRoot(), tree.GetRoot()}));
  // Adds nothing, but the array is not empty.
  EXPECT_EQ(tree.Find(Object(0), IsBelow, &found), VREL_S_OK);
  EXPECT_EQ(found.size(), 2);
  VRELDynamicArray<Node*> none;
  EXPECT_EQ(VRELTree().Find(Object(4), IsBelow, &none), VREL_S_NO_ENTITY);
}

TEST(VRELTreeTest, FindRejectsNull) {
  VRELTree tree(Object(3));
  VRELDynamicArray<Node*> found;
  EXPECT_EQ(tree.Find(Object(4), nullptr, &found), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(tree.Find(Object(4), IsBelow, nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(tree.Find(nullptr, IsBelow, &found), VREL_S_NO_ENTITY);
}

TEST(VRELTreeTest, DumpPrintsNodes) {
  ChildResult const result = RunInChild([] {
    VRELTree tree(Object(1));
    Node* const two = tree.GetRoot()->AddChild(Object(2));
    Node* const three = tree.GetRoot()->AddChild(Object(-3));
    Node* const four = two->AddChild(Object(0x100000004));
    three->AddChildPtr(four);
    three->AddChildPtr(nullptr);
    tree.Dump();
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output,
            "\n1 # Parents 0: \n1 # Children 2: 2 -3 \n"
            "\n2 # Parents 1: 1 \n2 # Children 1: 4 \n"
            "\n4 # Parents 2: 2 -3 \n4 # Children 0: \n"
            "\n-3 # Parents 1: 1 \n-3 # Children 2: 4 0 \n");
}

TEST(VRELTreeTest, DumpReportsMissingRoot) {
  ChildResult const result = RunInChild([] {
    VRELTree().Dump();
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "No Root Node found.");
}

// Records its number when it is destroyed.
class Recorder : public Node {
 public:
  Recorder(int theNumber, std::vector<int>& theDeleted)
      : Node(Object(theNumber)), number(theNumber), deleted(theDeleted) {}
  ~Recorder() noexcept(false) override {
    deleted.push_back(number);
    if (number < 0) throw std::runtime_error("from a destructor");
  }

 private:
  int number;
  std::vector<int>& deleted;
};

TEST(VRELTreeTest, DeletesDescendantsOfDerivedClasses) {
  std::vector<int> deleted;
  {
    VRELTree tree;
    auto* const root = new Recorder(1, deleted);
    auto* const two = new Recorder(2, deleted);
    tree.SetRoot(root);
    root->AddChildPtr(two);
    root->AddChildPtr(nullptr);
    root->AddChildPtr(new Recorder(3, deleted));
    two->AddChildPtr(new Recorder(4, deleted));
    two->AddChildPtr(new Recorder(5, deleted));
  }
  EXPECT_EQ(deleted, (std::vector<int>{1, 2, 4, 5, 3}));
}

TEST(VRELTreeTest, DropsExceptionsOfDestructors) {
  std::vector<int> deleted;
  {
    auto* const root = new Recorder(-1, deleted);
    VRELTree tree;
    tree.SetRoot(root);
    auto* const two = new Recorder(-2, deleted);
    root->AddChildPtr(two);
    two->AddChildPtr(new Recorder(-3, deleted));
    two->AddChildPtr(new Recorder(4, deleted));
    root->AddChildPtr(new Recorder(5, deleted));
  }
  EXPECT_EQ(deleted, (std::vector<int>{-1, -2, -3, 4, 5}));
}

TEST(VRELTreeTest, DeletesNodeOfSeveralParentsOnce) {
  std::vector<int> deleted;
  {
    VRELTree tree(Object(1));
    Node* const root = tree.GetRoot();
    Node* const left = root->AddChild(Object(2));
    Node* const right = root->AddChild(Object(3));
    auto* const shared = new Recorder(4, deleted);
    left->AddChildPtr(shared);
    right->AddChildPtr(shared);
    right->AddChildPtr(shared);
    root->AddChildPtr(shared);
    shared->AddChildPtr(new Recorder(5, deleted));
  }
  EXPECT_EQ(deleted, (std::vector<int>{4, 5}));
}

TEST(VRELTreeTest, DeletesCycleOnce) {
  std::vector<int> deleted;
  {
    VRELTree tree;
    auto* const root = new Recorder(1, deleted);
    auto* const two = new Recorder(2, deleted);
    tree.SetRoot(root);
    root->AddChildPtr(two);
    two->AddChildPtr(root);
    two->AddChildPtr(two);
  }
  EXPECT_EQ(deleted, (std::vector<int>{1, 2}));
}

TEST(VRELTreeTest, DeletedNodeIsUnlinkedFromNeighbours) {
  Node parent(Object(1));
  Node other(Object(2));
  Node* const first = parent.AddChild(Object(3));
  Node* const second = parent.AddChild(Object(4));
  other.AddChildPtr(first);
  parent.AddChildPtr(first);
  delete first;
  EXPECT_EQ(ToVector(parent.GetChildren()), (Nodes{second}));
  EXPECT_EQ(ToVector(other.GetChildren()), Nodes());
  {
    Node third(Object(5));
    third.AddChildPtr(second);
    EXPECT_EQ(ToVector(second->GetParents()), (Nodes{&parent, &third}));
    third.GetChildren().clear();
  }
  EXPECT_EQ(ToVector(second->GetParents()), (Nodes{&parent}));
}

TEST(VRELTreeTest, RemovedChildOutlivesParent) {
  auto parent = std::make_unique<Node>(Object(1));
  std::unique_ptr<Node> const child(parent->AddChild(Object(2)));
  vrelArrayRemove<Node*>(parent->GetChildren(), child.get());
  parent.reset();
  EXPECT_EQ(child->GetParents().size(), 0);
}

// Its destructor changes the tree around it.
class TreeChangingNode : public Node {
 public:
  explicit TreeChangingNode(void* theObject) : Node(theObject) {}
  ~TreeChangingNode() noexcept(false) override {
    childrenSeen += GetChildren().size();
    delete victim;
    VRELTree apart(Object(1));
    for (int i = 0; i < 10; ++i) apart.GetRoot()->AddChild(Object(i + 2))->AddChild(Object(20));
  }
  Node* victim = nullptr;
  static int childrenSeen;
};
int TreeChangingNode::childrenSeen = 0;

TEST(VRELTreeTest, DestructorCanDeleteOtherNodes) {
  std::vector<int> deleted;
  TreeChangingNode::childrenSeen = 0;
  {
    VRELTree tree(Object(1));
    auto* const first = new TreeChangingNode(Object(2));
    auto* const second = new Recorder(3, deleted);
    auto* const third = new Recorder(4, deleted);
    tree.GetRoot()->AddChildPtr(first);
    tree.GetRoot()->AddChildPtr(second);
    tree.GetRoot()->AddChildPtr(third);
    first->AddChild(Object(5));
    first->AddChild(Object(6));
    second->AddChildPtr(new Recorder(7, deleted));
    first->victim = second;
  }
  EXPECT_EQ(TreeChangingNode::childrenSeen, 2);
  EXPECT_EQ(deleted, (std::vector<int>{3, 7, 4}));
}

constexpr int kMany = 100000;

TEST(VRELTreeTest, DeletesMillionLevelsIteratively) {
  constexpr int levels = 1000000;
  VRELTree tree(Object(1));
  Node* last = tree.GetRoot();
  for (int i = 1; i < levels; ++i) last = last->AddChild(Object(i + 1));
  EXPECT_EQ(tree.GetChildCount(), levels);
}

TEST(VRELTreeTest, VisitsWideTree) {
  VRELTree tree(Object(1));
  for (int i = 1; i < kMany; ++i) tree.GetRoot()->AddChild(Object(i + 1));
  EXPECT_EQ(tree.GetChildCount(), kMany);
  EXPECT_EQ(tree.GetChildCount(Object(kMany)), 1);
}

TEST(VRELTreeTest, VisitsNodeOfManyParents) {
  VRELTree tree(Object(1));
  auto* const shared = new Node(Object(2));
  for (int i = 0; i < kMany; ++i) tree.GetRoot()->AddChild(Object(i + 3))->AddChildPtr(shared);
  EXPECT_EQ(tree.GetChildCount(), kMany + 2);
}

// The traversal as a recursive function.
void ModelTraversal(Node* node, std::set<Node*>& seen, Nodes& order) {
  for (Node* child : node->GetChildren()) {
    if (!seen.insert(child).second) continue;
    order.push_back(child);
    ModelTraversal(child, seen, order);
  }
}

TEST(VRELTreeTest, MatchesModelOnRandomGraphs) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::vector<int> deleted;
    int const count = 1 + static_cast<int>(random() % 60);
    Nodes nodes;
    for (int i = 0; i < count; ++i) nodes.push_back(new Recorder(i + 1, deleted));
    // All are descendants of the first one; more links are random.
    for (int i = 1; i < count; ++i)
      nodes[random() % static_cast<unsigned>(i)]->AddChildPtr(nodes[static_cast<unsigned>(i)]);
    for (int i = 0; i < count / 2; ++i) nodes[random() % nodes.size()]->AddChildPtr(nodes[random() % nodes.size()]);
    for (Node* start : nodes) {
      std::set<Node*> visited;
      Nodes expected;
      ModelTraversal(start, visited, expected);
      ASSERT_EQ(VisitedFrom(start), expected) << round;
    }
    // Some are deleted early, with their descendants.
    VRELTree tree;
    tree.SetRoot(nodes.front());
    if (count > 1 && round % 2 == 0) {
      Node* const victim = nodes[1 + random() % (nodes.size() - 1)];
      std::set<Node*> doomed = {victim};
      Nodes below;
      ModelTraversal(victim, doomed, below);
      if (doomed.count(nodes.front()) == 0) {
        delete victim;
        ASSERT_EQ(deleted.size(), doomed.size());
        for (Node* node : nodes) {
          if (doomed.count(node) != 0) continue;
          for (Node* child : node->GetChildren()) ASSERT_EQ(doomed.count(child), 0U);
          for (Node* parent : node->GetParents()) ASSERT_EQ(doomed.count(parent), 0U);
        }
      }
    }
    delete tree.GetRoot();
    tree.ClearRoot();
    ASSERT_EQ(deleted.size(), nodes.size());
    ASSERT_EQ(std::set<int>(deleted.begin(), deleted.end()).size(), nodes.size());
  }
}

// GetChildCount does not use the iterator, but must visit the same nodes, also where several nodes share an object and
// so count as one if they are in one probe run.
TEST(VRELTreeTest, GetChildCountAgreesWithIterator) {
  std::mt19937 random(31);
  int skipped = 0;
  for (int const count : {1, 2, 12, 13, 14, 25, 26, 60, 300, 3000}) {
    for (unsigned const objects : {1u, 2u, 7u, 100u, 1000000u}) {
      for (int round = 0; round < 5; ++round) {
        VRELTree tree(reinterpret_cast<void*>(std::uintptr_t(1)));
        std::vector<VRELTree::VRELTreeNode*> nodes = {tree.GetRoot()};
        for (int i = 1; i < count; ++i) {
          auto* const object = reinterpret_cast<void*>(std::uintptr_t(1 + random() % objects));
          nodes.push_back(nodes[random() % nodes.size()]->AddChild(object));
          // Links to other nodes, the root included.
          if (random() % 4 == 0) nodes[random() % nodes.size()]->AddChildPtr(nodes[random() % nodes.size()]);
        }
        if (round == 4) nodes[random() % nodes.size()]->AddChildPtr(nullptr);
        int expected = 0;
        VRELTree::VRELTreeNode::VRELTreeNodeIterator iterator(tree.GetRoot());
        for (auto* node = iterator.GetCurrentNode(); node != nullptr; node = iterator.GetNextNode()) ++expected;
        ASSERT_EQ(tree.GetChildCount(), expected) << count << " nodes, " << objects << " objects";
        skipped += expected < count ? 1 : 0;
      }
    }
  }
  EXPECT_GT(skipped, 0);
}

TEST(VRELTreeTest, MoveLeavesSourceWithoutRoot) {
  std::vector<int> deleted;
  {
    VRELTree source;
    source.SetRoot(new Recorder(1, deleted));
    Node* const root = source.GetRoot();
    VRELTree target(std::move(source));
    EXPECT_EQ(target.GetRoot(), root);
    EXPECT_EQ(source.GetRoot(), nullptr);
    source.SetRoot(new Recorder(2, deleted));
    target = std::move(source);
    EXPECT_EQ(deleted, std::vector<int>{1});
    EXPECT_EQ(source.GetRoot(), nullptr);
    VRELTree& itself = target;
    target = std::move(itself);
    EXPECT_NE(target.GetRoot(), nullptr);
    EXPECT_EQ(deleted, std::vector<int>{1});
  }
  EXPECT_EQ(deleted, (std::vector<int>{1, 2}));
}

TEST(VRELTreeTest, DeclarationsMatch) {
  using Match = bool (*)(void*, void*);
  static_assert(std::is_same_v<decltype(static_cast<void (VRELTree::*)(Node*) noexcept>(&VRELTree::SetRoot)),
                               void (VRELTree::*)(Node*) noexcept>);
  static_assert(std::is_same_v<decltype(static_cast<void (VRELTree::*)(void*) noexcept>(&VRELTree::SetRoot)),
                               void (VRELTree::*)(void*) noexcept>);
  static_assert(std::is_same_v<decltype(static_cast<int (VRELTree::*)() const>(&VRELTree::GetChildCount)),
                               int (VRELTree::*)() const>);
  static_assert(std::is_same_v<decltype(static_cast<int (VRELTree::*)(void*) const>(&VRELTree::GetChildCount)),
                               int (VRELTree::*)(void*) const>);
  static_assert(std::is_same_v<decltype(&VRELTree::GetRoot), Node* (VRELTree::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&VRELTree::ClearRoot), void (VRELTree::*)() noexcept>);
  static_assert(std::is_same_v<decltype(&VRELTree::Find),
                               VRINResult (VRELTree::*)(void*, Match, VRELDynamicArray<Node*>*) const>);
  static_assert(std::is_same_v<decltype(&VRELTree::Dump), void (VRELTree::*)() const>);
  static_assert(std::is_same_v<decltype(&Node::GetObjectPtr), void* (Node::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&Node::SetObjectPtr), void (Node::*)(void*) noexcept>);
  static_assert(std::is_same_v<decltype(&Node::AddChild), Node* (Node::*)(void*)>);
  static_assert(std::is_same_v<decltype(&Node::AddChildPtr), void (Node::*)(Node*)>);
  static_assert(std::is_same_v<decltype(&Node::AddParent), void (Node::*)(Node*)>);
  static_assert(std::is_same_v<decltype(&Iterator::GetCurrentNode), Node* (Iterator::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&Iterator::GetCurrentObject), void* (Iterator::*)() const noexcept>);
  static_assert(std::is_same_v<decltype(&Iterator::GetNextNode), Node* (Iterator::*)()>);
  static_assert(std::is_same_v<decltype(&Iterator::GetNextObject), void* (Iterator::*)()>);
  static_assert(std::is_same_v<decltype(&Iterator::SetNode), void (Iterator::*)(Node*) noexcept>);
  static_assert(std::is_same_v<decltype(&Iterator::Clear), void (Iterator::*)()>);
}

// The fields follow the virtual table: the root of a tree; object, parents and children of a node.
TEST(VRELTreeTest, FieldOffsetsMatchLayout) {
  static_assert(sizeof(VRELTree) == 16);
  VRELTree tree(Object(1));
  Node* const root = tree.GetRoot();
  EXPECT_EQ(reinterpret_cast<Node**>(&tree)[1], root);
  EXPECT_EQ(reinterpret_cast<void**>(root)[1], Object(1));
  EXPECT_EQ(static_cast<void*>(&root->GetParents()), reinterpret_cast<char*>(root) + 16);
  EXPECT_EQ(static_cast<void*>(&root->GetChildren()), reinterpret_cast<char*>(root) + 24);
  Iterator iterator(root);
  EXPECT_EQ(reinterpret_cast<Node**>(&iterator)[1], root);
}

}  // namespace
