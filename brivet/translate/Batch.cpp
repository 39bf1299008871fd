#include "Batch.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

#include "BatchProgressBar.h"
#include "Descriptor.h"
#include "Diagnostics.h"
#include "FileError.h"
#include "Gk_ErrMgr.h"
#include "PathNames.h"
#include "RunReport.h"
#include "VRELAbortException.h"
#include "WorkerProgress.h"

namespace {

using Clock = std::chrono::steady_clock;

// How often a worker that has closed its pipes is asked whether it has ended.
constexpr useconds_t kEndMicroseconds = 100;
constexpr int kPollMilliseconds = 100;
constexpr auto kTerminationTime = std::chrono::milliseconds(1300);
constexpr int kReportDescriptor = 3;  // of a worker
constexpr int kAbortedStatus = 3;
constexpr int kCrashStatus = 7;  // of a worker that a signal ended, often because memory ran out
constexpr int kExecFailure = 127;

bool IsStandardInput(std::string const& path) {
  return path == "-" || path == "/dev/stdin";
}

long SizeOf(std::string const& path) {
  struct stat status;
  return !IsStandardInput(path) && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)
             ? static_cast<long>(status.st_size)
             : 0;
}

// Returns the part of an output name before its extension.
std::string StemOf(std::string_view name) {
  return std::string(name.substr(0, name.size() - ExtensionOf(name).size()));
}

void CloseDescriptor(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

struct Pipe {
  int readEnd = -1;
  int writeEnd = -1;

  bool Open() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return false;
    readEnd = ends[0];
    writeEnd = ends[1];
    return true;
  }
};

enum Channel { OutputChannel, ErrorChannel, ReportChannel, ChannelCount };

}  // namespace

// A running process and what it has written to its pipes so far.
struct Batch::Worker {
  std::size_t item = 0;
  pid_t process = -1;
  Clock::time_point begin;
  std::array<int, ChannelCount> pipes = {-1, -1, -1};
  std::array<std::string, ChannelCount> text;
  int steps = 0;  // done, of WorkerProgress::kSteps
};

// One run of a batch. Starts workers and polls their pipes until all are done.
class Batch::Loop {
 public:
  Loop(Batch const& runBatch, VRELOutputStream* runReport, bool showsProgress, bool isQuietRun, bool areSummariesHidden)
      : batch(runBatch),
        report(runReport),
        isQuiet(isQuietRun),
        hidesSummaries(areSummariesHidden),
        sizes(SizesOf(runBatch.items)),
        bar(showsProgress, runBatch.items.size(), Sum(sizes)),
        statuses(runBatch.items.size(), -1),
        lines(runBatch.items.size()) {}
  ~Loop() {
    for (Worker& worker : workers) {
      kill(worker.process, SIGKILL);
      Close(worker);
      waitpid(worker.process, nullptr, 0);
    }
  }
  Loop(Loop const&) = delete;
  Loop& operator=(Loop const&) = delete;

  int Run() {
    while (next < batch.items.size() || !workers.empty()) {
      if (!isAborted && Gk_ErrMgr::shouldAbort()) Abort();
      while (!isAborted && next < batch.items.size() && workers.size() < static_cast<std::size_t>(batch.jobs)) Start();
      if (isAborted) next = batch.items.size();
      bar.Update(doneFiles, doneBytes + BytesInWork());
      Poll();
      if (isAborted && Clock::now() > deadline) KillAll();
    }
    bar.Hide();
    if (isAborted) ReportFailure("interrupted");
    WriteReports(true);
    return Status();
  }

 private:
  static std::vector<long> SizesOf(std::vector<BatchItem> const& items) {
    std::vector<long> sizes;
    sizes.reserve(items.size());
    for (BatchItem const& item : items) sizes.push_back(SizeOf(item.input));
    return sizes;
  }

  static long Sum(std::vector<long> const& numbers) {
    long sum = 0;
    for (long const number : numbers) sum += number;
    return sum;
  }

  void Start() {
    std::size_t const item = next++;
    std::array<Pipe, ChannelCount> pipes;
    bool areOpen = true;
    for (Pipe& pipe : pipes) areOpen = areOpen && pipe.Open();
    Worker worker;
    worker.item = item;
    worker.begin = Clock::now();
    std::vector<std::string> command = WordsFor(batch.items[item]);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& word : command) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t const parent = getpid();
    worker.process = areOpen ? fork() : -1;
    int const error = errno;
    if (worker.process == 0) Execute(arguments, pipes, IsStandardInput(batch.items[item].input), parent);
    for (std::size_t i = 0; i < pipes.size(); ++i) {
      CloseDescriptor(pipes[i].writeEnd);
      worker.pipes[i] = pipes[i].readEnd;
    }
    if (worker.process < 0) {
      Close(worker);
      ReportFailure("cannot start a process for " + QuoteName(batch.items[item].input) + ": " + std::strerror(error));
      Finish(worker, kCrashStatus);
      return;
    }
    workers.push_back(std::move(worker));
  }

  std::vector<std::string> WordsFor(BatchItem const& item) const {
    std::vector<std::string> all = {"brivet", "-worker", "-report=/dev/fd/" + std::to_string(kReportDescriptor)};
    all.insert(all.end(), batch.words.begin(), batch.words.end());
    if (!item.readLog.empty()) all.push_back("-readlog=" + item.readLog);
    if (!item.writeLog.empty()) all.push_back("-writelog=" + item.writeLog);
    all.push_back("-o=" + item.output);
    all.push_back("--");
    all.push_back(item.input);
    return all;
  }

  // Runs in the child. Calls only functions that are safe after fork.
  [[noreturn]] static void Execute(std::vector<char*> const& arguments, std::array<Pipe, ChannelCount> const& pipes,
                                   bool readsStandardInput, pid_t parent) {
    // A worker does not outlive the batch.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(kExecFailure);
    // Moves the pipes out of the way of the descriptors that they become.
    std::array<int, ChannelCount> ends;
    for (std::size_t i = 0; i < pipes.size(); ++i) ends[i] = fcntl(pipes[i].writeEnd, F_DUPFD, kReportDescriptor + 1);
    if (!readsStandardInput) {
      int const nothing = open("/dev/null", O_RDONLY);
      if (nothing > STDIN_FILENO) dup2(nothing, STDIN_FILENO);
      if (nothing > kReportDescriptor) close(nothing);
    }
    dup2(ends[OutputChannel], STDOUT_FILENO);
    dup2(ends[ErrorChannel], STDERR_FILENO);
    dup2(ends[ReportChannel], kReportDescriptor);
    for (int const end : ends) close(end);
    execv("/proc/self/exe", arguments.data());
    _exit(kExecFailure);
  }

  void Poll() {
    std::vector<pollfd> polled;
    for (Worker const& worker : workers) {
      for (int const pipe : worker.pipes) {
        if (pipe >= 0) polled.push_back({pipe, POLLIN, 0});
      }
    }
    // A worker whose pipes are closed ends at once, and no pipe wakes poll then.
    bool const isEnding = std::any_of(workers.begin(), workers.end(), IsAtEnd);
    poll(polled.data(), polled.size(), isEnding ? 0 : kPollMilliseconds);
    for (std::size_t i = 0; i < workers.size();) {
      for (std::size_t channel = 0; channel < ChannelCount; ++channel) Read(workers[i], channel, polled);
      if (!IsAtEnd(workers[i]) || !CollectWorker(workers[i])) {
        ++i;
        continue;
      }
      workers.erase(workers.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }

  void Read(Worker& worker, std::size_t channel, std::vector<pollfd> const& polled) {
    int& pipe = worker.pipes[channel];
    bool const isReady = std::any_of(polled.begin(), polled.end(),
                                     [pipe](pollfd const& each) { return each.fd == pipe && each.revents != 0; });
    if (pipe < 0 || !isReady) return;
    char block[65536];
    ssize_t const count = read(pipe, block, sizeof block);
    if (count > 0) {
      worker.text[channel].append(block, static_cast<std::size_t>(count));
      if (channel == ErrorChannel) PrintLines(worker.text[channel], stderr);
      if (channel == ReportChannel) TakeSteps(worker);
    } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
      CloseDescriptor(pipe);
    }
  }

  // Counts and removes the marks of WorkerProgress.
  static void TakeSteps(Worker& worker) {
    std::string& text = worker.text[ReportChannel];
    std::size_t const marks = std::min(text.find_first_not_of(WorkerProgress::kMark), text.size());
    worker.steps = static_cast<int>(
        std::min(static_cast<std::size_t>(worker.steps) + marks, static_cast<std::size_t>(WorkerProgress::kSteps)));
    text.erase(0, marks);
  }

  // Returns the bytes that the running workers have done, as far as they have reported it.
  long BytesInWork() const {
    double bytes = 0;
    for (Worker const& worker : workers) {
      bytes += static_cast<double>(sizes[worker.item]) * worker.steps / WorkerProgress::kSteps;
    }
    return static_cast<long>(bytes);
  }

  static bool IsAtEnd(Worker const& worker) {
    return std::all_of(worker.pipes.begin(), worker.pipes.end(), [](int pipe) { return pipe < 0; });
  }

  // Returns false if the process still runs.
  bool CollectWorker(Worker& worker) {
    int status = 0;
    pid_t const ended = waitpid(worker.process, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR)) {
      usleep(kEndMicroseconds);
      return false;
    }
    int exitStatus = kCrashStatus;
    if (ended == worker.process && WIFEXITED(status)) exitStatus = WEXITSTATUS(status);
    if (exitStatus == kExecFailure) {
      ReportFailure("cannot start a process for " + QuoteName(batch.items[worker.item].input));
      exitStatus = kCrashStatus;
    }
    if (ended == worker.process && WIFSIGNALED(status)) {
      exitStatus = isAborted ? kAbortedStatus : kCrashStatus;
      if (!isAborted) {
        ReportFailure("the process for " + QuoteName(batch.items[worker.item].input) + " was ended by signal " +
                      std::to_string(WTERMSIG(status)) + " (" + strsignal(WTERMSIG(status)) + ")");
      }
    }
    Finish(worker, exitStatus);
    return true;
  }

  void Finish(Worker& worker, int exitStatus) {
    for (std::string& text : worker.text) {
      if (!text.empty() && text.back() != '\n') text += '\n';
    }
    PrintLines(worker.text[ErrorChannel], stderr);
    PrintLines(worker.text[OutputChannel], stdout);
    std::string& line = lines[worker.item];
    line = std::move(worker.text[ReportChannel]);
    if (line.empty()) {
      line = FailureReport(worker.item, exitStatus, std::chrono::duration<double>(Clock::now() - worker.begin).count());
    }
    statuses[worker.item] = exitStatus;
    ++doneFiles;
    doneBytes += sizes[worker.item];
    WriteReports(false);
  }

  std::string FailureReport(std::size_t item, int exitStatus, double seconds) const {
    RunReport failure;
    failure.input = batch.items[item].input;
    failure.exitStatus = exitStatus;
    failure.seconds = seconds;
    return failure.ToJson();
  }

  // Prints and removes the complete lines of a text.
  void PrintLines(std::string& text, std::FILE* stream) {
    std::size_t const end = text.rfind('\n') + 1;
    if (end == 0) return;
    bar.Hide();
    // After an abort each worker reports the interruption as well.
    if (isAborted || (hidesSummaries && stream == stdout)) stream = nullptr;
    // The output is there even if its summary cannot be printed.
    if (!isQuiet && stream != nullptr) {
      std::fwrite(text.data(), 1, end, stream);
      std::fflush(stream);
    }
    text.erase(0, end);
  }

  void ReportFailure(std::string const& problem) {
    bar.Hide();
    ReportProblem(problem);
  }

  // Writes the reports that are next in the order of the inputs; at the end, also those of inputs without a process.
  void WriteReports(bool isEnd) {
    for (; nextReport < lines.size() && (isEnd || !lines[nextReport].empty()); ++nextReport) {
      std::string& line = lines[nextReport];
      if (line.empty()) line = FailureReport(nextReport, kAbortedStatus, 0);
      if (report != nullptr) {
        bar.Hide();
        report->write(line.data(), static_cast<int>(line.size()));
      }
      std::string().swap(line);
    }
    if (report != nullptr) report->flush();
  }

  void Abort() {
    isAborted = true;
    deadline = Clock::now() + kTerminationTime;
    for (Worker const& worker : workers) kill(worker.process, SIGTERM);
    try {
      Gk_ErrMgr::checkAbort();
    } catch (VRELAbortException const&) {
      // The request is served here.
    }
  }

  void KillAll() {
    for (Worker& worker : workers) {
      kill(worker.process, SIGKILL);
      Close(worker);
    }
  }

  static void Close(Worker& worker) {
    for (int& pipe : worker.pipes) CloseDescriptor(pipe);
  }

  int Status() const {
    if (isAborted) return kAbortedStatus;
    auto const failed = std::find_if(statuses.begin(), statuses.end(),
                                     [](int status) { return status != 0 && status != kPartialStatus; });
    if (failed != statuses.end()) return *failed;
    return std::count(statuses.begin(), statuses.end(), kPartialStatus) != 0 ? kPartialStatus : 0;
  }

  Batch const& batch;
  VRELOutputStream* const report;
  bool const isQuiet;
  bool const hidesSummaries;
  std::vector<long> const sizes;
  BatchProgressBar bar;
  std::vector<Worker> workers;
  std::vector<int> statuses;
  std::vector<std::string> lines;  // reports that are not written yet
  std::size_t next = 0;
  std::size_t nextReport = 0;
  std::size_t doneFiles = 0;
  long doneBytes = 0;
  bool isAborted = false;
  Clock::time_point deadline;
};

std::vector<BatchItem> MakeBatch(std::vector<std::string> const& inputs, Format const& format,
                                 std::string const& outputFolder, std::string const& logFolder) {
  auto const join = [](std::string const& folder, std::string const& name) {
    return folder.back() == '/' ? folder + name : folder + "/" + name;
  };
  std::vector<BatchItem> items;
  for (std::string const& input : inputs) {
    std::string const name = format.OutputName(input);
    BatchItem item = {input, join(outputFolder, name), "", ""};
    if (!logFolder.empty()) {
      item.readLog = join(logFolder, StemOf(name) + ".read.log");
      item.writeLog = join(logFolder, StemOf(name) + ".write.log");
    }
    items.push_back(std::move(item));
  }
  return items;
}

std::string FindConflict(std::vector<BatchItem> const& items, std::vector<std::string> const& optionsFiles) {
  using Key = std::pair<dev_t, ino_t>;
  std::map<std::string_view, std::string_view> inputOfOutput;
  std::map<Key, std::string> readFiles;
  struct stat status;
  auto const addRead = [&](char const* kind, std::string const& path) {
    if (IsStandardInput(path) || stat(path.c_str(), &status) != 0) return;
    readFiles.emplace(Key(status.st_dev, status.st_ino), kind + QuoteName(path));
  };
  for (BatchItem const& item : items) {
    auto const [other, isNew] = inputOfOutput.emplace(item.output, item.input);
    if (!isNew) {
      return "inputs " + QuoteName(other->second) + " and " + QuoteName(item.input) + " have the same output " +
             QuoteName(item.output);
    }
    addRead("input ", item.input);
  }
  for (std::string const& path : optionsFiles) addRead("options file ", path);
  for (BatchItem const& item : items) {
    for (std::string const* written : {&item.output, &item.readLog, &item.writeLog}) {
      if (written->empty() || stat(written->c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
      auto const file = readFiles.find({status.st_dev, status.st_ino});
      if (file == readFiles.end()) continue;
      char const* const kind = written == &item.output ? "the output of " : "a log of ";
      return kind + QuoteName(item.input) + " would overwrite the " + file->second;
    }
  }
  return "";
}

Batch::Batch(std::vector<BatchItem> batchItems, std::vector<std::string> workerWords, int jobCount)
    : items(std::move(batchItems)), words(std::move(workerWords)), jobs(std::max(jobCount, 1)) {}

int Batch::Run(VRELOutputStream* report, bool showsProgress, bool isQuiet, bool hidesSummaries) {
  return Loop(*this, report, showsProgress, isQuiet, hidesSummaries).Run();
}
