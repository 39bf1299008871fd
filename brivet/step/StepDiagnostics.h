// What is told about a file while it is read.
#pragma once

#include <string>

// Sends "NAME:LINE: TEXT" on VRELWarning or VRELError, without the line where it is 0. Of each kind the first LIMIT are
// told, since a damaged file can have millions; ReportSuppressed says how many more there were.
class StepDiagnostics {
 public:
  static constexpr long LIMIT = 100;

  explicit StepDiagnostics(std::string shownName) : name(std::move(shownName)) {}

  void Warn(long line, std::string const& text);
  void Error(long line, std::string const& text);
  void ReportSuppressed();

 private:
  std::string Place(long line) const;

  std::string const name;
  long warnings = 0;
  long errors = 0;
};
