// End of the reading of a source file.
#pragma once

#include "VRELEndTaskEvent.h"

class VRELFileHeader;

// End of the reading of a source file, with the header of the file.
class VREL_EXPORT VRELEndReadFileTaskEvent : public VRELEndTaskEvent {
 public:
  // Ownership: the header is not owned and must outlive the event and its copies. It may be null.
  VRELEndReadFileTaskEvent(VRINResult const& result, VRELFileHeader* fileHeader);

  // Writes the rows of all models of the header, and the model numbers if there are several models. Writes nothing if
  // no model has rows. The result is not written.
  //
  // Compatibility: model 0 of the header is selected afterwards.
  void GetFormattedDescription(VRELOutputStream* stream) override;

 private:
  VRELFileHeader* header;
};
