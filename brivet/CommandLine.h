// What a user asks of the program.
#pragma once

#include <string>
#include <vector>

#include "OptionSource.h"

struct Format;

struct CommandLine {
  enum Action { Translate, List, Help, Version, Refuse };

  Action action = Refuse;
  std::string input;
  std::string output;                 // empty where none is named
  Format const* target = nullptr;     // what -write names; null where it is not given
  bool progress = false;              // a bar is wanted, whatever standard error is
  bool quiet = false;                 // kept of a refused line too
  std::vector<OptionSource> sources;  // of options, in the order of the line; settings are good ones
  std::string problem;                // why the line is refused
  std::string advice;                 // what to do instead; empty where the usage tells it

  // Takes the arguments of main: INPUT and perhaps OUTPUT, or --help or --version alone, and options among them.
  // Options are those of VRELArgs, with one dash or with two, and may be shortened: -help, --help, -h. What begins with
  // "-" is a file behind "--", and "-" alone is one.
  static CommandLine Read(int count, char** arguments);

  // The line that shows how to call the program, with its line end.
  static char const* Usage();

  // What to write: what -write names, else what OUTPUT's extension tells, else a page.
  Format const& Target() const;
  // Where: OUTPUT, else INPUT's name in the current directory with the extension of the target.
  std::string OutputPath() const;
};
