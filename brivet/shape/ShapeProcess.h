// Child process that evaluates shapes.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// Runs a program with limits, so that damaged geometry can neither crash this process nor take its memory or its time.
// The program has the request as standard input and the path of the open document as its argument; its standard output
// is passed on; it has no other open files. It is
// killed if it exceeds a limit, if its output is refused, if an abort is requested, and if this process ends.
class ShapeProcess {
 public:
  struct Limits {
    std::uint64_t bytes = std::uint64_t{8192} << 20U;  // of address space
    int seconds = 300;
  };
  enum End {
    Exited,      // number: the exit status
    Killed,      // number: the signal that ended it
    TimedOut,    // after the limit
    Refused,     // the receiver has refused its output
    NotStarted,  // number: the error code
  };
  struct Outcome {
    End end = NotStarted;
    int number = 0;
  };

  // Runs a program. `receive` is called with each piece of the output, and returns false to refuse
  // it.
  //
  // Errors: VRELAbortException if the user has asked for an abort.
  static Outcome Run(std::string const& program, std::string const& document, std::string const& request,
                     Limits const& limits, std::function<bool(std::string_view)> const& receive);
};
