#include "StepDiagnostics.h"

namespace {

std::string Suppressed(long count, char const* kind) {
  return std::to_string(count) + " more " + kind + (count == 1 ? " was" : "s were") + " not shown";
}

}  // namespace

void StepDiagnostics::Warn(long line, long column, std::string const& text, std::string const& hint) {
  if (++warnings <= kLimit) ReportWarningAt({name, line, column}, text, hint);
}

void StepDiagnostics::Error(long line, long column, std::string const& text, std::string const& hint) {
  if (++errors <= kLimit) ReportErrorAt({name, line, column}, text, hint);
}

void StepDiagnostics::Note(std::string const& text) const {
  ReportMessage(name + ": " + text);
}

void StepDiagnostics::ReportSuppressed() {
  if (warnings > kLimit) ReportWarningAt({name}, Suppressed(warnings - kLimit, "warning"));
  if (errors > kLimit) ReportErrorAt({name}, Suppressed(errors - kLimit, "error"));
  warnings = 0;
  errors = 0;
}
