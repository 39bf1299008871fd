// Base class of the public names.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINObject.h"

// Handle on a string that names an option or a part of an option path. Always valid. Applications use the derived
// classes: VRINOptionName, VRINComponentName, VRINRepresentationName and VRINReaderWriterName.
class VREL_EXPORT VRINName : public VRINObject {
 public:
  // Creates a name from a string in the default codepage of the process. Null is treated as the empty string.
  VRINName(char const* name);

 protected:
  // UTF-16 literal of a name that the library defines.
  struct Literal {
    char16_t const* text;
  };

  explicit VRINName(Literal literal);
  explicit VRINName(VRELString const& name);

  // Returns a copy of the string, empty for a name without an implementation object.
  static VRELString GetText(VRINName const& name);
};
