#include "VRELOptions.h"

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
#include "VRELStringTokenizer.h"

namespace {

// How many levels below the first a path has at least.
constexpr int lowerLevels = VREL_OPTION_TOKENS - 1;

bool HasNoOption(VRELOptionToken const& node) {
  VRELOption* option = nullptr;
  return node.GetOption(option).IsFailure();
}

VRELOptionToken* ParentOf(VRELOptionToken const& node) {
  VRELOptionToken* parent = nullptr;
  node.GetParent(parent);
  return parent;
}

// Goes down from a root along the path of a name: the last token, the others in their order, wildcards. `step` gives
// the child of a node for a key, and stops the way by a failure.
template <class Step>
VRINResult FollowPath(VRELStringTokenizer const& tokens, VRELOptionToken*& node, Step const& step) {
  int const others = tokens.GetTokenCount() - 1;
  VRINResult result = step(node, tokens.Token(others));
  for (int i = 0; i < others && result.IsSuccess(); ++i) result = step(node, tokens.Token(i));
  for (int i = others; i < lowerLevels && result.IsSuccess(); ++i) result = step(node, VREL_OPTION_WILDCARD);
  return result;
}

// The first key of a look-up. The tokens from the seventh on make one word, which for more than 7 is no token that an
// addition made; that is promised.
VRELString FirstKey(VRELStringTokenizer const& tokens) {
  std::u16string key;
  for (int i = lowerLevels; i < tokens.GetTokenCount(); ++i) key += tokens.Token(i).view();
  return VRELString(std::u16string_view(key));
}

template <class Value>
VRINResult AddNew(VRELOptions& options, VRELString const& name, Value const& value) {
  VRELOption option(name);
  option.SetValue(value);
  return options.AddOption(option);
}

// The value in the form of the option's kind. One that cannot be read as that kind, which an assignment may have
// brought, is shown as it is.
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

// Sends a text as VRELInfo::Printf sends a format without arguments.
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
  VRINResult result = option->GetName(name);
  if (result.IsFailure()) return result;
  VRELStringTokenizer const tokens(name, VREL_OPTION_SEPARATOR);
  if (tokens.GetTokenCount() == 0) return VREL_E_INVALID_ARGUMENT;
  VRELOptionToken* node = root;
  result = FollowPath(tokens, node, [](VRELOptionToken*& place, VRELString const& key) {
    VRELOptionToken* const above = place;
    return above->AddToken(key, place);
  });
  if (result.IsFailure()) return result;
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
  VRELStringTokenizer const tokens(name, VREL_OPTION_SEPARATOR);
  int const count = tokens.GetTokenCount();
  if (count == 0) return VREL_E_INVALID_ARGUMENT;
  VRELOptionToken* node = nullptr;
  if (count <= VREL_OPTION_TOKENS) {
    root->GetToken(tokens.Token(count - 1), node);
  } else {
    root->GetToken(FirstKey(tokens), node);
  }
  return GetOptionFromToken(tokens, 0, node, option);
}

VRINResult VRELOptions::GetOptionFromToken(VRELStringTokenizer const& tokens, int index, VRELOptionToken const* node,
                                           VRELOption*& option) const {
  if (node == nullptr) return VREL_E_FAIL;
  VRINResult result = node->GetOption(option);
  if (result.IsSuccess() || index >= lowerLevels) return result;
  VRELOptionToken* child = nullptr;
  if (index < tokens.GetTokenCount() - 1) {
    VRELString const& token = tokens.Token(index);
    result = node->GetToken(token, child);
    if (result.IsSuccess()) result = GetOptionFromToken(tokens, index + 1, child, option);
    // That a "*" in the name is tried as itself, and stands for nothing else, is promised.
    if (result.IsSuccess() || token.equals(VREL_OPTION_WILDCARD)) return result;
  }
  node->GetToken(VREL_OPTION_WILDCARD, child);
  return GetOptionFromToken(tokens, index + 1, child, option);
}

bool VRELOptions::HasOption(VRELOption const& option) const {
  VRELString name;
  if (option.GetName(name).IsFailure()) return false;
  VRELStringTokenizer const tokens(name, VREL_OPTION_SEPARATOR);
  int const count = tokens.GetTokenCount();
  if (count == 0 || count > VREL_OPTION_TOKENS) return false;
  VRELOptionToken* node = root;
  VRINResult const result = FollowPath(tokens, node, [](VRELOptionToken*& place, VRELString const& key) {
    VRELOptionToken const* const above = place;
    return above->GetToken(key, place);
  });
  return result.IsSuccess() && !HasNoOption(*node);
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
  std::FILE* const stream = VRELFilePath(path).OpenFile("rt");
  if (stream == nullptr) return VREL_E_FILE_OPEN;
  VRINResult const result = ReadFromFile(stream);
  std::fclose(stream);
  return result;
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
