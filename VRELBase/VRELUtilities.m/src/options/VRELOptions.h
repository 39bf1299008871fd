// The option store.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELOption;
class VRELOptionToken;
class VRELStreamFormatter;

// Options by their names, which are paths of tokens between dots: "Step.Assembly.Reader.ConvertAttributes". The last
// token says what the setting is, those before it for what it holds. "*" stands for any token, and so does each token
// that a name of fewer than 7 lacks behind its others: an option named "ConvertAttributes" serves for every translator,
// and one with a longer name refines it. Case does not count.
//
//   VRELOptions options;
//   options.AddOption(L"ConvertAttributes", true);
//   options.AddOption(L"Step.*.Reader.ConvertAttributes", false);
//   VRELOption* option = nullptr;
//   if (options.GetOption(L"Step.Assembly.Reader.ConvertAttributes", option).IsSuccess()) ...  // the second
//
// The store owns its options. A pointer to one is good until RemoveAll or the end of the store, and changes made
// through it are changes of the store. The last value added under a path wins, whether a call or a file brought it;
// between paths the more specific one wins; an option's default is that of the first.
//
// The place of an enumeration stands in the nodes of the tree, so that constant operations write too: one enumeration
// at a time, and no locking.
class VREL_EXPORT VRELOptions {
 public:
  VRELOptions();
  ~VRELOptions();
  VRELOptions(VRELOptions const&) = delete;
  VRELOptions& operator=(VRELOptions const&) = delete;

  // Store a copy under the option's name, or assign the option to the one that is stored there, by the rules of
  // VRELOption. VREL_E_INVALID_ARGUMENT for null and for an empty name, VREL_E_OPTION_UNSET for an option that is
  // unset, VREL_E_FAIL for an empty token in the name. A name of more than 7 tokens is stored, and only enumerations
  // find it.
  VRINResult AddOption(VRELOption const* option);
  VRINResult AddOption(VRELOption const& option);
  // The same for a new option of this name and value; text in the process's default codepage. A wide literal would be
  // taken for a bool as the value: wrap it in a VRELString.
  VRINResult AddOption(VRELString const& name, VRELString const& value);
  VRINResult AddOption(VRELString const& name, char const* value);
  VRINResult AddOption(VRELString const& name, double value);
  VRINResult AddOption(VRELString const& name, int value);
  VRINResult AddOption(VRELString const& name, bool value);
  // The same for a value in a text: an integer, else a real number, both as Gk_StringParser tells them, else a boolean,
  // else the text without quotation marks at its ends. 1 is an integer and "Off", with the marks, a text.
  VRINResult AddOptionParseValue(VRELString const& name, VRELString const& text);

  // Adds the options of another store: all of them, or those whose paths this one does not hold. Always VREL_S_OK.
  VRINResult AddOptions(VRELOptions& other, bool overwrite);

  // The stored option that serves for a name. At each token its own branch goes before the wildcard, and the first
  // token counts most: A.*.X goes before *.B.X for A.B.X. A "*" in the name finds nothing but a stored "*".
  //
  // VREL_E_INVALID_ARGUMENT for an empty name. VREL_E_FAIL when there is no such option, VREL_E_OPTION_UNSET where only
  // the last node of a way through wildcards lacks one. `option` is then null, or as it was if no stored name ends in
  // that last token, so set it to null first. That of more than 7 tokens those from the seventh on are joined, without
  // dots, and sought as the last token, is promised.
  VRINResult GetOption(VRELString const& name, VRELOption*& option) const;
  // Whether there is an option under the very path of this one's name. False for more than 7 tokens.
  bool HasOption(VRELOption const& option) const;

  // How often an option was added. That an addition that replaces another counts too is promised.
  int Size() const { return size; }

  // A walk through all options: hash order within a level, depth first, wildcards last. VREL_E_FAIL, with null, at the
  // end; the next call begins anew.
  //
  // A branch without an option ends the walk through the node above it, and what lies below an option is passed over.
  // Both are promised; they concern names of more than 7 tokens and what is left of a name that was refused.
  void InitEnumeration() const;
  VRINResult GetNext(VRELOption*& option) const;
  // The next node with an option, from `node` on or below it; it gives a node that has an option back. VREL_E_FAIL,
  // with null, when there is none.
  VRINResult GetNext(VRELOptionToken*& node) const;

  // Adds each line "name=value", or "name:value", above the first section of a configuration file, by
  // AddOptionParseValue; lines that it refuses are passed over. VREL_E_INVALID_ARGUMENT for an empty path or a null
  // stream, VREL_E_FILE_OPEN, VREL_E_FAIL, with nothing added, for a file with a syntax error in any line.
  VRINResult ReadFromFile(VRELString const& path);
  VRINResult ReadFromFile(std::FILE* stream);

  // On the channel VRELInfo the header, each option by `format`, which takes the name and the value as two strings, and
  // the footer. Null leaves one out.
  void Dump(char const* header, char const* format, char const* footer) const;
  // A heading and a line for each option.
  void DumpOptions(VRELStreamFormatter& formatter) const;

  VRINResult RemoveAll();

 private:
  VRELOptionToken* FirstNode() const;

  VRELOptionToken* root;
  mutable VRELOptionToken* current = nullptr;
  int size = 0;
};
