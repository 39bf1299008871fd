#include "Translation.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "Document.h"
#include "EndOptionsEvent.h"
#include "CatchAsResult.h"
#include "Listing.h"
#include "Diagnostics.h"
#include "StandardOutput.h"
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

// Makes an event and sends it.
template <class Event, class... Arguments>
void Send(Arguments&&... arguments) {
  Event event(std::forward<Arguments>(arguments)...);
  VRELEventBus::Fire(event);
}

// The number of a long's things as an event counts them.
int CountOf(long number) {
  return static_cast<int>(std::min<long>(number, INT_MAX));
}

// Shows a stage of the work while it lives.
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

// Measures the tasks while it lives, if the environment asks for that.
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
  RunLog const readLog(RunLog::Read, FilesOfRun());
  if (target != nullptr) RunLog::RemoveOld(RunLog::Write, FilesOfRun());
  // Goes before the other, and is told of the times too.
  std::optional<RunLog> writeLog;
  Timing const timing;
  TellProduct();
  VRINResult result = TellOptions();
  if (result.IsSuccess()) result = Translate(writeLog);
  Send<VRELEndProductEvent>(result);
  return result;
}

std::vector<std::string> Translation::FilesOfRun() const {
  std::vector<std::string> files{job.input};
  if (target != nullptr) files.push_back(job.output);
  for (OptionSource const& each : options.Sources()) {
    if (each.kind == OptionSource::File) files.push_back(each.text);
  }
  return files;
}

void Translation::TellProduct() const {
  std::string const from = Format::OfInput(job.input).title;
  std::string const product = target != nullptr ? from + " to " + job.target->title + " translator" : from + " reader";
  VRELStartProductEvent event(product.c_str(), "brivet " BRIVET_VERSION);
  event.AddOption("Input File", job.ShownInput().c_str());
  if (target != nullptr) event.AddOption("Output File", job.ShownOutput().c_str());
  VRELEventBus::Fire(event);
}

VRINResult Translation::TellOptions() const {
  VRELStartOptionsTaskEvent::Fire();
  VRINResult const result = CatchAsResult(job.ShownInput(), [this]() -> VRINResult {
    for (OptionSource const& each : options.Sources()) ReportMessage(each.Words());
    options.Store().Dump(nullptr, "%s = %s", nullptr);
    for (OptionSet::Warning const& warning : options.Warnings()) ReportWarning(warning.origin, warning.text);
    return VREL_S_OK;
  });
  Send<EndOptionsEvent>(result, options.Store().Size(), options.UnknownCount());
  return result;
}

VRINResult Translation::Translate(std::optional<RunLog>& writeLog) {
  VRELStartTaskEvent::Fire("Translation", "Translation", VREL_LEVEL_INFO);
  VRINResult result = ReadHalf();
  if (result.IsSuccess() && target != nullptr) {
    writeLog.emplace(RunLog::Write, FilesOfRun());
    result &= WriteHalf();
  }
  long const failed = document != nullptr ? document->GetFailedCount() : -1;
  Send<VRELEndTranslationTaskEvent>(result, false, CountOf(failed));
  return result;
}

VRINResult Translation::ReadHalf() {
  VRINResult result = Prepare();
  if (result.IsSuccess()) result &= ReadFile();
  if (result.IsSuccess()) result &= PreprocessSource();
  if (result.IsSuccess()) result &= ReadEntities();
  if (result.IsSuccess() && target == nullptr && job.prints) {
    result &= CatchAsResult(job.ShownInput(), [this] { return PrintListing(*document); });
  }
  return result;
}

VRINResult Translation::WriteHalf() {
  VRINResult result = Convert();
  if (result.IsSuccess()) result &= PreprocessTarget();
  if (result.IsSuccess()) result &= PostprocessTarget();
  if (result.IsSuccess()) result &= WriteFile();
  if (result.IsSuccess()) result &= PrintSummary();
  return result;
}

// Whatever would stop the translation in the end is told before the document is read.
VRINResult Translation::Prepare() {
  VRINResult result = CatchAsResult(job.ShownInput(), [this]() -> VRINResult {
    input = std::make_unique<InputDocument>(job.input);
    return VREL_S_OK;
  });
  if (result.IsSuccess()) result = source.FindReader();
  if (target == nullptr) return result;
  if (result.IsSuccess()) result = target->FindWriter();
  if (result.IsFailure()) return result;
  return CatchAsResult(job.ShownOutput(), [this]() -> VRINResult {
    output = std::make_unique<OutputFile>(job.output, input->Status());
    return VREL_S_OK;
  });
}

VRINResult Translation::ReadFile() {
  VRELStartReadFileTaskEvent::Fire(job.ShownInput().c_str());
  VRINResult const result = CatchAsResult(job.ShownInput(), [this] { return OpenDocument(); });
  VRELFileHeader none;
  Send<VRELEndReadFileTaskEvent>(result, document != nullptr ? &document->GetFileHeader() : &none);
  return result;
}

// That the walk over a header gives a failure even where all went well is its promise: the document tells what came of
// it.
VRINResult Translation::OpenDocument() {
  BrivetOpenRequest request;
  request.file = VRELFileHandle(new VRELFile(input->Path().c_str()));
  request.shownName = job.ShownInput();
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
  VRINResult const result = CatchAsResult(job.ShownInput(), [this] {
    Stage const stage(progress, "reading", input->Size());
    document->SetProgress(&progress);
    reader->ReadDataSection();
    document->SetProgress(nullptr);
    return StateOfDocument();
  });
  Send<VRELEndReadEntitiesTaskEvent>(result);
  return result;
}

// Says why there is nothing to go on with, unless that was said.
VRINResult Translation::StateOfDocument() const {
  VRINResult const state = document->GetState();
  if (state.IsFailure() && VRELError::GetErrorCount() == 0) {
    ReportProblem(job.ShownInput(),
                  "expected instances that can be read, found none; mend the file and translate it again");
  }
  return state;
}

VRINResult Translation::Convert() {
  VRELStartConversionTaskEvent::Fire();
  VRELStartConversionStageEvent stage("References", CountOf(document->GetInstanceCount()), 100.0, true);
  VRELEventBus::Fire(stage);
  VRINResult const result = CatchAsResult(job.ShownInput(), [this]() -> VRINResult {
    VRINResult const resolved = reader->Resolve();
    // Not every format has something to link.
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
  VRINResult const result = StateOfDocument();
  Send<VRELEndPostprocessDocumentEvent>(result);
  return result;
}

VRINResult Translation::WriteFile() {
  Send<VRELStartWriteFileTaskEvent>(VRELFilePath(job.output.c_str()));
  VRINResult const result = CatchAsResult(job.ShownOutput(), [this] { return WriteDocument(); });
  // What is left of the output goes before anybody hears that there is none.
  if (result.IsFailure()) output.reset();
  Send<VRELEndWriteFileTaskEvent>(VRELString(job.ShownOutput().c_str()), result);
  return result;
}

VRINResult Translation::WriteDocument() {
  BrivetWriteRequest request;
  request.document = document;
  request.stream = output.get();
  request.options = &options.Store();
  request.progress = &progress;
  request.title = BaseNameOf(job.ShownInput());
  Stage const stage(progress, "writing", document->GetInstanceCount());
  VRINResult const result = target->Write(request);
  // A place that took too little knows why, the module does not.
  if (result == VREL_E_FILE_SAVE) output->Check();
  if (result.IsSuccess()) {
    CheckMemory();
    output->Commit();
  }
  return result;
}

VRINResult Translation::PrintSummary() {
  if (!job.prints || output->IsStandardOutput()) return VREL_S_OK;
  std::string line = job.ShownOutput() + ": " + Counted(document->GetInstanceCount(), "instance") + " of " +
                     Counted(static_cast<long>(document->GetTypeCount()), "type") + " from " + job.ShownInput();
  if (document->GetFailedCount() != 0) line += ", " + std::to_string(document->GetFailedCount()) + " left out";
  return CatchAsResult(job.ShownOutput(), [&line] { return PrintPage(line + "\n"); });
}
