#include "RunLog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "ProblemReport.h"

namespace {

constexpr char NAME[] = "brivet_read.log";

bool IsLog(std::string const& path) {
  struct stat logStatus;
  struct stat status;
  return stat(NAME, &logStatus) == 0 && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         logStatus.st_dev == status.st_dev && logStatus.st_ino == status.st_ino;
}

// Writes a byte, since a full disk takes a new file but nothing in it; the log itself begins by emptying the file.
// Gives the number of the error, 0 where there is none. A pipe that nobody reads is refused, and not waited for.
int TryToWrite() {
  int const descriptor = open(NAME, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666);
  if (descriptor < 0) return errno;
  int const writeError = write(descriptor, "\n", 1) == 1 ? 0 : errno;
  int const closeError = close(descriptor) == 0 ? 0 : errno;
  return writeError != 0 ? writeError : closeError;
}

// Why there can be no log; empty where there can.
std::string Obstacle(std::vector<std::string> const& filesToRead) {
  for (std::string const& path : filesToRead) {
    if (IsLog(path)) return "a file of this run; rename it to get a log";
  }
  int const error = TryToWrite();
  return error == 0 ? "" : std::strerror(error);
}

}  // namespace

RunLog::RunLog(std::vector<std::string> const& filesToRead) {
  std::string const obstacle = Obstacle(filesToRead);
  if (obstacle.empty()) {
    log.emplace(true);
  } else {
    ReportWarning(NAME, "expected a log that can be written, found: " + obstacle + "; the run goes on without a log");
  }
}
