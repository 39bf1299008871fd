// What a user asks of the program.
#pragma once

#include <string>

struct CommandLine {
  enum Action { Summarise, Help, Version, Refuse };

  Action action = Refuse;
  std::string file;     // to summarise
  std::string problem;  // why the line is refused
  std::string advice;   // what to do instead; empty where the usage tells it

  // Takes the arguments of main: one file or one option. Options are those of VRELArgs, with one dash or with two, and
  // may be shortened: -help, --help, -h. What begins with "-" is a file behind "--", and "-" alone is one.
  static CommandLine Read(int count, char** arguments);
};
