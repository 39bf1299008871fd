#include "RunLog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "ProblemReport.h"

namespace {

constexpr char NAME[] = "brivet_read.log";

bool IsLog(struct stat const& status) {
  struct stat log;
  return S_ISREG(status.st_mode) && stat(NAME, &log) == 0 && log.st_dev == status.st_dev && log.st_ino == status.st_ino;
}

bool IsLog(std::string const& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && IsLog(status);
}

bool IsLog(int descriptor) {
  struct stat status;
  return fstat(descriptor, &status) == 0 && IsLog(status);
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
  bool isInUse = IsLog(STDOUT_FILENO) || IsLog(STDERR_FILENO);
  for (std::string const& path : filesToRead) isInUse = isInUse || IsLog(path);
  if (isInUse) return "a file of this run; rename it to get a log";
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
