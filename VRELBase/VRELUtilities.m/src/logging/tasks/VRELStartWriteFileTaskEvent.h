// Start of the writing of the target file.
#pragma once

#include "VRELFilePath.h"
#include "VRELStartTaskEvent.h"

// Start of the writing of the target file.
class VREL_EXPORT VRELStartWriteFileTaskEvent : public VRELStartTaskEvent {
 public:
  // Copies the path.
  explicit VRELStartWriteFileTaskEvent(VRELFilePath const& targetPath);

  // Writes nothing.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  VRELFilePath const& GetFilePath() const noexcept { return path; }

 private:
  VRELFilePath path;
};
