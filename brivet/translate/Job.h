// One translation to do.
#pragma once

#include <string>

#include "EscapedText.h"
#include "Formats.h"

struct Job {
  std::string input;                          // "-" is standard input
  std::string output;                         // "-" is standard output; unused for a listing
  Format const* target = nullptr;             // what to write; null for a listing
  std::string readLog = "brivet_read.log";    // path of the log of the run; empty for none
  std::string writeLog = "brivet_write.log";  // path of the log of its writing phase; empty for none
  std::string report;                         // file that gets the report of the run; empty for none
  long temporarySpace = 16L << 30U;           // limit for temporary copies of the input, in bytes
  bool isSummary = false;                     // a listing consists of the summary
  bool isStrict = false;                      // a partial result is a failure
  bool isVerbose = false;                     // reports notes
  bool areOptionsReported = true;             // warnings about options are printed and not only logged
  bool isQuiet = false;                       // prints neither the listing nor the summary line
  bool isSynchronized = true;                 // the output is synchronized with the disk

  // Return the names for messages and logs, with control characters escaped.
  std::string InputDisplayName() const { return input == "-" ? "standard input" : Escaped(input); }
  std::string OutputDisplayName() const { return output == "-" ? "standard output" : Escaped(output); }

 private:
  static std::string Escaped(std::string const& name) {
    std::string escaped;
    AppendEscapingControls(escaped, name);
    return escaped;
  }
};
