// brivet: translates a document by format modules.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "AbortSignals.h"
#include "Batch.h"
#include "CatchAsResult.h"
#include "CommandLine.h"
#include "Diagnostics.h"
#include "FileError.h"
#include "FileIdentity.h"
#include "Formats.h"
#include "HelpText.h"
#include "InputDocument.h"
#include "Job.h"
#include "ModuleRegistry.h"
#include "OptionDescriptions.h"
#include "OptionSet.h"
#include "OptionVocabulary.h"
#include "OutOfMemory.h"
#include "OutputFile.h"
#include "ProgressBar.h"
#include "ProgressReporter.h"
#include "RunReport.h"
#include "StandardErrorListener.h"
#include "StandardOutput.h"
#include "Translation.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELErrorTracker.h"
#include "VRELLibraryManager.h"
#include "WorkerProgress.h"

namespace {

constexpr int kUsageStatus = 2;

// Returns the path of a log: that of a worker, else `name` in the folder of -logdir; empty if there is none.
std::string LogPath(CommandLine const& line, std::string const& ofWorker, char const* name) {
  if (!line.hasLogs) return "";
  if (!ofWorker.empty()) return ofWorker;
  return line.logFolder.empty() ? name : line.logFolder + "/" + name;
}

int Print(std::string const& text) {
  return ExitStatusOf(CatchAsResult("standard output", [&text] { return PrintText(text); }));
}

int RefuseToRun(std::string const& problem, std::string const& hint) {
  ReportProblem(problem);
  if (!hint.empty()) ReportProblem("hint", hint);
  return kUsageStatus;
}

Job JobOf(CommandLine const& line) {
  Job job;
  job.input = line.input;
  job.readLog = LogPath(line, line.readLog, "brivet_read.log");
  job.writeLog = LogPath(line, line.writeLog, "brivet_write.log");
  job.report = line.report;
  job.temporarySpace = line.temporarySpace;
  job.isStrict = line.isStrict;
  job.isVerbose = line.isVerbose;
  job.areOptionsReported = !line.isWorker;
  job.isQuiet = line.isQuiet || line.report == "-";
  job.isSynchronized = line.isSynchronized;
  job.isSummary = line.isSummary;
  if (line.action == CommandLine::List) return job;
  job.target = &line.Target();
  job.output = line.OutputPath();
  return job;
}

// Reports the errors of all option sources, not only of the first.
VRINResult ReadOptions(CommandLine const& line, OptionSet& options) {
  return CatchAsResult(line.input, [&] {
    VRINResult result = VREL_S_OK;
    for (OptionSource const& source : line.sources) result &= options.Add(source);
    if (result.IsFailure() || line.sources.empty() || line.action == CommandLine::TranslateAll) return result;
    return options.Check(Format::OfInput(line.input).name, line.action == CommandLine::List ? "" : line.Target().name);
  });
}

std::vector<std::string> OptionsFiles(CommandLine const& line) {
  std::vector<std::string> files;
  for (OptionSource const& source : line.sources) {
    if (source.kind == OptionSource::File) files.push_back(source.text);
  }
  return files;
}

// A name that an output or the report gets.
class WrittenName {
 public:
  explicit WrittenName(std::string path) : name(std::move(path)), identity(FileIdentity::OfOutput(name)) {}

  // Throw FileError if the name refers to a file of the run that is read, or to another one that is written.
  void CheckRead(std::string const& path, char const* reason) const { Check(FileIdentity::OfInput(path), reason); }
  void CheckWritten(std::string const& path, char const* reason) const { Check(FileIdentity::OfOutput(path), reason); }

 private:
  void Check(FileIdentity const& other, char const* reason) const {
    if (identity == other) throw MakeOutputError(name, reason);
  }

  std::string const name;
  FileIdentity const identity;
};

// Checks that OUTPUT and the report replace no other file of the run. OutputFile recognizes an OUTPUT that is the
// input.
VRINResult CheckWrittenNames(CommandLine const& line) {
  return CatchAsResult(line.input, [&line]() -> VRINResult {
    bool const isTranslation = line.action == CommandLine::Translate;
    if (isTranslation) {
      WrittenName const output(line.OutputPath());
      for (std::string const& path : OptionsFiles(line)) output.CheckRead(path, "it is an options file");
    }
    if (line.report.empty()) return VREL_S_OK;
    WrittenName const report(line.report);
    report.CheckRead(line.input, "it is the input file");
    if (isTranslation) report.CheckWritten(line.OutputPath(), "it is the output file");
    for (std::string const& path : OptionsFiles(line)) report.CheckRead(path, "it is an options file");
    return VREL_S_OK;
  });
}

// The same for the report about several inputs; FindConflict checks their outputs.
VRINResult CheckReportName(CommandLine const& line, std::vector<BatchItem> const& items) {
  if (line.report.empty()) return VREL_S_OK;
  return CatchAsResult(line.report, [&]() -> VRINResult {
    WrittenName const report(line.report);
    for (BatchItem const& item : items) {
      report.CheckRead(item.input, "it is an input file");
      report.CheckWritten(item.output, "it is an output file");
      for (std::string const& log : {item.readLog, item.writeLog}) {
        if (!log.empty()) report.CheckWritten(log, "it is a log of this run");
      }
    }
    for (std::string const& path : OptionsFiles(line)) report.CheckRead(path, "it is an options file");
    return VREL_S_OK;
  });
}

// The file of -report, which is opened before anything is read.
class ReportFile {
 public:
  // Fails after a report.
  VRINResult Open(CommandLine const& line) {
    if (line.report.empty()) return VREL_S_OK;
    return CatchAsResult(line.report, [&]() -> VRINResult {
      file.emplace(line.report, kNoInput, OutputFile::NotSynchronized);
      return VREL_S_OK;
    });
  }

  OutputFile* Stream() { return file ? &*file : nullptr; }

  // Completes the file. The translations are done, so that a failure is a warning.
  void Commit() {
    if (!file) return;
    try {
      file->Commit();
    } catch (FileError const& error) {
      ReportWarning("the report is incomplete", error.message);
    } catch (VRELAbortException const&) {
    }
  }

 private:
  static constexpr struct stat kNoInput = {};

  std::optional<OutputFile> file;
};

// Runs a translation and returns its result, which is final once the output is in place.
VRINResult Run(Translation& translation, Job const& job) {
  VRINResult const result = translation.Run();
  return translation.IsCommitted() ? result : CatchAsResult(job.InputDisplayName(), [&result] { return result; });
}

// `reportStream` may be null.
RunReport Translate(CommandLine const& line, OptionSet& options, VRELOutputStream* reportStream) {
  Job const job = JobOf(line);
  ProgressReporter reporter;
  std::optional<WorkerProgress> ofWorker;
  if (line.isWorker && reportStream != nullptr) ofWorker.emplace(reporter, *reportStream);
  Progress& progress = ofWorker ? static_cast<Progress&>(*ofWorker) : reporter;
  Translation translation(job, options, progress);
  return translation.Report(Run(translation, job));
}

void FreeLibraries() {
  try {
    VRELLibraryManager::FreeLibraries();
  } catch (std::bad_alloc const&) {
  } catch (VRELAllocException const&) {
  }
}

// Refuses an existing STEP file as the output: "brivet *.stp" in a folder of two files would overwrite the second.
std::string WhyNotOverwrite(CommandLine const& line) {
  if (line.output.empty() || line.output == "-" || line.target != nullptr || line.isForced) return "";
  struct stat input;
  struct stat output;
  bool const exists = stat(line.output.c_str(), &output) == 0 && S_ISREG(output.st_mode);
  // The input itself is refused with a message of its own.
  bool const isInput =
      stat(line.input.c_str(), &input) == 0 && exists && input.st_dev == output.st_dev && input.st_ino == output.st_ino;
  if (!exists || isInput || !IsStepDocument(line.output)) return "";
  return "OUTPUT " + QuoteName(line.output) + " is an existing STEP file";
}

int TranslateOne(CommandLine const& line) {
  auto const begin = std::chrono::steady_clock::now();
  AbortOnSignals();
  std::string const obstacle = WhyNotOverwrite(line);
  if (!obstacle.empty()) {
    return RefuseToRun(obstacle, "to overwrite it, use -force or -write; to translate several files, use -outdir DIR");
  }
  OptionSet options;
  VRINResult result = CheckWrittenNames(line);
  if (result.IsSuccess()) result = ReadOptions(line, options);
  ReportFile reportFile;
  if (result.IsSuccess()) result = reportFile.Open(line);
  if (result.IsFailure()) return ExitStatusOf(result);
  if (line.hasLogs && !line.logFolder.empty()) {
    // Without the folder the logs are left out, with a warning.
    std::error_code error;
    std::filesystem::create_directories(line.logFolder, error);
  }
  RunReport report = Translate(line, options, reportFile.Stream());
  FreeLibraries();
  report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  if (reportFile.Stream() != nullptr) {
    std::string const json = report.ToJson();
    reportFile.Stream()->write(json.data(), static_cast<int>(json.size()));
    reportFile.Commit();
  }
  return report.exitStatus;
}

int JobCount(CommandLine const& line) {
  if (line.jobs != 0) return line.jobs;
  return static_cast<int>(std::clamp<unsigned>(std::thread::hardware_concurrency(), 1, CommandLine::kJobLimit));
}

std::vector<std::string> WorkerWords(CommandLine const& line) {
  std::vector<std::string> words = {"-write=" + std::string(line.Target().name),
                                    "-tempspace=" + std::to_string(line.temporarySpace)};
  if (line.isQuiet) words.emplace_back("-quiet");
  if (line.isStrict) words.emplace_back("-strict");
  if (!line.hasLogs) words.emplace_back("-nolog");
  if (!line.isSynchronized) words.emplace_back("-nosync");
  for (OptionSource const& source : line.sources) {
    words.push_back((source.kind == OptionSource::File ? "-options=" : "-set=") + source.text);
  }
  return words;
}

void CreateFolder(std::string const& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (!error && !std::filesystem::is_directory(folder)) error = std::make_error_code(std::errc::not_a_directory);
  if (error) throw MakeFileError(VREL_E_FILE_SAVE, "create the folder", folder, error.value());
}

// A worker reads the options files again.
void CheckOptionsFiles(CommandLine const& line) {
  for (std::string const& path : OptionsFiles(line)) {
    if (!std::filesystem::is_regular_file(path)) {
      throw FileError{VREL_E_FILE_OPEN, "cannot read " + QuoteName(path) + " for several inputs: not a regular file",
                      ""};
    }
  }
}

int TranslateAll(CommandLine const& line) {
  AbortOnSignals();
  std::string const logFolder = line.hasLogs ? (line.logFolder.empty() ? line.outputFolder : line.logFolder) : "";
  std::vector<BatchItem> const items = MakeBatch(line.inputs, line.Target(), line.outputFolder, logFolder);
  std::string const conflict = FindConflict(items, OptionsFiles(line));
  if (!conflict.empty()) return RefuseToRun(conflict, "translate them to different folders");
  VRINResult result = CheckReportName(line, items);
  if (result.IsFailure()) return ExitStatusOf(result);
  // Reports the problems of modules once, instead of in each worker.
  ModuleRegistry::Get().All();
  result = CatchAsResult(line.outputFolder, [&]() -> VRINResult {
    CheckOptionsFiles(line);
    OptionSet options;
    VRINResult const read = ReadOptions(line, options);
    options.ReportWarnings();
    if (line.isVerbose) options.ReportWithoutEffect(Format::OfInput("").name, line.Target().name);
    if (read.IsSuccess()) CreateFolder(line.outputFolder);
    if (read.IsSuccess() && !logFolder.empty()) CreateFolder(logFolder);
    return read;
  });
  ReportFile reportFile;
  if (result.IsSuccess()) result = reportFile.Open(line);
  if (result.IsFailure()) return ExitStatusOf(result);
  int status = 0;
  result = CatchAsResult(line.outputFolder, [&]() -> VRINResult {
    bool const showsProgress = !line.isQuiet && (line.showsProgress || isatty(STDERR_FILENO) != 0);
    Batch batch(items, WorkerWords(line), JobCount(line));
    status = batch.Run(reportFile.Stream(), showsProgress, line.isQuiet, line.report == "-");
    return VREL_S_OK;
  });
  reportFile.Commit();
  return result.IsFailure() && status == 0 ? ExitStatusOf(result) : status;
}

int PrintFormat(std::string const& name) {
  std::string const text = DescribeFormat(name);
  if (!text.empty()) return Print(text);
  return RefuseToRun("unknown format " + QuoteName(name) + " for -help", "'brivet -formats' lists the formats");
}

int PrintSettings(std::string const& pattern) {
  std::string const list = ListOptions(pattern);
  if (!list.empty() || pattern.empty()) return Print(list);
  std::string const suggestion = SuggestOptions(VRELString(pattern));
  return RefuseToRun("no option name matches " + QuoteName(pattern),
                     suggestion.empty() ? "'brivet -settings' lists all names" : suggestion);
}

int Act(CommandLine const& line) {
  switch (line.action) {
    case CommandLine::Refuse:
      RefuseToRun(line.problem, line.hint);
      if (!line.isQuiet) std::fputs(CommandLine::Usage(), stderr);
      return kUsageStatus;
    case CommandLine::Help:
      return line.format.empty() ? Print(kHelpText) : PrintFormat(line.format);
    case CommandLine::Version:
      return Print("brivet " BRIVET_VERSION "\n");
    case CommandLine::ListFormats:
      return Print(Format::Table());
    case CommandLine::ListSettings:
      return PrintSettings(line.pattern);
    case CommandLine::TranslateAll:
      return TranslateAll(line);
    default:
      return TranslateOne(line);
  }
}

int Run(int count, char** arguments) {
  ReserveStandardStreams();
  IgnoreFileSizeSignal();
  // The locale decides the encoding of names and messages. Numbers have "." as the decimal mark in every locale, in the
  // outputs and for the number parsers of format modules.
  std::setlocale(LC_ALL, "");
  std::setlocale(LC_NUMERIC, "C");
  VRELErrorTracker::Initialize();
  // The command line decides whether warnings about modules are printed, and needs modules to be parsed.
  ModuleRegistry::SetWarningMode(ModuleRegistry::Keep);
  CommandLine const line = CommandLine::Parse(count, arguments);
  bool const isSingle = line.action == CommandLine::Translate || line.action == CommandLine::List;
  std::optional<ProgressBar> bar;
  if (isSingle && !line.isQuiet && (line.showsProgress || isatty(STDERR_FILENO) != 0)) bar.emplace();
  std::optional<StandardErrorListener> listener;
  if (!line.isQuiet) listener.emplace(bar ? &*bar : nullptr, line.isVerbose);
  // The process that started a worker has reported them.
  ModuleRegistry::SetWarningMode(line.isWorker ? ModuleRegistry::Drop : ModuleRegistry::Report);
  try {
    return Act(line);
  } catch (VRELAbortException const&) {
    // No step of the run has reported this one.
    ReportProblem("interrupted");
    return ExitStatusOf(VREL_E_ABORTED);
  }
}

}  // namespace

int main(int count, char** arguments) {
  try {
    return Run(count, arguments);
  } catch (std::bad_alloc const&) {
  } catch (VRELAllocException const&) {
  }
  return ReportOutOfMemory(count, arguments);
}
