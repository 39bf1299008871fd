#include "Translation.h"

#include <utility>
#include <vector>

#include "EndOptionsEvent.h"
#include "GuardedRun.h"
#include "ProblemReport.h"
#include "RunLog.h"
#include "StandardOutput.h"
#include "SummaryReport.h"
#include "VRELEndPreprocessDocumentEvent.h"
#include "VRELEndProductEvent.h"
#include "VRELEndReadEntitiesTaskEvent.h"
#include "VRELEndReadFileTaskEvent.h"
#include "VRELEndTranslationTaskEvent.h"
#include "VRELEventBus.h"
#include "VRELFileHeader.h"
#include "VRELStartOptionsTaskEvent.h"
#include "VRELStartPreprocessDocumentEvent.h"
#include "VRELStartProductEvent.h"
#include "VRELStartReadEntitiesTaskEvent.h"
#include "VRELStartReadFileTaskEvent.h"
#include "VRELStartTaskEvent.h"

namespace {

// Makes an event and sends it.
template <class Event, class... Arguments>
void Send(Arguments&&... arguments) {
  Event event(std::forward<Arguments>(arguments)...);
  VRELEventBus::Fire(event);
}

std::vector<std::string> FilesOf(std::string const& input, OptionSet const& options) {
  std::vector<std::string> files{input};
  for (OptionSource const& source : options.Sources()) {
    if (source.kind == OptionSource::File) files.push_back(source.text);
  }
  return files;
}

}  // namespace

Translation::Translation(std::string inputPath, OptionSet const& givenOptions)
    : input(std::move(inputPath)), options(givenOptions) {}

VRINResult Translation::Run() {
  RunLog const log(FilesOf(input, options));
  TellProduct();
  VRINResult result = TellOptions();
  if (result.IsSuccess()) result = Translate();
  Send<VRELEndProductEvent>(result);
  return result;
}

void Translation::TellProduct() const {
  VRELStartProductEvent event("STEP reader", "brivet " BRIVET_VERSION);
  event.AddOption("Input File", input.c_str());
  VRELEventBus::Fire(event);
}

VRINResult Translation::TellOptions() const {
  VRELStartOptionsTaskEvent::Fire();
  VRINResult const result = RunGuarded(input, [this] {
    for (OptionSource const& source : options.Sources()) ReportMessage(source.Words());
    options.Store().Dump(nullptr, "%s = %s", nullptr);
    for (OptionSet::Warning const& warning : options.Warnings()) ReportWarning(warning.origin, warning.text);
  });
  Send<EndOptionsEvent>(result, options.Store().Size(), options.UnknownCount());
  return result;
}

VRINResult Translation::Translate() {
  VRELStartTaskEvent::Fire("Translation", "Translation", VREL_LEVEL_INFO);
  VRINResult result = ReadFile();
  if (result.IsSuccess()) result = Preprocess();
  if (result.IsSuccess()) result = ReadEntities();
  if (result.IsSuccess()) result = PrintSummary();
  VRELEndTranslationTaskEvent::Fire(result, false);
  return result;
}

VRINResult Translation::ReadFile() {
  VRELStartReadFileTaskEvent::Fire(input.c_str());
  VRELFileHeader header;
  VRINResult const result = RunGuarded(input, [&] {
    file = std::make_unique<StepFile>(input);
    file->Reader().ReadHeader();
    header = FileHeaderOf(file->Reader().Summary());
  });
  Send<VRELEndReadFileTaskEvent>(result, &header);
  return result;
}

VRINResult Translation::Preprocess() {
  Send<VRELStartPreprocessDocumentEvent>(true);
  VRINResult const result = RunGuarded(input, [this] { file->Reader().CheckHeader(); });
  Send<VRELEndPreprocessDocumentEvent>(result, true);
  return result;
}

VRINResult Translation::ReadEntities() {
  Send<VRELStartReadEntitiesTaskEvent>();
  VRINResult const result = RunGuarded(input, [this] { file->Reader().ReadSections(); });
  Send<VRELEndReadEntitiesTaskEvent>(result);
  return result;
}

VRINResult Translation::PrintSummary() {
  std::string page;
  VRINResult const result = RunGuarded(input, [&] { page = FormatSummary(file->Reader().Summary()); });
  return result.IsSuccess() ? PrintPage(page) : result;
}
