// Output stream that records failures.
#pragma once

#include "VRELOutputStream.h"

// Passes everything on to another stream. Formatters ignore how many bytes their stream accepts; a writer that uses one
// checks here.
class CheckedOutputStream final : public VRELOutputStream {
 public:
  // Ownership: `targetStream` is not owned.
  explicit CheckedOutputStream(VRELOutputStream* targetStream) : VRELOutputStream(targetStream) {}

  // After the first failure nothing is passed on, and -1 is returned.
  int write(char const* buffer, int count) override;
  void flush() override;
  void close() override;

  bool HasFailed() const noexcept { return failed; }
  // Throws Failure if a write has failed.
  void Check() const;

  // Thrown by a writer to end writing.
  struct Failure {};

 private:
  bool failed = false;
};
