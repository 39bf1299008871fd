// Command line of the program.
#pragma once

#include <string>
#include <vector>

#include "OptionSource.h"

struct Format;

struct CommandLine {
  enum Action { Translate, List, Help, Version, Refuse };

  Action action = Refuse;
  std::string input;
  std::string output;                 // empty if none is given
  Format const* target = nullptr;     // the format of -write; null if it is not given
  bool showsProgress = false;         // a progress bar even if standard error is no terminal
  bool isQuiet = false;               // also set if the line is refused
  bool isSynchronized = true;         // the output is synchronized with the disk
  std::vector<OptionSource> sources;  // of options, in order; the settings are valid
  std::string problem;                // why the line is refused
  std::string hint;                   // what to do instead; may be empty

  // Parses the arguments of main. Options have the syntax of VRELArgs: one dash or two, any abbreviation of the name
  // (-help, --help, -h), the argument as the next word; after "=" it may also be in the same word (--write=text). Words
  // after "--" are files, and so is "-".
  static CommandLine Parse(int count, char** arguments);

  // Returns the usage line, with its line end.
  static char const* Usage();

  // Returns the format to write: that of -write, else by the extension of OUTPUT, else a page.
  Format const& Target() const;
  // Returns OUTPUT, else the name of INPUT in the current directory with the extension of the format.
  std::string OutputPath() const;
};
