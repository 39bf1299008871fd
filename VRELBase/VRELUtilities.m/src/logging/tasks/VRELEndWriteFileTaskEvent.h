// End of the writing of the target file.
#pragma once

#include "VRELEndTaskEvent.h"
#include "VRELStreamFormatter.h"
#include "VRELString.h"

// End of the writing of the target file.
class VREL_EXPORT VRELEndWriteFileTaskEvent : public VRELEndTaskEvent {
 public:
  // `fileName` may be empty.
  VRELEndWriteFileTaskEvent(VRELString const& fileName, VRINResult const& result);
  VRELEndWriteFileTaskEvent(VRELEndWriteFileTaskEvent const& other);

  // Writes a sentence with the file name and the result, and a rule.
  //
  // Compatibility: every result except VREL_S_OK and VREL_E_ABORTED is written as a failure, partial success included.
  // There is no blank between "code" and the number.
  void GetFormattedDescription(VRELOutputStream* stream) override;

 private:
  VRELStreamFormatter formatter;
  VRELString name;
};
