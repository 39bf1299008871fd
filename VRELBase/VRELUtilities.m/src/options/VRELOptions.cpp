#include "VRELOptions.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "VRELCfgLine.h"
#include "VRELChannelLine.h"
#include "VRELFilePath.h"
#include "VRELInfo.h"
#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELOptionToken.h"
#include "VRELStreamFormatter.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELStringConversions.h"
#include "VRELWildcardChain.h"

// Layout and look-up. A name t0.t1...tn is stored along the path tn, t0, t1, ..., t(n-1) from the root, extended by "*"
// to 7 levels; the option is at the last node. The last token comes first because it names the setting: all options of
// one setting are in one subtree, and a look-up visits only that.
//
// A look-up descends from the node of its last token. At each level it tries the child for its own token, then the
// wildcard child, and backtracks (depth-first search), so that an exact match of an early token wins over exact matches
// of later ones. Tokens that the look-up lacks match only the wildcard child. The depth is at most 7.
//
// Memory. The wildcard nodes that extend a path are not allocated until a client asks for them: a node refers to a
// VRELWildcardChain instead, which has the option. Look-ups and enumerations leave chains as they are. A chain always
// ends at the 7th level.
namespace {

// Levels of a path below the first one, at least.
constexpr int kLowerLevels = VREL_OPTION_TOKENS - 1;

// Bits of an address of a node that are 0.
constexpr std::uintptr_t kLevelBits = 7;
static_assert(__STDCPP_DEFAULT_NEW_ALIGNMENT__ > kLevelBits && kLowerLevels <= static_cast<int>(kLevelBits));

bool HasNoOption(VRELOptionToken const& node) {
  VRELOption* option = nullptr;
  return node.GetOption(option).IsFailure();
}

VRELOptionToken* ParentOf(VRELOptionToken const& node) {
  VRELOptionToken* parent = nullptr;
  node.GetParent(parent);
  return parent;
}

constexpr auto kSeparator = static_cast<char16_t>(VREL_OPTION_SEPARATOR);

// Removes the first token, with its separator, and returns it.
std::u16string_view TakeToken(std::u16string_view& tokens) {
  std::size_t const end = tokens.find(kSeparator);
  std::u16string_view const token = tokens.substr(0, end);
  tokens.remove_prefix(end + 1);
  return token;
}

}  // namespace

// Tokens of a name as views, split as by VRELStringTokenizer. The name must outlive the object.
class VRELOptionPath {
 public:
  explicit VRELOptionPath(VRELString const& name) : text(name.view()) {
    if (text.empty()) return;
    if (name.getHoldsZero()) CutAtZeros();
    std::size_t start = 0;
    for (std::size_t end = text.find(kSeparator); end != text.npos; end = text.find(kSeparator, start)) {
      if (count < kLowerLevels) first[count] = text.substr(start, end - start);
      ++count;
      start = end + 1;
    }
    last = text.substr(start);
    ++count;
  }
  VRELOptionPath(VRELOptionPath const&) = delete;
  VRELOptionPath& operator=(VRELOptionPath const&) = delete;

  int TokenCount() const { return count; }
  std::u16string_view Last() const { return last; }
  // Returns one of the first 6 tokens.
  // Requires: not the last token.
  std::u16string_view Token(int index) const { return first[index]; }
  // Returns all tokens but the last, each with its separator.
  std::u16string_view Others() const { return text.substr(0, text.size() - last.size()); }

 private:
  // Truncates each token at its first U+0000.
  void CutAtZeros() {
    bool isKept = true;
    for (char16_t const unit : text) {
      isKept = unit == kSeparator || (isKept && unit != 0);
      if (isKept) cut += unit;
    }
    text = cut;
  }

  std::u16string_view text;
  std::u16string_view last;
  std::u16string_view first[kLowerLevels];
  int count = 0;
  std::u16string cut;
};

namespace {

// Returns the first key of a look-up with more than 7 tokens.
// Compatibility: tokens 7 and up are concatenated, which is not how AddOption stores them.
std::u16string JoinedKey(VRELOptionPath const& path) {
  std::u16string_view others = path.Others();
  for (int i = 0; i < kLowerLevels; ++i) TakeToken(others);
  std::u16string key(others);
  key.erase(std::remove(key.begin(), key.end(), kSeparator), key.end());
  return key.append(path.Last());
}

template <class Value>
VRINResult AddNew(VRELOptions& options, VRELString const& name, Value const& value) {
  VRELOption option(name);
  option.SetValue(value);
  return options.AddOption(option);
}

// Formats the value according to the kind of the option, or as a string if an assignment brought a value of another
// kind that cannot be converted.
template <class Value>
VRELString TextOf(VRELOption const& option, VRELString (*convert)(Value)) {
  Value value = Value();
  if (option.GetValue(value).IsSuccess()) return convert(value);
  VRELString text;
  option.GetValue(text);
  return text;
}

VRELString ValueTextOf(VRELOption const& option) {
  VRELValue::VRELValueType kind = VRELValue::UnknownType;
  option.GetValueType(kind);
  switch (kind) {
    case VRELValue::IntType:
      return TextOf<int>(option, VRELStringFromInteger);
    case VRELValue::DoubleType:
      return TextOf<double>(option, VRELStringFromDouble);
    case VRELValue::BoolType:
      return TextOf<bool>(option, VRELStringFromBool);
    default:
      VRELString text;
      option.GetValue(text);
      return text;
  }
}

// Prints a string as VRELInfo::Printf prints a format without arguments.
void PrintText(char const* text) {
  if (text == nullptr) return;
  std::string line(text);
  line.resize(VRELChannelLine::CopyUnescaped(text, line.data(), line.size()));
  VRELInfo::Printf("%s", line.c_str());
}

}  // namespace

// Calls action(option, name) for each option of a store. Options that were not requested before are not kept.
template <class Action>
void VRELOptions::ForEach(Action const& action) const {
  InitEnumeration();
  VRELOption* option = nullptr;
  for (VRELWildcardChain* chain = NextOption(option); chain != nullptr || option != nullptr;
       chain = NextOption(option)) {
    VRELOption parsed;
    if (chain != nullptr && chain->IsDeferred()) {
      parsed = chain->Parse();
      option = &parsed;
    } else if (chain != nullptr) {
      option = chain->Option();
    }
    VRELString name;
    option->GetName(name);
    action(*option, name);
  }
}

VRELOptions::VRELOptions() : root(new VRELOptionToken(nullptr)) {}

VRELOptions::~VRELOptions() {
  RemoveAll();
  delete root;
}

// Returns the node for the tokens of a name, without the wildcards that extend it to 7 levels; null if a token is
// empty.
VRELOptionToken* VRELOptions::FindOrAddTokens(VRELOptionPath const& path) {
  VRELOptionToken* node = root->FindOrAdd(path.Last());
  for (std::u16string_view others = path.Others(); node != nullptr && !others.empty();) {
    node = node->FindOrAdd(TakeToken(others));
  }
  return node;
}

// Returns the option at the end of `levels` wildcards below a node. If there is none, replaces `node` by the last
// existing node and `levels` by the number of wildcards below it.
VRELOption* VRELOptions::FindStored(VRELOptionToken*& node, int& levels) {
  for (; levels > 0; --levels) {
    if (VRELWildcardChain* const chain = node->Chain()) return chain->Option();
    VRELOptionToken* const child = node->FindWildcard();
    if (child == nullptr) return nullptr;
    node = child;
  }
  VRELOption* stored = nullptr;
  node->GetOption(stored);
  return stored;
}

VRINResult VRELOptions::AddOption(VRELOption const* option) {
  if (option == nullptr) return VREL_E_INVALID_ARGUMENT;
  VRELString name;
  VRINResult const result = option->GetName(name);
  if (result.IsFailure()) return result;
  VRELOptionPath const path(name);
  if (path.TokenCount() == 0) return VREL_E_INVALID_ARGUMENT;
  VRELOptionToken* node = FindOrAddTokens(path);
  if (node == nullptr) return VREL_E_FAIL;
  int levels = std::max(VREL_OPTION_TOKENS - path.TokenCount(), 0);
  if (VRELOption* const stored = FindStored(node, levels)) {
    *stored = *option;
  } else if (levels == 0) {
    node->SetOption(new VRELOption(*option));
  } else {
    auto chain = VRELWildcardChain::Make(levels, std::make_unique<VRELOption>(*option));
    node->wildcardChild = VRELOptionToken::Tagged(chain.release());
  }
  ++size;
  return VREL_S_OK;
}

// Adds an option from a file. It is parsed later if there is no option under this name.
void VRELOptions::AddConfigured(std::string const& nameBytes, std::string const& valueBytes) {
  VRELString const name(nameBytes.c_str());
  VRELOptionPath const path(name);
  if (path.TokenCount() > 0 && path.TokenCount() < VREL_OPTION_TOKENS && !name.getHoldsZero() &&
      VRELWildcardChain::CanDefer(nameBytes, valueBytes)) {
    VRELOptionToken* node = FindOrAddTokens(path);
    if (node == nullptr) return;
    int levels = VREL_OPTION_TOKENS - path.TokenCount();
    if (FindStored(node, levels) == nullptr && levels > 0) {
      auto chain = VRELWildcardChain::Make(levels, nameBytes, valueBytes);
      node->wildcardChild = VRELOptionToken::Tagged(chain.release());
      ++size;
      return;
    }
  }
  AddOption(VRELParseOption(name, VRELConfiguredValue(valueBytes)));
}

VRINResult VRELOptions::AddOption(VRELOption const& option) {
  return AddOption(&option);
}

VRINResult VRELOptions::AddOption(VRELString const& name, VRELString const& value) {
  return AddNew(*this, name, value);
}

VRINResult VRELOptions::AddOption(VRELString const& name, char const* value) {
  return AddNew(*this, name, VRELString(value));
}

VRINResult VRELOptions::AddOption(VRELString const& name, double value) {
  return AddNew(*this, name, value);
}

VRINResult VRELOptions::AddOption(VRELString const& name, int value) {
  return AddNew(*this, name, value);
}

VRINResult VRELOptions::AddOption(VRELString const& name, bool value) {
  return AddNew(*this, name, value);
}

VRINResult VRELOptions::AddOptionParseValue(VRELString const& name, VRELString const& text) {
  return AddOption(VRELParseOption(name, text));
}

VRINResult VRELOptions::AddOptions(VRELOptions& other, bool overwrite) {
  VRELOption* option = nullptr;
  other.InitEnumeration();
  for (VRELWildcardChain* chain = other.NextOption(option); chain != nullptr || option != nullptr;
       chain = other.NextOption(option)) {
    if (chain != nullptr && chain->IsDeferred() && this != &other) {
      if (overwrite || !HasPath(VRELOptionPath(chain->Name()))) AddConfigured(chain->NameBytes(), chain->ValueBytes());
      continue;
    }
    if (chain != nullptr) option = chain->Option();
    if (overwrite || !HasOption(*option)) AddOption(*option);
  }
  return VREL_S_OK;
}

// Finds the option for the tokens from `level` on at or below a node. `option` is null if there is none.
VRINResult VRELOptions::GetOptionBelow(VRELOptionToken const* node, int level, VRELOptionPath const& path,
                                       VRELOption*& option) {
  for (; node != nullptr; ++level, node = node->FindWildcard()) {
    VRINResult const own = node->GetOption(option);
    if (own.IsSuccess() || level >= kLowerLevels) return own;
    VRELWildcardChain* const chain = node->Chain();
    if (level < path.TokenCount() - 1) {
      std::u16string_view const token = path.Token(level);
      bool const isWildcard = VRELOptionToken::IsWildcard(token);
      if (!isWildcard || chain == nullptr) {
        VRINResult const result = GetOptionBelow(node->Find(token), level + 1, path, option);
        // Compatibility: a "*" in the name matches only a stored "*".
        if (result.IsSuccess() || isWildcard) return result;
      }
    }
    // Nothing but wildcards, which match every token, down to the 7th level.
    if (chain != nullptr) {
      option = chain->Option();
      return VREL_S_OK;
    }
  }
  return VREL_E_FAIL;
}

VRINResult VRELOptions::GetOption(VRELString const& name, VRELOption*& option) const {
  VRELOptionPath const path(name);
  if (path.TokenCount() == 0) return VREL_E_INVALID_ARGUMENT;
  bool const isPlain = path.TokenCount() <= VREL_OPTION_TOKENS;
  VRELOptionToken const* const node = isPlain ? root->Find(path.Last()) : root->Find(JoinedKey(path));
  return GetOptionBelow(node, 0, path, option);
}

bool VRELOptions::HasOption(VRELOption const& option) const {
  VRELString name;
  if (option.GetName(name).IsFailure()) return false;
  return HasPath(VRELOptionPath(name));
}

bool VRELOptions::HasPath(VRELOptionPath const& path) const {
  if (path.TokenCount() == 0 || path.TokenCount() > VREL_OPTION_TOKENS) return false;
  VRELOptionToken const* node = root->Find(path.Last());
  int level = 0;
  for (std::u16string_view others = path.Others(); node != nullptr && level < kLowerLevels; ++level) {
    std::u16string_view const token = others.empty() ? VREL_OPTION_WILDCARD.view() : TakeToken(others);
    bool const isWildcard = VRELOptionToken::IsWildcard(token);
    if (isWildcard && node->Chain() != nullptr) {
      // The name continues along the chain if all its other tokens are wildcards.
      while (!others.empty()) {
        if (!VRELOptionToken::IsWildcard(TakeToken(others))) return false;
      }
      return true;
    }
    node = node->Find(token);
  }
  return node != nullptr && !HasNoOption(*node);
}

void VRELOptions::InitEnumeration() const {
  current = nullptr;
}

VRELOptionToken* VRELOptions::FirstNode() const {
  VRELOptionToken* node = nullptr;
  root->InitEnumeration();
  if (root->GetNextChild(node).IsSuccess()) node->InitEnumeration();
  return node;
}

// `current` is the node of the last option. If the option is at the end of a chain, it is the node above the chain with
// the number of levels in the low bits of the address.
VRELOptionToken* VRELOptions::ParentOfCurrent() const {
  auto const bits = reinterpret_cast<std::uintptr_t>(current);
  int levels = static_cast<int>(bits & kLevelBits);
  if (levels == 0) return ParentOf(*current);
  auto* node = reinterpret_cast<VRELOptionToken*>(bits & ~kLevelBits);
  // Some levels may have become nodes.
  for (; levels > 1 && node->Chain() == nullptr && node->wildcardChild != nullptr; --levels) node = node->wildcardChild;
  return node;
}

VRINResult VRELOptions::GetNext(VRELOption*& option) const {
  VRELWildcardChain* const chain = NextOption(option);
  if (chain != nullptr) option = chain->Option();
  return option != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

// Moves to the next option. Returns its chain; null, with `option` set, if it is at a node or if there is none.
VRELWildcardChain* VRELOptions::NextOption(VRELOption*& option) const {
  VRELOptionToken* node = current != nullptr ? ParentOfCurrent() : FirstNode();
  option = nullptr;
  while (node != nullptr && HasNoOption(*node)) {
    VRELOptionToken const* const above = node;
    if (VRELWildcardChain* const chain = Descend(node)) {
      current = reinterpret_cast<VRELOptionToken*>(reinterpret_cast<std::uintptr_t>(node) |
                                                   static_cast<std::uintptr_t>(chain->Levels()));
      return chain;
    }
    if (node == nullptr) node = ParentOf(*above);
  }
  current = node;
  if (node != nullptr) node->GetOption(option);
  return nullptr;
}

// Replaces `node` by the next node with an option, at or below it, or by null. If a chain comes first, returns it, and
// replaces `node` by the node above it.
VRELWildcardChain* VRELOptions::Descend(VRELOptionToken*& node) {
  while (node != nullptr && HasNoOption(*node)) {
    VRELOptionToken const* const above = node;
    node = above->NextNamed();
    if (node != nullptr) {
      above->cursor = node;
    } else if (VRELWildcardChain* const chain = above->Chain(); chain != nullptr) {
      if (above->cursor == above->wildcardChild) return nullptr;
      above->cursor = above->wildcardChild;
      chain->isEnumerated = true;
      node = const_cast<VRELOptionToken*>(above);
      return chain;
    } else {
      above->GetNextChild(node);
    }
    if (node != nullptr && HasNoOption(*node)) node->InitEnumeration();
  }
  return nullptr;
}

VRINResult VRELOptions::GetNext(VRELOptionToken*& node) const {
  while (node != nullptr && HasNoOption(*node)) {
    VRELOptionToken const* const above = node;
    if (above->GetNextChild(node).IsSuccess() && HasNoOption(*node)) node->InitEnumeration();
  }
  return node != nullptr ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELOptions::ReadFromFile(VRELString const& path) {
  if (path.length() <= 0) return VREL_E_INVALID_ARGUMENT;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> const stream(VRELFilePath(path).OpenFile("rt"), &std::fclose);
  if (stream == nullptr) return VREL_E_FILE_OPEN;
  return ReadFromFile(stream.get());
}

VRINResult VRELOptions::ReadFromFile(std::FILE* stream) {
  if (stream == nullptr) return VREL_E_INVALID_ARGUMENT;
  // Names and values, each with a zero byte at its end. Nothing is added before the last line is known to be correct.
  std::string keys;
  bool isDefaultSection = true;
  bool isCorrect = true;
  char line[1024];
  while (std::fgets(line, sizeof line, stream) != nullptr) {
    VRELCfgLine const parsed = VRELCfgLine::Parse(line);
    if (parsed.kind == VRELCfgLine::kSection) isDefaultSection = *parsed.text == '\0';
    if (parsed.kind == VRELCfgLine::kBadSection || parsed.kind == VRELCfgLine::kBadKey) isCorrect = false;
    if (parsed.kind != VRELCfgLine::kKey || !isDefaultSection || !isCorrect) continue;
    keys.append(parsed.text).append(1, '\0').append(parsed.value).append(1, '\0');
  }
  if (!isCorrect) return VREL_E_FAIL;
  for (char const* each = keys.c_str(); each != keys.c_str() + keys.size();) {
    std::string const name(each);
    std::string const value(each + name.size() + 1);
    each += name.size() + value.size() + 2;
    AddConfigured(name, value);
  }
  return VREL_S_OK;
}

void VRELOptions::Dump(char const* header, char const* format, char const* footer) const {
  PrintText(header);
  ForEach([format](VRELOption const& option, VRELString const& name) {
    VRELStringAsciiCharUtil const narrowName(name, false);
    VRELStringAsciiCharUtil const narrowValue(ValueTextOf(option), false);
    VRELInfo::Printf(format, static_cast<char const*>(narrowName), static_cast<char const*>(narrowValue));
  });
  PrintText(footer);
}

void VRELOptions::DumpOptions(VRELStreamFormatter& formatter) const {
  formatter << "Options currently present and there values are given below : " << formatter.endline();
  formatter << "============================================================= " << formatter.endline();
  formatter << formatter.endline();
  ForEach([&formatter](VRELOption const& option, VRELString const& name) {
    formatter << "The Option \"" << name << "\" value is\t\t=     " << ValueTextOf(option) << formatter.endline();
  });
}

VRINResult VRELOptions::RemoveAll() {
  size = 0;
  current = nullptr;
  return root->RemoveAll();
}
