// Runs brivet on a small document with faults, and checks what each run leaves.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "ScratchDirectory.h"

using Names = std::vector<std::string>;

// A document with most of the syntax and a dangling reference, and an options file with an unknown name.
extern char const FAULT_DOCUMENT[];
extern char const FAULT_OPTIONS[];

// Returns the document with `instances` additional instances of 50 bytes each.
std::string LargeFaultDocument(int instances);

// One command line of brivet and its results without faults.
class FaultyRun {
 public:
  // Takes the arguments of the program. Unless the first is "-list", the last is the output, which exists before each
  // run. The document is available as washer.stp and large.stp. Runs the program once without faults.
  explicit FaultyRun(Names programWords, std::string const& document = FAULT_DOCUMENT);

  // Starts the program with a limit of 20 seconds. `prepare` is called in the child before.
  pid_t Start(std::function<void()> const& prepare = {}) const;
  // Returns the result of a process by its status from waitpid.
  ChildResult Collect(int status) const;
  ChildResult Run(Names const& environmentOfRun) const;

  // Restores all files.
  void Reset() const;

  // Checks a run: the status is documented, or is that of the loader if a library could not be loaded; the output is
  // new after a success and old after a failure; no other file is left; the logs have whole lines, which are those of
  // the log without faults or about a failure. With `mayLoseTexts` the lines of the logs may lack strings.
  testing::AssertionResult IsSound(ChildResult const& result, bool mayLoseTexts = false) const;
  // Checks a run that a signal may have ended at any moment. With `mayLeaveTemporary` it may leave a temporary file.
  testing::AssertionResult IsSoundStopped(ChildResult const& result, bool mayLeaveTemporary) const;

  bool IsListing() const { return words[0] == "-list"; }
  ChildResult const& Undisturbed() const { return undisturbed; }
  ScratchDirectory const& Folder() const { return folder; }

 private:
  std::string Output() const { return IsListing() ? "" : words.back(); }
  std::string WrongFiles(bool mayLeaveTemporary, bool mayLoseTexts) const;
  std::string WrongLog(std::string const& name, bool mayLoseTexts) const;

  ScratchDirectory folder;   // where the program runs
  ScratchDirectory outside;  // for its standard output and error
  Names words;
  ChildResult undisturbed;
  std::string newOutput;
  std::map<std::string, std::string> logs;
};

// Returns the command lines for the tests by name: the three formats and the listing.
std::vector<std::pair<std::string, Names>> const& FaultyRuns();

// Returns whether the environment requests all faults instead of a sample.
bool TriesAllFaults();

// Returns a sample of the numbers from 1 to `count`: the first `dense` ones and `more` random others, with a fixed
// seed; or all of them if the environment requests it.
std::vector<long> FaultNumbers(long count, long dense, long more);
