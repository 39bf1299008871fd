// brivet: tells what an ISO 10303-21 file says about itself.
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "ByteSource.h"
#include "GuardedRun.h"
#include "InputFile.h"
#include "ProblemReport.h"
#include "StandardErrorListener.h"
#include "StepSummary.h"
#include "SummaryReport.h"
#include "VRELErrorTracker.h"

namespace {

constexpr int USAGE_STATUS = 2;

constexpr char USAGE[] = "usage: brivet FILE | --help | --version\n";

constexpr char HELP[] =
    R"(brivet FILE

Reads an ISO 10303-21 (STEP) clear text file and prints, in UTF-8:

  - the strings of its header, decoded, each behind the name of its parameter
  - how many data sections and entity instances it holds
  - every string with an escape, such as \S\| or \X2\30D6\X0\, decoded, with
    the line where it begins and the instance that holds it

Example:

  $ brivet bracket.stp | grep schema
    schema_identifiers    AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }

Options:

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

int Print(std::string const& text) {
  errno = 0;
  bool const written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (std::fflush(stdout) == 0 && written) return 0;
  ReportProblem("standard output", std::string("expected a place to write to, found: ") + std::strerror(errno));
  return StatusOf(VREL_E_FILE_SAVE);
}

int Summarise(std::string const& path) {
  std::string page;
  VRINResult const result = RunGuarded(path, [&path, &page] {
    InputFile file(path);
    ByteSource source([&file](char* block, std::size_t size) { return file.Read(block, size); });
    page = FormatSummary(StepSummary::Read(source));
  });
  return result.IsSuccess() ? Print(page) : StatusOf(result);
}

int Refuse(std::string const& reason) {
  ReportProblem(reason);
  std::fputs(USAGE, stderr);
  return USAGE_STATUS;
}

}  // namespace

int main(int count, char** arguments) {
  std::setlocale(LC_ALL, "");
  VRELErrorTracker::Initialize();
  StandardErrorListener const listener;
  std::vector<std::string> words(arguments + (count > 0 ? 1 : 0), arguments + count);
  if (words.size() == 1) {
    if (words[0] == "--help" || words[0] == "-help") return Print(HELP);
    if (words[0] == "--version" || words[0] == "-version") return Print("brivet " BRIVET_VERSION "\n");
    if (words[0].size() > 1 && words[0][0] == '-' && words[0] != "--") return Refuse("unknown option " + words[0]);
  }
  if (!words.empty() && words[0] == "--") words.erase(words.begin());
  if (words.size() != 1) return Refuse("expected one file, found " + std::to_string(words.size()) + " arguments");
  return Summarise(words[0]);
}
