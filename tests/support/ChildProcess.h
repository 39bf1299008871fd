// Runs code or a program in a child process: for what belongs to a whole process (exit codes, the environment, the
// locale, what is printed at start and stop) and for what must not harm the test itself.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct ChildResult {
  int exitStatus = -1;  // what the child gave to exit; -1 when a signal ended it
  int signal = 0;       // the signal that ended it; 0 when none did
  std::string output;   // standard output
  std::string errors;   // standard error
};

// Runs `body` in a fork of this process and then leaves by std::exit with what it returns, so that objects that live
// for the whole process are torn down. Meant for a process with one thread.
ChildResult RunInChild(std::function<int()> const& body);

// The same, but leaves without tearing anything down and without a search for leaks: for a child that is out of memory.
ChildResult RunInChildWithoutTeardown(std::function<int()> const& body);

struct ProgramOptions {
  std::string input;                     // what the program finds on standard input
  std::string directory;                 // where it runs; empty: here
  std::vector<std::string> environment;  // "NAME=value", put on top of this process's own
};

// Runs a program (a path, or a name that is looked up) with its arguments, and waits for its end.
ChildResult RunProgram(std::vector<std::string> const& arguments, ProgramOptions const& options = {});
