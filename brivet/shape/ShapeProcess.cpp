#include "ShapeProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <vector>

#include "Gk_ErrMgr.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kPollMilliseconds = 50;
constexpr int kWaitMicroseconds = 2000;
constexpr std::size_t kReadSize = 1U << 18U;
constexpr int kCannotExecute = 127;
// The document is descriptor 3 of the child: its path may name a descriptor of this process.
constexpr char kDocument[] = "/proc/self/fd/3";
constexpr int kFirstFree = 4;

// Open descriptor, closed by the destructor.
class Handle {
 public:
  explicit Handle(int opened = -1) : number(opened) {}
  ~Handle() { Close(); }
  Handle(Handle const&) = delete;
  Handle& operator=(Handle const&) = delete;

  void Set(int opened) { number = opened; }
  void Close() {
    if (number >= 0) close(number);
    number = -1;
  }
  int Get() const { return number; }

 private:
  int number;
};

// Running child. The destructor kills it if it still runs.
class Child {
 public:
  explicit Child(pid_t started) : id(started) {}
  ~Child() { Kill(); }
  Child(Child const&) = delete;
  Child& operator=(Child const&) = delete;

  // Returns whether it has ended; sets how.
  bool HasEnded(ShapeProcess::Outcome& outcome) {
    if (id <= 0) return true;
    int status = 0;
    pid_t ended = 0;
    do {
      ended = waitpid(id, &status, WNOHANG);
    } while (ended < 0 && errno == EINTR);
    if (ended == 0) return false;
    id = 0;
    if (ended > 0 && WIFSIGNALED(status)) {
      outcome = {ShapeProcess::Killed, WTERMSIG(status)};
    } else {
      outcome = {ShapeProcess::Exited, ended > 0 ? WEXITSTATUS(status) : kCannotExecute};
    }
    return true;
  }
  void Kill() {
    if (id <= 0) return;
    kill(id, SIGKILL);
    while (waitpid(id, nullptr, 0) < 0 && errno == EINTR) {
    }
    id = 0;
  }

 private:
  pid_t id;
};

// Returns a file in memory with these bytes at its beginning, or -1.
int MemoryFile(std::string const& bytes) {
  int const file = memfd_create("brivet-shape", MFD_CLOEXEC);
  for (std::size_t done = 0; file >= 0 && done < bytes.size();) {
    ssize_t const count = write(file, bytes.data() + done, bytes.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      close(file);
      return -1;
    }
    done += static_cast<std::size_t>(count);
  }
  if (file >= 0) lseek(file, 0, SEEK_SET);
  return file;
}

void SetLimit(__rlimit_resource resource, rlim_t limit) {
  rlimit limits{};
  if (getrlimit(resource, &limits) != 0) return;
  limits.rlim_max = std::min(limits.rlim_max, limit);
  limits.rlim_cur = std::min(limits.rlim_cur, limits.rlim_max);
  setrlimit(resource, &limits);
}

// Runs in the child after fork: calls functions that are safe in a signal handler only.
[[noreturn]] void Execute(char* const* arguments, int input, int output, int document, pid_t parent, rlim_t bytes) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  if (getppid() != parent) _exit(kCannotExecute);
  SetLimit(RLIMIT_AS, bytes);
  SetLimit(RLIMIT_CORE, 0);
  // The descriptors may have the numbers that they are copied to.
  int const errors = open("/dev/null", O_RDWR);
  int const copies[] = {fcntl(input, F_DUPFD, kFirstFree), fcntl(output, F_DUPFD, kFirstFree),
                        fcntl(errors, F_DUPFD, kFirstFree), fcntl(document, F_DUPFD, kFirstFree)};
  for (int i = 0; i < kFirstFree; ++i) {
    if (dup2(copies[i], i) < 0) _exit(kCannotExecute);
  }
  syscall(SYS_close_range, static_cast<unsigned>(kFirstFree), ~0U, 0U);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  signal(SIGPIPE, SIG_DFL);
  execv(arguments[0], arguments);
  _exit(kCannotExecute);
}

}  // namespace

ShapeProcess::Outcome ShapeProcess::Run(std::string const& program, std::string const& document,
                                        std::string const& request, Limits const& limits,
                                        std::function<bool(std::string_view)> const& receive) {
  Handle const input(MemoryFile(request));
  Handle const file(open(document.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.Get() < 0) return {NotStarted, errno};
  int ends[2];
  if (input.Get() < 0 || pipe2(ends, O_CLOEXEC) != 0) return {NotStarted, errno};
  Handle const output(ends[0]);
  Handle inner(ends[1]);
  std::string words[2] = {program, kDocument};
  char* const arguments[] = {words[0].data(), words[1].data(), nullptr};
  std::vector<char> buffer(kReadSize);
  pid_t const self = getpid();
  pid_t const started = fork();
  if (started < 0) return {NotStarted, errno};
  if (started == 0) Execute(arguments, input.Get(), inner.Get(), file.Get(), self, limits.bytes);
  Child child(started);
  inner.Close();

  auto const deadline = Clock::now() + std::chrono::seconds(limits.seconds);
  for (;;) {
    Gk_ErrMgr::checkAbort();
    if (Clock::now() >= deadline) return {TimedOut, 0};
    pollfd waited{output.Get(), POLLIN, 0};
    if (poll(&waited, 1, kPollMilliseconds) <= 0) continue;
    ssize_t const count = read(output.Get(), buffer.data(), buffer.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (count <= 0) break;
    if (!receive(std::string_view(buffer.data(), static_cast<std::size_t>(count)))) return {Refused, 0};
  }
  // The child may close its output and continue.
  Outcome outcome;
  while (!child.HasEnded(outcome)) {
    Gk_ErrMgr::checkAbort();
    if (Clock::now() >= deadline) return {TimedOut, 0};
    usleep(kWaitMicroseconds);
  }
  return outcome;
}
