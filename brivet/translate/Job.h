// What a translation is to do.
#pragma once

#include <string>

#include "Formats.h"

struct Job {
  std::string input;               // "-": standard input
  std::string output;              // "-": standard output; not used by a listing
  Format const* target = nullptr;  // what to write; null lists what would be translated
  bool prints = true;              // the listing, or a line that says what was written, on standard output

  // How messages name them.
  std::string ShownInput() const { return input == "-" ? "standard input" : input; }
  std::string ShownOutput() const { return output == "-" ? "standard output" : output; }
};
