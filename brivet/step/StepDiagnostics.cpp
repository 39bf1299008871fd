#include "StepDiagnostics.h"

#include "Diagnostics.h"

void StepDiagnostics::Warn(long line, std::string const& text) {
  if (++warnings <= LIMIT) ReportWarning(Place(line), text);
}

void StepDiagnostics::Error(long line, std::string const& text) {
  if (++errors <= LIMIT) ReportProblem(Place(line), text);
}

std::string StepDiagnostics::Place(long line) const {
  return line == 0 ? name : name + ":" + std::to_string(line);
}

void StepDiagnostics::ReportSuppressed() {
  if (warnings > LIMIT) ReportWarning(name, std::to_string(warnings - LIMIT) + " more warnings of this kind");
  if (errors > LIMIT) ReportProblem(name, std::to_string(errors - LIMIT) + " more errors of this kind");
  warnings = 0;
  errors = 0;
}
