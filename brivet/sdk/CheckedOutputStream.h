// A stream that remembers whether all it was given was taken.
#pragma once

#include "VRELOutputStream.h"

// Hands everything on. Formatters don't look at what their stream took; who writes through one looks here.
class CheckedOutputStream final : public VRELOutputStream {
 public:
  // Not owned.
  explicit CheckedOutputStream(VRELOutputStream* beneath) : VRELOutputStream(beneath) {}

  // After the first failure nothing more is handed on, and -1 is returned.
  int write(char const* buffer, int count) override;
  void flush() override;
  void close() override;

  bool HasFailed() const noexcept { return failed; }
  // Throws Failure once a write failed.
  void Check() const;

  // What a writing module throws to end its work.
  struct Failure {};

 private:
  bool failed = false;
};
