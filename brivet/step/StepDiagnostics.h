// Diagnostics of a STEP file.
#pragma once

#include <string>
#include <utility>

#include "Diagnostics.h"

// Reports errors and warnings with their location. Only the first kLimit of each kind are sent, because a damaged file
// can have millions; ReportSuppressed reports the number of the others.
class StepDiagnostics {
 public:
  static constexpr long kLimit = 100;

  // `shownName` is how messages name the file.
  explicit StepDiagnostics(std::string shownName) : name(std::move(shownName)) {}

  // Returns whether the next warning is sent, so that the caller need not compose one that is not.
  bool SendsWarning() const noexcept { return warnings < kLimit; }
  void CountWarning() noexcept { ++warnings; }

  void Warn(long line, long column, std::string const& text, std::string const& hint = "");
  void Error(long line, long column, std::string const& text, std::string const& hint = "");
  // Sends a message without a location on the channel of messages.
  void Note(std::string const& text) const;
  // Reports how many warnings and errors were not sent, and begins to count again.
  void ReportSuppressed();

 private:
  std::string const name;
  long warnings = 0;
  long errors = 0;
};
