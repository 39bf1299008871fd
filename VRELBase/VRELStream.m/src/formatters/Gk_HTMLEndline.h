// HTML line end.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Format object that writes <br>, a carriage return and a line feed.
class VREL_EXPORT Gk_HTMLEndline : public VRELStreamFormatter::VRELStreamFormatterObject {
 public:
  void dump(VRELStreamFormatter& formatter) const override;
};
