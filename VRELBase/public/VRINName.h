// The root of the public names.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINObject.h"

// A text that names something to the library; always valid.
class VREL_EXPORT VRINName : public VRINObject {
 public:
  // Text in the process's default codepage; null counts as empty.
  VRINName(char const* name);

 protected:
  // A text of a public name that the library itself defines.
  struct Literal {
    char16_t const* text;
  };

  explicit VRINName(Literal literal);
  explicit VRINName(VRELString const& name);

  // A copy of the text; empty for a name without an implementation.
  static VRELString GetText(VRINName const& name);
};
