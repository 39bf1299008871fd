// The space of a page.
#pragma once

#include "VRELExport.h"
#include "VRELStreamFormatter.h"

// Writes &nbsp;
class VREL_EXPORT Gk_HTMLSpace : public VRELStreamFormatter::VRELStreamFormatterObject {
 public:
  void dump(VRELStreamFormatter& formatter) const override;
};
