// The target file is about to be written.
#pragma once

#include "VRELFilePath.h"
#include "VRELStartTaskEvent.h"

class VREL_EXPORT VRELStartWriteFileTaskEvent : public VRELStartTaskEvent {
 public:
  // Keeps a copy of the path.
  explicit VRELStartWriteFileTaskEvent(VRELFilePath const& targetPath);

  // Writes nothing.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  VRELFilePath const& GetFilePath() const noexcept { return path; }

 private:
  VRELFilePath path;
};
