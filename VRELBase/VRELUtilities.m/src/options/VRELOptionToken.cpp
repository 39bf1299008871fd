// Storage of named children. Most nodes have one named child or none, and a hostile options file can bring half a
// million of them in a megabyte. A node is therefore allocated together with its key, and a single child is referred to
// directly. The hash map is built when the second child comes; it is the table that VRELHashMap documents (17 slots,
// linear probing, no tombstones), whose slots decide the order of enumeration and, for keys that are equal but hash
// differently, which keys are found. A single child behaves as if it were in such a map.
//
// Colliding keys. The hash that decides the slots is known to anyone, so keys that collide can be computed. The keys of
// the map therefore carry a second hash, of the case-folded key and a random seed of the process. Its high bits are the
// control byte by which the map compares sixteen slots at a time; keys are compared only where all of it agrees.
#include "VRELOptionToken.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <cstring>
#include <cwctype>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "VRELDynamicArray.h"
#include "VRELHashMap.h"
#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELStringConversions.h"

namespace {

// Keys up to this length are converted on the stack.
constexpr std::size_t kMaxStackLength = 63;

// Slots of a new map.
constexpr int kSlots = 17;

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
  static std::uint64_t const seed = std::random_device()() | std::uint64_t{std::random_device()()} << 32;
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

// Key of the map: a view of the key of a node, which lives as long as the node, with both hashes.
struct TokenKey {
  TokenKey() = default;
  explicit TokenKey(std::u16string_view key)
      : text(key.data()),
        length(static_cast<std::uint32_t>(key.size())),
        hash(HashOf(key)),
        foldedHash(FoldedHashOf(key)) {}

  std::u16string_view View() const { return std::u16string_view(text, length); }

  char16_t const* text = nullptr;
  std::uint32_t length = 0;
  std::uint32_t hash = 0;
  std::uint32_t foldedHash = 0;
};

}  // namespace

template <>
struct VRELHashTraits<TokenKey> {
  static unsigned int Hash(TokenKey const& key) noexcept { return key.hash; }
  static bool Equal(TokenKey const& a, TokenKey const& b) noexcept {
    return a.foldedHash == b.foldedHash && VRELString::compareIgnoringCase(a.View(), b.View()) == 0;
  }
  // 0 and 1 have a meaning of their own.
  static unsigned char Mark(TokenKey const& key) noexcept {
    unsigned int const byte = key.foldedHash >> 24;
    return static_cast<unsigned char>(byte < 2 ? byte + 2 : byte);
  }
};

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

// The map drops a key that becomes equal to another during a rehash, so that it can hold fewer children than were made.
struct VRELOptionToken::NamedChildren {
  VRELHashMap<TokenKey, VRELOptionToken*> map = VRELHashMap<TokenKey, VRELOptionToken*>(kSlots);
  VRELDynamicArray<VRELOptionToken*> made;
};

VRELOptionToken::VRELOptionToken(VRELOptionToken* aParent) : parent(aParent) {}

VRELOptionToken::~VRELOptionToken() {
  ForgetNamed();
}

VRELOptionToken::NamedToken* VRELOptionToken::OnlyChild() const noexcept {
  return (named & 1) == 0 ? reinterpret_cast<NamedToken*>(named) : nullptr;
}

VRELOptionToken::NamedChildren* VRELOptionToken::Map() const noexcept {
  return (named & 1) != 0 ? reinterpret_cast<NamedChildren*>(named & ~std::uintptr_t{1}) : nullptr;
}

void VRELOptionToken::ForgetNamed() noexcept {
  delete Map();
  named = 0;
}

VRINResult VRELOptionToken::GetToken(VRELString const& key, VRELOptionToken*& child) const {
  child = Find(key.view());
  return child != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

VRELOptionToken* VRELOptionToken::Find(std::u16string_view key) const {
  if (IsWildcard(key)) return wildcardChild;
  if (key.empty()) return nullptr;
  if (NamedChildren const* const children = Map()) {
    VRELOptionToken* child = nullptr;
    children->map.Get(TokenKey(key), child);
    return child;
  }
  NamedToken* const child = OnlyChild();
  if (child == nullptr) return nullptr;
  std::u16string_view const childKey = child->Key();
  if (childKey == key) return child;
  // In a map of 17 slots, equal keys that hash to different slots would not meet.
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

VRELOptionToken* VRELOptionToken::AddNamed(std::u16string_view key) {
  std::unique_ptr<VRELOptionToken> child = NamedToken::Make(this, key);
  if (named == 0) {
    named = reinterpret_cast<std::uintptr_t>(static_cast<NamedToken*>(child.release()));
    return OnlyChild();
  }
  if (OnlyChild() != nullptr) ConvertToMap();
  NamedChildren& children = *Map();
  children.made.add(child.get());
  auto* const token = static_cast<NamedToken*>(child.release());
  // A rehash before the addition can bring the key next to an equal one that Find did not reach.
  return children.map.Add(TokenKey(token->Key()), token) ? token : Find(key);
}

// Moves the only child into a map, with the state of the enumeration.
void VRELOptionToken::ConvertToMap() {
  NamedToken* const child = OnlyChild();
  auto children = std::make_unique<NamedChildren>();
  children->made.add(child);
  children->map.Add(TokenKey(child->Key()), child);
  if (child->isEnumerated) children->map.SkipNext();
  named = reinterpret_cast<std::uintptr_t>(children.release()) | 1;
}

// Removes one of the children and returns it; null if there is none left.
VRELOptionToken* VRELOptionToken::TakeChild() noexcept {
  if (NamedChildren* const children = Map(); children != nullptr && children->made.size() > 0) {
    VRELOptionToken* const child = children->made[children->made.size() - 1];
    children->made.endShrink(1);
    return child;
  }
  if (NamedToken* const child = OnlyChild()) {
    named = 0;
    return child;
  }
  return std::exchange(wildcardChild, nullptr);
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
  if (NamedChildren const* const children = Map()) children->map.InitEnumeration();
  if (NamedToken* const child = OnlyChild()) child->isEnumerated = false;
  cursor = nullptr;
  return VREL_S_OK;
}

VRINResult VRELOptionToken::GetNextChild(VRELOptionToken*& child) const {
  child = nullptr;
  VRELPair<TokenKey, VRELOptionToken*> next;
  if (NamedChildren const* const children = Map()) {
    if (children->map.GetNext(next)) child = next.value;
  } else if (NamedToken* const only = OnlyChild(); only != nullptr && !only->isEnumerated) {
    only->isEnumerated = true;
    child = only;
  }
  if (child == nullptr && cursor != wildcardChild) child = wildcardChild;
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
