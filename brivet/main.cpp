// brivet: tells what an ISO 10303-21 file says about itself.
#include <clocale>
#include <cstdio>
#include <string>

#include "ByteSource.h"
#include "CommandLine.h"
#include "GuardedRun.h"
#include "InputFile.h"
#include "ProblemReport.h"
#include "StandardErrorListener.h"
#include "StandardOutput.h"
#include "StepSummary.h"
#include "SummaryReport.h"
#include "VRELErrorTracker.h"

namespace {

constexpr int USAGE_STATUS = 2;

constexpr char USAGE[] = "usage: brivet FILE | --help | --version\n";

constexpr char HELP[] =
    R"(brivet FILE

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

  --help, -help        prints this page
  --version, -version  prints the version
  --                   what follows is a file, even if it begins with -

Bytes beyond ASCII in a string are read as UTF-8 or, where they are none, in
the encoding of the locale.

Exit status: 0 when all is well. 2 for a wrong command line, 13 for a file
that is not there, 14 for one that cannot be read, 15 when the output cannot
be written, 21 for a file that breaks the format. Each problem is one line on
standard error, and then nothing is printed on standard output:

  brivet: part.stp:12: expected ; behind #4, found #5
)";

int StatusOf(VRINResult result) {
  return static_cast<int>(result.GetReturnCode());
}

VRINResult Summarise(std::string const& path) {
  std::string page;
  VRINResult const result = RunGuarded(path, [&path, &page] {
    InputFile file(path);
    ByteSource source([&file](char* block, std::size_t size) { return file.Read(block, size); });
    page = FormatSummary(StepSummary::Read(source));
  });
  return result.IsSuccess() ? PrintPage(page) : result;
}

int Refuse(CommandLine const& line) {
  if (line.advice.empty()) {
    ReportProblem(line.problem);
  } else {
    ReportProblem(line.problem, line.advice);
  }
  std::fputs(USAGE, stderr);
  return USAGE_STATUS;
}

}  // namespace

int main(int count, char** arguments) {
  std::setlocale(LC_ALL, "");
  VRELErrorTracker::Initialize();
  StandardErrorListener const listener;
  CommandLine const line = CommandLine::Read(count, arguments);
  switch (line.action) {
    case CommandLine::Summarise:
      return StatusOf(Summarise(line.file));
    case CommandLine::Help:
      return StatusOf(PrintPage(HELP));
    case CommandLine::Version:
      return StatusOf(PrintPage("brivet " BRIVET_VERSION "\n"));
    case CommandLine::Refuse:
      break;
  }
  return Refuse(line);
}
