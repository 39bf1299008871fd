// HTML anchor.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Format object that writes <a name= "NAME">TEXT</a>, the target of a Gk_HTMLTag.
// Compatibility: there is a blank after the equals sign.
class VREL_EXPORT Gk_HTMLAnchor : public VRELStreamFormatter::VRELStreamFormatterObject {
 public:
  // A null text is replaced by the name.
  Gk_HTMLAnchor(VRELStreamFormatter::VRELStreamFormatterObjectHandle const& name,
                VRELStreamFormatter::VRELStreamFormatterObjectHandle const& text);

  void dump(VRELStreamFormatter& formatter) const override;

 private:
  VRELStreamFormatter::VRELStreamFormatterObjectHandle name;
  VRELStreamFormatter::VRELStreamFormatterObjectHandle text;
};
