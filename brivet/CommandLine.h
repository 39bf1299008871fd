// What a user asks of the program.
#pragma once

#include <string>
#include <vector>

#include "OptionSource.h"

struct CommandLine {
  enum Action { Translate, Help, Version, Refuse };

  Action action = Refuse;
  std::string file;                   // to read
  std::vector<OptionSource> sources;  // of options, in the order of the line; settings are good ones
  std::string problem;                // why the line is refused
  std::string advice;                 // what to do instead; empty where the usage tells it

  // Takes the arguments of main: one file, --help or --version, and among them any number of -options FILE and -set
  // NAME=VALUE. Options are those of VRELArgs, with one dash or with two, and may be shortened: -help, --help, -h. What
  // begins with "-" is a file behind "--", and "-" alone is one.
  static CommandLine Read(int count, char** arguments);

  // The line that shows how to call the program, with its line end.
  static char const* Usage();
};
