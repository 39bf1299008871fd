#include "FaultyRun.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <sstream>

namespace {

constexpr unsigned kSeconds = 20;
constexpr char kOldOutput[] = "old output";
constexpr std::array kLogs = {"brivet_read.log", "brivet_write.log"};
// Exit status of the loader if it cannot load a library.
constexpr int kLoaderStatus = 127;

bool IsDocumented(int status) {
  static std::set<int> const documented = {0, 1, 2, 3, 4, 7, 8, 13, 14, 15, 21};
  return documented.count(status) != 0;
}

bool IsOfLoader(ChildResult const& result) {
  return result.exitStatus == kLoaderStatus &&
         result.errors.find("error while loading shared libraries") != std::string::npos;
}

// Removes the time, which differs from run to run.
std::string WithoutTime(std::string log) {
  constexpr char kFinish[] = "Finish Time : ";
  std::size_t const at = log.find(kFinish);
  if (at == std::string::npos) return log;
  std::size_t const end = log.find('\n', at);
  return log.substr(0, at + sizeof kFinish - 1) + (end == std::string::npos ? "" : log.substr(end));
}

// Returns whether a line of a log may be there because of a failure.
bool IsAboutFailure(std::string const& line) {
  for (char const* const word : {"Error", "Warning", "hint: ", "Product ", "Output File", "Translation Result",
                                 "Failed Entities", "Finish Time"}) {
    if (line.rfind(word, 0) == 0) return true;
  }
  return line.find(" Result : ") != std::string::npos;
}

std::set<std::string> LinesOf(std::string const& text) {
  std::set<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.insert(line);
  return lines;
}

}  // namespace

char const FAULT_DOCUMENT[] = R"(ISO-10303-21;
HEADER;
FILE_DESCRIPTION(('Scheibe f\S\|r M8','washer'),'2;1');
FILE_NAME('washer.stp','2026-11-20T09:30:00',('J\S\vrg'),(),$,'drawn by ''hand''','');
FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));
ENDSEC;
DATA;
#10=PRODUCT('w','\X2\30D630EC30F330C9\X0\ R1','/* no comment */',(#20));
#20=(A()B('\S\A',1.5,"1F",.T.));
#30=ORIENTED_EDGE('',*,*,#99,.F.);
#1204=C('',#10,(#20,#30));
#123456789012345678901234567890=C('of a long id');
#40=C('',#123456789012345678901234567890);
ENDSEC;
END-ISO-10303-21;
)";

char const FAULT_OPTIONS[] = R"(# defaults of the drawing office
AuthorName = "drawing office"
Step.*.Writer.FileLineLength = 80
ConvertAtributes = On
SewTolerance = 0.01
)";

std::string LargeFaultDocument(int instances) {
  std::string text(FAULT_DOCUMENT);
  std::string data;
  for (int i = 2000; i < 2000 + instances; ++i) {
    std::string const id = std::to_string(i);
    data.append("#").append(id).append("=ORIENTED_EDGE('Kante ").append(id).append("',*,*,#10,.F.);\n");
  }
  return text.insert(text.find("#1204"), data);
}

FaultyRun::FaultyRun(Names programWords, std::string const& document) : words(std::move(programWords)) {
  folder.Write("washer.stp", document);
  folder.Write("large.stp", document);
  folder.Write("base.cfg", FAULT_OPTIONS);
  Reset();
  undisturbed = Run({});
  if (!IsListing()) newOutput = folder.Read(Output());
  for (char const* log : kLogs) {
    if (folder.Has(log)) logs[log] = WithoutTime(folder.Read(log));
  }
}

void FaultyRun::Reset() const {
  for (auto const& entry : std::filesystem::directory_iterator(folder.Path())) {
    std::string const name = entry.path().filename().string();
    if (name != "base.cfg" && name.rfind(".stp") == std::string::npos) std::filesystem::remove(entry.path());
  }
  if (!IsListing()) folder.Write(Output(), kOldOutput);
}

pid_t FaultyRun::Start(std::function<void()> const& prepare) const {
  pid_t const process = fork();
  if (process != 0) return process;
  Names line = words;
  line.insert(line.begin(), BRIVET_PROGRAM);
  std::vector<char*> arguments;
  for (std::string& word : line) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  setenv("LC_ALL", "C.UTF-8", 1);
  // Overwrites freed memory, so that using it has an effect.
  setenv("MALLOC_PERTURB_", "165", 1);
  rlimit const none = {0, 0};
  setrlimit(RLIMIT_CORE, &none);
  dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
  dup2(open(outside.Path("output").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
  dup2(open(outside.Path("errors").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
  if (chdir(folder.Path().c_str()) != 0) _exit(126);
  alarm(kSeconds);
  if (prepare) prepare();
  execv(arguments[0], arguments.data());
  _exit(126);
}

ChildResult FaultyRun::Collect(int status) const {
  ChildResult result;
  if (WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  result.output = outside.Read("output");
  result.errors = outside.Read("errors");
  return result;
}

ChildResult FaultyRun::Run(Names const& environmentOfRun) const {
  pid_t const process = Start([&] {
    for (std::string const& variable : environmentOfRun) putenv(const_cast<char*>(variable.c_str()));
  });
  int status = 0;
  waitpid(process, &status, 0);
  return Collect(status);
}

// Returns an empty string if nothing is wrong.
std::string FaultyRun::WrongFiles(bool mayLeaveTemporary, bool mayLoseTexts) const {
  for (auto const& entry : std::filesystem::directory_iterator(folder.Path())) {
    std::string const name = entry.path().filename().string();
    bool const isTemporary = name.rfind(".brivet-", 0) == 0;
    if (isTemporary && mayLeaveTemporary) continue;
    bool const isLog = std::find(kLogs.begin(), kLogs.end(), name) != kLogs.end();
    if (!isLog && name != "base.cfg" && name != "washer.stp" && name != "large.stp" && name != Output()) {
      return "left " + name;
    }
  }
  for (char const* log : kLogs) {
    if (std::string const wrong = WrongLog(log, mayLoseTexts); !wrong.empty()) return wrong;
  }
  return "";
}

std::string FaultyRun::WrongLog(std::string const& name, bool mayLoseTexts) const {
  if (!folder.Has(name)) return "";
  std::string const log = WithoutTime(folder.Read(name));
  if (log.empty() || log == "\n") return "";
  if (log.back() != '\n') return name + " ends in half a line: " + log;
  auto const full = logs.find(name);
  if (full == logs.end()) return name + " should not be there";
  if (mayLoseTexts) return "";
  std::set<std::string> const known = LinesOf(full->second);
  for (std::string const& line : LinesOf(log)) {
    if (known.count(line) == 0 && !IsAboutFailure(line)) return name + " has an unknown line: " + line;
  }
  return "";
}

testing::AssertionResult FaultyRun::IsSound(ChildResult const& result, bool mayLoseTexts) const {
  auto const failure = [&result] {
    return testing::AssertionFailure() << "signal " << result.signal << ", status " << result.exitStatus
                                       << ", errors: " << result.errors.substr(0, 400) << "; ";
  };
  if (result.signal != 0) return failure() << "ended by a signal";
  if (!IsDocumented(result.exitStatus) && !IsOfLoader(result)) return failure() << "status is not documented";
  if (std::string const wrong = WrongFiles(false, mayLoseTexts); !wrong.empty()) return failure() << wrong;
  // A summary that cannot be printed is a warning.
  bool const isPrinted = result.output == undisturbed.output ||
                         (!IsListing() && undisturbed.output.compare(0, result.output.size(), result.output) == 0);
  if (result.exitStatus == 0 && !isPrinted) return failure() << "printed " << result.output;
  if (IsListing()) return testing::AssertionSuccess();
  std::string const output = folder.Has(Output()) ? folder.Read(Output()) : "";
  if (output != newOutput && output != kOldOutput) return failure() << "damaged the output: " << output;
  bool const isSuccess = result.exitStatus == 0 || result.exitStatus == 8;
  if (isSuccess != (output == newOutput)) return failure() << "the status does not fit the output";
  return testing::AssertionSuccess();
}

testing::AssertionResult FaultyRun::IsSoundStopped(ChildResult const& result, bool mayLeaveTemporary) const {
  if (std::string const wrong = WrongFiles(mayLeaveTemporary, false); !wrong.empty()) {
    return testing::AssertionFailure() << wrong << "; signal " << result.signal << ", status " << result.exitStatus;
  }
  std::string const output = folder.Has(Output()) ? folder.Read(Output()) : "";
  if (output != newOutput && output != kOldOutput) return testing::AssertionFailure() << "damaged the output";
  return testing::AssertionSuccess();
}

std::vector<std::pair<std::string, Names>> const& FaultyRuns() {
  static std::vector<std::pair<std::string, Names>> const runs = {
      {"html", {"-options", "base.cfg", "washer.stp", "new.html"}},
      {"text", {"-options", "base.cfg", "washer.stp", "new.txt"}},
      {"step", {"-options", "base.cfg", "-write", "step", "washer.stp", "new.p21"}},
      {"list", {"-list", "-options", "base.cfg", "washer.stp"}},
  };
  return runs;
}

bool TriesAllFaults() {
  return std::getenv("VREL_ALL_FAULTS") != nullptr;
}

std::vector<long> FaultNumbers(long count, long dense, long more) {
  std::set<long> numbers;
  for (long i = 1; i <= std::min(count, TriesAllFaults() ? count : dense); ++i) numbers.insert(i);
  std::mt19937 random(20261120);
  for (long i = 0; i < more && count > dense; ++i) {
    numbers.insert(dense + 1 + static_cast<long>(random() % static_cast<unsigned long>(count - dense)));
  }
  return {numbers.begin(), numbers.end()};
}
