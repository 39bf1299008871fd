#include "VRELOptionToken.h"

#include <unicode/unistr.h>

#include <cstdint>
#include <cwctype>
#include <string_view>

#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELStringConversions.h"

namespace {

// Tokens are short; a longer one is converted to a text of its own.
constexpr std::size_t longestOnStack = 63;

bool IsWildcard(VRELString const& key) {
  return key.view() == VREL_OPTION_WILDCARD.view();
}

bool IsEmpty(VRELString const& key) {
  return key.length() <= 0;
}

// A unit that is a character by itself, and not the one that ends a text.
bool IsCharacter(std::uint32_t unit) {
  return (unit > 0 && unit < 0xD800) || (unit > 0xDFFF && unit <= 0xFFFF);
}

// The text in upper case, behind it a zero; false if a unit cannot be converted alone.
bool ConvertToUpperCase(std::u16string_view text, char16_t* upper) {
  for (char16_t const unit : text) {
    if (!IsCharacter(unit)) return false;
    auto const converted = static_cast<std::uint32_t>(std::towupper(unit));
    if (!IsCharacter(converted)) return false;
    *upper++ = static_cast<char16_t>(converted);
  }
  *upper = 0;
  return true;
}

// VRELString::hashCode of the text in upper case.
int HashOf(VRELString const& text) {
  std::u16string_view const units = text.view();
  char16_t upper[longestOnStack + 1];
  if (units.empty() || units.size() > longestOnStack || !ConvertToUpperCase(units, upper)) {
    return VRELStringConvertToUpperCase(text).hashCode();
  }
  // The hash of a text goes over its terminator too.
  auto const length = static_cast<std::int32_t>(units.size()) + 1;
  auto const hash = static_cast<std::uint32_t>(icu::UnicodeString(false, upper, length).hashCode());
  return static_cast<int>(static_cast<std::int32_t>(hash) < 0 ? 0U - hash : hash);
}

}  // namespace

// Most nodes have no named child at all, so the 17 slots of the map are taken when the first one comes.
VRELOptionToken::VRELOptionToken(VRELOptionToken* aParent) : children(0), parent(aParent) {
  children.SetFunctions(GetHashValue, HashEqualFunction);
}

VRELOptionToken::~VRELOptionToken() = default;

VRINResult VRELOptionToken::GetToken(VRELString const& key, VRELOptionToken*& child) const {
  child = nullptr;
  if (IsEmpty(key)) return VREL_E_FAIL;
  if (IsWildcard(key)) {
    child = wildcardChild;
  } else {
    children.Get(key, child);
  }
  return child != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELOptionToken::AddToken(VRELString const& key, VRELOptionToken*& child) {
  if (GetToken(key, child).IsSuccess()) return VREL_S_OK;
  if (IsEmpty(key)) return VREL_E_FAIL;
  child = new VRELOptionToken(this);
  if (IsWildcard(key)) {
    wildcardChild = child;
  } else {
    children.Add(key, child);
  }
  return VREL_S_OK;
}

VRINResult VRELOptionToken::GetOption(VRELOption*& stored) const {
  stored = option;
  return stored != nullptr ? VREL_S_OK : VREL_E_OPTION_UNSET;
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
  children.InitEnumeration();
  cursor = nullptr;
  return VREL_S_OK;
}

VRINResult VRELOptionToken::GetNextChild(VRELOptionToken*& child) const {
  child = nullptr;
  VRELPair<VRELString, VRELOptionToken*> named;
  if (children.GetNext(named)) {
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
  InitEnumeration();
  while (true) {
    VRELOptionToken* child = nullptr;
    if (node->GetNextChild(child).IsSuccess()) {
      child->InitEnumeration();
      node = child;
      continue;
    }
    delete node->option;
    if (node == this) break;
    // The walk through the children above has passed this node, which nobody looks at any more.
    VRELOptionToken* const above = node->parent;
    delete node;
    node = above;
  }
  option = nullptr;
  wildcardChild = nullptr;
  children.Clear();
  return InitEnumeration();
}

unsigned int VRELOptionToken::GetHashValue(VRELString const& key) {
  return static_cast<unsigned int>(HashOf(key));
}

bool VRELOptionToken::HashEqualFunction(VRELString const& a, VRELString const& b) {
  return a.compareToIgnoreCase(b) == 0;
}
