#include "RunLog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "Diagnostics.h"
#include "FileError.h"
#include "LogStream.h"

namespace {

using Names = std::vector<std::string>;

constexpr char kInUse[] = "it is a file of this run";

bool AreSame(struct stat const& a, struct stat const& b) {
  return S_ISREG(a.st_mode) && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool IsStandardStream(struct stat const& log) {
  struct stat status;
  for (int const stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fstat(stream, &status) == 0 && AreSame(log, status)) return true;
  }
  return false;
}

bool IsInUse(struct stat const& log, Names const& files) {
  return IsStandardStream(log) || std::any_of(files.begin(), files.end(), [&log](std::string const& path) {
           struct stat status;
           return stat(path.c_str(), &status) == 0 && AreSame(log, status);
         });
}

// Returns why a file must not be overwritten by a log; empty if it may.
std::string LogObstacle(struct stat const& status) {
  if (S_ISLNK(status.st_mode)) return "it is a symbolic link";
  if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
  if (!S_ISREG(status.st_mode)) return "it is not a regular file";
  if (status.st_nlink > 1) return "it has several hard links";
  return status.st_uid == geteuid() ? "" : "it belongs to another user";
}

// Open log file.
struct LogFile {
  int descriptor = -1;
  bool isNew = false;
  std::string obstacle;  // why there is no log; empty if there is one
};

LogFile Refuse(LogFile const& file, std::string const& obstacle) {
  if (file.descriptor >= 0) close(file.descriptor);
  return {-1, file.isNew, obstacle};
}

// Opens without following a link and without waiting for the reader of a pipe. Nothing is changed yet.
LogFile Open(std::string const& path) {
  constexpr int kFlags = O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
  LogFile file;
  file.descriptor = open(path.c_str(), kFlags | O_CREAT | O_EXCL, 0666);
  file.isNew = file.descriptor >= 0;
  if (file.isNew) return file;
  if (errno != EEXIST) return Refuse(file, std::strerror(errno));
  struct stat status;
  if (lstat(path.c_str(), &status) == 0) {
    std::string const obstacle = LogObstacle(status);
    if (!obstacle.empty()) return Refuse(file, obstacle);
  }
  file.descriptor = open(path.c_str(), kFlags);
  if (file.descriptor < 0) return Refuse(file, std::strerror(errno));
  // Again for what is open: the name may refer to another file since lstat.
  std::string const obstacle = fstat(file.descriptor, &status) == 0 ? LogObstacle(status) : std::strerror(errno);
  return obstacle.empty() ? file : Refuse(file, obstacle);
}

LogFile OpenLog(std::string const& path, Names const& files) {
  struct stat status;
  if (lstat(path.c_str(), &status) == 0 && IsInUse(status, files)) return Refuse({}, kInUse);
  LogFile file = Open(path);
  if (file.descriptor < 0) return file;
  // An output that does not exist yet can be recognized only now.
  if (fstat(file.descriptor, &status) == 0 && IsInUse(status, files)) {
    if (file.isNew) unlink(path.c_str());
    return Refuse(file, kInUse);
  }
  // A full disk accepts an empty file; only a write fails.
  if (ftruncate(file.descriptor, 0) != 0 || pwrite(file.descriptor, "\n", 1, 0) != 1 ||
      ftruncate(file.descriptor, 0) != 0) {
    return Refuse(file, std::strerror(errno));
  }
  return file;
}

}  // namespace

RunLog::RunLog(std::string const& path, Names const& filesOfRun) {
  LogFile const file = OpenLog(path, filesOfRun);
  if (!file.obstacle.empty()) {
    ReportWarning("cannot write the log " + QuoteName(path), file.obstacle);
    return;
  }
  auto stream = std::make_unique<LogStream>(file.descriptor);
  log.emplace();
  log->Initialize(stream.release(), VREL_LEVEL_DEFAULT);
}

void RunLog::RemoveOld(std::string const& path, Names const& filesOfRun) {
  struct stat status;
  if (lstat(path.c_str(), &status) != 0 || !LogObstacle(status).empty() || IsInUse(status, filesOfRun)) return;
  unlink(path.c_str());
}
