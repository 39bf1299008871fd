// A link in a page.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Writes <a href="#TARGET">TEXT</a>: a link to the anchor that has the target for its name.
class VREL_EXPORT Gk_HTMLTag : public VRELStreamFormatter::VRELStreamFormatterObject {
 public:
  // Without a text the target is shown.
  Gk_HTMLTag(VRELStreamFormatter::VRELStreamFormatterObjectHandle const& target,
             VRELStreamFormatter::VRELStreamFormatterObjectHandle const& text);

  void dump(VRELStreamFormatter& formatter) const override;

 private:
  VRELStreamFormatter::VRELStreamFormatterObjectHandle target;
  VRELStreamFormatter::VRELStreamFormatterObjectHandle text;
};
