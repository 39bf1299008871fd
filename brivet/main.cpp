// brivet: reads a document by one format module and writes it by another, by the options of its user.
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "AbortSignals.h"
#include "CommandLine.h"
#include "OutOfMemoryHandler.h"
#include "CatchAsResult.h"
#include "Job.h"
#include "OptionSet.h"
#include "Diagnostics.h"
#include "ProgressBar.h"
#include "StandardErrorListener.h"
#include "StandardOutput.h"
#include "ProgressReporter.h"
#include "Translation.h"
#include "VRELAllocException.h"
#include "VRELErrorTracker.h"
#include "VRELLibraryManager.h"

namespace {

constexpr int USAGE_STATUS = 2;

constexpr char HELP[] =
    R"(brivet [options] INPUT [OUTPUT]

Translates an ISO 10303-21 (STEP) clear text file to a page that people browse,
to plain text, or to STEP again:

  $ brivet bracket.stp
  bracket.html: 232 instances of 41 types from bracket.stp

Without OUTPUT the result lies in the current directory, under INPUT's name
with another extension. - stands for standard input, or standard output.

Options, which may be shortened, as in -h or -vers:

  -write html|text|step  what to write (default: by OUTPUT's extension, else
                         html)
  -list                  prints what would be translated, with counts by type,
                         and stops
  -options FILE          takes the options of the translation from a file
  -set NAME=VALUE        sets one of them; what comes later wins, file or not
  -progress              shows a bar on standard error, which is the default on
                         a terminal
  -quiet                 prints nothing at all; the exit status tells
  --help, -help          prints this page
  --version, -version    prints the version
  --                     what follows are files, even if they begin with -

An options file holds a line NAME=VALUE for each option; lines that begin with
# or ; are comments:

  $ cat base.cfg
  # for all parts of the drawing office
  AuthorName = "drawing office"
  Step.*.Writer.FileLineLength = 80
  $ brivet -options base.cfg -set SendingSystemName=cad7 bracket.stp new.stp

A value is a whole number, a real number, On or Off, or else a text, which may
stand in double quotes. A name is one that the family knows, alone or behind a
component, a representation and a direction; * stands for any. A name that is
not known is set all the same, with a warning that tells those closest to it.

The log of the run is written to brivet_read.log in the current directory, and
its writing half once more to brivet_write.log. Variables of the environment:

  VRELLogLevel    how much is logged: ALL, DEBUG, TEST, VERBOSE, INFO (as long
                  as it is not set), ERROR, ABORT or NONE
  VRELTaskTiming  On: the log ends with the time that each task took

The output comes into its place when it is whole: a run that fails leaves what
was there. Ctrl-C stops the run within a second.

Exit status: 0 when all is well, and when parts of the document were left out,
each with a warning. 1 for an options file with errors, 2 for a wrong command
line, 3 for a run that was stopped, 4 for a module that is missing, 7 when
memory is short, 13 for a file that is not there, 14 for one that cannot be
read, 15 when the output cannot be written, 21 for a file that breaks the
format. Each problem is one line on standard error:

  brivet: warning: part.stp:12: expected ; behind #4, found #5; ...
)";

int StatusOf(VRINResult result) {
  return static_cast<int>(result.GetReturnCode());
}

VRINResult Print(std::string const& page) {
  return CatchAsResult("standard output", [&page] { return PrintPage(page); });
}

Job JobOf(CommandLine const& line) {
  Job job;
  job.input = line.input;
  job.prints = !line.quiet;
  if (line.action == CommandLine::List) return job;
  job.target = &line.Target();
  job.output = line.OutputPath();
  return job;
}

// All that is wrong with the options is told before the run is given up.
VRINResult Translate(CommandLine const& line) {
  AbortOnSignals();
  OptionSet options;
  VRINResult result = VREL_S_OK;
  for (OptionSource const& source : line.sources) result &= options.Add(source);
  if (result.IsSuccess()) {
    ProgressReporter progress;
    result = Translation(JobOf(line), options, progress).Run();
  }
  VRELLibraryManager::FreeLibraries();
  return result;
}

int Refuse(CommandLine const& line) {
  if (line.advice.empty()) {
    ReportProblem(line.problem);
  } else {
    ReportProblem(line.problem, line.advice);
  }
  if (!line.quiet) std::fputs(CommandLine::Usage(), stderr);
  return USAGE_STATUS;
}

VRINResult Act(CommandLine const& line) {
  CheckMemory();
  switch (line.action) {
    case CommandLine::Help:
      return Print(HELP);
    case CommandLine::Version:
      return Print("brivet " BRIVET_VERSION "\n");
    default:
      return Translate(line);
  }
}

int Run(int count, char** arguments) {
  ReserveStandardStreams();
  std::setlocale(LC_ALL, "");
  VRELErrorTracker::Initialize();
  CommandLine const line = CommandLine::Read(count, arguments);
  std::optional<ProgressBar> bar;
  if (!line.quiet && (line.progress || isatty(STDERR_FILENO) != 0)) bar.emplace();
  std::optional<StandardErrorListener> listener;
  if (!line.quiet) listener.emplace(bar ? &*bar : nullptr);
  if (line.action == CommandLine::Refuse) return Refuse(line);
  return StatusOf(CatchAsResult(line.input, [&line] { return Act(line); }));
}

}  // namespace

int main(int count, char** arguments) {
  OutOfMemoryHandler::Disarm();
  try {
    return Run(count, arguments);
  } catch (std::bad_alloc const&) {
  } catch (VRELAllocException const&) {
  }
  return OutOfMemoryHandler::Tell();
}
