// Vocabulary of option names.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELOptionConstants.h"
#include "VRELString.h"
#include "VRINResult.h"

// Name of a setting: tokens separated by dots, without type and default. The static members are all names that the
// translators understand, so that modules spell a name alike, and a name that a user enters can be checked.
//
//   if (VRELOptionName::IsValid(given).IsFailure()) ...  // no translator has such a setting
//   VRELString const path = VRELOptionName::XStep_Import_Mode_Assem;
//
// A module adds its own names by making objects of this class; they count as long as they exist. Names cannot be
// copied, and must not outlive the library.
//
// Thread safety: none. Names are made, checked and destroyed on one thread.
class VREL_EXPORT VRELOptionName {
 public:
  // Copies the string and adds the object to _optionNames.
  VRELOptionName(VRELString const& name);
  VRELOptionName(VRELOptionName const&) = delete;
  VRELOptionName& operator=(VRELOptionName const&) = delete;
  // Sets its entry in _optionNames to null, so that the other indices do not change.
  ~VRELOptionName();

  operator VRELString const() const { return text; }

  // Scores how well `given` matches `known`, ignoring case. The score is VREL_OPTION_EXACT_MATCH for equal strings.
  // Otherwise they are compared token by token: a "*" in `given` matches any token and adds 2 to the power of its
  // index, so that earlier wildcards cost less. VREL_OPTION_NO_MATCH if a token or the number of tokens differs. A "*"
  // in `known` is an ordinary token.
  // Errors: VREL_E_FAIL, with the lowest int as score, for a "*" at index 31 or later. Otherwise VREL_S_OK, also if
  // there is no match.
  static VRINResult Match(VRELString const& known, VRELString const& given, int& score);

  // Matches a name against all names.
  // Errors: VREL_E_FAIL if the best score is VREL_OPTION_NO_MATCH, which is also the score of sixteen leading
  // wildcards.
  static VRINResult IsValid(VRELString const& given);

  // All names in order of construction; null for names that were destroyed.
  static VRELDynamicArray<VRELOptionName*> _optionNames;

#define VREL_NAME(identifier, text) static VRELOptionName identifier;
#include "VRELOptionNames.def"

 private:
  struct Literal {
    char16_t const* text;
  };

  // For the members. Avoids temporary strings, because a thousand names are made when the library is loaded.
  explicit VRELOptionName(Literal literal);

  VRELString text;
  int index;  // of the entry in _optionNames, unless a client removed entries
};
