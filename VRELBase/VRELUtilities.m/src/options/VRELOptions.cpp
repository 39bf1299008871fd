#include "VRELOptions.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "Gk_StringParser.h"
#include "VRELCfgFile.h"
#include "VRELChannelLine.h"
#include "VRELFilePath.h"
#include "VRELInfo.h"
#include "VRELOption.h"
#include "VRELOptionConstants.h"
#include "VRELOptionToken.h"
#include "VRELStreamFormatter.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELStringConversions.h"

// Layout and look-up. A name t0.t1...tn is stored along the path tn, t0, t1, ..., t(n-1) from the root, extended by "*"
// to 7 levels; the option is at the last node. The last token comes first because it names the setting: all options of
// one setting are in one subtree, and a look-up visits only that.
//
// A look-up descends from the node of its last token. At each level it tries the child for its own token, then the
// wildcard child, and backtracks (depth-first search), so that an exact match of an early token wins over exact matches
// of later ones. Tokens that the look-up lacks match only the wildcard child. The depth is at most 7.
namespace {

// Levels of a path below the first one, at least.
constexpr int kLowerLevels = VREL_OPTION_TOKENS - 1;

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

// Tokens of a name as views, split as by VRELStringTokenizer. The name must outlive the object.
class Path {
 public:
  explicit Path(VRELString const& name) : text(name.view()) {
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
  Path(Path const&) = delete;
  Path& operator=(Path const&) = delete;

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

// Descends from the root along the path of a name: the last token, the other tokens in order, wildcards. `step` returns
// the child of a node for a key, or null, which ends the descent.
template <class Step>
VRELOptionToken* FollowPath(Path const& path, VRELOptionToken& root, Step const& step) {
  VRELOptionToken* node = step(root, path.Last());
  int level = 0;
  for (std::u16string_view others = path.Others(); node != nullptr && !others.empty(); ++level) {
    node = step(*node, TakeToken(others));
  }
  std::u16string_view const wildcard = VREL_OPTION_WILDCARD.view();
  for (; node != nullptr && level < kLowerLevels; ++level) node = step(*node, wildcard);
  return node;
}

// Returns the first key of a look-up with more than 7 tokens.
// Compatibility: tokens 7 and up are concatenated, which is not how AddOption stores them.
std::u16string JoinedKey(Path const& path) {
  std::u16string_view others = path.Others();
  for (int i = 0; i < kLowerLevels; ++i) TakeToken(others);
  std::u16string key(others);
  key.erase(std::remove(key.begin(), key.end(), kSeparator), key.end());
  return key.append(path.Last());
}

// Finds the option for the tokens from `level` on at or below a node. `option` is null if there is none.
VRINResult GetOptionBelow(VRELOptionToken const* node, int level, Path const& path, VRELOption*& option) {
  for (; node != nullptr; ++level, node = node->FindWildcard()) {
    VRINResult const own = node->GetOption(option);
    if (own.IsSuccess() || level >= kLowerLevels) return own;
    if (level >= path.TokenCount() - 1) continue;
    VRINResult const result = GetOptionBelow(node->Find(path.Token(level)), level + 1, path, option);
    // Compatibility: a "*" in the name matches only a stored "*".
    if (result.IsSuccess() || VRELOptionToken::IsWildcard(path.Token(level))) return result;
  }
  return VREL_E_FAIL;
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

// Calls action(option, name) for each option of a store.
template <class Action>
void ForEachOption(VRELOptions const& options, Action const& action) {
  VRELOption* option = nullptr;
  options.InitEnumeration();
  while (options.GetNext(option).IsSuccess()) {
    VRELString name;
    option->GetName(name);
    action(*option, name);
  }
}

}  // namespace

VRELOptions::VRELOptions() : root(new VRELOptionToken(nullptr)) {}

VRELOptions::~VRELOptions() {
  RemoveAll();
  delete root;
}

VRINResult VRELOptions::AddOption(VRELOption const* option) {
  if (option == nullptr) return VREL_E_INVALID_ARGUMENT;
  VRELString name;
  VRINResult const result = option->GetName(name);
  if (result.IsFailure()) return result;
  Path const path(name);
  if (path.TokenCount() == 0) return VREL_E_INVALID_ARGUMENT;
  auto const findOrAdd = [](VRELOptionToken& place, std::u16string_view key) { return place.FindOrAdd(key); };
  VRELOptionToken* const node = FollowPath(path, *root, findOrAdd);
  // A token is empty.
  if (node == nullptr) return VREL_E_FAIL;
  VRELOption* stored = nullptr;
  if (node->GetOption(stored).IsSuccess()) {
    *stored = *option;
  } else {
    node->SetOption(new VRELOption(*option));
  }
  ++size;
  return VREL_S_OK;
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
  Gk_StringParser parser(text);
  if (parser.isInteger(0)) return AddNew(*this, name, parser.intValue());
  if (parser.isReal(0)) return AddNew(*this, name, parser.realValue());
  bool truth = false;
  if (VRELStringToBool(text, truth).IsSuccess()) return AddNew(*this, name, truth);
  VRELString unquoted;
  RemoveDoubleQuotesAtStartAndEndOf(text, unquoted);
  return AddNew(*this, name, unquoted);
}

VRINResult VRELOptions::AddOptions(VRELOptions& other, bool overwrite) {
  VRELOption* option = nullptr;
  other.InitEnumeration();
  while (other.GetNext(option).IsSuccess()) {
    if (overwrite || !HasOption(*option)) AddOption(*option);
  }
  return VREL_S_OK;
}

VRINResult VRELOptions::GetOption(VRELString const& name, VRELOption*& option) const {
  Path const path(name);
  if (path.TokenCount() == 0) return VREL_E_INVALID_ARGUMENT;
  bool const isPlain = path.TokenCount() <= VREL_OPTION_TOKENS;
  VRELOptionToken const* const node = isPlain ? root->Find(path.Last()) : root->Find(JoinedKey(path));
  return GetOptionBelow(node, 0, path, option);
}

bool VRELOptions::HasOption(VRELOption const& option) const {
  VRELString name;
  if (option.GetName(name).IsFailure()) return false;
  Path const path(name);
  if (path.TokenCount() == 0 || path.TokenCount() > VREL_OPTION_TOKENS) return false;
  auto const find = [](VRELOptionToken const& place, std::u16string_view key) { return place.Find(key); };
  VRELOptionToken const* const node = FollowPath(path, *root, find);
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

VRINResult VRELOptions::GetNext(VRELOption*& option) const {
  VRELOptionToken* node = current != nullptr ? ParentOf(*current) : FirstNode();
  while (node != nullptr && HasNoOption(*node)) {
    VRELOptionToken const* const above = node;
    if (GetNext(node).IsFailure()) node = ParentOf(*above);
  }
  current = node;
  option = nullptr;
  if (node == nullptr) return VREL_E_FAIL;
  return node->GetOption(option);
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
  VRELCfgFile file;
  if (file.Load(stream).IsFailure()) return VREL_E_FAIL;
  VRELCfgFileSection const* const section = file.findSection("");
  int const count = section != nullptr ? section->GetNumKeys() : 0;
  for (int i = 0; i < count; ++i) {
    VRELCfgFileKey const& key = *section->GetKey(i);
    AddOptionParseValue(key.GetName(), key.GetAllValues());
  }
  return VREL_S_OK;
}

void VRELOptions::Dump(char const* header, char const* format, char const* footer) const {
  PrintText(header);
  ForEachOption(*this, [format](VRELOption const& option, VRELString const& name) {
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
  ForEachOption(*this, [&formatter](VRELOption const& option, VRELString const& name) {
    formatter << "The Option \"" << name << "\" value is\t\t=     " << ValueTextOf(option) << formatter.endline();
  });
}

VRINResult VRELOptions::RemoveAll() {
  size = 0;
  current = nullptr;
  return root->RemoveAll();
}
