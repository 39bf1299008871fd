// The chain of nodes behind VRELList and VRELMap. Programs use those two.
#pragma once

// A doubly linked chain that owns its nodes. Node has the fields value, next and previous.
template <class Node>
class VRELNodeChain {
 public:
  VRELNodeChain() = default;
  VRELNodeChain(VRELNodeChain const&) = delete;
  VRELNodeChain& operator=(VRELNodeChain const&) = delete;
  ~VRELNodeChain() { DeleteFrom(head); }

  // Deletes a node and all that follow it, one after the other and not one within the other: a chain may be longer
  // than the call stack is deep.
  static void DeleteFrom(Node* node) noexcept {
    while (node != nullptr) {
      Node* const following = node->next;
      node->next = nullptr;
      delete node;
      node = following;
    }
  }

  // Both take the node.
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

  // The first node that holds the value; null if there is none.
  Node* Find(void const* value) const noexcept {
    return FindIf([=](Node const& node) { return node.value == value; });
  }
  template <class Predicate>
  Node* FindIf(Predicate matches) const {
    Node* node = head;
    while (node != nullptr && !matches(*node)) node = node->next;
    return node;
  }

  // Deletes one node. Nothing happens for null and for a first or last node of another chain.
  void Erase(Node* node) noexcept {
    if (node == nullptr) return;
    Node*& before = node->previous != nullptr ? node->previous->next : head;
    Node*& behind = node->next != nullptr ? node->next->previous : tail;
    if (before != node || behind != node) return;
    before = node->next;
    behind = node->previous;
    node->next = nullptr;
    --size;
    delete node;
  }

  // Erases each node that holds the value of the one before it.
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

  Node* head = nullptr;
  Node* tail = nullptr;
  int size = 0;
};
