// Translation of several inputs by worker processes.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "Formats.h"
#include "VRELOutputStream.h"

// One input of a batch with the files that its worker writes.
struct BatchItem {
  std::string input;
  std::string output;
  std::string readLog;   // empty for none
  std::string writeLog;  // empty for none
};

// Returns the items for inputs whose outputs go to a folder, and whose logs go to another one: "DIR/a.html",
// "LOGDIR/a.read.log", "LOGDIR/a.write.log". Without a folder for logs there are none.
std::vector<BatchItem> MakeBatch(std::vector<std::string> const& inputs, Format const& format,
                                 std::string const& outputFolder, std::string const& logFolder);

// Returns why the items cannot be translated together: two inputs with the same output, or an output or a log that is
// one of the inputs or of the options files. Empty if they can.
std::string FindConflict(std::vector<BatchItem> const& items, std::vector<std::string> const& optionsFiles);

// Runs a worker process for each item, several at a time. The workers are this program, called with the words for the
// worker and those of the item: one process translates one input. Their messages and summary lines are printed as they
// arrive, complete lines at a time. A worker that fails does not stop the others.
//
// If an abort is requested, no worker is started any more, and the running ones are terminated within two seconds.
//
//   Batch batch(items, {"-write=html"}, 4);
//   return batch.Run(report, true, false, false);
class Batch {
 public:
  Batch(std::vector<BatchItem> batchItems, std::vector<std::string> workerWords, int jobCount);

  // Runs all workers. `report` gets a line of JSON for each input, in their order; it may be null. Returns the exit
  // status of the first input that failed, else 8 if one was partial, else 0; 3 after an abort. With `hidesSummaries`
  // the summary lines are not printed, and with `isQuiet` no messages either.
  int Run(VRELOutputStream* report, bool showsProgress, bool isQuiet, bool hidesSummaries);

 private:
  struct Worker;
  class Loop;

  std::vector<BatchItem> const items;
  std::vector<std::string> const words;
  int const jobs;
};
