// The target file is written.
#pragma once

#include "VRELEndTaskEvent.h"
#include "VRELStreamFormatter.h"
#include "VRELString.h"

class VREL_EXPORT VRELEndWriteFileTaskEvent : public VRELEndTaskEvent {
 public:
  // The name of the file; it may be empty.
  VRELEndWriteFileTaskEvent(VRELString const& fileName, VRINResult const& result);

  // A sentence on the file and a rule. A success other than VREL_S_OK is told as a failure, and no blank stands in
  // front of a failure's code; both are promised.
  void GetFormattedDescription(VRELOutputStream* stream) override;

 private:
  VRELStreamFormatter formatter;
  VRELString name;
};
