// Start of the reading of a source file.
#pragma once

#include "VRELStartTaskEvent.h"

// Start of the reading of a source file.
class VREL_EXPORT VRELStartReadFileTaskEvent : public VRELStartTaskEvent {
 public:
  explicit VRELStartReadFileTaskEvent(VRELString const& name);
  // `name` is in the default codepage of the process.
  explicit VRELStartReadFileTaskEvent(char const* name);
  VRELStartReadFileTaskEvent(VRELStartReadFileTaskEvent const& other);
  ~VRELStartReadFileTaskEvent() override;

  // Writes nothing.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // Returns the file name in the default codepage of the process, owned by the event, or null if it is empty.
  char const* GetFileName() const noexcept { return fileName; }

  // Send the event.
  static void Fire(VRELString const& name);
  static void Fire(char const* name);

 private:
  char* fileName;
};
