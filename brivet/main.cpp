// brivet: tells what an ISO 10303-21 file says about itself.
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "ByteSource.h"
#include "InputFile.h"
#include "StepError.h"
#include "StepSummary.h"
#include "SummaryReport.h"
#include "VRELAllocException.h"
#include "VRINResult.h"

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

// One line, whatever the file's name or bytes hold.
std::string OneLine(std::string text) {
  for (char& byte : text) {
    if ((byte >= 0 && byte < ' ') || byte == 0x7F) byte = '?';
  }
  return text;
}

int Report(VRINResult result, std::string const& message) {
  std::fprintf(stderr, "brivet: %s\n", OneLine(message).c_str());
  return static_cast<int>(result.GetReturnCode());
}

int Report(std::string const& path, StepError const& error) {
  std::string const line = error.line == 0 ? "" : ":" + std::to_string(error.line);
  return Report(error.result, path + line + ": " + error.text);
}

int Print(std::string const& text) {
  errno = 0;
  bool const written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (std::fflush(stdout) == 0 && written) return 0;
  return Report(VREL_E_FILE_SAVE,
                std::string("standard output: expected a place to write to, found: ") + std::strerror(errno));
}

int Summarise(std::string const& path) {
  std::string page;
  try {
    InputFile file(path);
    ByteSource source([&file](char* block, std::size_t size) { return file.Read(block, size); });
    page = FormatSummary(StepSummary::Read(source));
  } catch (StepError const& error) {
    return Report(path, error);
  } catch (std::bad_alloc const&) {
    return Report(VREL_E_UNEXPECTED, path + ": expected more memory, found no more");
  } catch (VRELAllocException const&) {
    return Report(VREL_E_UNEXPECTED, path + ": expected more memory, found no more");
  }
  return Print(page);
}

int Refuse(std::string const& reason) {
  Report(VREL_E_INVALID_ARGUMENT, reason);
  std::fputs(USAGE, stderr);
  return USAGE_STATUS;
}

}  // namespace

int main(int count, char** arguments) {
  std::setlocale(LC_ALL, "");
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
