// A source file is read.
#pragma once

#include "VRELEndTaskEvent.h"

class VRELFileHeader;

class VREL_EXPORT VRELEndReadFileTaskEvent : public VRELEndTaskEvent {
 public:
  // The header is not owned and must outlive the event and its copies; null is allowed.
  VRELEndReadFileTaskEvent(VRINResult const& result, VRELFileHeader* fileHeader);

  // The header, each model under a heading where there are several; nothing if it has no rows, and nothing of the
  // result. That the first model is current in the header afterwards is promised.
  void GetFormattedDescription(VRELOutputStream* stream) override;

 private:
  VRELFileHeader* header;
};
