// Node of the option store's tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELOption;
class VRELWildcardChain;

// Node of the tree in which VRELOptions stores its options: one token of the option names that lead through it, and at
// most one option. Clients meet nodes in an enumeration:
//
//   VRELOptionToken* child = nullptr;
//   node->InitEnumeration();
//   while (node->GetNextChild(child).IsSuccess()) ...
//
// Named children are found without regard to case, in a hash table with 17 slots at first. The child for "*" is kept
// apart from them.
//
// Ownership: a node owns its option and its children, but only RemoveAll deletes them; the destructor does not.
// Thread safety: none. The enumeration state is part of the node.
class VREL_EXPORT VRELOptionToken {
 public:
  // Creates a node without children; with null, a root. The parent does not refer to the node: AddToken makes nodes
  // that are children of their parent.
  VRELOptionToken(VRELOptionToken* parent);
  // Deletes neither children nor option. Call RemoveAll first.
  ~VRELOptionToken();
  VRELOptionToken(VRELOptionToken const&) = delete;
  VRELOptionToken& operator=(VRELOptionToken const&) = delete;

  // Nodes differ in size, because a named node is allocated together with its key.
  static void* operator new(std::size_t size) { return ::operator new(size); }
  static void* operator new(std::size_t size, std::nothrow_t const& tag) noexcept { return ::operator new(size, tag); }
  static void* operator new(std::size_t, void* memory) noexcept { return memory; }
  static void operator delete(void* memory) noexcept { ::operator delete(memory); }
  static void operator delete(void* memory, std::nothrow_t const&) noexcept { ::operator delete(memory); }
  static void operator delete(void*, void*) noexcept {}

  // Finds the child for a key; "*" is the wildcard child.
  // Errors: VREL_E_FAIL, with a null `child`, if there is none or the key is empty.
  VRINResult GetToken(VRELString const& key, VRELOptionToken*& child) const;
  // Like GetToken, but returns the child, or null.
  VRELOptionToken* Find(std::u16string_view key) const;
  // Returns the child for "*", or null. Allocates the child if it is the first node of a chain of wildcards that were
  // not requested before.
  VRELOptionToken* FindWildcard() const;
  // Returns whether a key is "*".
  static bool IsWildcard(std::u16string_view key) noexcept { return key.size() == 1 && key.front() == u'*'; }
  // Finds the child for a key, or adds it.
  // Errors: VREL_E_FAIL, with a null `child`, if the key is empty.
  VRINResult AddToken(VRELString const& key, VRELOptionToken*& child);
  // Like AddToken, but returns the child, or null.
  VRELOptionToken* FindOrAdd(std::u16string_view key);

  // Errors: VREL_E_OPTION_UNSET, with a null `stored`, if the node has no option.
  VRINResult GetOption(VRELOption*& stored) const {
    stored = option;
    return stored != nullptr ? VREL_S_OK : VREL_E_OPTION_UNSET;
  }
  // Sets the option and deletes the previous one.
  // Ownership: the node owns the option.
  // Errors: VREL_E_INVALID_ARGUMENT for null.
  VRINResult SetOption(VRELOption* newOption);

  // Errors: VREL_E_FAIL, with a null `node`, for a root.
  VRINResult GetParent(VRELOptionToken*& node) const;

  // Restarts the enumeration of the children.
  VRINResult InitEnumeration() const;
  // Returns the next child: named children in slot order, then the wildcard child.
  // Errors: VREL_E_FAIL, with a null `child`, after the last one.
  VRINResult GetNextChild(VRELOptionToken*& child) const;

  // Deletes all descendants and the option, iteratively.
  VRINResult RemoveAll();

  // Returns the hash code of the key in upper case.
  static unsigned int GetHashValue(VRELString const& key);
  // Returns whether compareToIgnoreCase returns 0.
  static bool HashEqualFunction(VRELString const& a, VRELString const& b);

 private:
  friend class VRELOptions;

  struct NamedToken;
  struct NamedChildren;

  NamedToken* OnlyChild() const noexcept;
  NamedChildren* Table() const noexcept;
  VRELOptionToken* AddNamed(std::u16string_view key);
  void ConvertToTable();
  VRELOptionToken* TakeChild() noexcept;
  void ForgetNamed() noexcept;
  VRELOptionToken* NextNamed() const noexcept;

  // Returns the chain of wildcard nodes below this node that are not allocated, or null.
  VRELWildcardChain* Chain() const noexcept {
    auto const bits = reinterpret_cast<std::uintptr_t>(wildcardChild);
    return (bits & 1) != 0 ? reinterpret_cast<VRELWildcardChain*>(bits & ~std::uintptr_t{1}) : nullptr;
  }
  static VRELOptionToken* Tagged(VRELWildcardChain* chain) noexcept {
    return reinterpret_cast<VRELOptionToken*>(reinterpret_cast<std::uintptr_t>(chain) | 1);
  }

  // No named child: 0. One: its address. More: the address of a NamedChildren, with bit 0 set.
  std::uintptr_t named = 0;
  VRELOptionToken* parent;
  mutable VRELOptionToken* cursor = nullptr;
  // The node, or the address of a chain with bit 0 set.
  mutable VRELOptionToken* wildcardChild = nullptr;
  VRELOption* option = nullptr;
};
