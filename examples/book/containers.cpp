// A class as a key, an array that is sorted, and a tree with a node of two parents.
#include <iostream>
#include <string>

#include "VRELArraySort.h"
#include "VRELDynamicArray.h"
#include "VRELHashMap.h"
#include "VRELHashTraits.h"
#include "VRELTree.h"

struct Cell {
  int row = 0;
  int column = 0;
};

template <>
struct VRELHashTraits<Cell> {
  static unsigned int Hash(Cell const& key) { return VRELMixInteger(31 * key.row + key.column); }
  static bool Equal(Cell const& a, Cell const& b) { return a.row == b.row && a.column == b.column; }
};

void Map() {
  VRELHashMap<Cell, int> faces(17);
  faces.Put({1, 1}, 12);
  faces.Put({2, 1}, 7);
  bool const added = faces.Add({1, 1}, 99);
  int found = 0;
  faces.Get({1, 1}, found);
  std::cout << (added ? "added" : "was there") << ", " << found << "\n";

  int sum = 0;
  for (auto [cell, count] : faces) sum += count;
  std::cout << "sum " << sum << "\n";
}

void Array() {
  VRELDynamicArray<int> sizes = {30, 10, 20};
  VRELDynamicArray<int> const shared = sizes;
  qsort(sizes, 0, -1);
  for (int const size : shared) std::cout << size << " ";
  sizes.clear();
  std::cout << "and then " << shared.size() << "\n";
}

void Tree() {
  std::string car = "car", front = "front axle", rear = "rear axle", wheel = "wheel";
  VRELTree assembly(&car);
  auto* const root = assembly.GetRoot();
  auto* const wheelNode = root->AddChild(&front)->AddChild(&wheel);
  root->AddChild(&rear)->AddChildPtr(wheelNode);
  VRELTree::VRELTreeNode::VRELTreeNodeIterator iterator(root);
  for (void* object = iterator.GetCurrentObject(); object != nullptr; object = iterator.GetNextObject()) {
    std::cout << *static_cast<std::string*>(object) << "\n";
  }
}

int main() {
  Map();
  Array();
  Tree();
}
