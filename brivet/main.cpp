// brivet: translates a document by format modules.
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <new>
#include <optional>
#include <string>

#include "AbortSignals.h"
#include "CatchAsResult.h"
#include "CommandLine.h"
#include "Diagnostics.h"
#include "HelpText.h"
#include "Job.h"
#include "OptionSet.h"
#include "OutOfMemory.h"
#include "ProgressBar.h"
#include "ProgressReporter.h"
#include "StandardErrorListener.h"
#include "StandardOutput.h"
#include "Translation.h"
#include "VRELAllocException.h"
#include "VRELErrorTracker.h"
#include "VRELLibraryManager.h"

namespace {

constexpr int kUsageStatus = 2;

int StatusOf(VRINResult result) {
  return static_cast<int>(result.GetReturnCode());
}

VRINResult Print(std::string const& text) {
  return CatchAsResult("standard output", [&text] { return PrintText(text); });
}

Job JobOf(CommandLine const& line) {
  Job job;
  job.input = line.input;
  job.isQuiet = line.isQuiet;
  job.isSynchronized = line.isSynchronized;
  if (line.action == CommandLine::List) return job;
  job.target = &line.Target();
  job.output = line.OutputPath();
  return job;
}

// Reports the errors of all option sources, not only of the first.
VRINResult ReadOptions(CommandLine const& line, OptionSet& options) {
  VRINResult result = VREL_S_OK;
  for (OptionSource const& source : line.sources) result &= options.Add(source);
  return result;
}

VRINResult Translate(CommandLine const& line, OptionSet& options) {
  ProgressReporter progress;
  Translation translation(JobOf(line), options, progress);
  VRINResult const result = translation.Run();
  // Once the output is in place, nothing turns the run into a failure.
  return translation.IsCommitted() ? result : CatchAsResult(line.input, [&result] { return result; });
}

void FreeLibraries() {
  try {
    VRELLibraryManager::FreeLibraries();
  } catch (std::bad_alloc const&) {
  } catch (VRELAllocException const&) {
  }
}

VRINResult Translate(CommandLine const& line) {
  AbortOnSignals();
  OptionSet options;
  VRINResult result = CatchAsResult(line.input, [&] { return ReadOptions(line, options); });
  if (result.IsSuccess()) result = Translate(line, options);
  FreeLibraries();
  return result;
}

int Refuse(CommandLine const& line) {
  ReportProblem(line.problem);
  if (!line.hint.empty()) ReportProblem("hint", line.hint);
  if (!line.isQuiet) std::fputs(CommandLine::Usage(), stderr);
  return kUsageStatus;
}

VRINResult Act(CommandLine const& line) {
  switch (line.action) {
    case CommandLine::Help:
      return Print(kHelpText);
    case CommandLine::Version:
      return Print("brivet " BRIVET_VERSION "\n");
    default:
      return Translate(line);
  }
}

int Run(int count, char** arguments) {
  ReserveStandardStreams();
  IgnoreFileSizeSignal();
  std::setlocale(LC_ALL, "");
  VRELErrorTracker::Initialize();
  CommandLine const line = CommandLine::Parse(count, arguments);
  std::optional<ProgressBar> bar;
  if (!line.isQuiet && (line.showsProgress || isatty(STDERR_FILENO) != 0)) bar.emplace();
  std::optional<StandardErrorListener> listener;
  if (!line.isQuiet) listener.emplace(bar ? &*bar : nullptr);
  if (line.action == CommandLine::Refuse) return Refuse(line);
  return StatusOf(Act(line));
}

}  // namespace

int main(int count, char** arguments) {
  try {
    return Run(count, arguments);
  } catch (std::bad_alloc const&) {
  } catch (VRELAllocException const&) {
  }
  return ReportOutOfMemory(count, arguments);
}
