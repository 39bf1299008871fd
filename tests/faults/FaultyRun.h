// Runs brivet on a small document while something fails, and says what every such run must leave behind.
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

// A document with most of what a file can hold, a reference to nothing, and an options file with an unknown name.
extern char const FAULT_DOCUMENT[];
extern char const FAULT_OPTIONS[];

// The same with that many instances more, of 50 bytes each.
std::string LargeFaultDocument(int instances);

// What a program is run on, and what comes out where nothing fails.
class FaultyRun {
 public:
  // The words behind the program's name; the last one is the output, which holds "of yesterday" before each run, unless
  // the words begin with "-list". The document stands there as washer.stp and large.stp. Runs the program once,
  // undisturbed.
  explicit FaultyRun(Names programWords, std::string const& document = FAULT_DOCUMENT);

  // Starts the program with a limit of 20 seconds; `prepare` runs in the child before it. Outputs go to files.
  pid_t Start(std::function<void()> const& prepare = {}) const;
  // What came of a process, by what waitpid said of it.
  ChildResult Collect(int status) const;
  ChildResult Run(Names const& environmentOfRun) const;

  // Puts all files back to what they were before the run.
  void Reset() const;

  // Demands of any end: a documented status, or the loader's where the libraries could not come up; the output old or
  // new, and new if all went well; no other file; logs of whole lines, and none but those of the full log and such as
  // tell of the failure. With `mayLoseTexts` a line may lack a text that there was no memory for.
  testing::AssertionResult IsSound(ChildResult const& result, bool mayLoseTexts = false) const;
  // The same of a run that a signal may have ended at any moment; `mayLeaveTemporary` allows for one file that still
  // had its temporary name.
  testing::AssertionResult IsSoundStopped(ChildResult const& result, bool mayLeaveTemporary) const;

  bool IsListing() const { return words[0] == "-list"; }
  ChildResult const& Undisturbed() const { return undisturbed; }
  ScratchDirectory const& Folder() const { return folder; }

 private:
  std::string Output() const { return IsListing() ? "" : words.back(); }
  std::string WrongFiles(bool mayLeaveTemporary, bool mayLoseTexts) const;
  std::string WrongLog(std::string const& name, bool mayLoseTexts) const;

  ScratchDirectory folder;   // where the program runs
  ScratchDirectory outside;  // for what it prints
  Names words;
  ChildResult undisturbed;
  std::string newOutput;
  std::map<std::string, std::string> logs;
};

// The runs that all faults are tried on, by name: the three formats and the listing.
std::vector<std::pair<std::string, Names>> const& FaultyRuns();

// Whether the environment asks for all faults and not for a sample.
bool TriesAllFaults();

// The numbers from 1 to `count` that are tried: the first `dense` ones, and `more` of the others, drawn with a fixed
// seed; all of them if the environment asks for that.
std::vector<long> FaultNumbers(long count, long dense, long more);
