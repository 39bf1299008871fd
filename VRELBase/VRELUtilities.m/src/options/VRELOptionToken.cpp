// Storage of named children. Most nodes have one named child or none, and a hostile options file can bring half a
// million of them in a megabyte. A node is therefore allocated together with its key, and a single child is referred to
// directly. A table is built when the second child is added. It has the slots of a VRELHashMap (17 at first, doubled
// before more than three quarters are used; linear probing), because they decide the order of enumeration and, for keys
// that are equal but hash differently, which keys are found. A single child behaves as if it were in such a table.
//
// Colliding keys. The hash that decides the slots is known to anyone, so keys that collide can be computed, and a probe
// run can become as long as the table. Since children are never removed one by one, the end of a run is found with a
// union-find structure instead of a traversal (Knuth, The Art of Computer Programming, volume 3, section 6.4, describes
// the runs; Tarjan, "Efficiency of a good but not linear set union algorithm", the structure). A run that is longer
// than 32 slots is not searched, but looked up in an index by a second hash, of the case-folded key with a random seed.
// Both keep each operation at constant cost on average, independent of the keys.
#include "VRELOptionToken.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <cstring>
#include <cwctype>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "VRELDynamicArray.h"
#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELStringConversions.h"
#include "VRELWildcardChain.h"
#include "detail/VRELSeededHash.h"

namespace {

// Keys up to this length are converted on the stack.
constexpr std::size_t kMaxStackLength = 63;

// Slots of a new table.
constexpr std::uint32_t kSlots = 17;

// Probe runs up to this length are searched slot by slot.
constexpr std::uint32_t kShortRun = 32;

// Returns whether a UTF-16 unit is a code point by itself, and not U+0000.
bool IsCharacter(std::uint32_t unit) {
  return (unit > 0 && unit < 0xD800) || (unit > 0xDFFF && unit <= 0xFFFF);
}

// Converts to upper case. Returns false if a unit cannot be converted alone.
bool ConvertToUpperCase(std::u16string_view text, char16_t* upper) {
  for (char16_t const unit : text) {
    // Of the ASCII letters, only the capital of i depends on the locale of the C library.
    if (unit > 0 && unit < 0x80 && unit != u'i') {
      *upper++ = static_cast<char16_t>(unit >= u'a' && unit <= u'z' ? unit - u'a' + u'A' : unit);
      continue;
    }
    if (!IsCharacter(unit)) return false;
    auto const converted = static_cast<std::uint32_t>(std::towupper(unit));
    if (!IsCharacter(converted)) return false;
    *upper++ = static_cast<char16_t>(converted);
  }
  return true;
}

// Returns VRELString::hashCode of the key in upper case.
unsigned int HashOf(std::u16string_view text) {
  char16_t upper[kMaxStackLength];
  bool const isConverted = text.size() <= kMaxStackLength && ConvertToUpperCase(text, upper);
  int const hash = isConverted ? VRELString::hashCode(std::u16string_view(upper, text.size()))
                               : VRELStringConvertToUpperCase(VRELString(text)).hashCode();
  return static_cast<unsigned int>(hash);
}

std::u16string FoldCase(std::u16string_view text) {
  std::u16string folded(3 * text.size(), u'\0');  // no character folds to more than three units
  UErrorCode status = U_ZERO_ERROR;
  std::int32_t const length = u_strFoldCase(folded.data(), static_cast<std::int32_t>(folded.size()), text.data(),
                                            static_cast<std::int32_t>(text.size()), U_FOLD_CASE_DEFAULT, &status);
  folded.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
  return folded;
}

std::uint64_t Mix(std::uint64_t hash, char16_t unit) {
  hash = (hash ^ unit) * 0x9E3779B97F4A7C15U;
  return hash ^ hash >> 32;
}

// Returns a hash of the case-folded key that cannot be computed outside the process.
std::uint32_t FoldedHashOf(std::u16string_view text) {
  static std::uint64_t const seed = VRELSeededHash::ProcessKey().low;
  std::uint64_t hash = seed;
  for (char16_t const unit : text) {
    if (unit >= 0x80) {
      hash = seed;
      for (char16_t const folded : FoldCase(text)) hash = Mix(hash, folded);
      break;
    }
    hash = Mix(hash, unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit);
  }
  return static_cast<std::uint32_t>(hash);
}

}  // namespace

// A named child. The units of its key follow the object in memory.
struct VRELOptionToken::NamedToken : VRELOptionToken {
  static std::unique_ptr<VRELOptionToken> Make(VRELOptionToken* parent, std::u16string_view key) {
    void* const memory = ::operator new(sizeof(NamedToken) + key.size() * sizeof(char16_t));
    auto* const token = new (memory) NamedToken(parent, static_cast<std::uint32_t>(key.size()));
    std::memcpy(static_cast<void*>(token + 1), key.data(), key.size() * sizeof(char16_t));
    return std::unique_ptr<VRELOptionToken>(token);
  }

  std::u16string_view Key() const { return std::u16string_view(reinterpret_cast<char16_t const*>(this + 1), length); }

  std::uint32_t length;
  bool isEnumerated = false;  // the enumeration has passed this child, as long as it is the only one

 private:
  NamedToken(VRELOptionToken* aParent, std::uint32_t keyLength) : VRELOptionToken(aParent), length(keyLength) {}
};

// Table of two or more named children.
//
// Keys that are equal but hash differently can become neighbours when the table grows: the second one is then dropped
// from the table, and stays in `made`.
struct VRELOptionToken::NamedChildren {
 public:
  NamedChildren() : NamedChildren(kSlots) {}

  // Returns the child that a search for the key finds, or null.
  NamedToken* Find(std::u16string_view key) const {
    NamedToken const* const child = At(Search(key, HashOf(key)));
    return const_cast<NamedToken*>(child);
  }

  // Adds a child. Returns false if it has the key of another child.
  bool Add(NamedToken& child) {
    // Before the check for an equal key, as VRELHashMap::Add does.
    if (4 * (count + 1) > 3 * slots.size()) Grow();
    if (!Place(child, HashOf(child.Key()))) return false;
    ++count;
    return true;
  }

  void InitEnumeration() noexcept { cursor = 0; }
  // Returns the child in the next occupied slot, or null.
  NamedToken* GetNext() noexcept {
    while (cursor < slots.size()) {
      if (NamedToken* const child = slots[cursor++].child) return child;
    }
    return nullptr;
  }

  VRELDynamicArray<VRELOptionToken*> made;  // all children, including those that were dropped

 private:
  struct Slot {
    NamedToken* child = nullptr;
    std::uint32_t hash = 0;
  };

  explicit NamedChildren(std::size_t slotCount) : slots(slotCount), nextFree(slotCount) {
    for (std::size_t i = 0; i < slotCount; ++i) nextFree[i] = static_cast<std::uint32_t>(i);
  }

  std::uint32_t SlotCount() const { return static_cast<std::uint32_t>(slots.size()); }
  NamedToken const* At(std::uint32_t slot) const { return slots[slot].child; }
  std::uint32_t Distance(std::uint32_t from, std::uint32_t to) const {
    return to >= from ? to - from : to + SlotCount() - from;
  }

  // Returns the first free slot at or after a slot, and halves the path to it. There is always a free slot.
  std::uint32_t FreeSlot(std::uint32_t slot) const {
    while (nextFree[slot] != slot) {
      nextFree[slot] = nextFree[nextFree[slot]];
      slot = nextFree[slot];
    }
    return slot;
  }

  static bool IsEqual(Slot const& slot, std::u16string_view key) {
    return VRELString::compareIgnoringCase(key, slot.child->Key()) == 0;
  }

  // Returns the first slot of the probe run whose key is equal, or the free slot at its end. A search in a short run
  // does without the second hash.
  std::uint32_t Search(std::u16string_view key, std::uint32_t hash) const {
    std::uint32_t const start = hash % SlotCount();
    std::uint32_t const end = FreeSlot(start);
    if (Distance(start, end) > kShortRun) return SearchLongRun(key, start, end);
    for (std::uint32_t slot = start; slot != end; slot = slot + 1 == SlotCount() ? 0 : slot + 1) {
      if (IsEqual(slots[slot], key)) return slot;
    }
    return end;
  }

  std::uint32_t SearchLongRun(std::u16string_view key, std::uint32_t start, std::uint32_t end) const {
    if (index.empty()) {
      for (std::uint32_t slot = 0; slot < SlotCount(); ++slot) {
        if (slots[slot].child != nullptr) index.emplace(FoldedHashOf(slots[slot].child->Key()), slot);
      }
    }
    std::uint32_t found = end;
    auto const candidates = index.equal_range(FoldedHashOf(key));
    for (auto i = candidates.first; i != candidates.second; ++i) {
      bool const isBefore = Distance(start, i->second) < Distance(start, found);
      if (isBefore && IsEqual(slots[i->second], key)) found = i->second;
    }
    return found;
  }

  bool Place(NamedToken& child, std::uint32_t hash) {
    std::uint32_t const slot = Search(child.Key(), hash);
    if (slots[slot].child != nullptr) return false;
    if (!index.empty()) index.emplace(FoldedHashOf(child.Key()), slot);
    slots[slot] = {&child, hash};
    nextFree[slot] = slot + 1 == SlotCount() ? 0 : slot + 1;
    return true;
  }

  void Grow() {
    NamedChildren larger(2 * slots.size());
    for (Slot const& slot : slots) {
      if (slot.child != nullptr) larger.Place(*slot.child, slot.hash);
    }
    slots.swap(larger.slots);
    nextFree.swap(larger.nextFree);
    index.swap(larger.index);
  }

  std::vector<Slot> slots;
  // Of a free slot, the slot itself; of an occupied one, a slot nearer to the next free one.
  mutable std::vector<std::uint32_t> nextFree;
  // Slots by the second hash of their keys. Empty until a long run is searched.
  mutable std::unordered_multimap<std::uint32_t, std::uint32_t> index;
  std::size_t count = 0;  // includes dropped children
  std::size_t cursor = 0;
};

VRELOptionToken::VRELOptionToken(VRELOptionToken* aParent) : parent(aParent) {}

VRELOptionToken::~VRELOptionToken() {
  ForgetNamed();
}

VRELOptionToken::NamedToken* VRELOptionToken::OnlyChild() const noexcept {
  return (named & 1) == 0 ? reinterpret_cast<NamedToken*>(named) : nullptr;
}

VRELOptionToken::NamedChildren* VRELOptionToken::Table() const noexcept {
  return (named & 1) != 0 ? reinterpret_cast<NamedChildren*>(named & ~std::uintptr_t{1}) : nullptr;
}

void VRELOptionToken::ForgetNamed() noexcept {
  delete Table();
  named = 0;
}

VRINResult VRELOptionToken::GetToken(VRELString const& key, VRELOptionToken*& child) const {
  child = Find(key.view());
  return child != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

VRELOptionToken* VRELOptionToken::Find(std::u16string_view key) const {
  if (IsWildcard(key)) return FindWildcard();
  if (key.empty()) return nullptr;
  if (NamedChildren const* const children = Table()) return children->Find(key);
  NamedToken* const child = OnlyChild();
  if (child == nullptr) return nullptr;
  std::u16string_view const childKey = child->Key();
  if (childKey == key) return child;
  // In a table of 17 slots, an equal key that hashes to another slot would not be found.
  bool const isFound =
      VRELString::compareIgnoringCase(key, childKey) == 0 && HashOf(key) % kSlots == HashOf(childKey) % kSlots;
  return isFound ? child : nullptr;
}

VRINResult VRELOptionToken::AddToken(VRELString const& key, VRELOptionToken*& child) {
  child = FindOrAdd(key.view());
  return child != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

VRELOptionToken* VRELOptionToken::FindOrAdd(std::u16string_view key) {
  // A VRELString ends at its first U+0000.
  key = key.substr(0, key.find(u'\0'));
  VRELOptionToken* const found = Find(key);
  if (found != nullptr || key.empty()) return found;
  if (!IsWildcard(key)) return AddNamed(key);
  wildcardChild = new VRELOptionToken(this);
  return wildcardChild;
}

// Replaces the first level of a chain by a node. Enumerations continue as if it had been there from the beginning.
VRELOptionToken* VRELOptionToken::FindWildcard() const {
  VRELWildcardChain* const chain = Chain();
  if (chain == nullptr) return wildcardChild;
  auto node = std::make_unique<VRELOptionToken>(const_cast<VRELOptionToken*>(this));
  bool const isPassed = cursor == wildcardChild;
  if (chain->Levels() > 1) {
    chain->RemoveLevel();
    node->wildcardChild = wildcardChild;
    if (chain->isEnumerated) node->cursor = wildcardChild;
  } else {
    chain->Option();
    node->option = chain->ReleaseOption();
    delete chain;
  }
  wildcardChild = node.release();
  if (isPassed) cursor = wildcardChild;
  return wildcardChild;
}

VRELOptionToken* VRELOptionToken::AddNamed(std::u16string_view key) {
  std::unique_ptr<VRELOptionToken> child = NamedToken::Make(this, key);
  if (named == 0) {
    named = reinterpret_cast<std::uintptr_t>(static_cast<NamedToken*>(child.release()));
    return OnlyChild();
  }
  if (OnlyChild() != nullptr) ConvertToTable();
  NamedChildren& children = *Table();
  children.made.add(child.get());
  auto* const token = static_cast<NamedToken*>(child.release());
  // A rehash before the addition can bring the key next to an equal one that Find did not reach.
  return children.Add(*token) ? token : Find(key);
}

// Moves the only child into a table, with the state of the enumeration.
void VRELOptionToken::ConvertToTable() {
  NamedToken* const child = OnlyChild();
  auto children = std::make_unique<NamedChildren>();
  children->made.add(child);
  children->Add(*child);
  if (child->isEnumerated) children->GetNext();
  named = reinterpret_cast<std::uintptr_t>(children.release()) | 1;
}

// Removes one of the children and returns it; null if there is none left.
VRELOptionToken* VRELOptionToken::TakeChild() noexcept {
  if (NamedChildren* const children = Table(); children != nullptr && children->made.size() > 0) {
    VRELOptionToken* const child = children->made[children->made.size() - 1];
    children->made.endShrink(1);
    return child;
  }
  if (NamedToken* const child = OnlyChild()) {
    named = 0;
    return child;
  }
  VRELWildcardChain* const chain = Chain();
  delete chain;
  VRELOptionToken* const child = std::exchange(wildcardChild, nullptr);
  return chain == nullptr ? child : nullptr;
}

VRINResult VRELOptionToken::SetOption(VRELOption* newOption) {
  if (newOption == nullptr) return VREL_E_INVALID_ARGUMENT;
  if (option != newOption) delete option;
  option = newOption;
  return VREL_S_OK;
}

VRINResult VRELOptionToken::GetParent(VRELOptionToken*& node) const {
  node = parent;
  return node != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELOptionToken::InitEnumeration() const {
  if (NamedChildren* const children = Table()) children->InitEnumeration();
  if (NamedToken* const child = OnlyChild()) child->isEnumerated = false;
  cursor = nullptr;
  return VREL_S_OK;
}

// Returns the next named child of the enumeration, or null.
VRELOptionToken* VRELOptionToken::NextNamed() const noexcept {
  if (NamedChildren* const children = Table()) return children->GetNext();
  NamedToken* const only = OnlyChild();
  if (only == nullptr || only->isEnumerated) return nullptr;
  only->isEnumerated = true;
  return only;
}

VRINResult VRELOptionToken::GetNextChild(VRELOptionToken*& child) const {
  child = NextNamed();
  if (child == nullptr && cursor != wildcardChild) child = FindWildcard();
  if (child == nullptr) return VREL_E_FAIL;
  cursor = child;
  return VREL_S_OK;
}

// A name can have any number of tokens, so that the traversal returns by the parents and not by the call stack.
VRINResult VRELOptionToken::RemoveAll() {
  VRELOptionToken* node = this;
  while (true) {
    if (VRELOptionToken* const child = node->TakeChild()) {
      node = child;
      continue;
    }
    delete node->option;
    if (node == this) break;
    VRELOptionToken* const above = node->parent;
    delete node;
    node = above;
  }
  option = nullptr;
  ForgetNamed();
  return InitEnumeration();
}

unsigned int VRELOptionToken::GetHashValue(VRELString const& key) {
  return HashOf(key.view());
}

bool VRELOptionToken::HashEqualFunction(VRELString const& a, VRELString const& b) {
  return a.compareToIgnoreCase(b) == 0;
}
