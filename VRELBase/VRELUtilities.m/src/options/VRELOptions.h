// Option store with hierarchical names and wildcards.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELOption;
class VRELOptionPath;
class VRELOptionToken;
class VRELStreamFormatter;
class VRELWildcardChain;

// Option store: options addressed by dotted names with wildcards.
//
// A name has up to 7 tokens, for example "Step.Assembly.Reader.ConvertAttributes". The last token names the setting;
// the tokens before it select where it applies. "*" matches any token, and missing tokens match anything, so that an
// option named "ConvertAttributes" applies to every translator and a longer name refines it. Case is ignored. If
// several options match, the most specific one wins, compared token by token from the left.
//
//   VRELOptions options;
//   options.AddOption(L"ConvertAttributes", true);
//   options.AddOption(L"Step.*.Reader.ConvertAttributes", false);
//   VRELOption* option = nullptr;
//   if (options.GetOption(L"Step.Assembly.Reader.ConvertAttributes", option).IsSuccess()) ...  // the second
//
// Between additions under one name, by call or by file, the last one wins; the default value remains that of the first.
//
// Ownership: the store owns its options. A pointer returned by GetOption is valid until RemoveAll or destruction.
// Thread safety: none. The iteration state is part of the tree: const members modify it, and only one iteration can run
// at a time.
class VREL_EXPORT VRELOptions {
 public:
  VRELOptions();
  ~VRELOptions();
  VRELOptions(VRELOptions const&) = delete;
  VRELOptions& operator=(VRELOptions const&) = delete;

  // Store a copy of an option under its name, or assign it to the option that is stored there (see
  // VRELOption::operator=).
  // Errors: VREL_E_INVALID_ARGUMENT for null and for an empty name, VREL_E_OPTION_UNSET for an unset option,
  // VREL_E_FAIL for an empty token in the name.
  // Compatibility: a name of more than 7 tokens is stored, and found only by enumeration.
  VRINResult AddOption(VRELOption const* option);
  VRINResult AddOption(VRELOption const& option);
  // Add a new option with this name and value.
  VRINResult AddOption(VRELString const& name, VRELString const& value);
  VRINResult AddOption(VRELString const& name, char const* value);
  VRINResult AddOption(VRELString const& name, double value);
  VRINResult AddOption(VRELString const& name, int value);
  VRINResult AddOption(VRELString const& name, bool value);
  // A wide string, or UTF-8. The char const* above is read in the default codepage of the process. Null is the empty
  // string.
  VRINResult AddOption(VRELString const& name, wchar_t const* value) { return AddOption(name, VRELString(value)); }
  VRINResult AddOption(VRELString const& name, std::string const& value) { return AddOption(name, VRELString(value)); }
  VRINResult AddOption(VRELString const& name, std::string_view value) { return AddOption(name, std::string(value)); }
  // Other pointers would convert to bool.
  template <class T>
  VRINResult AddOption(VRELString const& name, T const* value) = delete;
  // Adds an option whose value is parsed from a string: an integer, else a real number (see Gk_StringParser), else a
  // boolean, else the string without double quotes at its ends. "1" is an integer, and "\"Off\"" a string.
  VRINResult AddOptionParseValue(VRELString const& name, VRELString const& text);

  // Adds the options of another store; without `overwrite`, only those under names that this store does not have.
  // Always returns VREL_S_OK.
  VRINResult AddOptions(VRELOptions& other, bool overwrite);

  // Finds the option that applies to `name`.
  //
  // Errors: VREL_E_INVALID_ARGUMENT if `name` is empty; VREL_E_FAIL if no option matches; VREL_E_OPTION_UNSET if only
  // the last node reached through wildcards has no option. On failure `option` is null, except that it is unchanged if
  // no stored name ends in the last token; initialize it to null.
  // Compatibility: a "*" in `name` matches only a stored "*". For names of more than 7 tokens, tokens 7 and up are
  // concatenated without dots and looked up as the last token.
  VRINResult GetOption(VRELString const& name, VRELOption*& option) const;
  // Returns whether an option is stored under exactly the name of this one. False for more than 7 tokens.
  bool HasOption(VRELOption const& option) const;

  // Returns the number of successful additions.
  // Compatibility: includes those that replaced an option.
  int Size() const { return size; }

  // Restarts the enumeration.
  void InitEnumeration() const;
  // Returns the next option, depth first: children in slot order of the hash table, wildcards last. The call after the
  // last option restarts.
  // Errors: VREL_E_FAIL, with a null `option`, after the last one.
  // Compatibility: a branch without options ends the traversal of its parent, and options below an option are skipped.
  // Both concern only names of more than 7 tokens and the remains of names that were refused.
  VRINResult GetNext(VRELOption*& option) const;
  // Replaces `node` by the next node with an option, at or below it.
  // Errors: VREL_E_FAIL, with a null `node`, if there is none.
  VRINResult GetNext(VRELOptionToken*& node) const;

  // Adds the keys of a configuration file (see VRELCfgFile) that are above its first section, each by
  // AddOptionParseValue. Keys that it refuses are skipped. Most values are parsed when the option is requested for the
  // first time, by a look-up or an enumeration.
  // Errors: VREL_E_INVALID_ARGUMENT for an empty path or a null stream; VREL_E_FILE_OPEN; VREL_E_FAIL, with nothing
  // added, if any line has a syntax error.
  VRINResult ReadFromFile(VRELString const& path);
  VRINResult ReadFromFile(std::FILE* stream);

  // Prints the header, each option by `format`, which takes the name and the value as strings, and the footer, on the
  // channel VRELInfo. Null omits one of them.
  void Dump(char const* header, char const* format, char const* footer) const;
  // Writes a heading and a line for each option.
  void DumpOptions(VRELStreamFormatter& formatter) const;

  // Removes all options. Always returns VREL_S_OK.
  VRINResult RemoveAll();

 private:
  VRELOptionToken* FindOrAddTokens(VRELOptionPath const& path);
  static VRELOption* FindStored(VRELOptionToken*& node, int& levels);
  bool HasPath(VRELOptionPath const& path) const;
  void AddConfigured(std::string const& name, std::string const& value);
  static VRINResult GetOptionBelow(VRELOptionToken const* node, int level, VRELOptionPath const& path,
                                   VRELOption*& option);
  VRELOptionToken* FirstNode() const;
  VRELOptionToken* ParentOfCurrent() const;
  VRELWildcardChain* NextOption(VRELOption*& option) const;
  static VRELWildcardChain* Descend(VRELOptionToken*& node);
  template <class Action>
  void ForEach(Action const& action) const;

  VRELOptionToken* root;
  mutable VRELOptionToken* current = nullptr;
  int size = 0;
};
