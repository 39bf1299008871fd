// A source file is about to be read.
#pragma once

#include "VRELStartTaskEvent.h"

class VREL_EXPORT VRELStartReadFileTaskEvent : public VRELStartTaskEvent {
 public:
  explicit VRELStartReadFileTaskEvent(VRELString const& name);
  // In the process's default codepage.
  explicit VRELStartReadFileTaskEvent(char const* name);
  // A copy has a file name of its own.
  VRELStartReadFileTaskEvent(VRELStartReadFileTaskEvent const& other);
  ~VRELStartReadFileTaskEvent() override;

  // Writes nothing.
  void GetFormattedDescription(VRELOutputStream* stream) override;

  // In the process's default codepage, owned by the event; null for an empty name.
  char const* GetFileName() const noexcept { return fileName; }

  // Send one.
  static void Fire(VRELString const& name);
  static void Fire(char const* name);

 private:
  char* fileName;
};
