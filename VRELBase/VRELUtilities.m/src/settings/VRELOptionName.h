// The names of all settings that the translators of the family understand.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELOptionConstants.h"
#include "VRELString.h"
#include "VRINResult.h"

// The name of a setting: a text of tokens between dots, no type and no default. Each known name is a static member, so
// that two modules spell a setting alike, and a name that a user gives can be tested against all of them.
//
//   if (VRELOptionName::IsValid(given).IsFailure()) ...   // no translator knows it
//   VRELString const path = VRELOptionName::XStep_Import_Mode_Assem;
//
// A module may add names of its own by making objects; they count while they live. A name is told by its address and is
// not copied. Names must not outlive the library. No locking: names come and go, and are tested, on one thread.
class VREL_EXPORT VRELOptionName {
 public:
  // Copies the text and joins _optionNames.
  VRELOptionName(VRELString const& name);
  VRELOptionName(VRELOptionName const&) = delete;
  VRELOptionName& operator=(VRELOptionName const&) = delete;
  // Leaves a null entry in _optionNames: the entries of the others keep their places.
  ~VRELOptionName();

  operator VRELString const() const { return text; }

  // How well `given` names `known`, without regard to case. VREL_OPTION_EXACT_MATCH for the same text; otherwise token
  // by token, where a "*" in `given` stands for any token and adds 2 to the power of the token's index, so that one in
  // front costs less. VREL_OPTION_NO_MATCH for other texts; a "*" in `known` stands for nothing but itself. A "*" at
  // index 31 or behind has no such power: the score is then the lowest integer, with VREL_E_FAIL. Otherwise VREL_S_OK,
  // also where nothing matches.
  static VRINResult Match(VRELString const& known, VRELString const& given, int& score);

  // VREL_S_OK when the best score against all names is not VREL_OPTION_NO_MATCH, which is also what sixteen wildcards
  // in front add up to; VREL_E_FAIL otherwise.
  static VRINResult IsValid(VRELString const& given);

  // Every name ever made, in that order; null for one that is gone.
  static VRELDynamicArray<VRELOptionName*> _optionNames;

#define VREL_NAME(identifier, text) static VRELOptionName identifier;
#include "VRELOptionNames.def"

 private:
  struct Literal {
    char16_t const* text;
  };

  // The members: nothing but the text is copied on the way, as there are a thousand of them when the library is loaded.
  explicit VRELOptionName(Literal literal);

  VRELString text;
  int index;  // of the entry in _optionNames, as long as nobody takes entries out
};
