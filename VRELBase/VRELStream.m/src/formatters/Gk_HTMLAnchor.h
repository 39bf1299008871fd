// A place in a page that links lead to.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Writes <a name= "NAME">TEXT</a>. That a blank stands behind the equals sign is promised.
class VREL_EXPORT Gk_HTMLAnchor : public VRELStreamFormatter::VRELStreamFormatterObject {
 public:
  // Without a text the name is shown.
  Gk_HTMLAnchor(VRELStreamFormatter::VRELStreamFormatterObjectHandle const& name,
                VRELStreamFormatter::VRELStreamFormatterObjectHandle const& text);

  void dump(VRELStreamFormatter& formatter) const override;

 private:
  VRELStreamFormatter::VRELStreamFormatterObjectHandle name;
  VRELStreamFormatter::VRELStreamFormatterObjectHandle text;
};
