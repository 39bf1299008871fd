// A node of the option store's tree.
#pragma once

#include <memory>
#include <string_view>

#include "VRELExport.h"
#include "VRELHashMap.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELOption;

// Stands for one token of the names that lead through it, and may hold one option. The child for "*" is kept apart from
// the named ones, which are found whatever their case. VRELOptions builds trees of nodes; a client meets them in an
// enumeration.
//
// A node owns its option and what lies below it, but only RemoveAll deletes that: the destructor leaves it behind.
class VREL_EXPORT VRELOptionToken {
 public:
  // Without children; null makes a root. AddToken makes the nodes below and enters them.
  VRELOptionToken(VRELOptionToken* parent);
  // Forgets children and option, and deletes neither; call RemoveAll first.
  ~VRELOptionToken();
  VRELOptionToken(VRELOptionToken const&) = delete;
  VRELOptionToken& operator=(VRELOptionToken const&) = delete;

  // The child for a key, "*" being one of them. VREL_E_FAIL, with null, when there is none, and for the empty key.
  VRINResult GetToken(VRELString const& key, VRELOptionToken*& child) const;
  // The same for a key within another text; null when there is none.
  VRELOptionToken* Find(std::u16string_view key) const;
  VRELOptionToken* FindWildcard() const noexcept { return wildcardChild; }
  // Whether a key is "*".
  static bool IsWildcard(std::u16string_view key) noexcept { return key.size() == 1 && key.front() == u'*'; }
  // As GetToken and Find, but a missing child is made. VREL_E_FAIL, with null, for the empty key alone.
  VRINResult AddToken(VRELString const& key, VRELOptionToken*& child);
  VRELOptionToken* FindOrAdd(std::u16string_view key);

  // VREL_E_OPTION_UNSET, with null, when there is no option.
  VRINResult GetOption(VRELOption*& stored) const {
    stored = option;
    return stored != nullptr ? VREL_S_OK : VREL_E_OPTION_UNSET;
  }
  // Takes the option over, and deletes the one that was there. Null: VREL_E_INVALID_ARGUMENT.
  VRINResult SetOption(VRELOption* newOption);

  // VREL_E_FAIL, with null, for a root.
  VRINResult GetParent(VRELOptionToken*& node) const;

  // One walk through the children at a time: the named ones, in the order of the map, and then the one for "*".
  // VREL_E_FAIL, with null, behind the last.
  VRINResult InitEnumeration() const;
  VRINResult GetNextChild(VRELOptionToken*& child) const;

  // Deletes all that lies below, and the option.
  VRINResult RemoveAll();

  // How the children are found: the hash of the key in upper case, and compareToIgnoreCase.
  static unsigned int GetHashValue(VRELString const& key);
  static bool HashEqualFunction(VRELString const& a, VRELString const& b);

 private:
  struct NamedChildren;

  VRELOptionToken* Make(VRELString const& key);
  VRELOptionToken* TakeChild() noexcept;
  void DeleteMap() noexcept;

  // Those with a name, always a NamedChildren, which only DeleteMap deletes; null until the first comes, because most
  // nodes have none.
  std::unique_ptr<VRELHashMap<VRELString, VRELOptionToken*>> children;
  VRELOptionToken* parent;
  mutable VRELOptionToken* cursor = nullptr;
  VRELOptionToken* wildcardChild = nullptr;
  VRELOption* option = nullptr;
};
