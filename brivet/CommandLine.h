// Command line of the program.
#pragma once

#include <string>
#include <vector>

#include "OptionSource.h"

struct Format;

struct CommandLine {
  enum Action { Translate, TranslateAll, List, ListFormats, ListSettings, Help, Version, Refuse };

  static constexpr int kJobLimit = 1024;
  static constexpr long kTemporarySpace = 16L << 30U;  // bytes

  Action action = Refuse;
  std::string input;                      // of Translate and List
  std::vector<std::string> inputs;        // of TranslateAll
  std::string output;                     // empty if none is given
  std::string outputFolder;               // of TranslateAll
  std::string pattern;                    // of ListSettings; empty for all
  std::string format;                     // of Help; empty for help on the program
  Format const* target = nullptr;         // the format of -write; null if it is not given
  int jobs = 0;                           // worker processes; 0 for one for each processor
  std::string report;                     // file of -report; empty for none
  std::string logFolder;                  // folder of -logdir; empty for the default
  std::string readLog;                    // names of the logs in a worker process; empty for the defaults
  std::string writeLog;                   //
  long temporarySpace = kTemporarySpace;  // limit for temporary copies of the input, in bytes
  bool isSummary = false;                 // List prints the summary only
  bool isStrict = false;                  // a partial result is a failure
  bool isForced = false;                  // the output may be an existing document
  bool isVerbose = false;                 // notes are printed
  bool hasLogs = true;                    // logs are written
  bool showsProgress = false;             // a progress bar even if standard error is no terminal
  bool isQuiet = false;                   // also set if the line is refused
  bool isSynchronized = true;             // the output is synchronized with the disk
  bool isWorker = false;                  // started by brivet itself, for one input of several
  std::vector<OptionSource> sources;      // of options, in order; the settings are valid
  std::string problem;                    // why the line is refused
  std::string hint;                       // what to do instead; may be empty

  // Parses the arguments of main. Options have the syntax of VRELArgs: one dash or two, any abbreviation of the name
  // (-help, --help, -h), the argument as the next word; after "=" it may also be in the same word (--write=text). Words
  // after "--" are files, and so is "-".
  static CommandLine Parse(int count, char** arguments);

  // Returns the usage lines.
  static char const* Usage();

  // Returns the format to write: that of -write, else by the extension of OUTPUT, else a page.
  Format const& Target() const;
  // Returns OUTPUT, else the name of INPUT in the current directory with the extension of the format.
  std::string OutputPath() const;
};

// Parses a size in bytes, with an optional unit K, M, G or T for powers of 1024. Returns false if it is none, is 0 or
// exceeds 2^62.
bool ParseSize(std::string const& text, long& size);
