// HTML link.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Format object that writes <a href="#TARGET">TEXT</a>, a link to the anchor with the name TARGET.
class VREL_EXPORT Gk_HTMLTag : public VRELStreamFormatter::VRELStreamFormatterObject {
 public:
  // A null text is replaced by the target.
  Gk_HTMLTag(VRELStreamFormatter::VRELStreamFormatterObjectHandle const& target,
             VRELStreamFormatter::VRELStreamFormatterObjectHandle const& text);

  void dump(VRELStreamFormatter& formatter) const override;

 private:
  VRELStreamFormatter::VRELStreamFormatterObjectHandle target;
  VRELStreamFormatter::VRELStreamFormatterObjectHandle text;
};
