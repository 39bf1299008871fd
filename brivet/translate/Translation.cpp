#include "Translation.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <functional>
#include <new>
#include <utility>

#include "CatchAsResult.h"
#include "Descriptor.h"
#include "Diagnostics.h"
#include "Document.h"
#include "EndOptionsEvent.h"
#include "FileError.h"
#include "GzipOutputStream.h"
#include "Listing.h"
#include "PathNames.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELEndPostprocessDocumentEvent.h"
#include "VRELEndPreprocessDocumentEvent.h"
#include "VRELEndProductEvent.h"
#include "VRELEndReadEntitiesTaskEvent.h"
#include "VRELEndReadFileTaskEvent.h"
#include "VRELEndTranslationTaskEvent.h"
#include "VRELEndWriteFileTaskEvent.h"
#include "VRELError.h"
#include "VRELEventBus.h"
#include "VRELFileHeader.h"
#include "VRELStartConversionStageEvent.h"
#include "VRELStartConversionTaskEvent.h"
#include "VRELStartOptionsTaskEvent.h"
#include "VRELStartPostprocessDocumentEvent.h"
#include "VRELStartPreprocessDocumentEvent.h"
#include "VRELStartProductEvent.h"
#include "VRELStartReadEntitiesTaskEvent.h"
#include "VRELStartReadFileTaskEvent.h"
#include "VRELStartTaskEvent.h"
#include "VRELStartWriteFileTaskEvent.h"
#include "VRELTimingLogger.h"

namespace {

template <class Event, class... Arguments>
void Send(Arguments&&... arguments) {
  Event event(std::forward<Arguments>(arguments)...);
  VRELEventBus::Fire(event);
}

int ClampToInt(long number) {
  return static_cast<int>(std::min<long>(number, INT_MAX));
}

// Stage of the progress while the object exists.
class Stage {
 public:
  Stage(Progress& shownProgress, char const* name, long total) : progress(shownProgress) {
    progress.Begin(name, total);
  }
  ~Stage() { progress.End(); }
  Stage(Stage const&) = delete;
  Stage& operator=(Stage const&) = delete;

 private:
  Progress& progress;
};

std::string Counted(long number, char const* things) {
  std::string const text = std::to_string(number) + " " + things;
  return number == 1 ? text : text + "s";
}

// Calls a module and returns its result. A failure that the module has not reported is reported here: the file, what
// was done with it ("read", "written"), the format and the module.
VRINResult CallModule(std::string const& file, char const* task, Format const& format,
                      std::function<VRINResult()> const& call) {
  int const errorsBefore = VRELError::GetErrorCount();
  VRINResult const result = CatchAsResult(file, call);
  if (result.IsFailure() && VRELError::GetErrorCount() == errorsBefore) {
    ReportProblem(file, std::string("cannot be ") + task + " as " + format.title + ": the module " +
                            QuoteName(format.module) + " failed: " + result.GetMessage());
  }
  return result;
}

// Measures tasks while the object exists, if the environment requests it.
class Timing {
 public:
  Timing() { VRELTimingLogger::SetUp(); }
  ~Timing() { VRELTimingLogger::Stop(); }
  Timing(Timing const&) = delete;
  Timing& operator=(Timing const&) = delete;
};

}  // namespace

Translation::Translation(Job translationJob, OptionSet& givenOptions, Progress& shownProgress)
    : job(std::move(translationJob)),
      options(givenOptions),
      progress(shownProgress),
      source(Format::OfInput(job.input)) {
  if (job.target != nullptr) target = std::make_unique<FormatModule>(*job.target);
}

VRINResult Translation::Run() {
  try {
    return RunTasks();
  } catch (std::bad_alloc const&) {
    if (!IsCommitted()) throw;
  } catch (VRELAllocException const&) {
    if (!IsCommitted()) throw;
  }
  return committedResult;
}

VRINResult Translation::RunTasks() {
  std::optional<RunLog> readLog;
  if (!job.readLog.empty()) readLog.emplace(job.readLog, FilesOfRun());
  if (target != nullptr && !job.writeLog.empty()) RunLog::RemoveOld(job.writeLog, FilesOfRun());
  // Declared before the timing, whose report at its end goes to both logs.
  std::optional<RunLog> writeLog;
  Timing const timing;
  ReportProduct();
  VRINResult result = ReportOptions();
  if (result.IsSuccess()) result = Translate(writeLog);
  Send<VRELEndProductEvent>(result);
  return result;
}

std::vector<std::string> Translation::FilesOfRun() const {
  std::vector<std::string> files{job.input};
  if (target != nullptr) files.push_back(job.output);
  if (!job.report.empty()) files.push_back(job.report);
  for (OptionSource const& each : options.Sources()) {
    if (each.kind == OptionSource::File) files.push_back(each.text);
  }
  return files;
}

void Translation::ReportProduct() const {
  std::string const from = Format::OfInput(job.input).title;
  std::string const product = target != nullptr ? from + " to " + job.target->title + " translator" : from + " reader";
  VRELStartProductEvent event(product.c_str(), "brivet " BRIVET_VERSION);
  event.AddOption("Input File", job.InputDisplayName().c_str());
  if (target != nullptr) event.AddOption("Output File", job.OutputDisplayName().c_str());
  VRELEventBus::Fire(event);
}

VRINResult Translation::ReportOptions() const {
  VRELStartOptionsTaskEvent::Fire();
  VRINResult const result = CatchAsResult(job.InputDisplayName(), [this]() -> VRINResult {
    for (OptionSource const& each : options.Sources()) ReportMessage(each.Words());
    options.Dump();
    if (job.areOptionsReported) options.ReportWarnings();
    if (job.isVerbose) {
      options.ReportWithoutEffect(Format::OfInput(job.input).name, target != nullptr ? job.target->name : "");
    }
    return VREL_S_OK;
  });
  Send<EndOptionsEvent>(result, options.Store().Size(), options.UnknownCount());
  return result;
}

VRINResult Translation::Translate(std::optional<RunLog>& writeLog) {
  VRELStartTaskEvent::Fire("Translation", "Translation", VREL_LEVEL_INFO);
  VRINResult result = RunReadPhase();
  if (result.IsSuccess() && target != nullptr) {
    if (!job.writeLog.empty()) writeLog.emplace(job.writeLog, FilesOfRun());
    result &= RunWritePhase();
  }
  long const failed = document != nullptr ? document->GetFailedCount() : -1;
  Send<VRELEndTranslationTaskEvent>(result, false, ClampToInt(failed));
  return result;
}

VRINResult Translation::RunReadPhase() {
  VRINResult result = OpenFiles();
  if (result.IsSuccess()) result = CheckDamage();
  if (result.IsSuccess()) result &= ReadFile();
  if (result.IsSuccess()) result &= PreprocessSource();
  if (result.IsSuccess()) result &= ReadEntities();
  if (result.IsSuccess()) result = CheckStrict(result);
  if (result.IsSuccess() && target == nullptr && !job.isQuiet) {
    result &= CallModule(job.InputDisplayName(), "read", Format::OfInput(job.input), [this] {
      return job.isSummary ? PrintDocumentSummary(*document, progress) : PrintListing(*document, progress);
    });
  }
  return result;
}

VRINResult Translation::RunWritePhase() {
  VRINResult result = Convert();
  if (result.IsSuccess()) result &= PreprocessTarget();
  if (result.IsSuccess()) result &= PostprocessTarget();
  if (result.IsSuccess()) result &= WriteFile();
  if (result.IsSuccess()) PrintSummary();
  return result;
}

// Opens everything that could make the translation fail later, before the document is read.
VRINResult Translation::OpenFiles() {
  VRINResult result = CatchAsResult(job.InputDisplayName(), [this]() -> VRINResult {
    input = std::make_unique<InputDocument>(job.input, job.temporarySpace);
    return VREL_S_OK;
  });
  if (result.IsSuccess()) result = source.FindReader();
  if (target == nullptr) return result;
  if (result.IsSuccess()) result = target->FindWriter();
  if (result.IsFailure()) return result;
  return CatchAsResult(job.OutputDisplayName(), [this]() -> VRINResult {
    auto const durability = job.isSynchronized ? OutputFile::Synchronized : OutputFile::NotSynchronized;
    output = std::make_unique<OutputFile>(job.output, input->Status(), durability);
    return VREL_S_OK;
  });
}

VRINResult Translation::ReadFile() {
  VRELStartReadFileTaskEvent::Fire(job.InputDisplayName().c_str());
  VRINResult const result = CheckInput(
      CallModule(job.InputDisplayName(), "read", Format::OfInput(job.input), [this] { return OpenDocument(); }));
  VRELFileHeader none;
  Send<VRELEndReadFileTaskEvent>(result, document != nullptr ? &document->GetFileHeader() : &none);
  return result;
}

// VRELReader::ReadHeaderSection returns a failure even if the header is fine; the document knows its state.
VRINResult Translation::OpenDocument() {
  BrivetOpenRequest request;
  request.file = VRELFileHandle(new VRELFile(input->Path().c_str()));
  request.shownName = job.InputDisplayName();
  request.options = &options.Store();
  VRINResult const result = source.Open(request);
  if (result.IsFailure()) return result;
  document = request.document;
  handle = VRELFormatReaderHandle(document);
  reader = std::make_unique<VRELReader>(handle);
  reader->ReadHeaderSection();
  return VREL_S_OK;
}

VRINResult Translation::PreprocessSource() {
  Send<VRELStartPreprocessDocumentEvent>(true);
  VRINResult const result = document->GetFailedCount() == 0 ? VREL_S_OK : VREL_S_PARTIAL;
  Send<VRELEndPreprocessDocumentEvent>(result, true);
  return result;
}

VRINResult Translation::ReadEntities() {
  Send<VRELStartReadEntitiesTaskEvent>();
  VRINResult const result = CheckInput(CatchAsResult(job.InputDisplayName(), [this] {
    Stage const stage(progress, "reading", input->Size());
    document->SetProgress(&progress);
    reader->ReadDataSection();
    document->SetProgress(nullptr);
    VRINResult const state = CheckDocument();
    if (!input->Damage().empty()) document->AddLoss({0, 0, {}, input->Damage()});
    if (state == VREL_S_OK && document->GetInstanceCount() == 0) {
      ReportWarning(job.InputDisplayName(), "the file contains no instances");
    }
    return state;
  }));
  Send<VRELEndReadEntitiesTaskEvent>(result);
  return result;
}

// Returns the state of the document. Reports a failure that nothing else has reported.
VRINResult Translation::CheckDocument() const {
  VRINResult const state = document->GetState();
  if (state.IsFailure() && VRELError::GetErrorCount() == 0) {
    ReportProblem(job.InputDisplayName(), "no instance could be read");
  }
  return state;
}

// Reports a damaged container, whose document is complete only as far as it could be decompressed.
VRINResult Translation::CheckDamage() const {
  if (input->Damage().empty()) return VREL_S_OK;
  ReportWarning(job.InputDisplayName(), input->Damage());
  return VREL_S_PARTIAL;
}

// With -strict, refuses a document that could not be read completely.
VRINResult Translation::CheckStrict(VRINResult result) {
  if (!job.isStrict || result != VREL_S_PARTIAL) return result;
  isRefusedAsPartial = true;
  ReportProblem(job.InputDisplayName(), "the file is damaged, and option -strict accepts no partial result");
  return VREL_E_INVALID_FILE;
}

RunReport Translation::Report(VRINResult result) const {
  RunReport report;
  report.input = job.input;
  report.exitStatus = isRefusedAsPartial ? kPartialStatus : ExitStatusOf(result);
  if (IsCommitted()) report.output = job.output;
  if (input != nullptr) report.bytes = input->Size();
  if (document == nullptr) return report;
  report.instances = document->GetInstanceCount();
  report.lost = document->GetLosses();
  report.dangling = document->GetDanglingCount();
  return report;
}

// Returns `result` if the input is still what was opened. A file that changes fails in any way, or not at all.
VRINResult Translation::CheckInput(VRINResult result) const {
  if (result == VREL_E_ABORTED) return result;
  VRINResult const unchanged = CatchAsResult(job.InputDisplayName(), [this]() -> VRINResult {
    input->CheckUnchanged();
    return VREL_S_OK;
  });
  return unchanged.IsFailure() ? unchanged : result;
}

VRINResult Translation::Convert() {
  VRELStartConversionTaskEvent::Fire();
  VRELStartConversionStageEvent stage("References", ClampToInt(document->GetInstanceCount()), 100.0, true);
  VRELEventBus::Fire(stage);
  VRINResult const result =
      CallModule(job.InputDisplayName(), "read", Format::OfInput(job.input), [this]() -> VRINResult {
        VRINResult const resolved = reader->Resolve();
        // A format without references does not implement this.
        return resolved == VREL_E_NOT_IMPLEMENTED ? VRINResult(VREL_S_OK) : resolved;
      });
  stage.SetFinished();
  VRELEventBus::Fire(stage);
  VRELEndTaskEvent::Fire(result, "Conversion", "Conversion", VREL_LEVEL_INFO, true);
  return result;
}

VRINResult Translation::PreprocessTarget() {
  Send<VRELStartPreprocessDocumentEvent>(false);
  VRINResult const result = target->FindWriter();
  Send<VRELEndPreprocessDocumentEvent>(result, false);
  return result;
}

VRINResult Translation::PostprocessTarget() {
  Send<VRELStartPostprocessDocumentEvent>();
  VRINResult const result = CheckDocument();
  Send<VRELEndPostprocessDocumentEvent>(result);
  return result;
}

VRINResult Translation::WriteFile() {
  Send<VRELStartWriteFileTaskEvent>(VRELFilePath(job.OutputDisplayName().c_str()));
  VRINResult result =
      CheckInput(CallModule(job.OutputDisplayName(), "written", *job.target, [this] { return WriteDocument(); }));
  if (result.IsSuccess()) {
    result = CatchAsResult(job.OutputDisplayName(), [this]() -> VRINResult {
      CheckMemory();
      output->Commit();
      return VREL_S_OK;
    });
  }
  if (IsCommitted()) committedResult = input->Damage().empty() ? document->GetState() : VRINResult(VREL_S_PARTIAL);
  // Removes the temporary file before the failure is reported.
  if (result.IsFailure()) output.reset();
  Send<VRELEndWriteFileTaskEvent>(VRELString(job.OutputDisplayName().c_str()), result);
  return result;
}

VRINResult Translation::WriteDocument() {
  BrivetWriteRequest request;
  request.document = document;
  std::optional<GzipOutputStream> gzip;
  if (IsGzipName(job.output)) gzip.emplace(*output);
  request.stream = gzip ? static_cast<VRELOutputStream*>(&*gzip) : output.get();
  request.options = &options.Store();
  request.progress = &progress;
  request.title = BaseNameOf(job.InputDisplayName());
  request.shownName = job.InputDisplayName();
  shapes = std::make_unique<ModuleShapeEvaluator>(Format::OfInput(job.input), input->Path(), job.InputDisplayName(),
                                                  options.Store());
  request.shapes = shapes.get();
  Stage const stage(progress, "writing", document->GetInstanceCount());
  VRINResult result = target->Write(request);
  if (result.IsSuccess() && gzip && !gzip->Finish()) result = VREL_E_FILE_SAVE;
  // The module does not know why a write failed.
  if (result == VREL_E_FILE_SAVE) output->Check();
  return result;
}

bool Translation::IsCommitted() const {
  return output != nullptr && output->IsCommitted();
}

// The output is in place, so that nothing is an error any more.
void Translation::PrintSummary() {
  if (job.isQuiet || output->IsStandardOutput()) return;
  std::string line = job.OutputDisplayName() + ": " + Counted(document->GetInstanceCount(), "instance") + " of " +
                     Counted(static_cast<long>(document->GetTypeCount()), "type") + " from " + job.InputDisplayName();
  if (document->GetFailedCount() != 0) line += ", " + std::to_string(document->GetFailedCount()) + " lost";
  try {
    if (WriteAll(STDOUT_FILENO, line + "\n")) return;
    ReportWarning("cannot write to standard output", std::strerror(errno));
  } catch (VRELAbortException const&) {
  }
}
