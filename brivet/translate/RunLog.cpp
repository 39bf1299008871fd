#include "RunLog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "LogStream.h"
#include "Diagnostics.h"

namespace {

char const* NameOf(RunLog::Half half) {
  return half == RunLog::Read ? "brivet_read.log" : "brivet_write.log";
}

bool IsLog(char const* name, struct stat const& status) {
  struct stat log;
  return S_ISREG(status.st_mode) && stat(name, &log) == 0 && log.st_dev == status.st_dev && log.st_ino == status.st_ino;
}

bool IsLog(char const* name, int descriptor) {
  struct stat status;
  return fstat(descriptor, &status) == 0 && IsLog(name, status);
}

bool IsAmong(char const* name, std::vector<std::string> const& files) {
  return std::any_of(files.begin(), files.end(), [name](std::string const& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && IsLog(name, status);
  });
}

bool IsInUse(char const* name, std::vector<std::string> const& files) {
  bool isStandard = false;
  for (int const stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) isStandard = isStandard || IsLog(name, stream);
  return isStandard || IsAmong(name, files);
}

// Writes a byte, since a full disk takes a new file but nothing in it; the log itself empties the file again.
// Gives the number of the error, 0 where there is none. A pipe that nobody reads is refused, and not waited for.
int TryToWrite(char const* name) {
  int const descriptor = open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666);
  if (descriptor < 0) return errno;
  int const writeError = write(descriptor, "\n", 1) == 1 ? 0 : errno;
  int const closeError = close(descriptor) == 0 ? 0 : errno;
  return writeError != 0 ? writeError : closeError;
}

// Why there can be no log; empty where there can.
std::string Obstacle(char const* name, std::vector<std::string> const& files) {
  constexpr char IN_USE[] = "a file of this run; rename it to get a log";
  if (IsInUse(name, files)) return IN_USE;
  bool const stood = access(name, F_OK) == 0;
  int const error = TryToWrite(name);
  if (error != 0) return std::strerror(error);
  // A file that is still to be written is known as the same only now.
  if (stood || !IsAmong(name, files)) return "";
  unlink(name);
  return IN_USE;
}

}  // namespace

RunLog::RunLog(Half half, std::vector<std::string> const& filesOfRun) {
  std::string obstacle = Obstacle(NameOf(half), filesOfRun);
  if (obstacle.empty()) obstacle = Begin(NameOf(half));
  if (!obstacle.empty()) {
    ReportWarning(NameOf(half),
                  "expected a log that can be written, found: " + obstacle + "; the run goes on without a log");
  }
}

std::string RunLog::Begin(char const* name) {
  int const descriptor = open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, 0666);
  if (descriptor < 0) return std::strerror(errno);
  auto stream = std::make_unique<LogStream>(descriptor);
  log.emplace();
  log->Initialize(stream.release(), VREL_LEVEL_DEFAULT);
  return "";
}

void RunLog::RemoveOld(Half half, std::vector<std::string> const& filesOfRun) {
  char const* const name = NameOf(half);
  struct stat status;
  bool const isRegular = lstat(name, &status) == 0 && S_ISREG(status.st_mode);
  if (isRegular && !IsInUse(name, filesOfRun)) unlink(name);
}
