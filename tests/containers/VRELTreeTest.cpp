#include "VRELTree.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "ChildProcess.h"

namespace {

using Node = VRELTree::VRELTreeNode;
using Iterator = VRELTree::VRELTreeNode::VRELTreeNodeIterator;
using Nodes = std::vector<Node*>;

// An object that nobody looks at, known by its number.
void* Object(std::intptr_t number) {
  return reinterpret_cast<void*>(number);
}

std::intptr_t NumberOf(void* object) {
  return reinterpret_cast<std::intptr_t>(object);
}

Nodes ToVector(VRELDynamicArray<Node*> const& array) {
  return Nodes(array.begin(), array.end());
}

// What the walk gives after its start.
Nodes WalkFrom(Node* start) {
  Iterator walk(start);
  Nodes met;
  while (Node* const node = walk.GetNextNode()) met.push_back(node);
  EXPECT_EQ(walk.GetCurrentNode(), nullptr);
  return met;
}

TEST(VRELTreeTest, MayHaveNoRoot) {
  VRELTree tree;
  EXPECT_EQ(tree.GetRoot(), nullptr);
  EXPECT_EQ(tree.GetChildCount(), 0);
  EXPECT_EQ(tree.GetChildCount(Object(1)), 0);
  EXPECT_EQ(tree.GetChildCount(nullptr), 0);
  tree.SetRoot(Object(1));
  EXPECT_EQ(tree.GetRoot(), nullptr);
}

TEST(VRELTreeTest, MakesARootForAnObject) {
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

TEST(VRELTreeTest, TakesAndLeavesRootsWithoutDeletingThem) {
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

TEST(VRELTreeTest, ANodeHoldsItsObject) {
  Node node;
  EXPECT_EQ(node.GetObjectPtr(), nullptr);
  node.SetObjectPtr(Object(3));
  EXPECT_EQ(node.GetObjectPtr(), Object(3));
}

TEST(VRELTreeTest, AddChildMakesALinkedNode) {
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

TEST(VRELTreeTest, AddChildPtrLinksANode) {
  Node parent(Object(1));
  auto* const child = new Node(Object(2));
  parent.AddChildPtr(child);
  parent.AddChildPtr(nullptr);
  EXPECT_EQ(ToVector(parent.GetChildren()), (Nodes{child, nullptr}));
  EXPECT_EQ(ToVector(child->GetParents()), (Nodes{&parent}));
}

TEST(VRELTreeTest, AddParentLeavesTheParentsChildrenAlone) {
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

TEST(VRELTreeTest, WalksDepthFirstInChildOrder) {
  SmallTree tree;
  Iterator walk(&tree.root);
  EXPECT_EQ(walk.GetCurrentNode(), &tree.root);
  EXPECT_EQ(walk.GetCurrentObject(), Object(1));
  EXPECT_EQ(walk.GetNextNode(), tree.two);
  EXPECT_EQ(walk.GetCurrentNode(), tree.two);
  EXPECT_EQ(walk.GetCurrentObject(), Object(2));
  EXPECT_EQ(walk.GetNextObject(), Object(4));
  EXPECT_EQ(walk.GetNextNode(), tree.three);
  EXPECT_EQ(walk.GetNextNode(), tree.five);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
  EXPECT_EQ(walk.GetCurrentNode(), nullptr);
  EXPECT_EQ(walk.GetCurrentObject(), nullptr);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
  EXPECT_EQ(walk.GetNextObject(), nullptr);
}

TEST(VRELTreeTest, AWalkFromNowhereEndsAtOnce) {
  Iterator walk(nullptr);
  EXPECT_EQ(walk.GetCurrentNode(), nullptr);
  EXPECT_EQ(walk.GetCurrentObject(), nullptr);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
  EXPECT_EQ(walk.GetNextObject(), nullptr);
}

TEST(VRELTreeTest, WalksDoNotInterfere) {
  SmallTree tree;
  Iterator one(&tree.root);
  Iterator two(&tree.root);
  EXPECT_EQ(one.GetNextNode(), tree.two);
  EXPECT_EQ(one.GetNextNode(), tree.four);
  EXPECT_EQ(two.GetNextNode(), tree.two);
  EXPECT_EQ(one.GetNextNode(), tree.three);
  EXPECT_EQ(two.GetNextNode(), tree.four);
}

TEST(VRELTreeTest, SetNodeKeepsWhatWasVisitedAndTheWayBack) {
  SmallTree tree;
  Iterator walk(&tree.root);
  EXPECT_EQ(walk.GetNextNode(), tree.two);
  walk.SetNode(tree.three);
  EXPECT_EQ(walk.GetCurrentNode(), tree.three);
  EXPECT_EQ(walk.GetNextNode(), tree.five);
  // Back over three and then root, whose child behind two is three, not yet visited.
  EXPECT_EQ(walk.GetNextNode(), tree.three);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
  walk.SetNode(&tree.root);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
}

TEST(VRELTreeTest, ClearForgetsWhatWasVisitedAndTheWayBack) {
  SmallTree tree;
  Iterator walk(&tree.root);
  EXPECT_EQ(walk.GetNextNode(), tree.two);
  EXPECT_EQ(walk.GetNextNode(), tree.four);
  walk.SetNode(tree.two);
  EXPECT_EQ(walk.GetNextNode(), tree.three);
  walk.SetNode(tree.two);
  walk.Clear();
  EXPECT_EQ(walk.GetCurrentNode(), tree.two);
  EXPECT_EQ(walk.GetNextNode(), tree.four);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
  walk.SetNode(&tree.root);
  walk.Clear();
  EXPECT_EQ(walk.GetNextNode(), tree.two);
  // Without the way back the walk never comes to three.
  walk.Clear();
  EXPECT_EQ(walk.GetNextNode(), tree.four);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
}

TEST(VRELTreeTest, ChildrenMayComeDuringAWalk) {
  SmallTree tree;
  Iterator walk(&tree.root);
  EXPECT_EQ(walk.GetNextNode(), tree.two);
  Node* const six = tree.two->AddChild(Object(6));
  EXPECT_EQ(walk.GetNextNode(), tree.four);
  EXPECT_EQ(walk.GetNextNode(), six);
  EXPECT_EQ(walk.GetNextNode(), tree.three);
}

TEST(VRELTreeTest, ANodeOfTwoParentsIsMetOnce) {
  SmallTree tree;
  tree.three->AddChildPtr(tree.four);
  EXPECT_EQ(WalkFrom(&tree.root), (Nodes{tree.two, tree.four, tree.three, tree.five}));
  EXPECT_EQ(WalkFrom(tree.three), (Nodes{tree.five, tree.four}));
}

TEST(VRELTreeTest, TheStartIsMetAgainThroughACircleOnce) {
  VRELTree tree(Object(1));
  Node* const root = tree.GetRoot();
  Node* const two = root->AddChild(Object(2));
  Node* const three = two->AddChild(Object(3));
  three->AddChildPtr(root);
  EXPECT_EQ(WalkFrom(root), (Nodes{two, three, root}));
  EXPECT_EQ(WalkFrom(two), (Nodes{three, root, two}));
  EXPECT_EQ(tree.GetChildCount(), 4);
}

TEST(VRELTreeTest, ANodeMayBeItsOwnChild) {
  VRELTree tree(Object(1));
  tree.GetRoot()->AddChildPtr(tree.GetRoot());
  EXPECT_EQ(WalkFrom(tree.GetRoot()), (Nodes{tree.GetRoot()}));
}

TEST(VRELTreeTest, AWalkEndsAtANullChild) {
  VRELTree tree(Object(1));
  Node* const two = tree.GetRoot()->AddChild(Object(2));
  tree.GetRoot()->AddChildPtr(nullptr);
  tree.GetRoot()->AddChild(Object(3));
  EXPECT_EQ(WalkFrom(tree.GetRoot()), (Nodes{two}));
  EXPECT_EQ(tree.GetChildCount(), 2);
}

TEST(VRELTreeTest, AWalkGoesOnBehindANullChildFromAnotherNode) {
  VRELTree tree(Object(1));
  Node* const two = tree.GetRoot()->AddChild(Object(2));
  tree.GetRoot()->AddChildPtr(nullptr);
  Node* const three = tree.GetRoot()->AddChild(Object(3));
  Iterator walk(tree.GetRoot());
  EXPECT_EQ(walk.GetNextNode(), two);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
  walk.SetNode(two);
  EXPECT_EQ(walk.GetNextNode(), three);
  EXPECT_EQ(walk.GetNextNode(), nullptr);
}

TEST(VRELTreeTest, ItsClassesAreDeletedThroughTheirBases) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELTree>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Node>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Iterator>);
}

TEST(VRELTreeTest, AsAKeyANodeIsHashedByAddressAndComparedByObject) {
  using List = VRELHashList<Node*>;
  Node one(Object(7));
  Node twin(Object(7));
  Node other(Object(8));
  EXPECT_TRUE(List::HashEqualFunction(&one, &one));
  EXPECT_TRUE(List::HashEqualFunction(&one, &twin));
  EXPECT_FALSE(List::HashEqualFunction(&one, &other));
  EXPECT_FALSE(List::HashEqualFunction(&one, nullptr));
  EXPECT_FALSE(List::HashEqualFunction(nullptr, &one));
  EXPECT_FALSE(List::HashEqualFunction(nullptr, nullptr));
  EXPECT_EQ(List::GetHashValue(&one), VRELHashList<void*>::GetHashValue(&one));
  EXPECT_NE(List::GetHashValue(&one), List::GetHashValue(&twin));
}

TEST(VRELTreeTest, CountsWhatAWalkMeets) {
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

TEST(VRELTreeTest, CountsFromTheFirstNodeWithTheObject) {
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

TEST(VRELTreeTest, FindsInTheOrderOfTheWalk) {
  VRELTree tree(Object(3));
  Node* const one = tree.GetRoot()->AddChild(Object(1));
  Node* const nine = tree.GetRoot()->AddChild(Object(9));
  Node* const two = one->AddChild(Object(2));
  Node* const four = nine->AddChild(Object(4));
  VRELDynamicArray<Node*> found;
  EXPECT_EQ(tree.Find(Object(5), IsBelow, &found), VREL_S_OK);
  EXPECT_EQ(ToVector(found), (Nodes{tree.GetRoot(), one, two, four}));
}

TEST(VRELTreeTest, FindAddsToItsArray) {
  VRELTree tree(Object(3));
  VRELDynamicArray<Node*> found;
  EXPECT_EQ(tree.Find(Object(0), IsBelow, &found), VREL_S_NO_ENTITY);
  EXPECT_EQ(found.size(), 0);
  EXPECT_EQ(tree.Find(Object(4), IsBelow, &found), VREL_S_OK);
  EXPECT_EQ(tree.Find(Object(4), IsBelow, &found), VREL_S_OK);
  EXPECT_EQ(ToVector(found), (Nodes{tree.GetRoot(), tree.GetRoot()}));
  // Nothing new, and yet the array is not empty.
  EXPECT_EQ(tree.Find(Object(0), IsBelow, &found), VREL_S_OK);
  EXPECT_EQ(found.size(), 2);
  VRELDynamicArray<Node*> none;
  EXPECT_EQ(VRELTree().Find(Object(4), IsBelow, &none), VREL_S_NO_ENTITY);
}

TEST(VRELTreeTest, FindRefusesNull) {
  VRELTree tree(Object(3));
  VRELDynamicArray<Node*> found;
  EXPECT_EQ(tree.Find(Object(4), nullptr, &found), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(tree.Find(Object(4), IsBelow, nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(tree.Find(nullptr, IsBelow, &found), VREL_S_NO_ENTITY);
}

TEST(VRELTreeTest, DumpsToStandardOutput) {
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

TEST(VRELTreeTest, DumpsThatThereIsNoRoot) {
  ChildResult const result = RunInChild([] {
    VRELTree().Dump();
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "No Root Node found.");
}

// Writes its number down when it dies.
class Recorder : public Node {
 public:
  Recorder(int theNumber, std::vector<int>& theDead) : Node(Object(theNumber)), number(theNumber), dead(theDead) {}
  ~Recorder() noexcept(false) override {
    dead.push_back(number);
    if (number < 0) throw std::runtime_error("from a destructor");
  }

 private:
  int number;
  std::vector<int>& dead;
};

TEST(VRELTreeTest, ANodeDeletesItsDescendantsThroughTheirOwnDestructors) {
  std::vector<int> dead;
  {
    VRELTree tree;
    auto* const root = new Recorder(1, dead);
    auto* const two = new Recorder(2, dead);
    tree.SetRoot(root);
    root->AddChildPtr(two);
    root->AddChildPtr(nullptr);
    root->AddChildPtr(new Recorder(3, dead));
    two->AddChildPtr(new Recorder(4, dead));
    two->AddChildPtr(new Recorder(5, dead));
  }
  EXPECT_EQ(dead, (std::vector<int>{1, 2, 4, 5, 3}));
}

TEST(VRELTreeTest, WhatADestructorThrowsIsDropped) {
  std::vector<int> dead;
  {
    auto* const root = new Recorder(-1, dead);
    VRELTree tree;
    tree.SetRoot(root);
    auto* const two = new Recorder(-2, dead);
    root->AddChildPtr(two);
    two->AddChildPtr(new Recorder(-3, dead));
    two->AddChildPtr(new Recorder(4, dead));
    root->AddChildPtr(new Recorder(5, dead));
  }
  EXPECT_EQ(dead, (std::vector<int>{-1, -2, -3, 4, 5}));
}

TEST(VRELTreeTest, ANodeOfSeveralParentsIsDeletedOnce) {
  std::vector<int> dead;
  {
    VRELTree tree(Object(1));
    Node* const root = tree.GetRoot();
    Node* const left = root->AddChild(Object(2));
    Node* const right = root->AddChild(Object(3));
    auto* const shared = new Recorder(4, dead);
    left->AddChildPtr(shared);
    right->AddChildPtr(shared);
    right->AddChildPtr(shared);
    root->AddChildPtr(shared);
    shared->AddChildPtr(new Recorder(5, dead));
  }
  EXPECT_EQ(dead, (std::vector<int>{4, 5}));
}

TEST(VRELTreeTest, ACircleIsDeletedOnce) {
  std::vector<int> dead;
  {
    VRELTree tree;
    auto* const root = new Recorder(1, dead);
    auto* const two = new Recorder(2, dead);
    tree.SetRoot(root);
    root->AddChildPtr(two);
    two->AddChildPtr(root);
    two->AddChildPtr(two);
  }
  EXPECT_EQ(dead, (std::vector<int>{1, 2}));
}

TEST(VRELTreeTest, ADyingNodeLeavesTheListsOfItsNeighbours) {
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

TEST(VRELTreeTest, AChildThatIsTakenOutOutlivesItsParent) {
  auto parent = std::make_unique<Node>(Object(1));
  std::unique_ptr<Node> const child(parent->AddChild(Object(2)));
  vrelArrayRemove<Node*>(parent->GetChildren(), child.get());
  parent.reset();
  EXPECT_EQ(child->GetParents().size(), 0);
}

// Its destructor works on the tree around it.
class Meddler : public Node {
 public:
  explicit Meddler(void* theObject) : Node(theObject) {}
  ~Meddler() noexcept(false) override {
    childrenSeen += GetChildren().size();
    delete victim;
    VRELTree apart(Object(1));
    for (int i = 0; i < 10; ++i) apart.GetRoot()->AddChild(Object(i + 2))->AddChild(Object(20));
  }
  Node* victim = nullptr;
  static int childrenSeen;
};
int Meddler::childrenSeen = 0;

TEST(VRELTreeTest, ADestructorMayDeleteOtherNodes) {
  std::vector<int> dead;
  Meddler::childrenSeen = 0;
  {
    VRELTree tree(Object(1));
    auto* const first = new Meddler(Object(2));
    auto* const second = new Recorder(3, dead);
    auto* const third = new Recorder(4, dead);
    tree.GetRoot()->AddChildPtr(first);
    tree.GetRoot()->AddChildPtr(second);
    tree.GetRoot()->AddChildPtr(third);
    first->AddChild(Object(5));
    first->AddChild(Object(6));
    second->AddChildPtr(new Recorder(7, dead));
    first->victim = second;
  }
  EXPECT_EQ(Meddler::childrenSeen, 2);
  EXPECT_EQ(dead, (std::vector<int>{3, 7, 4}));
}

constexpr int many = 100000;

TEST(VRELTreeTest, ADeepTreeNeedsNoDeepCallStack) {
  VRELTree tree(Object(1));
  Node* last = tree.GetRoot();
  for (int i = 1; i < many; ++i) last = last->AddChild(Object(i + 1));
  EXPECT_EQ(tree.GetChildCount(), many);
  EXPECT_EQ(tree.GetChildCount(Object(many)), 1);
}

TEST(VRELTreeTest, AWideTreeIsWalked) {
  VRELTree tree(Object(1));
  for (int i = 1; i < many; ++i) tree.GetRoot()->AddChild(Object(i + 1));
  EXPECT_EQ(tree.GetChildCount(), many);
  EXPECT_EQ(tree.GetChildCount(Object(many)), 1);
}

TEST(VRELTreeTest, ANodeOfManyParentsIsWalkedAndDeleted) {
  VRELTree tree(Object(1));
  auto* const shared = new Node(Object(2));
  for (int i = 0; i < many; ++i) tree.GetRoot()->AddChild(Object(i + 3))->AddChildPtr(shared);
  EXPECT_EQ(tree.GetChildCount(), many + 2);
}

// The walk again, by nested calls.
void ModelWalk(Node* node, std::set<Node*>& visited, Nodes& met) {
  for (Node* child : node->GetChildren()) {
    if (!visited.insert(child).second) continue;
    met.push_back(child);
    ModelWalk(child, visited, met);
  }
}

TEST(VRELTreeTest, AgreesWithAModelOnRandomGraphs) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::vector<int> dead;
    int const count = 1 + static_cast<int>(random() % 60);
    Nodes nodes;
    for (int i = 0; i < count; ++i) nodes.push_back(new Recorder(i + 1, dead));
    // All hang below the first one; more links run anywhere.
    for (int i = 1; i < count; ++i)
      nodes[random() % static_cast<unsigned>(i)]->AddChildPtr(nodes[static_cast<unsigned>(i)]);
    for (int i = 0; i < count / 2; ++i) nodes[random() % nodes.size()]->AddChildPtr(nodes[random() % nodes.size()]);
    for (Node* start : nodes) {
      std::set<Node*> visited;
      Nodes met;
      ModelWalk(start, visited, met);
      ASSERT_EQ(WalkFrom(start), met) << round;
    }
    // Some leave early, with what hangs below them.
    VRELTree tree;
    tree.SetRoot(nodes.front());
    if (count > 1 && round % 2 == 0) {
      Node* const victim = nodes[1 + random() % (nodes.size() - 1)];
      std::set<Node*> doomed = {victim};
      Nodes below;
      ModelWalk(victim, doomed, below);
      if (doomed.count(nodes.front()) == 0) {
        delete victim;
        ASSERT_EQ(dead.size(), doomed.size());
        for (Node* node : nodes) {
          if (doomed.count(node) != 0) continue;
          for (Node* child : node->GetChildren()) ASSERT_EQ(doomed.count(child), 0U);
          for (Node* parent : node->GetParents()) ASSERT_EQ(doomed.count(parent), 0U);
        }
      }
    }
    delete tree.GetRoot();
    tree.ClearRoot();
    ASSERT_EQ(dead.size(), nodes.size());
    ASSERT_EQ(std::set<int>(dead.begin(), dead.end()).size(), nodes.size());
  }
}

}  // namespace
