// brivet: reads an ISO 10303-21 file by the options of its user, and tells what the file says about itself.
#include <clocale>
#include <cstdio>
#include <string>

#include "CommandLine.h"
#include "OptionSet.h"
#include "ProblemReport.h"
#include "StandardErrorListener.h"
#include "StandardOutput.h"
#include "Translation.h"
#include "VRELErrorTracker.h"

namespace {

constexpr int USAGE_STATUS = 2;

constexpr char HELP[] =
    R"(brivet [-options FILE] [-set NAME=VALUE]... FILE

Reads an ISO 10303-21 (STEP) clear text file and prints, in UTF-8:

  - the strings of its header, decoded, each behind the name of its parameter:
    File Name, Author, Organization, and the others as the format names them
  - how many data sections and entity instances it holds
  - every string with an escape, such as \S\| or \X2\30D6\X0\, decoded, with
    the line where it begins and the instance that holds it

Example:

  $ brivet bracket.stp | grep schema
  schema_identifiers       : AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }

Options, which may be shortened, as in -h or -vers:

  -options FILE        takes the options of the translation from a file
  -set NAME=VALUE      sets one of them; what comes later wins, file or not
  --help, -help        prints this page
  --version, -version  prints the version
  --                   what follows is a file, even if it begins with -

An options file holds a line NAME=VALUE for each option; lines that begin with
# or ; are comments:

  $ cat base.cfg
  # for all parts of the drawing office
  ConvertAttributes = On
  Step.*.Reader.ConvertAttributes = Off
  $ brivet -options base.cfg -set SewTolerance=0.01 bracket.stp

A value is a whole number, a real number, On or Off, or else a text, which may
stand in double quotes. A name is one that the family knows, alone or behind a
component, a representation and a direction; * stands for any. A name that is
not known is set all the same, with a warning that tells those closest to it.

The log of the run is written to brivet_read.log in the current directory: the
options, the header of the file, each task with its result, and all warnings
and errors. VRELLogLevel in the environment sets how much: ALL, DEBUG, TEST,
VERBOSE, INFO (as long as it is not set), ERROR, ABORT or NONE.

Bytes beyond ASCII in a string are read as UTF-8 or, where they are none, in
the encoding of the locale.

Exit status: 0 when all is well. 1 for an options file with errors, 2 for a
wrong command line, 13 for a file that is not there, 14 for one that cannot be
read, 15 when the output cannot be written, 21 for a file that breaks the
format. Each problem is one line on standard error, and then nothing is
printed on standard output:

  brivet: part.stp:12: expected ; behind #4, found #5
)";

int StatusOf(VRINResult result) {
  return static_cast<int>(result.GetReturnCode());
}

// All that is wrong with the options is told before the run is given up.
VRINResult Translate(CommandLine const& line) {
  OptionSet options;
  VRINResult result = VREL_S_OK;
  for (OptionSource const& source : line.sources) result &= options.Add(source);
  return result.IsSuccess() ? Translation(line.file, options).Run() : result;
}

int Refuse(CommandLine const& line) {
  if (line.advice.empty()) {
    ReportProblem(line.problem);
  } else {
    ReportProblem(line.problem, line.advice);
  }
  std::fputs(CommandLine::Usage(), stderr);
  return USAGE_STATUS;
}

}  // namespace

int main(int count, char** arguments) {
  ReserveStandardStreams();
  std::setlocale(LC_ALL, "");
  VRELErrorTracker::Initialize();
  StandardErrorListener const listener;
  CommandLine const line = CommandLine::Read(count, arguments);
  switch (line.action) {
    case CommandLine::Translate:
      return StatusOf(Translate(line));
    case CommandLine::Help:
      return StatusOf(PrintPage(HELP));
    case CommandLine::Version:
      return StatusOf(PrintPage("brivet " BRIVET_VERSION "\n"));
    case CommandLine::Refuse:
      break;
  }
  return Refuse(line);
}
