// Runs code or a program in a child process: for process-wide behaviour (exit codes, environment, locale, output at
// start and exit) and for code that can crash.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct ChildResult {
  int exitStatus = -1;  // exit status; -1 if a signal ended the child
  int signal = 0;       // signal that ended the child, or 0
  std::string output;   // standard output
  std::string errors;   // standard error
};

// Forks, runs `body` in the child and calls std::exit with its result, so that static objects are destroyed. Requires:
// a process with one thread.
ChildResult RunInChild(std::function<int()> const& body);

// The same, but calls _exit: without static destructors and leak check, for a child that runs out of memory.
ChildResult RunInChildWithoutTeardown(std::function<int()> const& body);

struct ProgramOptions {
  std::string input;                     // standard input of the program
  std::string directory;                 // working directory; empty: unchanged
  std::vector<std::string> environment;  // "NAME=value", added to the environment
};

// Runs a program (a path, or a name in PATH) with arguments and waits for its end.
ChildResult RunProgram(std::vector<std::string> const& arguments, ProgramOptions const& options = {});
