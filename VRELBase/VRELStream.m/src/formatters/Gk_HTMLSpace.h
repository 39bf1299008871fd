// HTML space.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Format object that writes &nbsp;
class VREL_EXPORT Gk_HTMLSpace : public VRELStreamFormatter::VRELStreamFormatterObject {
 public:
  void dump(VRELStreamFormatter& formatter) const override;
};
