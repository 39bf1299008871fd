// The road of one translation, from its first event to its last.
#pragma once

#include <memory>
#include <string>

#include "OptionSet.h"
#include "StepFile.h"
#include "VRINResult.h"

// Reads an ISO 10303-21 file, prints its summary, and sends the events of the tasks on the way, which make the log
// brivet_read.log:
//
//   Product                                      what runs, and the input
//   Options                                      where options came from, all options, warnings about them
//   Translation                                  from here on
//     Read File                                  opens the file and reads its header
//     Source Document Preprocessing              whether the header is complete
//     Read Entities                              reads the rest
//
// The summary is printed in front of the end of Translation. A task that fails is the last one; the tasks around it
// end with its result. What
// goes wrong is reported by ReportProblem before the end of its task.
class Translation {
 public:
  // The options must outlive the translation.
  Translation(std::string inputPath, OptionSet const& options);

  // To be called once.
  VRINResult Run();

 private:
  void TellProduct() const;
  VRINResult TellOptions() const;
  VRINResult Translate();
  VRINResult ReadFile();
  VRINResult Preprocess();
  VRINResult ReadEntities();
  VRINResult PrintSummary();

  std::string const input;
  OptionSet const& options;
  std::unique_ptr<StepFile> file;
};
