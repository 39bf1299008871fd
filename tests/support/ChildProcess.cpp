#include "ChildProcess.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

struct Pipe {
  int ends[2];

  Pipe() {
    if (pipe(ends) != 0) throw std::runtime_error("pipe failed");
  }
  ~Pipe() {
    CloseRead();
    CloseWrite();
  }
  Pipe(Pipe const&) = delete;
  Pipe& operator=(Pipe const&) = delete;

  void CloseRead() { Close(ends[0]); }
  void CloseWrite() { Close(ends[1]); }

 private:
  static void Close(int& end) {
    if (end >= 0) close(end);
    end = -1;
  }
};

// Writes standard input and reads both outputs concurrently, to avoid a deadlock.
void Exchange(std::string const& input, Pipe& in, Pipe& out, Pipe& err, ChildResult& result) {
  std::size_t written = 0;
  if (input.empty()) in.CloseWrite();
  while (out.ends[0] >= 0 || err.ends[0] >= 0) {
    std::array<pollfd, 3> polled{{{out.ends[0], POLLIN, 0}, {err.ends[0], POLLIN, 0}, {in.ends[1], POLLOUT, 0}}};
    if (poll(polled.data(), polled.size(), -1) < 0) {
      if (errno == EINTR) continue;
      throw std::runtime_error("poll failed");
    }
    auto const collect = [](pollfd const& from, Pipe& source, std::string& text) {
      if (from.revents == 0) return;
      char block[65536];
      ssize_t const count = read(source.ends[0], block, sizeof block);
      if (count > 0) {
        text.append(block, static_cast<std::size_t>(count));
      } else {
        source.CloseRead();
      }
    };
    collect(polled[0], out, result.output);
    collect(polled[1], err, result.errors);
    if (polled[2].revents != 0) {
      ssize_t const count = write(in.ends[1], input.data() + written, input.size() - written);
      if (count > 0) written += static_cast<std::size_t>(count);
      if (count < 0 || written == input.size()) in.CloseWrite();
    }
  }
}

ChildResult Run(std::string const& input, std::function<void()> const& child) {
  Pipe in;
  Pipe out;
  Pipe err;
  std::fflush(nullptr);
  pid_t const process = fork();
  if (process < 0) throw std::runtime_error("fork failed");
  if (process == 0) {
    dup2(in.ends[0], STDIN_FILENO);
    dup2(out.ends[1], STDOUT_FILENO);
    dup2(err.ends[1], STDERR_FILENO);
    for (Pipe* each : {&in, &out, &err}) {
      each->CloseRead();
      each->CloseWrite();
    }
    child();
    _exit(126);
  }
  in.CloseRead();
  out.CloseWrite();
  err.CloseWrite();

  struct sigaction ignore = {};
  struct sigaction before = {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &ignore, &before);
  ChildResult result;
  Exchange(input, in, out, err, result);
  sigaction(SIGPIPE, &before, nullptr);

  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  return result;
}

}  // namespace

ChildResult RunInChild(std::function<int()> const& body) {
  return Run("", [&] { std::exit(body()); });
}

ChildResult RunInChildWithoutTeardown(std::function<int()> const& body) {
  return Run("", [&] {
    int const status = body();
    std::fflush(nullptr);
#ifdef VREL_COVERAGE
    std::exit(status);  // writes the coverage data
#else
    _exit(status);
#endif
  });
}

ChildResult RunProgram(std::vector<std::string> const& arguments, ProgramOptions const& options) {
  return Run(options.input, [&] {
    std::vector<char*> words;
    for (std::string const& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    for (std::string const& variable : options.environment) putenv(const_cast<char*>(variable.c_str()));
    if (!options.directory.empty() && chdir(options.directory.c_str()) != 0) _exit(125);
    execvp(words[0], words.data());
    _exit(127);
  });
}
