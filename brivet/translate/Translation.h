// One translation, from its first event to its last.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BrivetModule.h"
#include "FormatModule.h"
#include "InputDocument.h"
#include "Job.h"
#include "ModuleShapeEvaluator.h"
#include "OptionSet.h"
#include "OutputFile.h"
#include "Progress.h"
#include "RunLog.h"
#include "RunReport.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"
#include "VRINResult.h"

// Reads a document by one format module and writes it by another, and sends the events of its tasks:
//
//   Product                            the program, the input and the output
//   Options                            the sources of options, all options, warnings about them
//   Translation                        encloses the following
//     Read File                        opens the document and reads its header
//     Source Document Preprocessing    whether the header was read completely
//     Read Entities                    reads the rest; a listing is printed and ends the translation
//     Conversion                       resolves references, as one stage
//     Target Document Preprocessing    prepares the writing module
//     Target Document Postprocessing   the state of the document so far
//     File Write                       writes the document and replaces the output file
//
// The read log holds all of them, the write log those from the conversion on. A task that fails is the last one; the
// enclosing tasks end with its result. An error is reported by ReportProblem before the end of its task.
class Translation {
 public:
  // The options and the progress must outlive the translation.
  Translation(Job translationJob, OptionSet& givenOptions, Progress& shownProgress);

  // Runs the translation. Call it once. Returns the combined result: VREL_S_PARTIAL if instances were lost,
  // VREL_E_ABORTED after an abort. Once the output is replaced the result is a success.
  VRINResult Run();
  // Returns true once the output is replaced.
  bool IsCommitted() const;
  // Returns the report about a run with this result, without its time.
  RunReport Report(VRINResult result) const;

 private:
  std::vector<std::string> FilesOfRun() const;
  VRINResult RunTasks();
  void ReportProduct() const;
  VRINResult ReportOptions() const;
  VRINResult Translate(std::optional<RunLog>& writeLog);
  VRINResult RunReadPhase();
  VRINResult RunWritePhase();
  VRINResult OpenFiles();
  VRINResult ReadFile();
  VRINResult OpenDocument();
  VRINResult PreprocessSource();
  VRINResult ReadEntities();
  VRINResult Convert();
  VRINResult PreprocessTarget();
  VRINResult PostprocessTarget();
  VRINResult WriteFile();
  VRINResult WriteDocument();
  void PrintSummary();
  VRINResult CheckDocument() const;
  VRINResult CheckInput(VRINResult result) const;
  VRINResult CheckStrict(VRINResult result);
  VRINResult CheckDamage() const;

  Job const job;
  OptionSet& options;
  Progress& progress;
  FormatModule source;
  std::unique_ptr<FormatModule> target;
  std::unique_ptr<ModuleShapeEvaluator> shapes;
  std::unique_ptr<InputDocument> input;
  std::unique_ptr<OutputFile> output;
  VRINResult committedResult = VREL_UNDETERMINED;  // known once the output is replaced
  bool isRefusedAsPartial = false;                 // because of -strict
  Document* document = nullptr;                    // owned by the handle
  VRELFormatReaderHandle handle;
  std::unique_ptr<VRELReader> reader;
};
