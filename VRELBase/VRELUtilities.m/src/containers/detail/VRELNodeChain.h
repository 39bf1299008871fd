// The chain of nodes that implements VRELList and VRELMap.
#pragma once

#include <utility>

// Doubly linked list that owns its nodes. Node has the fields value, next and previous.
//
// Nodes are deleted in a loop: a destructor that deletes its successor would need a stack frame for each node.
template <class Node>
class VRELNodeChain {
 public:
  VRELNodeChain() = default;
  VRELNodeChain(VRELNodeChain const&) = delete;
  VRELNodeChain& operator=(VRELNodeChain const&) = delete;
  // Both take the nodes and leave the source empty.
  VRELNodeChain(VRELNodeChain&& other) noexcept
      : head(std::exchange(other.head, nullptr)),
        tail(std::exchange(other.tail, nullptr)),
        size(std::exchange(other.size, 0)) {}
  VRELNodeChain& operator=(VRELNodeChain&& other) noexcept {
    if (this == &other) return *this;
    DeleteFrom(head);
    head = std::exchange(other.head, nullptr);
    tail = std::exchange(other.tail, nullptr);
    size = std::exchange(other.size, 0);
    return *this;
  }
  ~VRELNodeChain() { DeleteFrom(head); }

  // Deletes a node and all that follow it.
  static void DeleteFrom(Node* node) noexcept {
    while (node != nullptr) {
      Node* const following = node->next;
      node->next = nullptr;
      delete node;
      node = following;
    }
  }

  // Both take ownership of the node.
  void PushFront(Node* node) noexcept {
    node->next = head;
    (head != nullptr ? head->previous : tail) = node;
    head = node;
    ++size;
  }
  void PushBack(Node* node) noexcept {
    node->previous = tail;
    (tail != nullptr ? tail->next : head) = node;
    tail = node;
    ++size;
  }

  // Returns the first node with the value, or null.
  Node* Find(void const* value) const noexcept {
    return FindIf([=](Node const& node) { return node.value == value; });
  }
  template <class Predicate>
  Node* FindIf(Predicate matches) const {
    Node* node = head;
    while (node != nullptr && !matches(*node)) node = node->next;
    return node;
  }

  // Deletes one node. Does nothing for null, and for the first or last node of another chain.
  void Erase(Node* node) noexcept {
    if (node == nullptr) return;
    Node*& toNode = node->previous != nullptr ? node->previous->next : head;
    Node*& backToNode = node->next != nullptr ? node->next->previous : tail;
    if (toNode != node || backToNode != node) return;
    toNode = node->next;
    backToNode = node->previous;
    node->next = nullptr;
    --size;
    delete node;
  }

  // Deletes each node whose value equals that of the node before it.
  void Unique() noexcept {
    for (Node* node = head; node != nullptr;) {
      Node* const following = node->next;
      if (node->previous != nullptr && node->previous->value == node->value) Erase(node);
      node = following;
    }
  }

  void Clear() noexcept {
    DeleteFrom(head);
    head = nullptr;
    tail = nullptr;
    size = 0;
  }

  // Returns whether both chains have the same number of nodes and isEqual(a, b) holds for each pair of them.
  template <class Predicate>
  bool IsEqual(VRELNodeChain const& other, Predicate isEqual) const {
    if (size != other.size) return false;
    Node const* theirs = other.head;
    for (Node const* mine = head; mine != nullptr; mine = mine->next, theirs = theirs->next) {
      if (!isEqual(*mine, *theirs)) return false;
    }
    return true;
  }

  Node* head = nullptr;
  Node* tail = nullptr;
  int size = 0;
};
