// The road of one translation, from its first event to its last.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BrivetModule.h"
#include "FormatModule.h"
#include "InputDocument.h"
#include "Job.h"
#include "OptionSet.h"
#include "OutputFile.h"
#include "Progress.h"
#include "RunLog.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"
#include "VRINResult.h"

// Reads a document by one format module and writes it by another, and sends the events of the tasks on the way:
//
//   Product                                      what runs, the input and the output
//   Options                                      where options came from, all options, warnings about them
//   Translation                                  from here on
//     Read File                                  opens the document and reads its header
//     Source Document Preprocessing              whether the header could be read whole
//     Read Entities                              reads the rest; a listing is printed behind it, and ends the road
//     Conversion                                 links the entities: one stage
//     Target Document Preprocessing              gets the writing module ready
//     Target Document Postprocessing             what came of the document so far
//     File Write                                 writes the document, and puts the file in its place
//
// brivet_read.log holds all of them, brivet_write.log those from the conversion on. A task that fails is the last one;
// the tasks around it end with its result. What goes wrong is reported by ReportProblem before the end of its task.
class Translation {
 public:
  // The options and the progress must outlive the translation.
  Translation(Job translationJob, OptionSet& givenOptions, Progress& shownProgress);

  // To be called once. The folded result: VREL_S_PARTIAL if something was left out, VREL_E_ABORTED if the run was
  // stopped.
  VRINResult Run();

 private:
  std::vector<std::string> FilesOfRun() const;
  void TellProduct() const;
  VRINResult TellOptions() const;
  VRINResult Translate(std::optional<RunLog>& writeLog);
  VRINResult ReadHalf();
  VRINResult WriteHalf();
  VRINResult Prepare();
  VRINResult ReadFile();
  VRINResult OpenDocument();
  VRINResult PreprocessSource();
  VRINResult ReadEntities();
  VRINResult Convert();
  VRINResult PreprocessTarget();
  VRINResult PostprocessTarget();
  VRINResult WriteFile();
  VRINResult WriteDocument();
  VRINResult PrintSummary();
  VRINResult StateOfDocument() const;

  Job const job;
  OptionSet& options;
  Progress& progress;
  FormatModule source;
  std::unique_ptr<FormatModule> target;
  std::unique_ptr<InputDocument> input;
  std::unique_ptr<OutputFile> output;
  Document* document = nullptr;  // held by the handle
  VRELFormatReaderHandle handle;
  std::unique_ptr<VRELReader> reader;
};
