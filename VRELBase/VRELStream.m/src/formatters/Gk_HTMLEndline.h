// The line end of a page.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Writes <br>, a carriage return and a line feed.
class VREL_EXPORT Gk_HTMLEndline : public VRELStreamFormatter::VRELStreamFormatterObject {
 public:
  void dump(VRELStreamFormatter& formatter) const override;
};
