#include "StepProblems.h"

#include "ProblemReport.h"

void StepProblems::Warn(long line, std::string const& text) {
  if (++warnings <= LIMIT) ReportWarning(Place(line), text);
}

void StepProblems::Error(long line, std::string const& text) {
  if (++errors <= LIMIT) ReportProblem(Place(line), text);
}

std::string StepProblems::Place(long line) const {
  return line == 0 ? name : name + ":" + std::to_string(line);
}

void StepProblems::TellRest() {
  if (warnings > LIMIT) ReportWarning(name, std::to_string(warnings - LIMIT) + " more warnings of this kind");
  if (errors > LIMIT) ReportProblem(name, std::to_string(errors - LIMIT) + " more errors of this kind");
  warnings = 0;
  errors = 0;
}
