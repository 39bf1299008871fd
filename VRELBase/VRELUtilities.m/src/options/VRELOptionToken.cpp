#include "VRELOptionToken.h"

#include <cstdint>
#include <cwctype>
#include <memory>
#include <string_view>
#include <utility>

#include "VRELDynamicArray.h"
#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELStringConversions.h"

namespace {

// Tokens are short; a longer one is converted to a text of its own.
constexpr std::size_t longestOnStack = 63;

// A unit that is a character by itself, and not the one that ends a text.
bool IsCharacter(std::uint32_t unit) {
  return (unit > 0 && unit < 0xD800) || (unit > 0xDFFF && unit <= 0xFFFF);
}

// The text in upper case; false if a unit cannot be converted alone.
bool ConvertToUpperCase(std::u16string_view text, char16_t* upper) {
  for (char16_t const unit : text) {
    // Of the ASCII letters i alone has different capitals in the locales of the C library, so only it is asked for.
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

// VRELString::hashCode of the text in upper case.
unsigned int HashOf(std::u16string_view text) {
  char16_t upper[longestOnStack];
  bool const isConverted = text.size() <= longestOnStack && ConvertToUpperCase(text, upper);
  int const hash = isConverted ? VRELString::hashCode(std::u16string_view(upper, text.size()))
                               : VRELStringConvertToUpperCase(VRELString(text)).hashCode();
  return static_cast<unsigned int>(hash);
}

}  // namespace

// A map that grows drops a key which meets an equal that it had not met before, so it may hold fewer than were made.
struct VRELOptionToken::NamedChildren : VRELHashMap<VRELString, VRELOptionToken*> {
  // The default equality is HashEqualFunction.
  NamedChildren() : VRELHashMap(17) { SetFunctions(GetHashValue, nullptr); }

  VRELDynamicArray<VRELOptionToken*> made;
};

VRELOptionToken::VRELOptionToken(VRELOptionToken* aParent) : parent(aParent) {}

VRELOptionToken::~VRELOptionToken() {
  DeleteMap();
}

VRINResult VRELOptionToken::GetToken(VRELString const& key, VRELOptionToken*& child) const {
  child = Find(key.view());
  return child != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

VRELOptionToken* VRELOptionToken::Find(std::u16string_view key) const {
  if (IsWildcard(key)) return wildcardChild;
  if (key.empty() || children == nullptr) return nullptr;
  auto const isKey = [key](VRELString const& stored) {
    return VRELString::compareIgnoringCase(key, stored.view()) == 0;
  };
  auto const seededHash = [key] { return VRELHashTraits<VRELString>::SeededHashOf(key); };
  VRELOptionToken* const* const child = children->GetEqual(HashOf(key), isKey, seededHash);
  return child != nullptr ? *child : nullptr;
}

VRINResult VRELOptionToken::AddToken(VRELString const& key, VRELOptionToken*& child) {
  child = Find(key.view());
  if (child == nullptr && key.length() > 0) child = Make(key);
  return child != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

VRELOptionToken* VRELOptionToken::FindOrAdd(std::u16string_view key) {
  VRELOptionToken* const found = Find(key);
  if (found != nullptr || key.empty()) return found;
  return IsWildcard(key) ? Make(VREL_OPTION_WILDCARD) : Make(VRELString(key));
}

VRELOptionToken* VRELOptionToken::Make(VRELString const& key) {
  auto child = std::make_unique<VRELOptionToken>(this);
  if (IsWildcard(key.view())) return wildcardChild = child.release();
  if (children == nullptr) children = std::make_unique<NamedChildren>();
  static_cast<NamedChildren&>(*children).made.add(child.get());
  VRELOptionToken* const node = child.release();
  // The map may grow first, and the key then meet an equal that Find had not met.
  return children->Add(key, node) ? node : Find(key.view());
}

// One of the children that were made, which is then none of this node's any more; null when there is none left.
VRELOptionToken* VRELOptionToken::TakeChild() noexcept {
  auto* const named = static_cast<NamedChildren*>(children.get());
  if (named == nullptr || named->made.size() == 0) return std::exchange(wildcardChild, nullptr);
  VRELOptionToken* const child = named->made[named->made.size() - 1];
  named->made.endShrink(1);
  return child;
}

void VRELOptionToken::DeleteMap() noexcept {
  delete static_cast<NamedChildren*>(children.release());
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
  if (children != nullptr) children->InitEnumeration();
  cursor = nullptr;
  return VREL_S_OK;
}

VRINResult VRELOptionToken::GetNextChild(VRELOptionToken*& child) const {
  child = nullptr;
  VRELPair<VRELString, VRELOptionToken*> named;
  if (children != nullptr && children->GetNext(named)) {
    child = named.value;
    cursor = child;
  } else if (cursor != wildcardChild) {
    child = wildcardChild;
    cursor = child;
  }
  return child != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

// A name can have any number of tokens, so the way back from below goes by the parents and not by the call stack.
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
  DeleteMap();
  return InitEnumeration();
}

unsigned int VRELOptionToken::GetHashValue(VRELString const& key) {
  return HashOf(key.view());
}

bool VRELOptionToken::HashEqualFunction(VRELString const& a, VRELString const& b) {
  return a.compareToIgnoreCase(b) == 0;
}
